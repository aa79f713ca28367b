#include "shell/wings/care_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

CareWing::CareWing(Machine& base, Desk& room, SuiteWing& talk, ListsWing& steps)
    : machine(base)
    , desk(room)
    , suite(talk)
    , lists(steps)
    , cleaning(base,
               room,
               talk,
               [this] { return safety.backups.makeBefore(BackupOccasion::Cleaning); })
    , found(base,
            room,
            talk,
            steps,
            cleaning.recycler(),
            [this](BackupOccasion occasion) { return safety.backups.makeBefore(occasion); })
    , safety(base, room, talk)
    , health(base, room, talk, safety)
{}

CareCommands CareWing::commands()
{
    CareCommands all;
    all.insert(cleaning.commands());
    all.insert(safety.commands());
    all.insert(found.commands());
    all.insert(health.commands());
    return all;
}

} // namespace melovane
