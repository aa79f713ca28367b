#pragma once

#include "platform/sqlite/index/change_log.h"
#include "platform/sqlite/index/index_column_builder.h"
#include "platform/sqlite/index/index_table.h"

#include <memory>

namespace melovane::sqlite {

/// A column to be read.
struct IndexField
{
    QString name; ///< as the catalogue spells it
    bool isText = true;
};

/// What an open database showed when its index was last made sure to be up to date. Equal marks:
/// nobody has changed anything in between.
struct IndexMark
{
    qint64 dataVersion = -1; ///< changes by others
    qint64 ownChanges = -1;  ///< rows changed through this connection
    qint64 catalogue = -1;
    qint64 table = -1; ///< which load of the index it was

    bool operator==(const IndexMark&) const = default;
};

/// An open database as the column index sees it: all that the index asks of the one who searches.
/// Several may share an index, each with a file handle of its own.
///
/// \throws DbError wherever the file is read
class IndexedFile
{
public:
    /// While it lives, all that is read shows one state of the file.
    class Reading
    {
    public:
        Reading() = default;
        virtual ~Reading() = default;
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;
    };

    IndexedFile() = default;
    virtual ~IndexedFile() = default;
    IndexedFile(const IndexedFile&) = delete;
    IndexedFile& operator=(const IndexedFile&) = delete;

    /// True while a transaction is open: more is seen then than others see.
    [[nodiscard]] virtual bool inTransaction() const = 0;

    /// The file as it is now; `table` is left alone.
    [[nodiscard]] virtual IndexMark mark() = 0;

    /// Another number after each change of tables and columns, whoever made it.
    [[nodiscard]] virtual qint64 schemaVersion() = 0;

    /// The columns of the searched table; none when there is no such table.
    [[nodiscard]] virtual std::vector<IndexField> fields() = 0;

    [[nodiscard]] virtual ChangeLog& changes() = 0;

    [[nodiscard]] virtual std::unique_ptr<Reading> startReading() = 0;

    /// Rows of one readRows(): some milliseconds.
    static constexpr qint64 kMostRowsAtOnce = 2048;

    /// Appends the next rows, in the order of their row ids, at most kMostRowsAtOnce.
    /// \param builders of the fields, in their order
    /// \param keys row ids of all rows so far
    /// \return false at the end of the table
    [[nodiscard]] virtual bool readRows(const std::vector<IndexField>& fields,
                                        std::vector<IndexColumnBuilder>& builders,
                                        std::vector<qint64>& keys) = 0;

    /// Adds columns to a table; rows that it does not know are left out. Inside a Reading.
    virtual void addColumns(IndexTable& table, const std::vector<IndexField>& fields) = 0;

    /// A row as it is now, or nothing when it is gone.
    [[nodiscard]] virtual std::optional<std::vector<IndexCell>>
    readRow(const std::vector<IndexField>& fields, qint64 key) = 0;

    /// Kept for the index from one of its calls to the next.
    [[nodiscard]] const IndexMark& seen() const { return m_seen; }

    void setSeen(const IndexMark& mark) { m_seen = mark; }

private:
    IndexMark m_seen;
};

} // namespace melovane::sqlite
