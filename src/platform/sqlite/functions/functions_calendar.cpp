#include "platform/db/db_error.h"
#include "platform/db/value.h"
#include "platform/sqlite/functions/functions_date.h"
#include "platform/sqlite/functions/functions_value.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

using dialect::dateFromParts;

QDateTime momentOf(sqlite3_value* value)
{
    const auto day = argDay(value);
    return day ? fromDayNumber(*day) : QDateTime();
}

enum class Part
{
    Year,
    Month,
    Day,
    Hour,
    Minute,
    Second
};

int partOf(const QDateTime& moment, Part part)
{
    switch (part) {
    case Part::Year:
        return moment.date().year();
    case Part::Month:
        return moment.date().month();
    case Part::Day:
        return moment.date().day();
    case Part::Hour:
        return moment.time().hour();
    case Part::Minute:
        return moment.time().minute();
    case Part::Second:
        return moment.time().second();
    }
    return 0;
}

/// Seconds are rounded: a day number holds them only nearly.
QDateTime wholeSeconds(const QDateTime& moment)
{
    return moment.isValid()
               ? moment.addMSecs(moment.time().msec() >= 500 ? 1000 - moment.time().msec()
                                                             : -moment.time().msec())
               : moment;
}

template <Part Wanted> void part(sqlite3_context* context, int, sqlite3_value** values)
{
    const QDateTime moment = wholeSeconds(momentOf(values[0]));
    if (moment.isValid()) {
        giveLong(context, partOf(moment, Wanted));
    }
}

/// 1 for the first day of the week, which is Sunday unless the second argument says 2 for Monday...
int weekdayOf(const QDate& date, int firstDay)
{
    const int sundayFirst = date.dayOfWeek() % 7;
    const int shift = firstDay >= 1 && firstDay <= 7 ? firstDay - 1 : 0;
    return (sundayFirst - shift + 7) % 7 + 1;
}

void weekday(sqlite3_context* context, int count, sqlite3_value** values)
{
    const QDateTime moment = momentOf(values[0]);
    if (moment.isValid()) {
        giveLong(context, weekdayOf(moment.date(), count > 1 ? argLong(values[1]) : 1));
    }
}

void monthName(sqlite3_context* context, int count, sqlite3_value** values)
{
    const QString name = dialect::germanMonth(argLong(values[0]), count > 1 && argLong(values[1]));
    if (!name.isEmpty()) {
        giveText(context, name);
    }
}

void weekdayName(sqlite3_context* context, int count, sqlite3_value** values)
{
    const int first = count > 2 ? argLong(values[2]) : 1;
    const int shift = first >= 1 && first <= 7 ? first - 1 : 0;
    const int day = argLong(values[0]);
    if (!isNull(values[0]) && day >= 1 && day <= 7) {
        giveText(context, dialect::germanWeekday((day - 1 + shift) % 7 + 1,
                                                 count > 1 && argLong(values[1]) != 0));
    }
}

void giveDay(sqlite3_context* context, std::optional<double> day)
{
    if (day && fromDayNumber(*day).isValid()) {
        sqlite3_result_double(context, *day);
    }
}

void dateSerial(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        giveDay(context, dateFromParts(argLong(values[0]), argLong(values[1]), argLong(values[2])));
    }
}

void timeSerial(sqlite3_context* context, int count, sqlite3_value** values)
{
    constexpr double kSecondsPerDay = 86'400;
    if (!anyNull(count, values)) {
        giveDay(context, (double(argLong(values[0])) * 3600 + double(argLong(values[1])) * 60 +
                          argLong(values[2])) /
                             kSecondsPerDay);
    }
}

void dateValue(sqlite3_context* context, int, sqlite3_value** values)
{
    if (const auto day = argDay(values[0])) {
        giveDay(context, std::floor(*day));
    }
}

void timeValue(sqlite3_context* context, int, sqlite3_value** values)
{
    if (const auto day = argDay(values[0])) {
        giveDay(context, *day - std::floor(*day));
    }
}

/// Words of dateadd, datediff and datepart.
enum class Interval
{
    None,
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Weekday,
    Week,
    Hour,
    Minute,
    Second
};

