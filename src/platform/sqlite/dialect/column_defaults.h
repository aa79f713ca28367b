#pragma once

#include "platform/db/definitions.h"

#include <optional>
#include <vector>

/// What a new row holds in a column that it was given no value for.
///
/// A constant stands in the file. A computed default (`now()`, `date()`, `time()` or any expression
/// of the dialect that names no table) is computed by us for each new row, so that it follows the
/// program's clock. For programs that write without us, the first three stand in the file too, in
/// SQLite's words.
namespace melovane::sqlite {

/// The constant as it is written, null for none; nothing for an expression.
[[nodiscard]] std::optional<Value> constantDefault(const FieldDef& field);

/// `now()`, `date()` and `time()` in SQLite's words; empty for other expressions.
[[nodiscard]] QString clockDefault(const FieldDef& field);

/// A column whose default is computed.
struct ComputedDefault
{
    QString column;
    FieldType type = FieldType::Text;
    QString sql; ///< its value in SQLite's words, fit for the column
};

/// The computed defaults among the columns of a table, except those that are given.
/// \throws DbError kSyntax for an expression that cannot be computed
[[nodiscard]] std::vector<ComputedDefault> computedDefaults(const std::vector<FieldDef>& fields,
                                                            const std::vector<QString>& given = {});

} // namespace melovane::sqlite
