#include "platform/system/text_number.h"

#include <QString>

#include <cmath>
#include <limits>

namespace melovane {

namespace {

bool isDigit(QChar sign)
{
    return sign >= u'0' && sign <= u'9';
}

template <char32_t (*Map)(char32_t)> QString mapCase(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const char32_t code = Map(QChar::surrogateToUcs4(text[i], text[i + 1]));
            result.append(QChar::highSurrogate(code)).append(QChar::lowSurrogate(code));
            ++i;
        } else {
            result.append(QChar(char16_t(Map(text[i].unicode()))));
        }
    }
    return result;
}

} // namespace

double leadingNumber(QStringView text)
{
    qsizetype at = 0;
    while (at < text.size() && text[at] == u' ') {
        ++at;
    }
    const qsizetype start = at;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        ++at;
    }
    bool point = false;
    bool digits = false;
    for (; at < text.size(); ++at) {
        if (isDigit(text[at])) {
            digits = true;
        } else if (text[at] == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    return digits ? text.sliced(start, at - start).toDouble() : 0;
}

int leadingLong(QStringView text)
{
    return toLongHalfEven(leadingNumber(text));
}

int toLongHalfEven(double number)
{
    if (std::isnan(number)) {
        return 0;
    }
    if (number >= double(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    if (number <= double(std::numeric_limits<int>::min())) {
        return std::numeric_limits<int>::min();
    }
    return int(std::nearbyint(number));
}

QString trimBlanks(QStringView text)
{
    while (text.startsWith(u' ')) {
        text = text.sliced(1);
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text.toString();
}

QString upperCase(QStringView text)
{
    return mapCase<QChar::toUpper>(text);
}

QString lowerCase(QStringView text)
{
    return mapCase<QChar::toLower>(text);
}

} // namespace melovane
