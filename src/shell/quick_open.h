#pragma once

#include "views/name_match.h"

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

/// Something that the user can reach by its name.
struct QuickEntry
{
    QString title;       ///< "Ansicht: Spalten der Datenbank ..."
    QString kind;        ///< what it is, in the user's words
    QString key = {};    ///< that does the same, in the user's words; empty for none
    QString whyNot = {}; ///< why it cannot be done now; empty when it can
    std::function<void()> run = [] {};
};

/// The place of an entry among others, and how well it fits.
struct QuickMatch
{
    size_t place = 0;
    NameMatch::Rank rank = NameMatch::kNone;

    bool operator==(const QuickMatch&) const = default;
};

/// The entries that hold each typed word in title or kind, the best first: \see NameMatch. Equally
/// good ones keep their order; one whose kind alone fits comes last. An empty text finds all.
[[nodiscard]] std::vector<QuickMatch> quickMatches(const std::vector<QuickEntry>& entries,
                                                   const QString& typed);

} // namespace melovane
