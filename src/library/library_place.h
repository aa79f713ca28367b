#pragma once

#include <QString>

namespace melovane {

class ctl_MP3DB;
class GridControl;
class SearchBox;

/// Where a user is in the library view, as lines of text that a file keeps from one run to the
/// next. A line that is not understood leads nowhere; the library may have changed since.
namespace libraryplace {

/// Which tracks are shown: a search, the node of a tree, the deleted or the missing ones. Empty
/// when nothing was asked for yet.
[[nodiscard]] QString tracks(const ctl_MP3DB& view, const SearchBox& search);
void showTracks(ctl_MP3DB& view, SearchBox& search, const QString& line);

/// The column that the rows are sorted by, and whether they fall.
[[nodiscard]] QString sorting(const ctl_MP3DB& view);
void sort(ctl_MP3DB& view, const GridControl& grid, const QString& line);

} // namespace libraryplace

/// The current row of a grid and the first one on its screen; empty without a current row.
[[nodiscard]] QString rowPlace(const GridControl& grid);
/// \param count rows that there are; a row behind them leaves the grid as it is
void goToRowPlace(GridControl& grid, qint64 count, const QString& line);

} // namespace melovane
