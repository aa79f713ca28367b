#pragma once

#include "playlists/list_delta.h"
#include "playlists/playlist_ids.h"

#include <vector>

namespace melovane {

/// The entries that a user sees as changed when a difference has been written, to be shown to him:
/// those that came, or else those with other values, or else those that changed places. Entries
/// that only made room are not among them, and none is when entries only went.
[[nodiscard]] std::vector<Plid> touchedEntries(const ListDelta& delta);

} // namespace melovane
