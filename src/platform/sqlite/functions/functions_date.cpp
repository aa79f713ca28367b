#include "platform/sqlite/functions/functions_date.h"

#include "platform/db/value.h"
#include "platform/sqlite/functions/functions_text.h"

#include <QDateTime>

#include <array>
#include <cmath>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate kDayZero(1899, 12, 30);
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr double kMsPerDay = 86'400'000.0;

/// Reads numbers and the signs between them.
class Reader
{
public:
    explicit Reader(QStringView text)
        : m_text(text)
    {}

    bool number(int& value)
    {
        const qsizetype start = m_at;
        value = 0;
        while (m_at < m_text.size() && m_text[m_at] >= u'0' && m_text[m_at] <= u'9' &&
               m_at - start < 5) {
            value = value * 10 + (m_text[m_at].unicode() - u'0');
            ++m_at;
        }
        m_digits = int(m_at - start);
        return m_digits > 0;
    }

    bool sign(QChar wanted)
    {
        if (m_at >= m_text.size() || m_text[m_at].toLower() != wanted) {
            return false;
        }
        ++m_at;
        return true;
    }

    void blanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == u' ') {
            ++m_at;
        }
    }

    [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }

    [[nodiscard]] int digits() const { return m_digits; }

    [[nodiscard]] qsizetype at() const { return m_at; }

    void goTo(qsizetype at) { m_at = at; }

private:
    QStringView m_text;
    qsizetype m_at = 0;
    int m_digits = 0;
};

int fullYear(int year, int digits)
{
    constexpr int kTurn = 30;
    if (digits > 2) {
        return year;
    }
    return year < kTurn ? 2000 + year : 1900 + year;
}

std::optional<double> exactDate(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid() || year < kFirstYear || year > kLastYear) {
        return {};
    }
    return double(kDayZero.daysTo(date));
}

std::optional<double> slashDate(int first, int second, int year, bool monthFirst)
{
    const auto wanted =
        monthFirst ? exactDate(year, first, second) : exactDate(year, second, first);
    return wanted ? wanted
                  : (monthFirst ? exactDate(year, second, first) : exactDate(year, first, second));
}

std::optional<double> readDate(Reader& reader, bool monthFirst)
{
    int first = 0;
    int second = 0;
    int third = 0;
    if (!reader.number(first)) {
        return {};
    }
    const int firstDigits = reader.digits();
    for (const QChar separator : {u'.', u'/', u'-'}) {
        if (!reader.sign(separator)) {
            continue;
        }
        if (!reader.number(second) || !reader.sign(separator) || !reader.number(third)) {
            return {};
        }
        const int thirdDigits = reader.digits();
        if (firstDigits == 4) {
            return exactDate(first, second, third);
        }
        const int year = fullYear(third, thirdDigits);
        return separator == u'/' ? slashDate(first, second, year, monthFirst)
                                 : exactDate(year, second, first);
    }
    return {};
}

bool readHalf(Reader& reader, int& hour)
{
    reader.blanks();
    const bool afternoon = reader.sign(u'p');
    if (!afternoon && !reader.sign(u'a')) {
        return true;
    }
    if (!reader.sign(u'm') || hour < 1 || hour > 12) {
        return false;
    }
    hour = hour % 12 + (afternoon ? 12 : 0);
    return true;
}

std::optional<double> readTime(Reader& reader)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!reader.number(hour) || !reader.sign(u':') || !reader.number(minute)) {
        return {};
    }
    if (reader.sign(u':') && !reader.number(second)) {
        return {};
    }
    if (!readHalf(reader, hour) || hour > 23 || minute > 59 || second > 59) {
        return {};
    }
    return ((hour * 60 + minute) * 60 + second) * 1000 / kMsPerDay;
}

std::optional<double> readMoment(QStringView text, bool monthFirst)
{
    Reader reader(text);
    reader.blanks();
    const qsizetype start = reader.at();
    double day = 0;
    if (const auto date = readDate(reader, monthFirst)) {
        day = *date;
        if (!reader.sign(u't')) {
            reader.blanks();
        }
        if (reader.atEnd()) {
            return day;
        }
    } else {
        reader.goTo(start);
    }
    const auto time = readTime(reader);
    reader.blanks();
    if (!time || !reader.atEnd()) {
        return {};
    }
    return day < 0 ? day - *time : day + *time;
}

} // namespace

std::optional<double> dateFromLiteral(QStringView text)
{
    return readMoment(text, true);
}

