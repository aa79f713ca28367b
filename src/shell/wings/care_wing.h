#pragma once

#include "shell/mlvdb_parts.h"
#include "shell/wings/cleaning_wing.h"
#include "shell/wings/found_wing.h"
#include "shell/wings/health_wing.h"
#include "shell/wings/safety_wing.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// The care of the library: missing files, cleaning, doubles, backups, checks.
struct CareWing
{
    CareWing(Machine& machine, Desk& desk, SuiteWing& suite, ListsWing& lists);

    /// What the menu entries of the care do.
    [[nodiscard]] CareCommands commands();

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    ListsWing& lists;
    CleaningWing cleaning;
    FoundWing found;
    SafetyWing safety;
    HealthWing health;
};

} // namespace melovane
