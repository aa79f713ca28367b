#include "shell/wings/health_wing.h"

#include "bus/message_journal.h"
#include "care/health.h"
#include "care/ui/health_dialog.h"
#include "platform/linux/process_name.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/safety_wing.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList journalOf(const KSMessage& control)
{
    const auto* const journal = dynamic_cast<const JournalControl*>(&control);
    return journal == nullptr ? QStringList() : journal->lines();
}

} // namespace

HealthWing::HealthWing(Machine& base, Desk& room, SuiteWing& talk, SafetyWing& care)
    : machine(base)
    , desk(room)
    , suite(talk)
    , safety(care)
{}

void HealthWing::show()
{
    const HealthParts parts{.texts = machine.texts,
                            .settings = machine.settings,
                            .paths = machine.paths,
                            .files = machine.files,
                            .engine = *machine.engine,
                            .clock = machine.clock,
                            .runtimeFolder = machine.environment.runtimeFolder(),
                            .programs =
                                [this] {
                                    std::vector<LiveProgram> found;
                                    for (const LiveControl& control :
                                         machine.messages.liveControls()) {
                                        found.push_back({control.handle, control.process,
                                                         processName(control.process)});
                                    }
                                    return found;
                                },
                            .messages = [this] { return journalOf(*suite.message); },
                            .backups = [this] { return safety.backups.list(); }};
    HealthDialog(machine.texts, desk.icons, [&parts] { return healthOf(parts); }).run();
}

CareCommands HealthWing::commands()
{
    return {{u"mnuHealth"_s, [this] { show(); }}};
}

} // namespace melovane
