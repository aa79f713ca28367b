#pragma once

#include "care/backup_desk.h"
#include "care/check_desk.h"
#include "platform/qt/qt_live_wait.h"
#include "platform/qt/qt_worker.h"
#include "shell/mlvdb_parts.h"
#include "shell/sub_main.h"

#include <memory>

namespace melovane {

struct Desk;
struct Machine;
struct SuiteWing;
class Timer;

/// Backups of the library, and the check that proves it whole.
struct SafetyWing
{
    SafetyWing(Machine& machine, Desk& desk, SuiteWing& suite);
    ~SafetyWing();

    SafetyWing(const SafetyWing&) = delete;
    SafetyWing& operator=(const SafetyWing&) = delete;

    /// What their menu entries do.
    [[nodiscard]] CareCommands commands();

    /// The window stands: a while later the backup of the day is made, and the library is checked
    /// when the last run has died.
    void begin(bool lastRunDied);

    /// For a library that cannot be opened: true when the last backup stands in its place now.
    [[nodiscard]] bool rescue(const OpenFault& fault, const QString& reason);

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    /// Gives the main window a number as if another program had sent it; set when there is one.
    std::function<void(qint32 id)> toWindow = [](qint32) {};
    QtLiveWait wait;
    QtWorker worker;
    BackupDesk backups;
    CheckDesk checks;
    std::unique_ptr<Timer> startTimer;

private:
    [[nodiscard]] DeskTools deskTools();
    [[nodiscard]] BackupDeskParts backupParts();
    [[nodiscard]] CheckDeskParts checkParts();
    [[nodiscard]] std::shared_ptr<Backups> makeBackups();
    [[nodiscard]] std::shared_ptr<LibraryCheck> makeCheck();
    [[nodiscard]] std::unique_ptr<ProgressWindow> openProgress(const QString& title);
    void takeLibrary();
    void giveLibrary();
    void showBackups();
};

} // namespace melovane
