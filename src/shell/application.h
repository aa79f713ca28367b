#pragma once

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/log4mlv.h"
#include "library/mp3db.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/linux_processes.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "platform/system/clock.h"
#include "shell/mlvdb.h"
#include "shell/paths.h"
#include "shell/show_warning.h"
#include "shell/start_up_db.h"
#include "shell/sub_main.h"
#include "shell/ui/mlvdb_window.h"
#include "shell/ui/msg_dialog.h"
#include "shell/ui/splash_window.h"
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

private:
    [[nodiscard]] StartSteps steps();
    [[nodiscard]] OpenFault openTest();
    [[nodiscard]] bool anotherCopyRuns();
    [[nodiscard]] CheckDatabase databaseCheck();
    void loadConfig();
    void dress();
    void showMainWindow();
    void openMakersPage() const;
    void activateFirst();
    void connectViews();

    QApplication& m_application;
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    LinuxProcesses m_processes;
    IniProfile m_profile;
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    ConfigObjects m_texts;
    std::unique_ptr<Log4Mlv> m_log; ///< null before the configuration is loaded
    QtMessageLoop m_loop;
    LinuxMessages m_messages;
    Skin m_skin;
    IconSet m_icons;
    MsgDialog m_messageForm;
    frmMsg m_warnings;
    SplashWindow m_splashForm;
    frmStartUpDB m_splash;
    MlvdbWindow m_window;
    MLVDB m_mlvdb;
    ctl_MP3DB m_library;
    std::unique_ptr<FileLock> m_onlyCopy;
};

} // namespace melovane
