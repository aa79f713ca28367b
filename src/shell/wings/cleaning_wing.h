#pragma once

#include "care/missing_files.h"
#include "platform/qt/qt_live_wait.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
struct Machine;
struct SuiteWing;

/// Missing files, cleaning, and the way back from the recycle folder.
struct CleaningWing
{
    CleaningWing(Machine& machine, Desk& desk, SuiteWing& suite);

    /// What their menu entries do.
    [[nodiscard]] CareCommands commands();

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    QtLiveWait wait;
    MissingFiles missing;

private:
    [[nodiscard]] BesideTools beside() const;
    [[nodiscard]] MissingFilesParts missingParts();
    void libraryChanged();
};

} // namespace melovane
