#pragma once

#include <QDateTime>
#include <QString>

#include <variant>

namespace melovane {

/// Column types, with the numbers that the catalogue of the suite's former engine gave them: keep.
enum class FieldType
{
    Boolean = 1, ///< Yes/No, stored as -1 and 0
    Long = 4,    ///< whole number of 32 bits
    Double = 7,
    Date = 8, ///< day number with fraction, counted from 1899-12-30
    Text = 10,
    Memo = 12, ///< text without a width
};

/// One cell: null, whole number, real number, text, truth value or date.
///
/// Reading it as another kind never fails: null reads as empty text, 0, false or an invalid date;
/// a text reads as the number at its beginning (see leadingNumber).
class Value
{
public:
    /// A date as the engine keeps it: days since 1899-12-30, the fraction is the time of day.
    struct Day
    {
        double number = 0;

        bool operator==(const Day&) const = default;
    };

    Value() = default;

    // NOLINTBEGIN(google-explicit-constructor): cells are written as plain numbers and texts.
    Value(int number)
        : m_data(qint64{number})
    {}

    Value(qint64 number)
        : m_data(number)
    {}

    Value(double number)
        : m_data(number)
    {}

    Value(bool truth)
        : m_data(truth)
    {}

    Value(QString text)
        : m_data(std::move(text))
    {}

    Value(Day day)
        : m_data(day)
    {}

    Value(const QDateTime& moment);
    Value(const char*) = delete; // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(m_data); }

    [[nodiscard]] bool isText() const { return std::holds_alternative<QString>(m_data); }

    [[nodiscard]] bool isLong() const { return std::holds_alternative<qint64>(m_data); }

    [[nodiscard]] bool isDouble() const { return std::holds_alternative<double>(m_data); }

    [[nodiscard]] bool isBool() const { return std::holds_alternative<bool>(m_data); }

    [[nodiscard]] bool isDate() const { return std::holds_alternative<Day>(m_data); }

    /// Numbers in plain decimal, truth as "-1" or "0", dates as "dd.mm.yyyy hh:nn:ss" (the time
    /// left out when it is midnight, the date left out when it is day 0), null as the empty text.
    [[nodiscard]] QString toText() const;

    /// Whole number, rounded half to even and clamped to 32 bits; truth is -1 or 0.
    [[nodiscard]] int toLong() const;

    /// As toLong(), but a whole number keeps its 64 bits: for sums and row numbers.
    [[nodiscard]] qint64 toInt64() const;

    [[nodiscard]] double toDouble() const;

    /// False for null, 0 and texts that begin with no number other than 0.
    [[nodiscard]] bool toBool() const;

    /// Local time, exact to the millisecond; invalid for null. A text is read as "dd.mm.yyyy
    /// hh:nn:ss".
    [[nodiscard]] QDateTime toDateTime() const;

    bool operator==(const Value&) const = default;

private:
    std::variant<std::monostate, qint64, double, QString, bool, Day> m_data;
};

/// Day number of a local date and time; milliseconds are kept. Invalid gives 0.
[[nodiscard]] double dayNumber(const QDateTime& moment);
[[nodiscard]] double dayNumber(QDate date, QTime time);

/// True for the numbers that fromDayNumber() turns into a date: years 100 to 9999.
[[nodiscard]] bool isDayNumber(double day);

/// The local date and time of a day number, rounded to the millisecond; far or non-finite numbers
/// give an invalid one.
[[nodiscard]] QDateTime fromDayNumber(double day);

} // namespace melovane
