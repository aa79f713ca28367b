#include "platform/db/db_error.h"
#include "platform/db/value.h"
#include "platform/sqlite/functions/functions_date.h"
#include "platform/sqlite/functions/functions_text.h"
#include "platform/sqlite/functions/functions_value.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace dialect {

std::optional<double> wholeTextNumber(QStringView text)
{
    const QString bare = trimBlanks(text);
    bool digits = false;
    int points = 0;
    for (qsizetype i = 0; i < bare.size(); ++i) {
        const QChar sign = bare[i];
        if (sign >= u'0' && sign <= u'9') {
            digits = true;
        } else if (sign == u'.') {
            ++points;
        } else if (i != 0 || (sign != u'-' && sign != u'+')) {
            return {};
        }
    }
    return digits && points <= 1 ? std::optional(leadingNumber(bare)) : std::nullopt;
}

} // namespace dialect

namespace {

bool isTextValue(sqlite3_value* value)
{
    const int type = sqlite3_value_type(value);
    return type == SQLITE_TEXT || type == SQLITE_BLOB;
}

/// Letters as UTF-16 counts them, from UTF-8 bytes.
qsizetype lettersOf(const unsigned char* bytes, int size)
{
    qsizetype letters = 0;
    for (int i = 0; i < size; ++i) {
        letters += (bytes[i] & 0xC0) != 0x80 ? 1 : 0;
        letters += bytes[i] >= 0xF0 ? 1 : 0;
    }
    return letters;
}

/// Assignment to Text(n): value, n.
void toText(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const qsizetype width = sqlite3_value_int(values[1]);
    const auto tooLong = [&] {
        giveError(context, dberror::kFieldTooSmall,
                  u"Der Text ist länger als die Spalte (%1 Zeichen)."_s.arg(width));
    };
    if (!isTextValue(values[0])) {
        const QString text = argText(values[0]);
        if (width > 0 && text.size() > width) {
            tooLong();
        } else {
            giveText(context, text);
        }
        return;
    }
    const auto* bytes = sqlite3_value_text(values[0]);
    const int size = sqlite3_value_bytes(values[0]);
    if (width > 0 && size > width && lettersOf(bytes, size) > width) {
        tooLong();
        return;
    }
    sqlite3_result_value(context, values[0]);
}

/// Assignment to Long. A text is the number at its beginning; a number beyond 32 bits is refused.
void toLong(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const double number = argNumber(values[0]);
    const double rounded = std::nearbyint(number);
    constexpr double kLeast = std::numeric_limits<qint32>::min();
    constexpr double kMost = std::numeric_limits<qint32>::max();
    if (isTextValue(values[0])) {
        giveLong(context, toLongHalfEven(number));
    } else if (!(rounded >= kLeast && rounded <= kMost)) {
        giveError(context, dberror::kTypeMismatch,
                  u"Die Zahl %1 passt nicht in die Spalte."_s.arg(argText(values[0])));
    } else {
        giveLong(context, qint64(rounded));
    }
}

void toDouble(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        sqlite3_result_double(context, argNumber(values[0]));
    }
}

/// Assignment to Date. An empty text is null, any other text that is no date is refused.
void toDate(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    if (const auto day = argDay(values[0])) {
        sqlite3_result_double(context, *day);
    } else if (!argText(values[0]).trimmed().isEmpty()) {
        giveError(context, dberror::kTypeMismatch,
                  u"\"%1\" ist kein Datum."_s.arg(argText(values[0]).left(60)));
    }
}

void toBool(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const QString word = isTextValue(values[0]) ? argText(values[0]).trimmed() : QString();
    const auto is = [&](QLatin1StringView text) {
        return word.compare(text, Qt::CaseInsensitive) == 0;
    };
    const bool yes = is("true"_L1) || is("yes"_L1) || is("on"_L1) || is("wahr"_L1) || is("ja"_L1);
    giveTruth(context, yes || argNumber(values[0]) != 0);
}

