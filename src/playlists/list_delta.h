#pragma once

#include "platform/db/value.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <vector>

namespace melovane {

/// What became of one row of a table.
struct RowChange
{
    enum class Kind
    {
        Added,
        Removed,
        Altered
    };

    Kind kind = Kind::Altered;
    qint64 key = 0;
    std::vector<int> columns;  ///< of an altered row: which ones; of others empty, meaning all
    std::vector<Value> before; ///< of the columns; empty for an added row
    std::vector<Value> after;  ///< likewise; empty for a removed row

    bool operator==(const RowChange&) const = default;
};

/// What became of the rows of one table.
struct TableDelta
{
    QString table;
    QStringList columns; ///< the key, a whole number, stands first
    std::vector<RowChange> rows;

    bool operator==(const TableDelta&) const = default;
};

/// The difference between a moment and a later one, exact and readable in both directions.
using ListDelta = std::vector<TableDelta>;

/// The way back.
[[nodiscard]] ListDelta inverse(const ListDelta& delta);

/// The form in which a difference is kept in the side file: keep. A line per row, values parted by
/// tabs; numbers, texts and nulls come back as what they were.
[[nodiscard]] QString deltaText(const ListDelta& delta);

/// Nothing for a text that is not whole and sound to its last sign.
[[nodiscard]] std::optional<ListDelta> readDelta(QStringView text);

/// Collects what an edit does to the rows of one table while it does it.
///
/// A row is told either as a whole before and after (`before`, `after`) or cell by cell (`cell`).
class DeltaMaker
{
public:
    DeltaMaker(QString table, QStringList columns);

    [[nodiscard]] const QStringList& columns() const { return m_columns; }

    /// A row as it stood before the edit, in the order of the columns; of several the first counts.
    void before(const std::vector<Value>& row);
    /// A row as it stands now; of several the last counts.
    void after(const std::vector<Value>& row);
    /// One cell's change; of several for a cell the first `from` and the last `to` count.
    void cell(qint64 key, int column, const Value& from, const Value& to);

    /// What really differs, in the order in which the rows were told.
    [[nodiscard]] TableDelta finish() const;

private:
    struct Note
    {
        qint64 key = 0;
        std::vector<Value> before;
        std::vector<Value> after;
        std::vector<int> cells; ///< columns of a row told by cells
    };

    Note& noteOf(qint64 key);

    QString m_table;
    QStringList m_columns;
    std::vector<Note> m_notes;
    QHash<qint64, size_t> m_places;
};

} // namespace melovane
