#include "shell/application.h"

#include "config/melovane_configuration.h"
#include "library/ui/mp3db_widget.h"
#include "platform/db/db_error.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/qt/desktop_texts.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/system/path_text.h"
#include "shell/skin_files.h"

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
    , m_engine(sqlite::makeEngine(m_clock))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_texts(m_paths, m_profile, m_files)
    , m_messages(MessagePlace(m_environment.runtimeFolder()))
    , m_skin(application)
    , m_icons(m_skin)
    , m_messageForm(m_icons)
    , m_warnings(m_settings, m_texts, m_paths, m_messageForm)
    , m_splashForm(m_skin, m_icons)
    , m_splash(m_texts, m_loop, m_splashForm, [this] { openMakersPage(); })
    , m_window(m_skin, m_icons)
    , m_mlvdb(m_settings, m_paths, m_files, m_processes, m_loop, m_window.controls())
    , m_library(*m_engine, m_settings, m_clock, m_loop, m_window.library().controls(), [this] {
        m_mlvdb.mnuImpMP3(0);
    })
{}

Application::~Application() = default;

bool Application::anotherCopyRuns()
{
    const QString folder = m_environment.runtimeFolder();
    if (folder.isEmpty()) {
        return false;
    }
    const QString file = path::join(folder, m_paths.programName() + u".lock"_s);
    m_onlyCopy = lockFile(file, std::chrono::milliseconds::zero());
    // A place where no lock can be made must not keep the console from starting.
    return !m_onlyCopy && m_files.fileExists(file);
}

CheckDatabase Application::databaseCheck()
{
    const DatabasePlace place{m_settings.DbName(), m_paths.GetConfigPath(), m_paths.programName()};
    return {*m_engine, m_files, m_clock, place, [this](const QString& where, const QString& what) {
                if (m_log) {
                    m_log->DebugOut(where + u": "_s + what);
                }
            }};
}

OpenFault Application::openTest()
{
    CheckDatabase check = databaseCheck();
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

void Application::activateFirst()
{
    CheckDatabase check = databaseCheck();
    check.checkTempTables();
    if (check.checkTreeTables() < 0) {
        m_mlvdb.mnuRefreshTree();
    }
    m_mlvdb.activateFirst(m_library.librarySize());
}

void Application::connectViews()
{
    m_window.attach(m_mlvdb);
    m_window.library().attach(m_library);
    QObject::connect(&m_window, &MlvdbWindow::firstShown, &m_library, [this] { activateFirst(); });
    QObject::connect(&m_window, &MlvdbWindow::closing, &m_library, [this] {
        m_mlvdb.unload();
        m_library.end();
    });
}

void Application::showMainWindow()
{
    m_mlvdb.load();
    connectViews();
    try {
        m_library.start();
    } catch (const DbError& error) {
        // The window is there all the same, without its rows.
        m_log->DebugOut(u"Mp3db.Start: "_s + error.text());
        m_mlvdb.showStatusText(m_texts.text(u"fehler.unerwartet", error.text()));
    }
    m_window.show();
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
