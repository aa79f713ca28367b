#pragma once

#include "config/global_settings.h"
#include "config/log4mlv.h"
#include "library/mp3db.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_processes.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "platform/sqlite/column_index.h"
#include "platform/system/clock.h"
#include "shell/mlvdb.h"
#include "shell/paths.h"
#include "shell/sub_main.h"
#include "shell/ui/message_box_dialog.h"
#include "shell/ui/mlvdb_window.h"
#include "store/check_database.h"

#include <memory>

namespace melovane {

/// The composition root: makes every long-lived object of the console once, bottom to top.
class Application
{
public:
    /// \param places where the installation lies; the machine's own unless a test says otherwise
    explicit Application(QApplication& application, EnvironmentPlaces places = {});
    ~Application();

    /// Starts the console and lives until its window is closed. The exit code of the process: 0,
    /// or 1 when the start failed and a dialog has told why.
    [[nodiscard]] int run();

    /// What the column index of the library did so far.
    [[nodiscard]] const sqlite::IndexFigures& searchFigures() const { return *m_searchFigures; }

private:
    [[nodiscard]] StartSteps steps();
    [[nodiscard]] bool anotherCopyRuns();
    [[nodiscard]] CheckDatabase databaseCheck();
    void loadConfig();
    void activateFirst();
    void runWhenIdle(std::function<bool()> work);
    void connectViews();

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    LinuxProcesses m_processes;
    IniProfile m_profile;
    Mod_API m_paths;
    std::shared_ptr<sqlite::IndexFigures> m_searchFigures;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    std::unique_ptr<Log4Mlv> m_log; ///< null before the configuration is loaded
    QtMessageLoop m_loop;
    MessageBoxDialog m_dialog;
    Skin m_skin;
    IconSet m_icons;
    MlvdbWindow m_window;
    MLVDB m_mlvdb;
    ctl_MP3DB m_library;
    std::unique_ptr<FileLock> m_onlyCopy;
    std::vector<std::function<bool()>> m_idleWork; ///< each until it returns false
    std::unique_ptr<Timer> m_idleTimer;
};

} // namespace melovane
