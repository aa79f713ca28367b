#pragma once

#include "playlists/playlist_ids.h"

#include <vector>

namespace melovane {

class GridControl;
class GridRows;

/// Selects the rows of entries; the first of them becomes the current one and comes on the screen.
/// Entries without a row are left out, and without any everything stays as it is. \throws DbError
void selectEntries(GridControl& grid, const GridRows& rows, const std::vector<Plid>& entries);

/// The same for the entries that are newer than one.
void selectNewerEntries(GridControl& grid, const GridRows& rows, Plid entry);

} // namespace melovane
