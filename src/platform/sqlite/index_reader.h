#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/index_table.h"

namespace melovane::sqlite {

/// A column to be read.
struct IndexField
{
    QString name; ///< as the catalogue spells it
    bool isText = true;
};

/// Reads the searched table for the index. Several reads see one state only inside a ReadScope.
class IndexReader
{
public:
    explicit IndexReader(Connection& connection)
        : m_connection(connection)
    {}

    /// All rows with these columns.
    [[nodiscard]] std::unique_ptr<IndexTable> table(const std::vector<IndexField>& fields);

    /// Adds columns to a table; rows that it does not know are left out.
    void addColumns(IndexTable& table, const std::vector<IndexField>& fields);

    /// The row as it is now, or nothing when it is gone.
    [[nodiscard]] std::optional<std::vector<IndexCell>> row(const std::vector<IndexField>& fields,
                                                            qint64 key);

private:
    [[nodiscard]] static QString select(const std::vector<IndexField>& fields);

    Connection& m_connection;
};

} // namespace melovane::sqlite
