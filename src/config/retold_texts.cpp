#include "config/retold_texts.h"

#include "config/config_objects.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A text with values in it is known by at least so many letters around them.
constexpr qsizetype kLeastWords = 4;

QString shownText(QString text)
{
    return text.replace("\\n"_L1, "\n"_L1);
}

QStringList textsOf(const ConfigObject& item)
{
    return {shownText(item.Description), shownText(item.DescriptionEx), shownText(item.ToolTip)};
}

bool isValue(QStringView text, qsizetype at)
{
    return at + 1 < text.size() && text[at] == u'$' && text[at + 1] >= u'1' && text[at + 1] <= u'4';
}

} // namespace

RetoldTexts::RetoldTexts(const ConfigObjects& catalogue)
{
    for (const ConfigObject* item : catalogue.AllObjects()) {
        m_before.insert(item->Name, textsOf(*item));
    }
}

void RetoldTexts::become(const ConfigObjects& catalogue)
{
    m_whole.clear();
    m_patterns.clear();
    for (const ConfigObject* item : catalogue.AllObjects()) {
        const QStringList before = m_before.value(item->Name);
        const QStringList now = textsOf(*item);
        for (qsizetype i = 0; i < before.size(); ++i) {
            if (before[i].isEmpty() || before[i] == now[i]) {
                continue;
            }
            if (before[i].contains(u'$')) {
                addPattern(before[i], now[i]);
            } else if (!m_whole.contains(before[i])) {
                m_whole.insert(before[i], now[i]);
            }
        }
    }
    // The one with the most words of its own says best what a text was made of.
    std::ranges::stable_sort(m_patterns, std::ranges::greater(), [](const Pattern& pattern) {
        return pattern.former.pattern().size();
    });
}

void RetoldTexts::addPattern(const QString& former, const QString& present)
{
    QString expression;
    QString numbers;
    qsizetype letters = 0;
    for (qsizetype at = 0; at < former.size(); ++at) {
        if (isValue(former, at)) {
            numbers += former[++at];
            expression += "(.*?)"_L1;
        } else {
            expression += QRegularExpression::escape(QString(former[at]));
            letters += former[at].isLetter() ? 1 : 0;
        }
    }
    if (letters >= kLeastWords) {
        m_patterns.push_back({QRegularExpression(QRegularExpression::anchoredPattern(expression),
                                                 QRegularExpression::DotMatchesEverythingOption),
                              numbers, present});
    }
}

QString RetoldTexts::retold(const QString& shown) const
{
    if (const auto whole = m_whole.constFind(shown); whole != m_whole.constEnd()) {
        return *whole;
    }
    for (const Pattern& pattern : m_patterns) {
        const QRegularExpressionMatch match = pattern.former.match(shown);
        if (!match.hasMatch()) {
            continue;
        }
        QString result;
        for (qsizetype at = 0; at < pattern.present.size(); ++at) {
            if (isValue(pattern.present, at)) {
                const qsizetype value = pattern.numbers.indexOf(pattern.present[++at]);
                result += value < 0 ? QString() : match.captured(int(value) + 1);
            } else {
                result += pattern.present[at];
            }
        }
        return result;
    }
    return shown;
}

} // namespace melovane
