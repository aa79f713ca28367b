#include "shell/wings/suite_wing.h"

#include "bus/message_names.h"
#include "shell/mlvdb_parts.h"
#include "shell/wings/machine.h"

namespace melovane {

SuiteWing::SuiteWing(Machine& machine)
    : bus(machine.paths, machine.files, machine.clock)
    , sender(bus, kMainWindowName.toString())
    , message(machine.messages.makeControl())
    , playlistMessage(machine.messages.makeControl())
    , suite(machine.settings, *machine.engine, machine.messages, *message, toUser(machine))
    , siblings(machine.paths, machine.files, machine.processes)
    , commands(siblings, machine.texts, [this](const QString& text) { showStatusText(text); })
    , sampleTool(
          {.files = machine.files,
           .dataFolder = machine.paths.GetConfigPath(),
           .programFolder = machine.paths.programFolder(),
           .suite = suite,
           .siblings = siblings,
           .tellMissing = [this](const QString& program) { commands.tellUnless(false, program); }})
{}

ErrorSink SuiteWing::toUser(Machine& machine)
{
    return [this, &machine, log = machine.log()](const QString& where, const QString& what) {
        log(where, what);
        showStatusText(machine.texts.text(u"status.notdone", what));
    };
}

void SuiteWing::showStatusText(const QString& text)
{
    sender.SendMessage(bus::kShowStatusText, text);
}

} // namespace melovane
