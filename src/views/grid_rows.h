#pragma once

#include "platform/db/data_control.h"
#include "platform/db/recordset.h"
#include "views/grid_reposition.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class GridControl;
struct RowRange;

/// What sets the rows of one grid apart from those of another.
struct GridRowsOptions
{
    /// Column of numbers by which the current row is found again when the file comes back; without
    /// one, the place of the row counts.
    QString key = {};
    /// Asked at each reading: whether all rows are read at once. Without it they are read as
    /// needed.
    std::function<bool()> readsAll = {};
};

/// The rows behind a grid, and the user's place among them.
///
/// Reading rows anew takes the place from a grid: keep a Place before, and restore it afterwards.
/// While another program has the file alone there are no rows. The grid outlives this.
class GridRows
{
public:
    /// What stays when rows are read anew.
    enum class Stays
    {
        Track, ///< the current track at its place on the screen; one that is gone changes nothing
        Screen ///< the first row on the screen; a current row that is gone passes on to the next
               ///< one
    };

    /// Where the user stood. Only for the rows that it was taken from, and for those that come
    /// next.
    struct Place
    {
        qint64 row = -1;
        qint64 top = 0;
        std::vector<qint64> selected; ///< empty when more than kMaxKeptSelected were
        std::unique_ptr<Recordset> former;
    };

    /// Selected rows that are looked for in a new order, each in all its rows; of more only the
    /// current one stays selected.
    static constexpr size_t kMaxKeptSelected = 500;

    GridRows(DBEngine& engine, GridControl& grid, GridRowsOptions options = {});

    /// What the grid paints; hand it to the grid.
    [[nodiscard]] DataControl& data() { return m_data; }

    [[nodiscard]] const DataControl& data() const { return m_data; }

    /// The open connection, or null.
    [[nodiscard]] Database* database() const { return m_data.Database(); }

    // -- Reading --

    /// Reads the rows of a statement. When that fails the former rows stay, and their statement.
    /// \throws DbError
    void show(const QString& statement);

    /// Reads the rows of the present statement anew. \throws DbError, the former rows stay
    void read();

    /// No rows and no statement, and the file is let go.
    void clear();

    /// No rows before the next reading, which is done in this file.
    void changeDatabase(const QString& name);

    /// Counts the readings, so that others can tell whether what they know of the rows is old.
    [[nodiscard]] int reading() const { return m_reading; }

    // -- Cells --

    /// False before the first reading, and as long as the file is away.
    [[nodiscard]] bool isRead() const { return m_clone != nullptr; }

    [[nodiscard]] qint64 count() const { return m_data.rowCount(); }

    /// A set over the same rows whose place is nobody's; only while isRead().
    [[nodiscard]] Recordset& walker() const { return *m_clone; }

    /// Null for a row or field that is not there.
    [[nodiscard]] Value cell(qint64 row, QStringView field) const;
    /// The same of the current row.
    [[nodiscard]] Value current(QStringView field) const;
    /// The first row with a number in a column, or -1.
    [[nodiscard]] qint64 rowOf(QStringView field, qint64 number) const;
    /// A column from the first row to the last; nothing for a field that is not there.
    [[nodiscard]] QStringList texts(QStringView field) const;

    // -- The user's place --

    /// Every column of the grid can be clicked for sorting.
    void SetAllSortButton() { m_kept.SetAllSortButton(); }

    [[nodiscard]] Place place() const;
    /// Back to a place. \throws DbError
    void restore(const Place& place, Stays stays);
    /// Selects the rows again that were, when there were several. \throws DbError
    void restoreSelection(const Place& place);

    // -- Another program wants the file alone --

    /// False from disconnect() to a reconnect() that went well.
    [[nodiscard]] bool isConnected() const { return m_connected; }

    /// Keeps the place and lets go of the file.
    void disconnect();

    /// Reads the statement, if there is one, and goes back to the place. Nothing while connected.
    /// \throws DbError, still disconnected: a later call takes the file back
    void reconnect(const QString& databaseName);

private:
    [[nodiscard]] qint64 rowNow(const Place& place, qint64 row) const;
    void returnToKept();

    GridControl& m_grid;
    GridRowsOptions m_options;
    DataControl m_data;
    TDBGIDReposition m_kept; ///< from disconnect() to reconnect()
    std::unique_ptr<Recordset> m_clone;
    int m_reading = 0;
    bool m_connected = true;
    qint64 m_keptNumber = 0; ///< of the key column, while the file is away
    qint64 m_keptTop = 0;    ///< likewise the first row on the screen
};

} // namespace melovane
