#include "shell/wings/suite_wing.h"

#include "bus/event_guard.h"
#include "bus/message_journal.h"
#include "bus/message_names.h"
#include "platform/db/fault_of_text.h"
#include "platform/linux/write_access.h"
#include "shell/mlvdb_parts.h"
#include "shell/wings/machine.h"

namespace melovane {

namespace {

/// What has failed, in the user's language. Quiet operations hand over the engine's own sentence.
QString reasonOf(const QString& what, const Machine& machine)
{
    const int number = errorNumberOf(what);
    if (number == 0) {
        return what;
    }
    const QString other = machine.texts.text(u"dberror.other", number);
    return databaseFaultText(machine.texts, number, other, machine.settings.DbName())
        .replace(u'\n', u' ');
}

} // namespace

SuiteWing::SuiteWing(Machine& machine)
    : bus(machine.paths, machine.files, machine.clock)
    , sender(bus, kMainWindowName.toString())
    , message(std::make_unique<JournalControl>(machine.messages.makeControl(), machine.clock))
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
    , jobs(bus, machine.settings, machine.messages, siblings)
    , viewer(bus, machine.settings, machine.messages, machine.loop)
{}

ErrorSink SuiteWing::toUser(Machine& machine)
{
    return [this, &machine, log = machine.log()](const QString& where, const QString& what) {
        log(where, what);
        showStatusText(machine.texts.text(u"status.notdone", reasonOf(what, machine)));
    };
}

CommandWorld SuiteWing::world(const Machine& machine)
{
    return {.isInstalled = [this](const QString& program) { return siblings.isInstalled(program); },
            .isRunning = [this](const QString& program) { return suite.isRunning(program); },
            .isPlayerThere =
                [this] {
                    return suite.playerIsAlive() ||
                           siblings.isInstalled(QStringLiteral("MelovaneDJ"));
                },
            .isReadOnly = [&machine] { return !canWriteDatabase(machine.settings.DbName()); }};
}

void SuiteWing::showStatusText(const QString& text)
{
    sender.SendMessage(bus::kShowStatusText, text);
}

} // namespace melovane
