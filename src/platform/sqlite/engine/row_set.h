#pragma once

#include "platform/sqlite/engine/row_pages.h"
#include "platform/sqlite/engine/session.h"
#include "platform/sqlite/index/key_source.h"

namespace melovane::sqlite {

/// The rows behind a recordset and its clones.
///
/// Each row has an index that never changes: rows added later follow at the end, deleted ones keep
/// theirs and are skipped. Position is the row number that a user counts, without deleted rows.
///
/// A set whose statement gives one row per base row ("keyed") holds row ids and fetches rows when
/// they are looked at. Of others all rows are read at once and can only be looked at.
class RowSet
{
public:
    /// Runs the statement. \throws DbError
    RowSet(Session& session,
           std::shared_ptr<const Prepared> statement,
           std::vector<Value> parameters);

    [[nodiscard]] const Prepared& statement() const { return *m_statement; }

    [[nodiscard]] const std::vector<Value>& parameters() const { return m_parameters; }

    [[nodiscard]] const std::vector<ResultColumn>& columns() const
    {
        return m_statement->translation.columns;
    }

    /// Index of a column by name without regard to case, or -1.
    [[nodiscard]] int columnIndex(QStringView name) const
    {
        return m_statement->columns.find(name);
    }

    [[nodiscard]] bool isKeyed() const { return m_statement->translation.keyed; }

    /// Number of indexes, deleted rows included.
    [[nodiscard]] qint64 size() const;

    /// Number of rows, deleted ones left out.
    [[nodiscard]] qint64 count() const { return size() - qint64(m_deleted.size()); }

    [[nodiscard]] bool isDeleted(qint64 index) const;
    [[nodiscard]] qint64 indexAt(qint64 position) const;
    /// -1 for a deleted row and an index outside the set.
    [[nodiscard]] qint64 positionOf(qint64 index) const;
    /// Number of rows that stand before an index.
    [[nodiscard]] qint64 rowsBefore(qint64 index) const;

    /// Row id of a base table, or kNoRow.
    [[nodiscard]] qint64 keyAt(qint64 index, int table) const;

    /// Position of the row with the first base row of row `index` of another set; -1 when there is
    /// none, or the sets begin with different tables.
    [[nodiscard]] qint64 positionOfSame(const RowSet& other, qint64 index) const;

    /// The row, fetched with its neighbours when it is not at hand. Valid until the next call.
    const Row& row(Session& session, qint64 index);

    /// Has the row fetched anew at the next look; in a join also all others, which may show the
    /// same base row.
    void forget(qint64 index);
    void forgetAll();

    /// Takes a row written by this set's owner into the set. \return its index, or -1 when the
    /// statement's join gives no row for it
    qint64 append(Session& session, int table, qint64 key);
    void markDeleted(qint64 index);

    /// To be called around own writes: keeps fetched rows that nobody else has changed.
    void noteOwnWrite(Session& session);

private:
    void readKeys(Session& session, KeyList& keys) const;
    void readRows(Session& session);
    void fetch(Session& session, qint64 index);
    void fetchInto(Statement& statement, qint64 index, Row& row) const;

    std::shared_ptr<const Prepared> m_statement;
    std::vector<Value> m_parameters;
    std::shared_ptr<const KeySource> m_keys;
    KeyList m_added{1};
    std::vector<Row> m_rows;       ///< sets that are not keyed
    std::vector<qint64> m_deleted; ///< indexes, ascending
    RowPages m_pages;
    qint64 m_epoch = 0;
};

} // namespace melovane::sqlite