/// For comparisons: null unless the whole text is a number.
void comparableNumber(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isTextValue(values[0])) {
        sqlite3_result_value(context, values[0]);
    } else if (const auto number = dialect::wholeTextNumber(argText(values[0]))) {
        giveNumber(context, *number);
    }
}

/// For arithmetic: the number at the beginning of a text.
void leading(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isTextValue(values[0])) {
        sqlite3_result_value(context, values[0]);
    } else {
        giveNumber(context, argNumber(values[0]));
    }
}

void cdate(sqlite3_context* context, int, sqlite3_value** values)
{
    if (const auto day = argDay(values[0])) {
        sqlite3_result_double(context, *day);
    }
}

void cstr(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    if (sqlite3_value_type(values[0]) == SQLITE_TEXT) {
        sqlite3_result_value(context, values[0]);
    } else {
        giveText(context, argText(values[0]));
    }
}

/// A date as text, as Value::toText() writes it; what is no date stays as it is.
void dateText(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const auto day = isTextValue(values[0]) ? std::nullopt : argDay(values[0]);
    giveText(context, day ? Value(Value::Day{*day}).toText() : argText(values[0]));
}

void same(sqlite3_context* context, int, sqlite3_value** values)
{
    sqlite3_result_value(context, values[0]);
}

/// "+" where neither side has a type before the statement runs.
void plus(sqlite3_context* context, int, sqlite3_value** values)
{
    if (anyNull(2, values)) {
        return;
    }
    if (isTextValue(values[0]) || isTextValue(values[1])) {
        giveText(context, argText(values[0]) + argText(values[1]));
    } else {
        giveNumber(context, argNumber(values[0]) + argNumber(values[1]));
    }
}

/// "+" between a text and a number: the sum when the text is a number.
void addMixed(sqlite3_context* context, int, sqlite3_value** values)
{
    if (anyNull(2, values)) {
        return;
    }
    const auto isNumber = [](sqlite3_value* value) {
        return !isTextValue(value) || dialect::wholeTextNumber(argText(value)).has_value();
    };
    if (isNumber(values[0]) && isNumber(values[1])) {
        giveNumber(context, argNumber(values[0]) + argNumber(values[1]));
    } else {
        giveText(context, argText(values[0]) + argText(values[1]));
    }
}

void isNumeric(sqlite3_context* context, int, sqlite3_value** values)
{
    giveTruth(context,
              !isNull(values[0]) && (!isTextValue(values[0]) ||
                                     dialect::wholeTextNumber(argText(values[0])).has_value()));
}

/// A column is never empty in the sense of a variable that nobody has set: null is a value.
void isEmpty(sqlite3_context* context, int, sqlite3_value**)
{
    giveTruth(context, false);
}

void isDate(sqlite3_context* context, int, sqlite3_value** values)
{
    // A plain number can be read as a date but is none.
    giveTruth(context, isTextValue(values[0]) && argDay(values[0]) &&
                           !dialect::wholeTextNumber(argText(values[0])));
}

} // namespace

std::span<const FunctionEntry> conversionFunctions()
{
    static constexpr FunctionEntry kEntries[] = {
        {"mlv_totext", toText, 2},       {"mlv_tolong", toLong, 1},
        {"mlv_todouble", toDouble, 1},   {"mlv_todate", toDate, 1},
        {"mlv_tobool", toBool, 1},       {"mlv_num", comparableNumber, 1},
        {"mlv_lead", leading, 1},        {"mlv_cdate", cdate, 1},
        {"mlv_cstr", cstr, 1},           {"mlv_datetext", dateText, 1},
        {"mlv_same", same, 1},           {"mlv_plus", plus, 2},
        {"mlv_isnumeric", isNumeric, 1}, {"mlv_isdate", isDate, 1},
        {"mlv_isempty", isEmpty, 1},     {"mlv_add", addMixed, 2},
        {"mlv_clng", toLong, 1},         {"mlv_cdbl", toDouble, 1},
    };
    return kEntries;
}

} // namespace melovane::sqlite
