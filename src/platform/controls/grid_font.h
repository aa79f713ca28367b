#pragma once

#include <QString>

namespace melovane {

/// Font and row height of grids and trees.
struct GridFont
{
    QString name; ///< a font that is not installed gives that of the desktop
    int size = 9; ///< points
    bool bold = false;
    int rowSpacing = 0; ///< units added to the height of each row

    bool operator==(const GridFont&) const = default;
};

} // namespace melovane
