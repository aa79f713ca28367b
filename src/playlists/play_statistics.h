#pragma once

#include "playlists/entry_records.h"

namespace melovane {

class Clock;

/// Counts a play of an entry on its track and notes it in the statistics. Quiet: each of the two
/// goes on when the other fails. A detail without a track writes nothing.
void savePlayStatistics(const PlaylistParts& parts,
                        const Clock& clock,
                        const MlvPlaylistDetail& played);

} // namespace melovane
