#pragma once

#include "platform/controls/grid_font.h"

#include <QFont>

namespace melovane {

/// The font that a view shows for one of the settings: that of the program where the name is not
/// installed or the size is none.
[[nodiscard]] QFont toQFont(const GridFont& wanted);

/// Its row spacing within what still looks like a row: 0 to 200 units.
[[nodiscard]] int clampedSpacing(const GridFont& wanted);

} // namespace melovane
