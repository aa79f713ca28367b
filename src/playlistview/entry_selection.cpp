#include "playlistview/entry_selection.h"

#include "platform/controls/grid_control.h"
#include "views/grid_rows.h"

#include <QSet>

#include <functional>

namespace melovane {

namespace {

void selectMeant(GridControl& grid,
                 const GridRows& rows,
                 const std::function<bool(qint64 entry)>& isMeant)
{
    if (!rows.isRead()) {
        return;
    }
    std::vector<RowRange> found;
    const auto walk = rows.walker().Clone();
    const int column = walk->fieldIndex(u"PLID");
    qint64 row = 0;
    for (walk->MoveFirst(); !walk->Eof(); walk->MoveNext(), ++row) {
        if (!isMeant(walk->value(column).toInt64())) {
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

} // namespace

void selectEntries(GridControl& grid, const GridRows& rows, const std::vector<Plid>& entries)
{
    if (entries.empty()) {
        return;
    }
    QSet<qint64> wanted;
    for (const Plid entry : entries) {
        wanted.insert(numberOf(entry));
    }
    selectMeant(grid, rows, [&](qint64 entry) { return wanted.contains(entry); });
}

void selectNewerEntries(GridControl& grid, const GridRows& rows, Plid entry)
{
    selectMeant(grid, rows, [&](qint64 other) { return other > numberOf(entry); });
}

} // namespace melovane
