#include "shell/wings/care_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

CareWing::CareWing(Machine& base, Desk& room, SuiteWing& talk, ListsWing& steps)
    : machine(base)
    , desk(room)
    , suite(talk)
    , lists(steps)
{}

CareCommands CareWing::commands()
{
    return {};
}

} // namespace melovane
