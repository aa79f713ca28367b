#pragma once

#include "shell/mlvdb_parts.h"
#include "trackedit/edit_tag.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// The tag panel.
struct EditWing
{
    EditWing(Machine& machine, Desk& desk, SuiteWing& suite, ListsWing& lists);

    /// What the main window asks of the panel.
    [[nodiscard]] TagPanelCommands commands();

    Desk& desk;
    bool isOfLibrary = true; ///< the view that opened the panel last
    EditTag panel;

private:
    [[nodiscard]] EditTagParts parts(Machine& machine, SuiteWing& suite, ListsWing& lists);
    void focusRows();
};

} // namespace melovane
