#pragma once

#include "platform/sqlite/engine/connection.h"

#include <optional>

namespace melovane::sqlite {

/// A table of an open schema with its columns and indexes; nothing when there is none of that name.
/// \param schema "main" or that of an attached file \param name without regard to case
[[nodiscard]] std::optional<TableDef>
readTable(Connection& connection, const QString& schema, const QString& name);

/// Name of an index in the file. Index names are shared by all tables there, so the table's name
/// stands in front, and its kind between: "table|P|PrimaryKey". Keep.
[[nodiscard]] QString storedIndexName(const QString& table, const IndexDef& index);

} // namespace melovane::sqlite
