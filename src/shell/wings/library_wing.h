#pragma once

#include "library/mp3db.h"
#include "shell/mlvdb_parts.h"
#include "views/layout_files.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// The library view.
struct LibraryWing
{
    LibraryWing(Machine& machine, Desk& desk, SuiteWing& suite, ListsWing& lists);

    /// What the main window asks of the view.
    [[nodiscard]] LibraryCommands commands();

    /// `frmEditGrid` for its grid. True when another layout was written.
    [[nodiscard]] bool editLayout();

    Desk& desk;
    LayoutFiles layouts;
    ctl_MP3DB view;
};

} // namespace melovane
