#include "platform/db/value.h"
#include "platform/sqlite/functions/functions_date.h"
#include "platform/sqlite/functions/functions_text.h"
#include "platform/sqlite/functions/functions_value.h"
#include "platform/system/letter_case.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

struct NamedFormat
{
    QLatin1StringView name;
    QLatin1StringView pattern;
};

constexpr std::array kNamedFormats{
    NamedFormat{"general date"_L1, "dd.mm.yyyy hh:nn:ss"_L1},
    NamedFormat{"long date"_L1, "dddd, d. mmmm yyyy"_L1},
    NamedFormat{"medium date"_L1, "dd. mmm yy"_L1},
    NamedFormat{"short date"_L1, "dd.mm.yyyy"_L1},
    NamedFormat{"long time"_L1, "hh:nn:ss"_L1},
    NamedFormat{"medium time"_L1, "hh:nn"_L1},
    NamedFormat{"short time"_L1, "hh:nn"_L1},
    NamedFormat{"currency"_L1, "#,##0.00 €"_L1},
    NamedFormat{"fixed"_L1, "0.00"_L1},
    NamedFormat{"standard"_L1, "#,##0.00"_L1},
    NamedFormat{"percent"_L1, "0.00%"_L1},
};

QString namedPattern(const QString& pattern)
{
    for (const NamedFormat& format : kNamedFormats) {
        if (pattern.compare(format.name, Qt::CaseInsensitive) == 0) {
            return QString::fromUtf8(format.pattern.data(), format.pattern.size());
        }
    }
    return pattern;
}

std::optional<QString> truthFormat(const QString& pattern, bool truth)
{
    const auto is = [&](QLatin1StringView name) {
        return pattern.compare(name, Qt::CaseInsensitive) == 0;
    };
    if (is("yes/no"_L1)) {
        return truth ? u"Ja"_s : u"Nein"_s;
    }
    if (is("true/false"_L1)) {
        return truth ? u"Wahr"_s : u"Falsch"_s;
    }
    if (is("on/off"_L1)) {
        return truth ? u"Ein"_s : u"Aus"_s;
    }
    return {};
}

/// One section of a number pattern, taken apart.
struct NumberPattern
{
    QString before;
    QString behind;
    int wholeZeros = 0;
    int decimals = 0;
    int neededDecimals = 0;
    bool grouped = false;
    bool percent = false;
    bool digits = false;
};

/// Counts one place for a digit; a needed one is shown also where the number has none.
void addDigit(NumberPattern& pattern, bool needed, bool behindPoint)
{
    pattern.digits = true;
    if (!behindPoint) {
        pattern.wholeZeros += needed ? 1 : 0;
        return;
    }
    ++pattern.decimals;
    if (needed) {
        pattern.neededDecimals = pattern.decimals;
    }
}

NumberPattern readNumberPattern(QStringView text)
{
    NumberPattern result;
    bool point = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar sign = text[i];
        if (sign == u'0' || sign == u'#') {
            addDigit(result, sign == u'0', point);
            continue;
        }
        if (sign == u'.' && !point) {
            point = true;
            continue;
        }
        if (sign == u',' && result.digits && !point) {
            result.grouped = true;
            continue;
        }
        result.percent = result.percent || sign == u'%';
        const bool escaped = sign == u'\\' && i + 1 < text.size();
        QString& target = result.digits ? result.behind : result.before;
        if (sign != u'"') {
            target.append(escaped ? text[++i] : sign);
        }
    }
    return result;
}

QString groupedDigits(const QString& digits)
{
    QString result;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            result.append(u'.');
        }
        result.append(digits[i]);
    }
    return result;
}

/// Digits in the German manner: "," before the decimals, "." between groups.
QString formatNumber(double number, QStringView section)
{
    const NumberPattern pattern = readNumberPattern(section);
    if (!pattern.digits) {
        return pattern.before;
    }
    constexpr int kMostDecimals = 15;
    const int decimals = std::min(pattern.decimals, kMostDecimals);
    const double scaled = std::abs(number) * (pattern.percent ? 100 : 1);
    QString text = QString::number(scaled, 'f', decimals);
    QString fraction = decimals > 0 ? text.mid(text.indexOf(u'.') + 1) : QString();
    QString whole = decimals > 0 ? text.left(text.indexOf(u'.')) : text;
    while (fraction.size() > pattern.neededDecimals && fraction.endsWith(u'0')) {
        fraction.chop(1);
    }
    const bool zero = !(whole + fraction).contains(QRegularExpression(u"[1-9]"_s));
    whole = whole == u"0" ? QString() : whole;
    whole = whole.rightJustified(std::min(pattern.wholeZeros, 300), u'0');
    whole = pattern.grouped ? groupedDigits(whole) : whole;
    const QString minus = number < 0 && !zero ? u"-"_s : QString();
    const QString point = pattern.decimals > 0 && !fraction.isEmpty() ? u","_s : QString();
    return minus + pattern.before + whole + point + fraction + pattern.behind;
}

