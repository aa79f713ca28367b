#pragma once

#include "platform/db/definitions.h"

#include <QLatin1StringView>

/// Columns: how the file declares them, and what may enter them.
namespace melovane::sqlite {

/// Row number of tables without an auto-number; the catalogue never shows it. A declared column,
/// because plain row ids change when the file is compacted.
inline constexpr char16_t kRowColumn[] = u"mlv_row";

/// The declared type of a column, from which fieldOfType() reads type and size back. Keep: it
/// stands in every file.
[[nodiscard]] QString declaredType(const FieldDef& field);

/// Type, Size and Attributes of a declared type. Types that are not ours are taken by their words
/// as SQLite does.
[[nodiscard]] FieldDef fieldOfType(const QString& declared);

/// Ends the name of the constraint that keeps empty texts out; no column's name can end so. Keep.
inline constexpr QLatin1StringView kZeroLengthMark("!empty");

/// The column as it stands in `create table`. Its constraints are named after table and column, so
/// that the error of a failed one can name them. \param key it belongs to the primary key
[[nodiscard]] QString columnClause(const QString& table, const FieldDef& field, bool key);

/// The text behind `default` in `create table`, empty for none.
/// \throws DbError kSyntax for an expression that cannot be computed, kTypeMismatch, kFieldTooSmall
/// for a constant that does not fit
[[nodiscard]] QString defaultClause(const FieldDef& field);

/// The value as the column keeps it. Long is rounded half to even, a null truth value is false.
/// \throws DbError kTypeMismatch, kFieldTooSmall
[[nodiscard]] Value storable(const FieldDef& field, const Value& value);

} // namespace melovane::sqlite
