#pragma once

#include "library/shown_request.h"
#include "platform/controls/grid_control.h"

namespace melovane {

class ConfigObjects;

/// A number of tracks as people read it: "1 284", with a narrow space that does not break.
[[nodiscard]] QString groupedNumber(qint64 number);

/// Why the grid of the library is empty.
enum class Emptiness
{
    None,        ///< it is not
    Lent,        ///< another program has the library
    NoLibrary,   ///< there is no track at all
    NoSearch,    ///< nothing was asked for
    NoHits,      ///< nothing was found
    NothingHere, ///< the node or view has no tracks
};

/// What the note in the empty grid goes by.
struct LibraryState
{
    qint64 rows = 0;
    qint64 librarySize = 0;
    LibraryView view = LibraryView::DBGrid;
    QString searchText; ///< that the search line searched; empty with it
    bool isLent = false;
    ShownRequest request = {}; ///< what the rows answer
};

[[nodiscard]] Emptiness emptinessOf(const LibraryState& state);

/// All empty while there are rows.
[[nodiscard]] EmptyNote libraryNote(const LibraryState& state, const ConfigObjects& texts);

} // namespace melovane
