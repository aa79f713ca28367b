#include "platform/db/db_error.h"
#include "platform/db/text_compare.h"
#include "platform/sqlite/functions/functions_value.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"

#include <QList>

#include <algorithm>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A function of one text.
template <QString (*Function)(const QString&)>
void unary(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveText(context, Function(argText(values[0])));
    }
}

QString upper(const QString& text)
{
    return upperCase(text);
}

QString lower(const QString& text)
{
    return lowerCase(text);
}

QString trimBoth(const QString& text)
{
    return trimBlanks(text);
}

QString trimLeft(const QString& text)
{
    qsizetype at = 0;
    while (at < text.size() && text[at] == u' ') {
        ++at;
    }
    return text.mid(at);
}

QString trimRight(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ') {
        --end;
    }
    return text.left(end);
}

QString reversed(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = text.size(); i > 0; --i) {
        if (i > 1 && text[i - 1].isLowSurrogate() && text[i - 2].isHighSurrogate()) {
            result.append(text[i - 2]).append(text[i - 1]);
            --i;
        } else {
            result.append(text[i - 1]);
        }
    }
    return result;
}

/// A number with a blank in place of the plus sign.
QString numberText(const QString& text)
{
    return text.startsWith(u'-') ? text : u' ' + text;
}

void left(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        giveText(context, argText(values[0]).left(std::max(0, argLong(values[1]))));
    }
}

void right(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        giveText(context, argText(values[0]).right(std::max(0, argLong(values[1]))));
    }
}

/// Text, first letter counted from 1, number of letters or all.
void mid(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const int start = std::max(1, argLong(values[1]));
    const int size = count > 2 ? std::max(0, argLong(values[2])) : -1;
    giveText(context, argText(values[0]).mid(start - 1, size));
}

void len(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveLong(context, argText(values[0]).size());
    }
}

/// [start,] text, wanted [, mode]: the place counted from 1, 0 for none. Texts compare folded.
void instr(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const bool hasStart = count > 2 && sqlite3_value_type(values[0]) != SQLITE_TEXT;
    const int start = hasStart ? std::max(1, argLong(values[0])) : 1;
    const QString text = argText(values[hasStart ? 1 : 0]);
    const QString wanted = argText(values[hasStart ? 2 : 1]);
    giveLong(context, start > text.size() && !text.isEmpty()
                          ? 0
                          : text.indexOf(wanted, start - 1, Qt::CaseInsensitive) + 1);
}

/// text, wanted [, start]: the last place.
void instrrev(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const QString text = argText(values[0]);
    const QString wanted = argText(values[1]);
    const qsizetype end = count > 2 && argLong(values[2]) > 0 ? argLong(values[2]) : text.size();
    giveLong(context, text.left(end).lastIndexOf(wanted, -1, Qt::CaseInsensitive) + 1);
}

/// text, wanted, other [, start [, count]].
void replace(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const QString text = argText(values[0]);
    const QString wanted = argText(values[1]);
    const QString other = argText(values[2]);
    qsizetype at = count > 3 ? std::max(1, argLong(values[3])) - 1 : 0;
    int most = count > 4 ? argLong(values[4]) : -1;
    QString result;
    while (most != 0 && !wanted.isEmpty()) {
        const qsizetype hit = text.indexOf(wanted, at, Qt::CaseInsensitive);
        if (hit < 0 || result.size() > kLongestText) {
            break;
        }
        result.append(QStringView(text).sliced(at, hit - at)).append(other);
        at = hit + wanted.size();
        --most;
    }
    giveText(context, result + text.mid(at));
}

void repeated(sqlite3_context* context, int number, const QString& letter)
{
    if (number > kLongestText) {
        giveError(context, dberror::kFieldTooSmall, u"Der Text ist zu lang."_s);
    } else {
        giveText(context, letter.repeated(std::max(0, number)));
    }
}

void space(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        repeated(context, argLong(values[0]), u" "_s);
    }
}

/// Number, letter or its code.
void string(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const bool isCode = sqlite3_value_type(values[1]) != SQLITE_TEXT;
    const QString letter =
        isCode ? QString(QChar(char16_t(argLong(values[1])))) : argText(values[1]).left(1);
    repeated(context, argLong(values[0]), letter);
}

/// -1, 0 or 1 in the order of the library; mode 0 compares letter by letter.
void strcomp(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const QString first = argText(values[0]);
    const QString second = argText(values[1]);
    const bool exact = count > 2 && argLong(values[2]) == 0;
    const int order = exact ? QString::compare(first, second) : textcompare::compare(first, second);
    giveLong(context, order < 0 ? -1 : (order > 0 ? 1 : 0));
}

QString properCase(const QString& text)
{
    QString result = lowerCase(text);
    bool begin = true;
    for (QChar& sign : result) {
        sign = begin ? sign.toUpper() : sign;
        begin = !sign.isLetterOrNumber() && sign != u'\'';
    }
    return result;
}

/// Mode 1 upper case, 2 lower case, 3 first letters upper case; others leave the text.
void strconv(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const QString text = argText(values[0]);
    switch (argLong(values[1])) {
    case 1:
        giveText(context, upperCase(text));
        return;
    case 2:
        giveText(context, lowerCase(text));
        return;
    case 3:
        giveText(context, properCase(text));
        return;
    }
    giveText(context, text);
}

void chr(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const int code = argLong(values[0]);
    if (code < 1 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        giveText(context, {});
        return;
    }
    const char32_t letter = char32_t(code);
    giveText(context, QString::fromUcs4(&letter, 1));
}

void asc(sqlite3_context* context, int, sqlite3_value** values)
{
    const QString text = argText(values[0]);
    if (!text.isEmpty()) {
        giveLong(context, text.toUcs4().front());
    }
}

} // namespace

std::span<const FunctionEntry> textFunctions()
{
    static constexpr FunctionEntry kEntries[] = {
        {"mlv_asc", asc, 1},
        {"mlv_chr", chr, 1},
        {"mlv_instr", instr, -1},
        {"mlv_instrrev", instrrev, -1},
        {"mlv_lcase", unary<lower>, 1},
        {"mlv_left", left, 2},
        {"mlv_len", len, 1},
        {"mlv_ltrim", unary<trimLeft>, 1},
        {"mlv_mid", mid, -1},
        {"mlv_replace", replace, -1},
        {"mlv_right", right, 2},
        {"mlv_rtrim", unary<trimRight>, 1},
        {"mlv_space", space, 1},
        {"mlv_str", unary<numberText>, 1},
        {"mlv_strcomp", strcomp, -1},
        {"mlv_strconv", strconv, 2},
        {"mlv_string", string, 2},
        {"mlv_strreverse", unary<reversed>, 1},
        {"mlv_trim", unary<trimBoth>, 1},
        {"mlv_ucase", unary<upper>, 1},
    };
    return kEntries;
}

} // namespace melovane::sqlite
