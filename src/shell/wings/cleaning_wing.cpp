#include "shell/wings/cleaning_wing.h"

#include "bus/event_guard.h"
#include "bus/message_names.h"
#include "care/ber_db.h"
#include "care/recycler.h"
#include "care/ui/ber_db_dialog.h"
#include "care/ui/recycler_dialog.h"
#include "platform/controls/status_progress.h"
#include "platform/linux/files_in.h"
#include "platform/linux/system_names.h"
#include "platform/qt/progress_dialog.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

#include <QDir>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Work that a disk does not answer may outlive the console.
const Clock& clockOfWorkers()
{
    static const SystemClock clock;
    return clock;
}

} // namespace

CleaningWing::CleaningWing(Machine& base, Desk& room, SuiteWing& talk, std::function<bool()> before)
    : machine(base)
    , desk(room)
    , suite(talk)
    , backUp(std::move(before))
    , missing(missingParts())
{}

BesideTools CleaningWing::beside() const
{
    return {.makeEngine = [] { return sqlite::makeEngine(clockOfWorkers()); },
            .makeFiles = [] { return std::make_unique<LinuxFiles>(); },
            .filesIn = filesIn};
}

MissingFilesParts CleaningWing::missingParts()
{
    return {
        .engine = *machine.engine,
        .settings = machine.settings,
        .texts = machine.texts,
        .files = machine.files,
        .warnings = desk.warnings,
        .wait = wait,
        .beside = beside(),
        .dataFolder = machine.paths.GetConfigPath(),
        .openProgress =
            [this](const QString& title) {
                return std::make_unique<StatusProgress>(
                    std::make_unique<ProgressDialog>(title, machine.texts.text(u"m3u.cancel"_s)),
                    desk.window.status());
            },
        .tell = [this](const QString& text) { suite.showStatusText(text); },
        .changed = [this] { libraryChanged(); },
        .rebuildTrees = [this] { suite.commands.rebuildTrees(); }};
}

RecycleTools CleaningWing::recycler() const
{
    return {.makeFiles = [] { return std::make_unique<LinuxFiles>(); },
            .clock = clockOfWorkers(),
            .dataFolder = machine.paths.GetConfigPath(),
            .homeFolder = QDir::homePath(),
            .systemName = linuxnames::systemPath};
}

void CleaningWing::clean()
{
    BerDbDialog dialog(machine.texts, desk.icons);
    frmBerDB cleaning({.engine = *machine.engine,
                       .settings = machine.settings,
                       .texts = machine.texts,
                       .clock = machine.clock,
                       .loop = machine.loop,
                       .wait = wait,
                       .worker = m_worker,
                       .makeEngine = beside().makeEngine,
                       .recycler = recycler(),
                       .backUp = backUp,
                       .changed = [this] { libraryChanged(); },
                       .rebuildTrees = [this] { suite.commands.rebuildTrees(); },
                       .failed = [this](const DbError& error) { return failureText(error); }},
                      dialog);
    dialog.attach(cleaning);
    cleaning.Show();
    dialog.exec();
}

void CleaningWing::bringBack()
{
    RecyclerDialog dialog(machine.texts, desk.skin);
    Recycler bin({.engine = *machine.engine,
                  .settings = machine.settings,
                  .texts = machine.texts,
                  .loop = machine.loop,
                  .wait = wait,
                  .tools = recycler(),
                  .changed = [this] { libraryChanged(); },
                  .rebuildTrees = [this] { suite.commands.rebuildTrees(); },
                  .failed = [this](const DbError& error) { return failureText(error); }},
                 dialog);
    dialog.attach(bin);
    bin.Show();
    dialog.exec();
}

QString CleaningWing::failureText(const DbError& error)
{
    machine.log()(u"CleaningWing"_s, error.text());
    return databaseFaultText(machine.texts, error.number(), error.text(),
                             machine.settings.DbName());
}

void CleaningWing::libraryChanged()
{
    suite.sender.SendMessage(bus::kDbChange);
    suite.sender.SendMessage(bus::kRefreshAll);
}

CareCommands CleaningWing::commands()
{
    return {{u"mnuNoExistSuchen"_s, [this] { missing.Scan(); }},
            {u"mnuDatenbereinigung"_s, [this] { clean(); }},
            {u"mnuRecycler"_s, [this] { bringBack(); }}};
}

} // namespace melovane
