#include "shell/wings/safety_wing.h"

#include "bus/message_numbers.h"
#include "care/last_check.h"
#include "care/ui/backups_dialog.h"
#include "platform/controls/status_progress.h"
#include "platform/linux/job_locks.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/zstd_archive.h"
#include "platform/qt/progress_dialog.h"
#include "platform/sqlite/engine/database_care.h"
#include "playlistfiles/store_playlists.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// From the window to the backup of the day: the first searches and lists come before it.
constexpr std::chrono::seconds kAfterStart{20};

/// What a work has to come to its next step; a check of one large table has few.
constexpr std::chrono::seconds kPatience{30};

/// Everything that backups use, for one work on whatever thread.
struct BackupTools
{
    BackupTools(const Backups::Place& place, const QString& lock)
        : care(sqlite::makeDatabaseCare(clock))
        , backups({.care = *care,
                   .archives = archives,
                   .files = files,
                   .clock = clock,
                   .lock = [lock] { return lockFile(lock, std::chrono::milliseconds::zero()); }},
                  place)
    {}

    SystemClock clock;
    LinuxFiles files;
    ZstdArchives archives;
    std::unique_ptr<DatabaseCare> care;
    Backups backups;
};

/// The same for a check.
struct CheckTools
{
    explicit CheckTools(LibraryCheck::Place place)
        : engine(sqlite::makeEngine(clock))
        , care(sqlite::makeDatabaseCare(clock))
        , check({*engine, *care, files, clock}, std::move(place))
    {}

    SystemClock clock;
    LinuxFiles files;
    std::unique_ptr<DBEngine> engine;
    std::unique_ptr<DatabaseCare> care;
    LibraryCheck check;
};

} // namespace

SafetyWing::SafetyWing(Machine& base, Desk& room, SuiteWing& talk)
    : machine(base)
    , desk(room)
    , suite(talk)
    , wait(kPatience)
    , backups(backupParts())
    , checks(checkParts())
    , startTimer(base.loop.makeTimer(kAfterStart, [this] {
        startTimer->stop();
        backups.startDaily();
    }))
{}

SafetyWing::~SafetyWing() = default;

DeskTools SafetyWing::deskTools()
{
    return {.texts = machine.texts,
            .warnings = desk.warnings,
            .wait = wait,
            .worker = worker,
            .openProgress = [this](const QString& title) { return openProgress(title); },
            .tell = [this](const QString& text) { suite.showStatusText(text); },
            .log = machine.log(),
            .takeLibrary = [this] { takeLibrary(); },
            .giveLibrary = [this] { giveLibrary(); }};
}

BackupDeskParts SafetyWing::backupParts()
{
    return {.tools = deskTools(),
            .files = machine.files,
            .makeBackups = [this] { return makeBackups(); },
            .library = [this] { return machine.settings.DbName(); },
            .dataFolder = machine.paths.GetConfigPath()};
}

CheckDeskParts SafetyWing::checkParts()
{
    return {.tools = deskTools(),
            .makeCheck = [this] { return makeCheck(); },
            .rebuildTrees = [this] { suite.commands.rebuildTrees(); },
            .checked =
                [this](qint64 findings) {
                    keepLastCheck(machine.settings, machine.settings.DbName(),
                                  {machine.clock.now(), findings});
                }};
}

std::shared_ptr<Backups> SafetyWing::makeBackups()
{
    const QString library = machine.settings.DbName();
    const QString folder = machine.paths.GetConfigPath();
    const auto tools = std::make_shared<BackupTools>(
        Backups::Place{library, folder, databaseLevelOfThisRelease()},
        jobLockFile(machine.files, {machine.environment.runtimeFolder(), folder}, u"backup"_s,
                    library));
    return {tools, &tools->backups};
}

std::shared_ptr<LibraryCheck> SafetyWing::makeCheck()
{
    LibraryCheck::Place place{.library = machine.settings.DbName(),
                              .dataFolder = machine.paths.GetConfigPath(),
                              .restName = machine.texts.text(u"check.rest")};
    // One that cannot be read has no lists; the check tells why.
    quietly(machine.log(), u"Check"_s, [&] {
        const auto database = machine.engine->OpenDatabase(place.library);
        place.listFiles =
            StorePlaylists(*machine.engine, machine.settings, machine.files, machine.texts)
                .places(*database);
    });
    const auto tools = std::make_shared<CheckTools>(std::move(place));
    return {tools, &tools->check};
}

std::unique_ptr<ProgressWindow> SafetyWing::openProgress(const QString& title)
{
    return std::make_unique<StatusProgress>(
        std::make_unique<ProgressDialog>(title, machine.texts.text(u"m3u.cancel"_s)),
        desk.window.status());
}

/// The player hears it, programs behind the console see the library lent, and the window lets go
/// of it as for any other program.
void SafetyWing::takeLibrary()
{
    (void)suite.suite.sendToPlayer(message::kReleaseDatabase);
    toWindow(message::kReleaseDatabase);
}

void SafetyWing::giveLibrary()
{
    toWindow(message::kReconnectDatabase);
    (void)suite.suite.sendToPlayer(message::kReconnectDatabase);
    toWindow(message::kDatabaseChanged);
}

void SafetyWing::showBackups()
{
    BackupsDialog(backups, desk.skin, desk.icons).run();
}

CareCommands SafetyWing::commands()
{
    return {{u"mnuBackups"_s, [this] { showBackups(); }},
            {u"mnuCheckLibrary"_s, [this] { checks.check(); }}};
}

void SafetyWing::begin(bool lastRunDied)
{
    startTimer->start();
    if (lastRunDied) {
        checks.checkBehind();
    }
}

bool SafetyWing::rescue(const OpenFault& fault, const QString& reason)
{
    switch (fault.number) {
    case dberror::kCorrupt:
    case dberror::kUnrecognisedFormat:
    case dberror::kFileNotFound:
        machine.engine->Release(machine.settings.DbName());
        return backups.rescue(reason);
    default:
        return false;
    }
}

} // namespace melovane
