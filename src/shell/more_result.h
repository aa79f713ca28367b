#pragma once

#include <QString>

#include <array>
#include <vector>

namespace melovane {

/// One entry of the submenu `mnuMoreResult`, which finds more of the same.
struct MoreResultEntry
{
    enum class Kind
    {
        Search,
        Separator,
        Header ///< says what the entries behind it do; cannot be chosen
    };

    Kind kind = Kind::Search;
    QString caption;
    QString tag; ///< "*" for a search inside the texts
    bool visible = true;

    bool operator==(const MoreResultEntry&) const = default;
};

/// The entries for a track. The first one is always there: the artist, hidden when there is none.
/// Then the title, then each word of both that is longer than two letters, once per list.
///
/// \param headers what stands above the two lists of words
[[nodiscard]] std::vector<MoreResultEntry> moreResultEntries(const QString& artist,
                                                             const QString& title,
                                                             const std::array<QString, 2>& headers);

/// The text to search for when an entry is chosen. A whole artist or title is searched as it is, a
/// word (its caption begins with "&") at the beginning of the texts or, with the tag "*", anywhere.
[[nodiscard]] QString moreResultSearch(const QString& tag, const QString& caption);

} // namespace melovane
