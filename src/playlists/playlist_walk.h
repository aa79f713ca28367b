#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

#include <optional>
#include <vector>

namespace melovane {

class Database;

/// One entry of a walk.
struct MlvPlaylistField
{
    QString FID;
    Plid PLID{};
    int position = 0; ///< running number from 1
    Sid SID{};

    bool operator==(const MlvPlaylistField&) const = default;
};

/// The index of an entry that a walk does not hold: keep.
inline constexpr int kNotInWalk = 10000;

/// A list in memory, walked in its order and round again. Entries whose track is gone are left out.
class PlaylistWalk
{
public:
    /// Reads the list; the first entry becomes the current one. \throws DbError, the walk is empty
    /// then
    void fill(Database& database, Pnid list);

    /// Reads anew and stays at the same entry, or goes to the first when it is gone.
    void refresh(Database& database, Pnid list);

    /// The entry behind the current one, which becomes current; the first behind the last. Nothing
    /// for an empty walk.
    std::optional<MlvPlaylistField> next();

    /// Goes to an index from 1, and stays when there is no such one. The current entry.
    std::optional<MlvPlaylistField> setPosition(int index);

    /// Index from 1 of an entry, or kNotInWalk.
    [[nodiscard]] int indexOf(Plid entry) const;

    [[nodiscard]] std::optional<MlvPlaylistField> current() const;

    [[nodiscard]] int index() const { return m_index; }

    [[nodiscard]] int count() const { return int(m_items.size()); }

    /// True when a track of the list lies on a disc.
    [[nodiscard]] bool hasDisc() const { return m_hasDisc; }

private:
    std::vector<MlvPlaylistField> m_items;
    int m_index = 1;
    bool m_hasDisc = false;
};

} // namespace melovane
