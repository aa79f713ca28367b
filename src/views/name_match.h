#pragma once

#include <QString>
#include <QStringMatcher>

#include <vector>

namespace melovane {

/// How well names fit what a user types to find one. Letter case does not count.
class NameMatch
{
public:
    /// Lower fits better.
    enum Rank
    {
        kNone = -1,  ///< a word is missing
        kBegins,     ///< the name begins with what is typed
        kWordBegins, ///< each typed word begins a word of the name
        kHolds       ///< each typed word stands in the name somewhere
    };

    /// An empty text fits every name.
    explicit NameMatch(const QString& typed);

    [[nodiscard]] Rank rank(QStringView name) const;

private:
    QString m_typed; ///< single blanks between the words
    std::vector<QStringMatcher> m_words;
};

} // namespace melovane