Interval intervalOf(sqlite3_value* value)
{
    const QString word = argText(value).trimmed().toLower();
    static const std::array kWords{
        std::pair{u"yyyy"_s, Interval::Year}, std::pair{u"q"_s, Interval::Quarter},
        std::pair{u"m"_s, Interval::Month},   std::pair{u"y"_s, Interval::DayOfYear},
        std::pair{u"d"_s, Interval::Day},     std::pair{u"w"_s, Interval::Weekday},
        std::pair{u"ww"_s, Interval::Week},   std::pair{u"h"_s, Interval::Hour},
        std::pair{u"n"_s, Interval::Minute},  std::pair{u"s"_s, Interval::Second},
    };
    for (const auto& [text, interval] : kWords) {
        if (text == word) {
            return interval;
        }
    }
    return Interval::None;
}

QDateTime added(const QDateTime& moment, Interval interval, int number)
{
    const qint64 steps = number;
    switch (interval) {
    case Interval::Year:
        return moment.addYears(number);
    case Interval::Quarter:
        return moment.addMonths(int(std::clamp<qint64>(steps * 3, -200'000, 200'000)));
    case Interval::Month:
        return moment.addMonths(std::clamp(number, -200'000, 200'000));
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
        return moment.addDays(steps);
    case Interval::Week:
        return moment.addDays(steps * 7);
    case Interval::Hour:
    case Interval::Minute:
    case Interval::Second:
    case Interval::None:
        break;
    }
    return {};
}

