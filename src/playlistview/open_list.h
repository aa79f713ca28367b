#pragma once

#include "playlists/playlist_ids.h"

namespace melovane {

/// The list that the playlist view shows.
struct OpenList
{
    Pnid pnid{};         ///< 0 for none
    Pnid active{};       ///< the last one that was opened to become the active one
    bool locked = false; ///< must not be changed
    bool jingles = false;

    [[nodiscard]] bool isOpen() const { return pnid != Pnid{}; }

    /// The play action of entries that come into it.
    [[nodiscard]] int newAktion() const { return jingles ? kAktionJinglePlay : kAktionMix; }
};

} // namespace melovane
