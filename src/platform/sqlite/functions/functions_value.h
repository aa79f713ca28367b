#pragma once

#include <QString>

#include <sqlite3.h>

#include <optional>
#include <span>

/// What the functions of the dialect share: reading arguments, giving results.
///
/// A function of the dialect gives null when an argument that it needs is null. Faults are raised
/// by giveError().
namespace melovane::sqlite {

/// Longest text that a function makes, in letters; beyond it the statement fails.
inline constexpr qsizetype kLongestText = qsizetype{16} * 1024 * 1024;

struct FunctionEntry
{
    const char* name;
    void (*run)(sqlite3_context*, int, sqlite3_value**);
    int arguments;        ///< -1 for any number; the translator has counted them
    bool constant = true; ///< same arguments, same result
};

[[nodiscard]] inline bool isNull(sqlite3_value* value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

[[nodiscard]] bool anyNull(int count, sqlite3_value** values);

/// Numbers in plain decimal with a point, as Value::toText() writes them; null is empty.
[[nodiscard]] QString argText(sqlite3_value* value);

/// A text is the number at its beginning; null is 0.
[[nodiscard]] double argNumber(sqlite3_value* value);

/// argNumber() rounded half to even, clamped to 32 bits.
[[nodiscard]] int argLong(sqlite3_value* value);

/// Day number; empty for null and for what is no date.
[[nodiscard]] std::optional<double> argDay(sqlite3_value* value);

void giveText(sqlite3_context* context, const QString& text);
/// Whole numbers become SQLite integers, so that they print without a point.
void giveNumber(sqlite3_context* context, double number);
void giveLong(sqlite3_context* context, qint64 number);
void giveTruth(sqlite3_context* context, bool truth);
void giveError(sqlite3_context* context, int number, const QString& text);

// The functions, by subject.
[[nodiscard]] std::span<const FunctionEntry> conversionFunctions();
[[nodiscard]] std::span<const FunctionEntry> textFunctions();
[[nodiscard]] std::span<const FunctionEntry> numberFunctions();
[[nodiscard]] std::span<const FunctionEntry> dateFunctions();
[[nodiscard]] std::span<const FunctionEntry> formatFunctions();
/// \throws DbError when SQLite refuses
void registerAggregates(sqlite3* connection);

} // namespace melovane::sqlite
