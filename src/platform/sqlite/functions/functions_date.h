#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Dates of the dialect: day numbers counted from 1899-12-30, the fraction is the time of day.
namespace melovane::sqlite::dialect {

/// The text between two "#": "31.12.2024", "12/31/2024" (month first), "2024-12-31", each with or
/// without a time, or a time alone. Empty for everything else.
[[nodiscard]] std::optional<double> dateFromLiteral(QStringView text);

/// As dateFromLiteral, but "31/12/2024" has the day first, as the user writes it; a plain number is
/// a day number.
[[nodiscard]] std::optional<double> dateFromText(QStringView text);

/// Day number of a date; months and days beyond their range run over into the next. Empty when the
/// year leaves 100..9999.
[[nodiscard]] std::optional<double> dateFromParts(int year, int month, int day);

/// Writes a day number by a pattern of "d dd ddd dddd m mm mmm mmmm y yy yyyy h hh n nn s ss", in
/// any case. "m" right behind an hour are minutes; "/" prints "."; other signs stand for
/// themselves.
[[nodiscard]] QString formatDate(double day, QStringView pattern);

[[nodiscard]] QString germanMonth(int month, bool brief);
/// \param weekday 1 for Sunday
[[nodiscard]] QString germanWeekday(int weekday, bool brief);

} // namespace melovane::sqlite::dialect
