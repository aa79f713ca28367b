#include "shell/wings/lists_wing.h"

#include "shell/wings/machine.h"

namespace melovane {

ListsWing::ListsWing(Machine& machine)
    : history(*machine.engine, machine.files, machine.clock, machine.settings, machine.log())
    , functions({.engine = *machine.engine,
                 .settings = machine.settings,
                 .files = machine.files,
                 .locator = machine.locator,
                 .history = history,
                 .sink = machine.log()},
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
{}

} // namespace melovane
