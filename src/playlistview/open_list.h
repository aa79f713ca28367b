#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

namespace melovane {

/// The list that the playlist view shows.
struct OpenList
{
    QString library = {}; ///< file that the list stands in
    Pnid pnid{};          ///< 0 for none
    Pnid active{};        ///< the last one that was opened to become the active one
    bool locked = false;  ///< must not be changed
    bool jingles = false;

    [[nodiscard]] bool isOpen() const { return pnid != Pnid{}; }

    /// The play action of entries that come into it.
    [[nodiscard]] int newAktion() const { return jingles ? kAktionJinglePlay : kAktionMix; }
};

} // namespace melovane
