#pragma once

#include "playlists/playlist_detail.h"

#include <optional>
#include <vector>

namespace melovane {

class PlayingList;

/// An entry on a deck, or on its way there.
struct AirEntry
{
    MlvPlaylistDetail entry;
    std::vector<MlvPlaylistDetail> jingles; ///< that begin with it
    bool isFromList = true;                 ///< the list goes on behind it
    bool isFound = false;                   ///< by the search, not asked for by anybody
    bool isRepeat = false;                  ///< a round of the loop that plays
    bool isCounted = false;
    std::optional<bool> loops;    ///< the user's word, against its action
    std::optional<int> pitch;     ///< likewise, 1/100 percent
    std::optional<double> fromMs; ///< place in its file, when it does not begin at its start
    quint32 load = 0;             ///< number that the engine gave it
};

/// A track as the entry that it has in the list, else as one without. Without a file it cannot be
/// played.
[[nodiscard]] AirEntry airEntryOfTrack(PlayingList& list, const QString& fid);

/// An entry as it was left, or its track where the entry is gone. The list stands at it then.
/// \param positionMs in its file
[[nodiscard]] AirEntry
airEntryLeftAt(PlayingList& list, Plid entry, const QString& fid, double positionMs);

} // namespace melovane
