#include "views/name_match.h"

#include <algorithm>

namespace melovane {

namespace {

bool beginsWord(QStringView name, const QStringMatcher& word)
{
    for (qsizetype at = word.indexIn(name); at >= 0; at = word.indexIn(name, at + 1)) {
        if (at == 0 || !name[at - 1].isLetterOrNumber()) {
            return true;
        }
    }
    return false;
}

} // namespace

NameMatch::NameMatch(const QString& typed)
    : m_typed(typed.simplified())
{
    for (const QString& word : m_typed.split(u' ', Qt::SkipEmptyParts)) {
        m_words.emplace_back(word, Qt::CaseInsensitive);
    }
}

NameMatch::Rank NameMatch::rank(QStringView name) const
{
    const auto isIn = [name](const QStringMatcher& word) { return word.indexIn(name) >= 0; };
    if (!std::ranges::all_of(m_words, isIn)) {
        return kNone;
    }
    if (name.startsWith(m_typed, Qt::CaseInsensitive)) {
        return kBegins;
    }
    const auto begins = [name](const QStringMatcher& word) { return beginsWord(name, word); };
    return std::ranges::all_of(m_words, begins) ? kWordBegins : kHolds;
}

} // namespace melovane
