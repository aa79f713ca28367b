#include "shell/wings/cleaning_wing.h"

#include "bus/message_names.h"
#include "platform/controls/status_progress.h"
#include "platform/linux/files_in.h"
#include "platform/qt/progress_dialog.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

CleaningWing::CleaningWing(Machine& base, Desk& room, SuiteWing& talk)
    : machine(base)
    , desk(room)
    , suite(talk)
    , missing(missingParts())
{}

BesideTools CleaningWing::beside() const
{
    return {.makeEngine =
                [] {
                    static const SystemClock clock;
                    return sqlite::makeEngine(clock);
                },
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

void CleaningWing::libraryChanged()
{
    suite.sender.SendMessage(bus::kDbChange);
    suite.sender.SendMessage(bus::kRefreshAll);
}

CareCommands CleaningWing::commands()
{
    return {{u"mnuNoExistSuchen"_s, [this] { missing.Scan(); }}};
}

} // namespace melovane
