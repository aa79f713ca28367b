#include "views/grid_rows.h"

#include "platform/controls/grid_control.h"
#include "platform/db/db_error.h"

#include <algorithm>

namespace melovane {

GridRows::GridRows(DBEngine& engine, GridControl& grid, GridRowsOptions options)
    : m_grid(grid)
    , m_options(std::move(options))
    , m_data(engine)
    , m_kept(grid, m_data)
{}

void GridRows::show(const QString& statement)
{
    const QString former = m_data.RecordSource();
    m_data.SetRecordSource(statement);
    try {
        read();
    } catch (const DbError&) {
        // The rows of the former statement are still there; so a second try is no repetition.
        m_data.SetRecordSource(former);
        throw;
    }
}

void GridRows::read()
{
    m_data.Refresh();
    if (m_options.readsAll && m_options.readsAll()) {
        m_data.Recordset()->MoveLast();
        m_data.Recordset()->MoveFirst();
    }
    m_clone = m_data.Recordset()->Clone();
    ++m_reading;
}

void GridRows::clear()
{
    m_clone.reset();
    m_data.SetRecordSource({});
    m_data.closeDatabase();
}

void GridRows::changeDatabase(const QString& name)
{
    if (name != m_data.DatabaseName()) {
        m_clone.reset();
    }
    m_data.SetDatabaseName(name);
}

Value GridRows::cell(qint64 row, QStringView field) const
{
    const Recordset* const set = m_data.Recordset();
    const int column = set ? set->fieldIndex(field) : -1;
    return column >= 0 && row >= 0 && row < count() ? m_data.cell(row, column) : Value();
}

Value GridRows::current(QStringView field) const
{
    return cell(m_grid.currentRow(), field);
}

qint64 GridRows::rowOf(QStringView field, qint64 number) const
{
    if (!m_clone) {
        return -1;
    }
    const auto rows = m_clone->Clone();
    const int column = rows->fieldIndex(field);
    for (rows->MoveFirst(); column >= 0 && !rows->Eof(); rows->MoveNext()) {
        if (rows->value(column).toInt64() == number) {
            return rows->AbsolutePosition();
        }
    }
    return -1;
}

QStringList GridRows::texts(QStringView field) const
{
    QStringList result;
    if (!m_clone) {
        return result;
    }
    const auto rows = m_clone->Clone();
    const int column = rows->fieldIndex(field);
    for (rows->MoveFirst(); column >= 0 && !rows->Eof(); rows->MoveNext()) {
        result.append(rows->value(column).toText());
    }
    return result;
}

GridRows::Place GridRows::place() const
{
    Place place;
    place.row = m_grid.currentRow();
    place.top = m_grid.firstVisibleRow();
    // The former rows still know where a track stood when the new ones are there.
    place.former = m_clone ? m_clone->Clone() : nullptr;
    for (const RowRange& range : m_grid.selection()) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            if (place.selected.size() == kMaxKeptSelected) {
                place.selected.clear();
                return place;
            }
            place.selected.push_back(row);
        }
    }
    return place;
}

/// Where the record of a former row stands now, or -1.
qint64 GridRows::rowNow(const Place& place, qint64 row) const
{
    if (!place.former || !m_clone || row < 0 || row >= place.former->rowCount()) {
        return -1;
    }
    place.former->SetAbsolutePosition(row);
    return m_clone->rowOfSame(*place.former, place.former->bookmark());
}

void GridRows::restore(const Place& place, Stays stays)
{
    const qint64 found = rowNow(place, place.row);
    if (stays == Stays::Screen) {
        const qint64 wanted = found >= 0 ? found : std::min(place.row, count() - 1);
        if (wanted >= 0) {
            m_grid.goToRow(wanted, place.top);
        }
    } else if (found >= 0) {
        m_data.Recordset()->SetAbsolutePosition(found);
        m_grid.goToRow(found, found - (place.row - place.top));
    }
}

void GridRows::restoreSelection(const Place& place)
{
    if (place.selected.size() < 2 || !place.former || place.row < 0) {
        return;
    }
    std::vector<RowRange> rows;
    for (const qint64 row : place.selected) {
        const qint64 found = rowNow(place, row);
        if (found >= 0) {
            rows.push_back({found, found});
        }
    }
    m_grid.select(rows);
}

void GridRows::disconnect()
{
    if (!m_connected) {
        return;
    }
    m_kept.StartPosition();
    m_keptNumber = m_options.key.isEmpty() ? 0 : current(m_options.key).toInt64();
    m_keptTop = m_grid.firstVisibleRow();
    m_connected = false;
    m_clone.reset();
    m_data.closeDatabase();
}

void GridRows::reconnect(const QString& databaseName)
{
    if (m_connected) {
        return;
    }
    m_data.SetDatabaseName(databaseName);
    if (!m_data.RecordSource().isEmpty()) {
        read();
        returnToKept();
    }
    m_connected = true;
}

void GridRows::returnToKept()
{
    if (m_options.key.isEmpty()) {
        m_kept.Reposition();
        return;
    }
    const qint64 row = m_keptNumber != 0 ? rowOf(m_options.key, m_keptNumber) : -1;
    if (row >= 0) {
        m_grid.goToRow(row, m_keptTop);
    }
}

} // namespace melovane
