#pragma once

#include "platform/sqlite/engine/connection.h"
#include "platform/sqlite/index/index_table.h"

namespace melovane::sqlite {

/// A column to be read.
struct IndexField
{
    QString name; ///< as the catalogue spells it
    bool isText = true;
};

/// Reads the whole table bit by bit, other work in between. What is written meanwhile may or may
/// not be seen: the log tells of it.
class IndexLoader
{
public:
    explicit IndexLoader(std::vector<IndexField> fields);

    [[nodiscard]] const std::vector<IndexField>& fields() const { return m_fields; }

    /// Goes on for some milliseconds (longer while a large column is sorted). False at the end.
    [[nodiscard]] bool step(Connection& connection);

    /// Only at the end.
    [[nodiscard]] std::unique_ptr<IndexTable> take() { return std::move(m_table); }

private:
    [[nodiscard]] bool readRows(Connection& connection);

    std::vector<IndexField> m_fields;
    std::vector<IndexColumnBuilder> m_builders;
    std::vector<qint64> m_keys;
    std::unique_ptr<IndexTable> m_table; ///< once all rows are read
};

/// Adds columns to a table; rows that it does not know are left out. Inside a ReadScope.
void addColumns(Connection& connection, IndexTable& table, const std::vector<IndexField>& fields);

/// The row as it is now, or nothing when it is gone.
[[nodiscard]] std::optional<std::vector<IndexCell>>
readRow(Connection& connection, const std::vector<IndexField>& fields, qint64 key);

} // namespace melovane::sqlite
