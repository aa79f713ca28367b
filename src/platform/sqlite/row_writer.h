#pragma once

#include "platform/sqlite/row_set.h"

#include <map>

namespace melovane::sqlite {

/// The row that AddNew or Edit started: what was set so far, and how it reaches the tables.
///
/// A column can be set when it is a plain column of a table of the set. The same base column may
/// stand in a set twice under two names; both show what was set last.
class RowWriter
{
public:
    /// \param set a keyed set
    explicit RowWriter(const RowSet& set)
        : m_set(set)
    {}

    /// \throws DbError kReadOnly, kTypeMismatch, kFieldTooSmall
    void set(int column, const Value& value, bool isNew);

    /// The value that was set, if any.
    [[nodiscard]] std::optional<Value> pending(int column) const;

    struct Added
    {
        int table = 0;
        qint64 key = 0;
    };

    /// Writes a new row into the one table whose columns were set.
    Added insert(Session& session) const;

    /// Writes what was set into the row at the index. \throws DbError kRecordDeleted
    void update(Session& session, qint64 index) const;

    /// Deletes the row from the table of its first key. \throws DbError kRecordDeleted
    static void remove(Session& session, const RowSet& set, qint64 index);

private:
    using Columns = std::map<QString, Value>; ///< by column name of the table

    [[nodiscard]] const BaseTable& tableOf(int table) const;
    void updateTable(Session& session, int table, qint64 key, const Columns& columns) const;

    const RowSet& m_set;
    std::map<int, Columns> m_pending; ///< by table
};

} // namespace melovane::sqlite
