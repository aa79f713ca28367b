#pragma once

#include "library/library_query.h"

namespace melovane {

class ConfigObjects;

/// What the rows of the library grid are the answer to, for the user.
struct ShownRequest
{
    enum class Kind
    {
        Nothing,    ///< was asked for yet
        SearchLine, ///< a text of the search line
        Text,       ///< a text that came from elsewhere: a tree, a menu, another program
        Folder,
        Deleted, ///< tracks marked as deleted
        Missing, ///< tracks without their file
        Other,   ///< a playlist, a picture, one track
    };

    Kind kind = Kind::Nothing;
    QString text; ///< that was searched, or the folder; empty for the rest

    bool operator==(const ShownRequest&) const = default;
};

[[nodiscard]] ShownRequest shownRequest(const TreeRequest& request);
[[nodiscard]] ShownRequest shownRequest(LibraryView view);

/// How the view names itself beside the number of its tracks; empty for the search line, which
/// shows its text, and where there is nothing to say.
[[nodiscard]] QString nameOf(const ShownRequest& request, const ConfigObjects& texts);

} // namespace melovane
