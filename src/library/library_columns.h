#pragma once

#include "platform/controls/grid_control.h"

#include <vector>

namespace melovane {

/// The columns of the library grid in their first order, with German headings: those that a DJ
/// looks at shown, all others of `db_all` there but hidden.
[[nodiscard]] std::vector<GridColumn> libraryColumns();

} // namespace melovane
