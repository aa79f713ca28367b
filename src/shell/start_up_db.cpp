#include "shell/start_up_db.h"

#include "config/config_objects.h"
#include "config/paths.h"
#include "platform/controls/splash_form.h"
#include "platform/system/timers.h"

namespace melovane {

namespace {

constexpr std::chrono::milliseconds kStandTime{5000};

} // namespace

frmStartUpDB::frmStartUpDB(const ConfigObjects& texts,
                           MessageLoop& loop,
                           SplashForm& form,
                           std::function<void()> openPage)
    : m_texts(texts)
    , m_form(form)
    , m_openPage(std::move(openPage))
    , m_timer1(loop.makeTimer(kStandTime, [this] { timer1Fired(); }))
    , m_timer3(loop.makeTimer(std::chrono::milliseconds(kStartupCloseDelay), [this] { unload(); }))
{}

frmStartUpDB::~frmStartUpDB() = default;

void frmStartUpDB::Show()
{
    StartupCloseDelay = 0;
    m_loaded = true;
    m_form.load({mainWindowCaption(), m_texts.text(u"startup.loading"),
                 m_texts.text(u"startup.page"), m_texts.text(u"schliessen"), [this] { unload(); },
                 m_openPage, [this] { userWorks(); }, [this] { StandAside(); }});
}

void frmStartUpDB::BringToFront()
{
    if (m_loaded) {
        m_form.bringToFront();
    }
}

void frmStartUpDB::StartTimerCloseWindow()
{
    if (m_loaded) {
        m_timer1->start();
    }
}

void frmStartUpDB::userWorks()
{
    // Whoever works already must not wait for a window that stands on his tracks.
    if (m_loaded && StartupCloseDelay > 0 && !m_timer3->isActive()) {
        m_timer3->start();
    }
}

void frmStartUpDB::StandAside()
{
    if (StartupCloseDelay > 0) {
        unload();
    }
}

void frmStartUpDB::timer1Fired()
{
    m_timer1->stop();
    m_form.showAsNormal();
    unload();
}

void frmStartUpDB::unload()
{
    m_timer1->stop();
    m_timer3->stop();
    if (m_loaded) {
        m_loaded = false;
        m_form.unload();
    }
}

} // namespace melovane
