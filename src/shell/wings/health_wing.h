#pragma once

#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
struct Machine;
struct SafetyWing;
struct SuiteWing;

/// One look that tells whether the suite is well.
struct HealthWing
{
    HealthWing(Machine& machine, Desk& desk, SuiteWing& suite, SafetyWing& safety);

    /// What its menu entry does.
    [[nodiscard]] CareCommands commands();

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    SafetyWing& safety;

private:
    void show();
};

} // namespace melovane
