#pragma once

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/log4mlv.h"
#include "config/paths.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/linux_processes.h"
#include "platform/linux/only_copy.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "shell/idle_work.h"
#include "shell/library_data.h"
#include "store/file_locator.h"

#include <memory>

namespace melovane {

/// What everything else stands on: clock, files, other processes, settings, texts and the library.
struct Machine
{
    explicit Machine(EnvironmentPlaces places);

    /// Texts, log, keys and settings, in this order.
    void loadConfig();

    /// Where failures are written down; before the configuration is loaded they are dropped.
    [[nodiscard]] ErrorSink log();

    SystemClock clock;
    LinuxFiles files;
    LinuxEnvironment environment;
    LinuxProcesses processes;
    IniProfile profile;
    Mod_API paths;
    LinuxMessages messages;
    OnlyCopy onlyCopy;
    LibraryLoan loan;
    std::shared_ptr<sqlite::IndexFigures> searchFigures;
    std::unique_ptr<DBEngine> engine;
    GlobalSettings settings;
    ConfigObjects texts;
    std::unique_ptr<Log4Mlv> logFile; ///< null before the configuration is loaded
    QtMessageLoop loop;
    IdleWork idle;
    LibraryData data;
    FileLocator locator;
};

} // namespace melovane
