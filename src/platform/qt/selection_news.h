#pragma once

#include <QItemSelection>

#include <algorithm>

namespace melovane {

/// Whether a screen reader is told of each row of a change of the selection. The table view of the
/// tool kit looks at every cell then: a second and much memory for a million rows. Of a longer
/// change it is told as a whole.
[[nodiscard]] inline bool isToldByRow(const QItemSelection& change)
{
    constexpr int kMaxRows = 200;
    return std::all_of(
               change.begin(), change.end(),
               [](const QItemSelectionRange& range) { return range.height() <= kMaxRows; }) &&
           change.size() <= kMaxRows;
}

} // namespace melovane