std::optional<double> dateFromText(QStringView text)
{
    if (const auto moment = readMoment(text, false)) {
        return moment;
    }
    const auto number = wholeTextNumber(text);
    return number && fromDayNumber(*number).isValid() ? number : std::nullopt;
}

std::optional<double> dateFromParts(int year, int month, int day)
{
    constexpr int kFarthest = 1'000'000;
    if (std::abs(month) > kFarthest || std::abs(day) > kFarthest || std::abs(year) > kFarthest) {
        return {};
    }
    const int shownYear = year >= 0 && year < 100 ? fullYear(year, 2) : year;
    const QDate first = QDate(shownYear, 1, 1).addMonths(month - 1);
    const QDate date = first.addDays(day - 1);
    if (!date.isValid() || date.year() < kFirstYear || date.year() > kLastYear) {
        return {};
    }
    return double(kDayZero.daysTo(date));
}

QString germanMonth(int month, bool brief)
{
    static const std::array kNames{u"Januar"_s,    u"Februar"_s, u"März"_s,     u"April"_s,
                                   u"Mai"_s,       u"Juni"_s,    u"Juli"_s,     u"August"_s,
                                   u"September"_s, u"Oktober"_s, u"November"_s, u"Dezember"_s};
    static const std::array kBrief{u"Jan"_s, u"Feb"_s, u"Mrz"_s, u"Apr"_s, u"Mai"_s, u"Jun"_s,
                                   u"Jul"_s, u"Aug"_s, u"Sep"_s, u"Okt"_s, u"Nov"_s, u"Dez"_s};
    if (month < 1 || month > 12) {
        return {};
    }
    return (brief ? kBrief : kNames)[size_t(month - 1)];
}

QString germanWeekday(int weekday, bool brief)
{
    static const std::array kNames{u"Sonntag"_s,    u"Montag"_s,  u"Dienstag"_s, u"Mittwoch"_s,
                                   u"Donnerstag"_s, u"Freitag"_s, u"Samstag"_s};
    if (weekday < 1 || weekday > 7) {
        return {};
    }
    const QString& name = kNames[size_t(weekday - 1)];
    return brief ? name.left(2) : name;
}

namespace {

QString padded(int number, int width)
{
    return QString::number(number).rightJustified(width, u'0');
}

/// One run of a pattern letter; longer runs than known ones count as the longest.
QString datePart(QChar letter, qsizetype length, const QDateTime& moment, bool minutes)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    const int width = length > 1 ? 2 : 1;
    switch (letter.unicode()) {
    case u'd':
        return length > 2 ? germanWeekday(date.dayOfWeek() % 7 + 1, length == 3)
                          : padded(date.day(), width);
    case u'm':
        if (minutes) {
            return padded(time.minute(), width);
        }
        return length > 2 ? germanMonth(date.month(), length == 3) : padded(date.month(), width);
    case u'y':
        if (length == 1) {
            return QString::number(date.dayOfYear());
        }
        return length == 2 ? padded(date.year() % 100, 2) : padded(date.year(), 4);
    case u'h':
        return padded(time.hour(), width);
    case u'n':
        return padded(time.minute(), width);
    default:
        return padded(time.second(), width);
    }
}

qsizetype longestRun(QChar letter)
{
    return letter == u'd' || letter == u'm' || letter == u'y' ? 4 : 2;
}

} // namespace

QString formatDate(double day, QStringView pattern)
{
    // Formats show whole seconds; half a second more makes 11:59:59.9996 twelve o'clock.
    const QDateTime exact = fromDayNumber(day);
    if (!exact.isValid()) {
        return {};
    }
    const QDateTime moment = exact.addMSecs(exact.time().msec() >= 500 ? 500 : 0);
    QString result;
    bool behindHour = false;
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar letter = pattern[at].toLower();
        if (!u"dmyhns"_s.contains(letter)) {
            result.append(letter == u'/' ? u'.' : pattern[at]);
            ++at;
            continue;
        }
        qsizetype end = at;
        while (end < pattern.size() && pattern[end].toLower() == letter &&
               end - at < longestRun(letter)) {
            ++end;
        }
        const qsizetype length = end - at;
        const bool minutes = letter == u'm' && behindHour && length <= 2;
        result.append(datePart(letter, length, moment, minutes));
        behindHour = letter == u'h';
        at = end;
    }
    return result;
}

} // namespace melovane::sqlite::dialect
