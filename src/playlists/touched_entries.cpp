#include "playlists/touched_entries.h"

#include "playlists/playlist_table.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// An entry that stands at another position of its list.
struct Shift
{
    Plid entry{};
    qint64 from = 0;
    qint64 to = 0;
};

/// Those that left the order of the others: all but the longest run that is still in order.
std::vector<Plid> outOfOrder(std::vector<Shift> shifts)
{
    std::sort(shifts.begin(), shifts.end(), [](const Shift& one, const Shift& two) {
        return std::pair(one.from, one.to) < std::pair(two.from, two.to);
    });
    constexpr size_t kNone = size_t(-1);
    std::vector<size_t> ends; // of the runs by their length: the one with the lowest position
    std::vector<size_t> former(shifts.size(), kNone);
    for (size_t i = 0; i < shifts.size(); ++i) {
        const auto place = std::lower_bound(
            ends.begin(), ends.end(), shifts[i].to,
            [&](size_t end, qint64 position) { return shifts[end].to < position; });
        former[i] = place == ends.begin() ? kNone : *(place - 1);
        if (place == ends.end()) {
            ends.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> inOrder(shifts.size(), false);
    for (size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = former[i]) {
        inOrder[i] = true;
    }
    std::vector<Plid> moved;
    for (size_t i = 0; i < shifts.size(); ++i) {
        if (!inOrder[i]) {
            moved.push_back(shifts[i].entry);
        }
    }
    return moved;
}

/// The shift of a row that has only another position.
std::optional<Shift> shiftOf(const RowChange& row, int positionColumn)
{
    if (row.columns != std::vector<int>{positionColumn}) {
        return {};
    }
    return Shift{Plid(row.key), row.before.front().toInt64(), row.after.front().toInt64()};
}

} // namespace

std::vector<Plid> touchedEntries(const ListDelta& delta)
{
    std::vector<Plid> added;
    std::vector<Plid> altered;
    std::vector<Shift> shifts;
    bool anyGone = false;
    for (const TableDelta& table : delta) {
        if (table.table != kEntryTable) {
            continue;
        }
        const auto column =
            std::find_if(table.columns.cbegin(), table.columns.cend(), [](const QString& name) {
                return name.compare("SID"_L1, Qt::CaseInsensitive) == 0;
            });
        const auto position = int(column - table.columns.cbegin());
        for (const RowChange& row : table.rows) {
            const auto shift = shiftOf(row, position);
            if (row.kind == RowChange::Kind::Added) {
                added.push_back(Plid(row.key));
            } else if (row.kind == RowChange::Kind::Removed) {
                anyGone = true;
            } else if (shift) {
                shifts.push_back(*shift);
            } else {
                altered.push_back(Plid(row.key));
            }
        }
    }
    if (!added.empty()) {
        return added;
    }
    if (anyGone) {
        return {};
    }
    return altered.empty() ? outOfOrder(std::move(shifts)) : altered;
}

} // namespace melovane
