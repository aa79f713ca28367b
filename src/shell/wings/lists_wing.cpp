#include "shell/wings/lists_wing.h"

#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

ListsWing::ListsWing(Machine& machine, SuiteWing& suite)
    : history(*machine.engine, machine.files, machine.clock, machine.settings, machine.log())
    , functions({.engine = *machine.engine,
                 .settings = machine.settings,
                 .files = machine.files,
                 .locator = machine.locator,
                 .history = history,
                 .sink = suite.toUser(machine)},
                machine.clock)
    , snapshots(machine.files, machine.paths.programFolder())
    , edits(*machine.engine, snapshots, history)
    , m3u({.engine = *machine.engine,
           .settings = machine.settings,
           .files = machine.files,
           .locator = machine.locator,
           .reader = tagReader,
           .clock = machine.clock,
           .history = history,
           .snapshots = snapshots,
           .logFolders = {machine.paths.programFolder(), machine.paths.GetConfigPath()}})
{
    history.setBegunAnew([&machine, &suite](const QString& kept) {
        suite.showStatusText(machine.texts.text(u"history.anew", kept));
    });
    machine.data.whenKeptAside = [&machine, &suite](const QString& kept) {
        suite.showStatusText(machine.texts.text(u"sidefile.anew", kept));
    };
}

} // namespace melovane
