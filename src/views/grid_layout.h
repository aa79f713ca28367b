#pragma once

#include "platform/controls/grid_control.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace melovane {

/// The columns of a grid as a layout file keeps them.
///
/// One line a column, in the order shown: the name of its field, a bar, "1" or "0" for shown, its
/// width in figures with one decimal, "1" when it takes the free width, and its heading when the
/// user has given it one, parted by bars; a heading may hold bars. The first line names the format.
/// Lines that cannot be read are left out, so a damaged file keeps what is whole.
[[nodiscard]] QByteArray layoutText(const std::vector<GridColumn>& columns);

/// The columns that can be read from any bytes; alignment is not part of a layout. Of two lines for
/// one field the first counts.
[[nodiscard]] std::vector<GridColumn> readLayout(const QByteArray& bytes);

} // namespace melovane