/// Sections for positive, negative and zero numbers.
QString formatBySections(double number, const QString& pattern)
{
    const QStringList sections = pattern.split(u';');
    if (number < 0 && sections.size() > 1 && !sections[1].isEmpty()) {
        return formatNumber(-number, sections[1]);
    }
    if (number == 0 && sections.size() > 2 && !sections[2].isEmpty()) {
        return formatNumber(0, sections[2]);
    }
    return formatNumber(number, sections[0]);
}

bool isNumberPattern(const QString& pattern)
{
    return pattern.contains(u'0') || pattern.contains(u'#');
}

bool isDatePattern(const QString& pattern)
{
    return std::any_of(pattern.begin(), pattern.end(),
                       [](QChar sign) { return u"dmyhns"_s.contains(sign.toLower()); });
}

QString formatText(const QString& text, const QString& pattern)
{
    if (pattern.contains(u'>')) {
        return upperCase(text);
    }
    return pattern.contains(u'<') ? lowerCase(text) : text;
}

/// Dates, numbers and texts by a pattern.
void formatFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const QString text = argText(values[0]);
    const QString given = count > 1 ? argText(values[1]) : QString();
    constexpr qsizetype kLongestPattern = 10'000;
    if (given.isEmpty() || given.size() > kLongestPattern ||
        given.compare("general number"_L1, Qt::CaseInsensitive) == 0) {
        giveText(context, text);
        return;
    }
    const bool isNumber = sqlite3_value_type(values[0]) != SQLITE_TEXT;
    if (const auto truth = truthFormat(given, argNumber(values[0]) != 0)) {
        giveText(context, *truth);
        return;
    }
    if (given.compare("scientific"_L1, Qt::CaseInsensitive) == 0) {
        giveText(context, QString::number(argNumber(values[0]), 'E', 2).replace(u'.', u','));
        return;
    }
    const QString pattern = namedPattern(given);
    if (isNumberPattern(pattern)) {
        const bool numeric = isNumber || dialect::wholeTextNumber(text).has_value();
        giveText(context, numeric ? formatBySections(argNumber(values[0]), pattern) : text);
    } else if (isDatePattern(pattern)) {
        const auto day = argDay(values[0]);
        giveText(context, day ? dialect::formatDate(*day, pattern) : text);
    } else {
        giveText(context, formatText(text, pattern));
    }
}

/// A choice among the arguments: -1 yes, 0 no, left out or -2 as usual here.
bool chosen(int count, sqlite3_value** values, int index, bool usual)
{
    const int choice = count > index && !isNull(values[index]) ? argLong(values[index]) : -2;
    return choice == -2 ? usual : choice != 0;
}

/// Number, decimals (-1: two), zero before the point, brackets for a minus, groups.
QString formatAsAsked(int count, sqlite3_value** values, bool percent, const QString& unit)
{
    constexpr int kUsualDecimals = 2;
    const int asked = count > 1 && !isNull(values[1]) ? argLong(values[1]) : -1;
    const int decimals = asked < 0 ? kUsualDecimals : std::min(asked, 15);
    const bool zero = chosen(count, values, 2, true);
    const bool brackets = chosen(count, values, 3, false);
    const bool groups = chosen(count, values, 4, true);
    QString pattern = groups ? u"#,##"_s : u"#"_s;
    pattern += zero ? u"0"_s : u"#"_s;
    pattern += decimals > 0 ? u'.' + QString(decimals, u'0') : QString();
    pattern += percent ? u"%"_s : unit;
    const double number = argNumber(values[0]);
    const QString text = formatNumber(number, pattern);
    return brackets && text.startsWith(u'-') ? u'(' + text.mid(1) + u')' : text;
}

void formatNumberFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveText(context, formatAsAsked(count, values, false, {}));
    }
}

void formatCurrency(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveText(context, formatAsAsked(count, values, false, u" €"_s));
    }
}

void formatPercent(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveText(context, formatAsAsked(count, values, true, {}));
    }
}

/// Date and kind: 0 date and time as far as there is one, 1 long date, 2 short date, 3 long time,
/// 4 short time.
void formatDateTime(sqlite3_context* context, int count, sqlite3_value** values)
{
    const auto day = argDay(values[0]);
    if (!day) {
        return;
    }
    const int kind = count > 1 && !isNull(values[1]) ? argLong(values[1]) : 0;
    const std::array kPatterns{u"dddd, d. mmmm yyyy"_s, u"dd.mm.yyyy"_s, u"hh:nn:ss"_s, u"hh:nn"_s};
    const bool named = kind >= 1 && kind <= int(kPatterns.size());
    giveText(context, named ? dialect::formatDate(*day, kPatterns[size_t(kind - 1)])
                            : Value(Value::Day{*day}).toText());
}

} // namespace

std::span<const FunctionEntry> formatFunctions()
{
    static constexpr FunctionEntry kEntries[] = {
        {"mlv_format", formatFunction, -1},         {"mlv_formatcurrency", formatCurrency, -1},
        {"mlv_formatdatetime", formatDateTime, -1}, {"mlv_formatnumber", formatNumberFunction, -1},
        {"mlv_formatpercent", formatPercent, -1},
    };
    return kEntries;
}

} // namespace melovane::sqlite
