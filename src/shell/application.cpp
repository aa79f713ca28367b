#include "shell/application.h"

#include "bus/message_numbers.h"
#include "config/melovane_configuration.h"
#include "library/ui/mp3db_widget.h"
#include "platform/db/db_error.h"
#include "platform/qt/desktop_texts.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/system/path_text.h"
#include "shell/skin_files.h"
#include "store/check_database.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

Application::Application(QApplication& application, EnvironmentPlaces places)
    : m_application(application)
    , m_environment(std::move(places))
    , m_profile(m_files)
    , m_paths(m_environment, m_files)
    , m_messages(MessagePlace(m_environment.runtimeFolder()))
    , m_onlyCopy(m_environment.runtimeFolder(), m_paths.programName())
    , m_engine(sqlite::makeEngine(m_clock))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_texts(m_paths, m_profile, m_files)
    , m_skin(application)
    , m_icons(m_skin)
    , m_messageForm(m_icons)
    , m_warnings(m_settings, m_texts, m_paths, m_messageForm)
    , m_splashForm(m_skin, m_icons)
    , m_splash(m_texts, m_loop, m_splashForm, [this] { openMakersPage(); })
    , m_info(m_settings, m_texts, m_paths, m_infoForm)
    , m_bus(m_paths, m_files, m_clock)
    , m_editBox(m_texts, m_bus, m_inputBox)
    , m_message(m_messages.makeControl())
    , m_suite(m_settings, *m_engine, m_messages, *m_message, log())
    , m_siblings(m_paths, m_files, m_processes)
    , m_data(*m_engine, m_settings, m_paths, m_files, m_clock, log())
    , m_locator(m_files, m_paths.GetConfigPath())
    , m_player(m_output, m_loop)
    , m_window(m_skin, m_icons)
    , m_monitor(monitorParts())
    , m_mlvdb(windowParts(), m_window.controls())
    , m_library(*m_engine,
                m_settings,
                m_texts,
                m_clock,
                m_loop,
                m_bus,
                m_window.library().controls(),
                libraryActions())
{}

Application::~Application() = default;

ErrorSink Application::log()
{
    return [this](const QString& where, const QString& what) {
        if (m_log) {
            m_log->DebugOut(where + u": "_s + what);
        }
    };
}

MonitorParts Application::monitorParts()
{
    return {m_player,
            m_window.status(),
            m_warnings,
            m_settings,
            m_texts,
            m_files,
            m_locator,
            m_loop,
            [this](const QString& fid) { return m_data.GetAllDataByFid(fid); },
            [this] { m_suite.StopOtherMonitors(); },
            [this](const QString& text) { m_mlvdb.showStatusText(text); }};
}

MlvdbParts Application::windowParts()
{
    // There is no playlist view yet, so it stands nowhere.
    const PlaylistPlace nowhere{[] { return 0; }, [] { return 0; }};
    return {m_settings, m_texts,    m_paths,           m_files, m_loop,
            m_bus,      m_data,     m_siblings,        m_suite, *m_message,
            m_monitor,  m_warnings, libraryCommands(), nowhere, dialogs()};
}

LibraryCommands Application::libraryCommands()
{
    return {[this] { m_library.start(); },
            [this] { m_library.Refresh(); },
            [this] { m_library.DB_ALL_DEL(); },
            [this] { m_library.DB_ALL_NOEXIST(); },
            [this] { m_library.end(); },
            [this](const QString& text) { m_library.FindTreeValue(u"allfind"_s, {}, text); }};
}

WindowDialogs Application::dialogs()
{
    return {[this] { m_info.Show(); }, [this] { m_editBox.Show(); }};
}

Mp3dbActions Application::libraryActions()
{
    return {
        [this] { m_mlvdb.importMusic(); },
        [this](const QString& cmd, const QString& fid) { m_mlvdb.startBeatGauge(cmd, fid, {}); }};
}

bool Application::anotherCopyRuns()
{
    if (m_onlyCopy.claim()) {
        return false;
    }
    const auto control = m_messages.makeControl();
    control->setTarget(m_onlyCopy.runningCopy());
    control->Send(message::kBringToFront, 0, 0);
    return true;
}

void Application::listenForNextCopy()
{
    m_nextCopy = m_messages.makeControl();
    m_nextCopy->setMessageNumber([this](qint32 id, qint32, qint32) {
        if (id == message::kBringToFront) {
            m_window.bringToFront();
        }
        return 0;
    });
    m_onlyCopy.publish(m_nextCopy->handle());
}

OpenFault Application::openTest()
{
    const DatabasePlace place{m_settings.DbName(), m_paths.GetConfigPath(), m_paths.programName()};
    CheckDatabase check(*m_engine, m_files, m_clock, place, log());
    const QString text = check.openTest();
    return {text, check.openError()};
}

void Application::loadConfig()
{
    // Language files are looked for in the current folder.
    QDir::setCurrent(m_paths.GetConfigPath());
    MelovaneConfiguration::fill(m_texts);
    m_log = std::make_unique<Log4Mlv>(m_paths, m_files, m_clock);
    m_log->SetClassName(u"MLVDB"_s);
    m_log->SetAreaName(u"LoadConfig"_s);
    m_settings.InitTasten();
    m_settings.Refresh();
    dress();
}

void Application::dress()
{
    setLanguageOfDesktopTexts(m_application, m_texts.text(u"Sprach.Code"));
    const QString theme = SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    if (!theme.isEmpty()) {
        m_skin.load(theme);
    }
}

void Application::openMakersPage() const
{
    const QString page = path::join(m_paths.programFolder(), u"Melovane.html"_s);
    QDesktopServices::openUrl(QUrl::fromLocalFile(page));
}

StartSteps Application::steps()
{
    return {
        [this] { return openTest(); },
        [this] { loadConfig(); },
        [this] { return anotherCopyRuns(); },
        [this] { return m_files.fileExists(m_settings.DbName()); },
        [this] { return m_settings.CheckDBVersion() == 0; },
        [this] { showMainWindow(); },
    };
}

void Application::connectViews()
{
    m_window.attach(m_mlvdb, m_texts);
    m_window.library().attach(m_library, m_texts);
    QObject::connect(&m_window, &MlvdbWindow::firstShown, &m_library,
                     [this] { m_mlvdb.activateFirst(); });
    QObject::connect(&m_window, &MlvdbWindow::closing, &m_library, [this] { m_mlvdb.unload(); });
}

void Application::showMainWindow()
{
    connectViews();
    try {
        m_mlvdb.load();
    } catch (const DbError& error) {
        // The window is there all the same, incomplete.
        m_log->DebugOut(u"MLVDB.Load: "_s + error.text());
        m_mlvdb.showStatusText(m_texts.text(u"fehler.unerwartet", error.text()));
    }
    m_window.show();
    listenForNextCopy();
}

int Application::run()
{
    const StartParts parts{m_settings, m_texts, m_warnings, m_messages, m_loop, m_splash};
    switch (SubMain(steps(), parts).run()) {
    case StartResult::SecondCopy:
        return 0;
    case StartResult::Refused:
        return 1;
    case StartResult::Run:
        break;
    }
    return QApplication::exec();
}

} // namespace melovane
