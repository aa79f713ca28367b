#pragma once

#include "player/air_entry.h"

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace melovane {

class PlayingList;

/// Why an entry was left out.
enum class AirFault
{
    Missing, ///< its file is nowhere, or its track is gone
    Damaged  ///< its file cannot be played, or broke off
};

/// Looks in the list for the entry that comes next: passes over what cannot be played, and gathers
/// the jingles on the way.
///
/// Has no clock: one turn() looks at so many entries that the window does not wait for it.
class EntrySearch
{
public:
    /// Called once for an entry until the list or the place in it is another.
    using LeftOut = std::function<void(const MlvPlaylistDetail& entry, AirFault fault)>;

    /// \param list outlives the search
    EntrySearch(PlayingList& list, LeftOut leftOut);

    /// From here on the next one is looked for. An entry that is not in the list changes nothing.
    void standAt(Plid entry);
    /// Likewise, but the entry that the list stands at counts as played then.
    void standBehind(Plid entry);

    /// Looks on. Nothing when there is none, or none yet: a list in which nothing can be played is
    /// looked through again about once a second.
    [[nodiscard]] std::optional<AirEntry> turn();

    /// What was found cannot be played: the search goes on behind it, and its jingles sound with
    /// the next.
    void passOver(const AirEntry& found, AirFault fault);
    /// An entry that was not found here cannot be played. Told once for each entry.
    void tellFault(const MlvPlaylistDetail& entry, AirFault fault);

    /// From the place that the list stands at.
    void startOver();

    /// What was told is told again.
    void forgetFaults() { m_failed.clear(); }

    /// A hopeless list is looked through at once.
    void wake() { m_restTurns = 0; }

    /// Found nothing, and waits a while.
    [[nodiscard]] bool isResting() const { return m_restTurns > 0; }

    /// The entry that is looked at first; 0 for none.
    [[nodiscard]] Plid first() const;

private:
    [[nodiscard]] std::optional<AirEntry> look();
    void lookedThrough();

    PlayingList& m_list;
    LeftOut m_leftOut;
    std::vector<MlvPlaylistDetail> m_jingles; ///< passed so far
    std::set<Plid> m_failed;                  ///< told already
    int m_places = 0;                         ///< looked at in vain
    int m_restTurns = 0;
    bool m_isFresh = true;       ///< the entry that the list stands at was not played yet
    bool m_takesJingles = false; ///< there is nothing else
};

} // namespace melovane
