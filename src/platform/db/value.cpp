#include "platform/db/value.h"

#include "platform/system/leading_number.h"

#include <cmath>

namespace melovane {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Day 0 of the engine's dates.
const QDate kDayZero(1899, 12, 30);
constexpr double kMsPerDay = 86'400'000.0;
/// Dates beyond the year 9999 are not dates of a music library but damaged numbers.
constexpr double kLastDay = 2'958'465.999999999;
constexpr double kFirstDay = -657'434.0;

QDateTime parseDateTime(const QString& text)
{
    for (const QString& form : {u"d.M.yyyy H:m:s"_s, u"d.M.yyyy H:m"_s, u"d.M.yyyy"_s,
                                u"yyyy-M-d H:m:s"_s, u"yyyy-M-d"_s, u"H:m:s"_s}) {
        const QDateTime moment = QDateTime::fromString(text.trimmed(), form);
        if (moment.isValid()) {
            return form.startsWith(u'H') ? QDateTime(kDayZero, moment.time()) : moment;
        }
    }
    return {};
}

QString dateText(double day)
{
    const QDateTime moment = fromDayNumber(day);
    if (!moment.isValid()) {
        return {};
    }
    if (moment.date() == kDayZero) {
        return moment.time().toString(u"HH:mm:ss"_s);
    }
    const bool midnight = moment.time().msecsSinceStartOfDay() < 500;
    return moment.toString(midnight ? u"dd.MM.yyyy"_s : u"dd.MM.yyyy HH:mm:ss"_s);
}

QString doubleText(double number)
{
    return number == std::floor(number) && std::abs(number) < 1e15
               ? QString::number(number, 'f', 0)
               : QString::number(number, 'g', 15);
}

} // namespace

double dayNumber(QDate date, QTime time)
{
    return double(kDayZero.daysTo(date)) + time.msecsSinceStartOfDay() / kMsPerDay;
}

double dayNumber(const QDateTime& moment)
{
    if (!moment.isValid()) {
        return 0;
    }
    // Local already for nearly all; asking again would look for the time zone.
    const QDateTime local = moment.timeSpec() == Qt::LocalTime ? moment : moment.toLocalTime();
    return dayNumber(local.date(), local.time());
}

bool isDayNumber(double day)
{
    return day >= kFirstDay && day <= kLastDay; // not a number is neither
}

QDateTime fromDayNumber(double day)
{
    if (!isDayNumber(day)) {
        return {};
    }
    double whole = std::floor(day);
    qint64 ms = std::llround((day - whole) * kMsPerDay);
    if (ms >= qint64(kMsPerDay)) {
        whole += 1;
        ms = 0;
    }
    return {kDayZero.addDays(qint64(whole)), QTime::fromMSecsSinceStartOfDay(int(ms))};
}

Value::Value(const QDateTime& moment)
{
    if (moment.isValid()) {
        m_data = Day{dayNumber(moment)};
    }
}

QString Value::toText() const
{
    switch (m_data.index()) {
    case 1:
        return QString::number(std::get<qint64>(m_data));
    case 2:
        return doubleText(std::get<double>(m_data));
    case 3:
        return std::get<QString>(m_data);
    case 4:
        return std::get<bool>(m_data) ? u"-1"_s : u"0"_s;
    case 5:
        return dateText(std::get<Day>(m_data).number);
    }
    return {};
}

double Value::toDouble() const
{
    switch (m_data.index()) {
    case 1:
        return double(std::get<qint64>(m_data));
    case 2:
        return std::get<double>(m_data);
    case 3:
        return leadingNumber(std::get<QString>(m_data));
    case 4:
        return std::get<bool>(m_data) ? -1 : 0;
    case 5:
        return std::get<Day>(m_data).number;
    }
    return 0;
}

qint64 Value::toInt64() const
{
    const auto* whole = std::get_if<qint64>(&m_data);
    return whole ? *whole : toLongHalfEven(toDouble());
}

int Value::toLong() const
{
    return toLongHalfEven(toDouble());
}

bool Value::toBool() const
{
    return toDouble() != 0;
}

QDateTime Value::toDateTime() const
{
    if (isNull()) {
        return {};
    }
    if (const auto* text = std::get_if<QString>(&m_data)) {
        return parseDateTime(*text);
    }
    return fromDayNumber(toDouble());
}

} // namespace melovane
