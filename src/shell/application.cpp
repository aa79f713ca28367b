#include "shell/application.h"

#include "library/ui/mp3db_widget.h"
#include "platform/db/db_error.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/system/path_text.h"

#include <QApplication>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Between two slices of long work, so that keys and paints come first.
constexpr std::chrono::milliseconds kIdleInterval{2};

} // namespace

Application::Application(QApplication& application, EnvironmentPlaces places)
    : m_environment(std::move(places))
    , m_profile(m_files)
    , m_paths(m_environment, m_files)
    , m_searchFigures(std::make_shared<sqlite::IndexFigures>())
    , m_engine(sqlite::makeEngine(
          m_clock,
          {.searchIndex = m_searchFigures,
           .whenIdle = [this](std::function<bool()> work) { runWhenIdle(std::move(work)); }}))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_skin(application)
    , m_icons(m_skin)
    , m_window(m_skin, m_icons)
    , m_mlvdb(m_settings, m_paths, m_files, m_processes, m_loop, m_window.controls())
    , m_library(*m_engine, m_settings, m_clock, m_loop, m_window.library().controls(), [this] {
        m_mlvdb.mnuImpMP3(0);
    })
{}

Application::~Application() = default;

void Application::runWhenIdle(std::function<bool()> work)
{
    m_idleWork.push_back(std::move(work));
    if (!m_idleTimer) {
        m_idleTimer = m_loop.makeTimer(kIdleInterval, [this] {
            std::erase_if(m_idleWork, [](const auto& next) { return !next(); });
            if (m_idleWork.empty()) {
                m_idleTimer->stop();
            }
        });
    }
    m_idleTimer->start();
}

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

void Application::loadConfig()
{
    m_log = std::make_unique<Log4Mlv>(m_paths, m_files, m_clock);
    m_log->SetClassName(u"MLVDB"_s);
    m_log->SetAreaName(u"LoadConfig"_s);
    m_settings.Refresh();
}

StartSteps Application::steps()
{
    return {
        [this] { return databaseCheck().openTest(); },
        [this] { loadConfig(); },
        [this] { return anotherCopyRuns(); },
        [this] { return m_files.fileExists(m_settings.DbName()); },
        [this] { return m_settings.CheckDBVersion() == 0; },
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

int Application::run()
{
    switch (SubMain(steps(), m_settings, m_dialog).run()) {
    case StartResult::SecondCopy:
        return 0;
    case StartResult::Refused:
        return 1;
    case StartResult::Run:
        break;
    }
    m_mlvdb.load();
    connectViews();
    try {
        m_library.start();
    } catch (const DbError& error) {
        m_dialog.show(u"Achtung !"_s, error.text());
        return 1;
    }
    m_window.show();
    return QApplication::exec();
}

} // namespace melovane
