#include "playlists/list_delta.h"

#include <algorithm>
#include <utility>

namespace melovane {

namespace {

/// The key of a track is a number written as text, and longer than a number at a text's beginning.
qint64 keyOf(const std::vector<Value>& row)
{
    return row.front().isText() ? row.front().toText().toLongLong() : row.front().toInt64();
}

void keepDifferences(const std::vector<int>& columns,
                     const std::vector<Value>& before,
                     const std::vector<Value>& after,
                     RowChange& change)
{
    for (size_t i = 0; i < before.size(); ++i) {
        if (before[i] != after[i]) {
            change.columns.push_back(columns[i]);
            change.before.push_back(before[i]);
            change.after.push_back(after[i]);
        }
    }
}

std::vector<int> allColumns(size_t count)
{
    std::vector<int> columns(count);
    for (size_t i = 0; i < count; ++i) {
        columns[i] = int(i);
    }
    return columns;
}

} // namespace

ListDelta inverse(const ListDelta& delta)
{
    ListDelta result = delta;
    std::reverse(result.begin(), result.end());
    for (TableDelta& table : result) {
        for (RowChange& row : table.rows) {
            std::swap(row.before, row.after);
            if (row.kind != RowChange::Kind::Altered) {
                row.kind = row.kind == RowChange::Kind::Added ? RowChange::Kind::Removed
                                                              : RowChange::Kind::Added;
            }
        }
    }
    return result;
}

DeltaMaker::DeltaMaker(QString table, QStringList columns)
    : m_table(std::move(table))
    , m_columns(std::move(columns))
{}

DeltaMaker::Note& DeltaMaker::noteOf(qint64 key)
{
    const auto place = m_places.constFind(key);
    if (place != m_places.cend()) {
        return m_notes[*place];
    }
    m_places.insert(key, m_notes.size());
    m_notes.push_back({key, {}, {}, {}});
    return m_notes.back();
}

void DeltaMaker::before(const std::vector<Value>& row)
{
    Note& note = noteOf(keyOf(row));
    if (note.before.empty()) {
        note.before = row;
    }
}

void DeltaMaker::after(const std::vector<Value>& row)
{
    noteOf(keyOf(row)).after = row;
}

void DeltaMaker::cell(qint64 key, int column, const Value& from, const Value& to)
{
    Note& note = noteOf(key);
    const auto known = std::find(note.cells.begin(), note.cells.end(), column);
    if (known != note.cells.end()) {
        note.after[size_t(known - note.cells.begin())] = to;
        return;
    }
    note.cells.push_back(column);
    note.before.push_back(from);
    note.after.push_back(to);
}

TableDelta DeltaMaker::finish() const
{
    TableDelta delta{m_table, m_columns, {}};
    for (const Note& note : m_notes) {
        RowChange change;
        change.key = note.key;
        if (note.before.empty() || note.after.empty()) {
            change.kind = note.before.empty() ? RowChange::Kind::Added : RowChange::Kind::Removed;
            change.before = note.before;
            change.after = note.after;
        } else {
            keepDifferences(note.cells.empty() ? allColumns(note.before.size()) : note.cells,
                            note.before, note.after, change);
            if (change.columns.empty()) {
                continue;
            }
        }
        delta.rows.push_back(std::move(change));
    }
    return delta;
}

} // namespace melovane