void dateAdd(sqlite3_context* context, int count, sqlite3_value** values)
{
    const QDateTime moment = momentOf(values[2]);
    if (anyNull(count, values) || !moment.isValid()) {
        return;
    }
    const Interval interval = intervalOf(values[0]);
    const int number = argLong(values[1]);
    const double day = argDay(values[2]).value_or(0);
    switch (interval) {
    case Interval::Hour:
        giveDay(context, day + number / 24.0);
        return;
    case Interval::Minute:
        giveDay(context, day + number / 1440.0);
        return;
    case Interval::Second:
        giveDay(context, day + number / 86'400.0);
        return;
    case Interval::None:
        giveError(context, dberror::kSyntax,
                  u"Unbekannte Zeiteinheit \"%1\"."_s.arg(argText(values[0])));
        return;
    case Interval::Year:
    case Interval::Quarter:
    case Interval::Month:
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
    case Interval::Week:
        break;
    }
    const QDateTime moved = added(moment, interval, std::clamp(number, -4'000'000, 4'000'000));
    if (moved.isValid()) {
        giveDay(context, dayNumber(moved));
    }
}

/// \param firstDay as weekdayOf(): where a week begins
qint64 difference(const QDateTime& from, const QDateTime& to, Interval interval, int firstDay)
{
    const qint64 months =
        (to.date().year() - from.date().year()) * 12LL + to.date().month() - from.date().month();
    const qint64 days = from.date().daysTo(to.date());
    const qint64 seconds = days * 86'400 + to.time().msecsSinceStartOfDay() / 1000 -
                           from.time().msecsSinceStartOfDay() / 1000;
    const auto units = [](const QDateTime& moment, int size) {
        return moment.time().msecsSinceStartOfDay() / 1000 / size;
    };
    switch (interval) {
    case Interval::Year:
        return to.date().year() - from.date().year();
    case Interval::Quarter:
        return (to.date().year() - from.date().year()) * 4LL + (to.date().month() - 1) / 3 -
               (from.date().month() - 1) / 3;
    case Interval::Month:
        return months;
    case Interval::DayOfYear:
    case Interval::Day:
        return days;
    case Interval::Weekday:
        return days / 7;
    case Interval::Week:
        // First days of a week between the two dates.
        return (days + weekdayOf(from.date(), firstDay) - weekdayOf(to.date(), firstDay)) / 7;
    case Interval::Hour:
        return days * 24 + units(to, 3600) - units(from, 3600);
    case Interval::Minute:
        return days * 1440 + units(to, 60) - units(from, 60);
    case Interval::Second:
    case Interval::None:
        break;
    }
    return seconds;
}

void dateDiff(sqlite3_context* context, int count, sqlite3_value** values)
{
    const QDateTime from = wholeSeconds(momentOf(values[1]));
    const QDateTime to = wholeSeconds(momentOf(values[2]));
    const Interval interval = intervalOf(values[0]);
    if (interval == Interval::None) {
        giveError(context, dberror::kSyntax,
                  u"Unbekannte Zeiteinheit \"%1\"."_s.arg(argText(values[0])));
    } else if (from.isValid() && to.isValid()) {
        const int firstDay = count > 3 ? argLong(values[3]) : 1;
        giveLong(context, difference(from, to, interval, firstDay));
    }
}

/// The week of the year. \param firstWeek 1: the one with January 1st, 2: the first with four days
/// in the year, 3: the first whole one. Days before it belong to the last week of the year before.
int weekOf(const QDate& date, int firstDay, int firstWeek)
{
    const auto weekOne = [&](int year) {
        const QDate newYear(year, 1, 1);
        const int offset = weekdayOf(newYear, firstDay) - 1; // days of its week in the old year
        const bool next = (firstWeek == 2 && offset > 3) || (firstWeek == 3 && offset > 0);
        return newYear.addDays((next ? 7 : 0) - offset);
    };
    QDate start = weekOne(date.year());
    if (date < start) {
        start = weekOne(date.year() - 1);
    } else if (firstWeek != 3 && firstWeek != 2) {
        return int(start.daysTo(date)) / 7 + 1;
    } else if (const QDate next = weekOne(date.year() + 1); date >= next) {
        start = next;
    }
    return int(start.daysTo(date)) / 7 + 1;
}

void datePartFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    const QDateTime moment = wholeSeconds(momentOf(values[1]));
    if (!moment.isValid()) {
        return;
    }
    const QDate date = moment.date();
    const int firstDay = count > 2 ? argLong(values[2]) : 1;
    switch (intervalOf(values[0])) {
    case Interval::Year:
        return giveLong(context, date.year());
    case Interval::Quarter:
        return giveLong(context, (date.month() - 1) / 3 + 1);
    case Interval::Month:
        return giveLong(context, date.month());
    case Interval::DayOfYear:
        return giveLong(context, date.dayOfYear());
    case Interval::Day:
        return giveLong(context, date.day());
    case Interval::Weekday:
        return giveLong(context, weekdayOf(date, firstDay));
    case Interval::Week:
        return giveLong(context, weekOf(date, firstDay, count > 3 ? argLong(values[3]) : 1));
    case Interval::Hour:
        return giveLong(context, moment.time().hour());
    case Interval::Minute:
        return giveLong(context, moment.time().minute());
    case Interval::Second:
        return giveLong(context, moment.time().second());
    case Interval::None:
        break;
    }
    giveError(context, dberror::kSyntax,
              u"Unbekannte Zeiteinheit \"%1\"."_s.arg(argText(values[0])));
}

} // namespace

std::span<const FunctionEntry> dateFunctions()
{
    static constexpr FunctionEntry kEntries[] = {
        {"mlv_dateadd", dateAdd, 3},
        {"mlv_datediff", dateDiff, -1},
        {"mlv_datepart", datePartFunction, -1},
        {"mlv_dateserial", dateSerial, 3},
        {"mlv_datevalue", dateValue, 1},
        {"mlv_day", part<Part::Day>, 1},
        {"mlv_hour", part<Part::Hour>, 1},
        {"mlv_minute", part<Part::Minute>, 1},
        {"mlv_month", part<Part::Month>, 1},
        {"mlv_monthname", monthName, -1},
        {"mlv_second", part<Part::Second>, 1},
        {"mlv_timeserial", timeSerial, 3},
        {"mlv_timevalue", timeValue, 1},
        {"mlv_weekday", weekday, -1},
        {"mlv_weekdayname", weekdayName, -1},
        {"mlv_year", part<Part::Year>, 1},
    };
    return kEntries;
}

} // namespace melovane::sqlite
