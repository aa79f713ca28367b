#pragma once

#include "playlists/entry_records.h"
#include "playlists/playlist_walk.h"

#include <QString>

#include <map>
#include <optional>

namespace melovane {

/// The list that is on air, as the player has it: its order, and what its next entries are.
///
/// Both stay in memory while the database is away or fails, so that the player goes on.
class PlayingList
{
public:
    explicit PlayingList(PlaylistParts parts);

    /// Reads which list plays (of several the one with the lowest number) and its order. False when
    /// the database is not to be had: everything stays as it was then.
    bool refresh();

    /// 0 when none plays.
    [[nodiscard]] Pnid list() const { return m_list; }

    [[nodiscard]] int count() const { return m_walk.count(); }

    [[nodiscard]] bool holds(Plid entry) const { return m_walk.indexOf(entry) != kNotInWalk; }

    /// The entry that the walk stands at.
    [[nodiscard]] std::optional<MlvPlaylistField> current() const { return m_walk.current(); }

    /// Goes to an entry; one that is not in the list changes nothing. An entry that is taken out
    /// of the list later leaves its place to the one behind it.
    void goTo(Plid entry);

    /// The entry so many places behind the current one, round and round; the current one for 0.
    /// Where the current one was taken out, the one that follows it now is the first.
    [[nodiscard]] std::optional<MlvPlaylistField> ahead(int places) const;

    /// The entry of a track, the nearest from the current one on; nothing when it has none.
    [[nodiscard]] std::optional<MlvPlaylistField> entryOf(const QString& fid) const;

    /// An entry with all its values, from memory while the database is away. Without a FID there is
    /// no such entry, or it is not known.
    [[nodiscard]] MlvPlaylistDetail detail(Plid entry);
    /// A track that has no entry, likewise; never kept.
    [[nodiscard]] MlvPlaylistDetail track(const QString& fid) const;

    /// Keeps so many entries from the current one on in memory, and forgets others.
    void keepAhead(int count);

private:
    [[nodiscard]] MlvPlaylistDetail read(Plid entry) const;
    void settle(const std::vector<Plid>& before, int place);

    PlaylistParts m_parts;
    EntryRecords m_entries;
    PlaylistWalk m_walk;
    Pnid m_list{};
    bool m_isGone = false; ///< the entry that plays was taken out in front of the current one
    std::map<Plid, MlvPlaylistDetail> m_kept;
};

} // namespace melovane
