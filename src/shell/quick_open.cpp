#include "shell/quick_open.h"

#include <algorithm>

namespace melovane {

namespace {

NameMatch::Rank rankOf(const QuickEntry& entry, const NameMatch& match)
{
    const NameMatch::Rank rank = match.rank(entry.title);
    const bool fits = rank != NameMatch::kNone ||
                      match.rank(QString(entry.title + u' ' + entry.kind)) != NameMatch::kNone;
    return rank == NameMatch::kNone && fits ? NameMatch::kHolds : rank;
}

} // namespace

std::vector<QuickMatch> quickMatches(const std::vector<QuickEntry>& entries, const QString& typed)
{
    const NameMatch match(typed);
    std::vector<QuickMatch> result;
    for (size_t place = 0; place < entries.size(); ++place) {
        const NameMatch::Rank rank = rankOf(entries[place], match);
        if (rank != NameMatch::kNone) {
            result.push_back({place, rank});
        }
    }
    std::ranges::stable_sort(result, {}, &QuickMatch::rank);
    return result;
}

} // namespace melovane
