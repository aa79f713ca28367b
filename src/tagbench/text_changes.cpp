#include "tagbench/text_changes.h"

#include "platform/system/letter_case.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Work that the engine may do for one text: a few milliseconds. Patterns that would go through
/// every way to divide a text give up there.
const QString kMatchLimit = u"(*LIMIT_MATCH=100000)"_s;

QString patternOf(const ReplaceOrder& order)
{
    const QString inner = order.isPattern ? order.find : QRegularExpression::escape(order.find);
    return kMatchLimit + (order.wholeWords ? u"\\b(?:"_s + inner + u")\\b"_s : inner);
}

QRegularExpression::PatternOptions optionsOf(const ReplaceOrder& order)
{
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    options.setFlag(QRegularExpression::CaseInsensitiveOption, !order.matchCase);
    return options;
}

} // namespace

TextReplacement::TextReplacement(const ReplaceOrder& order)
    : m_pattern(patternOf(order), optionsOf(order))
    , m_replacement(order.replacement)
    , m_isPattern(order.isPattern)
    , m_isUsable(!order.find.isEmpty() && m_pattern.isValid())
{}

QString TextReplacement::fault() const
{
    return m_pattern.isValid() ? QString() : m_pattern.errorString();
}

QString TextReplacement::applied(const QString& text) const
{
    if (!m_isUsable) {
        return text;
    }
    if (m_isPattern) {
        return QString(text).replace(m_pattern, m_replacement);
    }
    // Not by the same call: a "\\1" that was typed as plain text is no group.
    QString result;
    qsizetype end = 0;
    for (auto matches = m_pattern.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += QStringView(text).sliced(end, match.capturedStart() - end);
        result += m_replacement;
        end = match.capturedEnd();
    }
    result += QStringView(text).sliced(end);
    return result;
}

QString spelt(const QString& text, LetterCase letters)
{
    if (letters == LetterCase::Upper) {
        return upperCase(text);
    }
    QString result = lowerCase(text);
    if (letters == LetterCase::Lower) {
        return result;
    }
    bool isStart = true;
    for (QChar& sign : result) {
        // An apostrophe belongs to its word: "don't".
        const bool isInWord = sign.isLetterOrNumber() || sign.isMark() || sign.isSurrogate() ||
                              sign == u'\'' || sign == QChar(0x2019);
        if (isStart && isInWord) {
            sign = sign.toUpper();
            isStart = false;
        } else if (!isInWord && letters == LetterCase::EachWord) {
            isStart = true;
        }
    }
    return result;
}

std::vector<QString> trackNumbers(const NumberOrder& order, int count)
{
    std::vector<QString> result;
    const int last = order.first + count - 1;
    const auto text = [&](int number) {
        return QString::number(number).rightJustified(order.digits, u'0');
    };
    for (int number = order.first; number <= last; ++number) {
        result.push_back(order.withTotal ? text(number) + u'/' + text(last) : text(number));
    }
    return result;
}

} // namespace melovane
