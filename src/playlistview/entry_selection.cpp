#include "playlistview/entry_selection.h"

#include "platform/controls/grid_control.h"
#include "views/grid_rows.h"

#include <QSet>

namespace melovane {

void selectEntries(GridControl& grid, const GridRows& rows, const std::vector<Plid>& entries)
{
    if (entries.empty() || !rows.isRead()) {
        return;
    }
    QSet<qint64> wanted;
    for (const Plid entry : entries) {
        wanted.insert(numberOf(entry));
    }
    std::vector<RowRange> found;
    const auto walk = rows.walker().Clone();
    const int column = walk->fieldIndex(u"PLID");
    qint64 row = 0;
    for (walk->MoveFirst(); !walk->Eof(); walk->MoveNext(), ++row) {
        if (!wanted.contains(walk->value(column).toInt64())) {
            continue;
        }
        if (!found.empty() && found.back().last == row - 1) {
            found.back().last = row;
        } else {
            found.push_back({row, row});
        }
    }
    if (!found.empty()) {
        grid.goToRow(found.front().first, grid.firstVisibleRow());
        grid.select(found);
    }
}

} // namespace melovane
