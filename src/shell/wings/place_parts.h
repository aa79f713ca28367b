#pragma once

#include "bus/event_guard.h"
#include "shell/work_place.h"

#include <vector>

namespace melovane {

struct Desk;
struct LibraryWing;
struct PlaylistWing;
struct TreesWing;

/// What of the window is kept over a kill: the trees, the list and its row, the rows of the library
/// with their order, and the row in them. All of it outlives the parts.
///
/// \param guard tells what fails on the way back
[[nodiscard]] std::vector<PlacePart> placeParts(Desk& desk,
                                                LibraryWing& library,
                                                PlaylistWing& playlist,
                                                TreesWing& trees,
                                                const EventGuard& guard);

} // namespace melovane
