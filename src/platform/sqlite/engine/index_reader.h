#pragma once

#include "platform/sqlite/engine/connection.h"
#include "platform/sqlite/index/indexed_file.h"

/// Rows of the searched table on their way into its column index; see IndexedFile.
namespace melovane::sqlite {

[[nodiscard]] bool readRows(Connection& connection,
                            const std::vector<IndexField>& fields,
                            std::vector<IndexColumnBuilder>& builders,
                            std::vector<qint64>& keys);

void addColumns(Connection& connection, IndexTable& table, const std::vector<IndexField>& fields);

[[nodiscard]] std::optional<std::vector<IndexCell>>
readRow(Connection& connection, const std::vector<IndexField>& fields, qint64 key);

} // namespace melovane::sqlite
