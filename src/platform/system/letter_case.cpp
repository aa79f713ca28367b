#include "platform/system/letter_case.h"

namespace melovane {

namespace {

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

QString upperCase(QStringView text)
{
    return mapCase<QChar::toUpper>(text);
}

QString lowerCase(QStringView text)
{
    return mapCase<QChar::toLower>(text);
}

} // namespace melovane
