#pragma once

#include "playlists/playlist_ids.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace melovane {

class ConfigObjects;

/// What a user did to a list, or to tracks.
enum class ListAction
{
    Append,
    Insert,
    Copy,
    Move,
    Delete,
    MoveUp,
    MoveDown,
    Aktion,
    Entry,  ///< values of one entry: start, stop, volume, styles
    Reset,  ///< values of all entries
    Styles, ///< mix styles of all entries
    Import,
    DeleteList,
    DeleteGroup,
    Tracks,  ///< fields of tracks
    Rating,  ///< the rating of a track
    Cover,   ///< the cover of tracks
    Favorit, ///< the mark of a favourite
    Flag,    ///< the mark of tracks out of use
    Relink,  ///< the places of tracks whose files lie elsewhere now
    Merge,   ///< several rows of one recording, of which one stays
};

/// One step of the history, as it can be told to the user.
struct ListStep
{
    ListAction action = ListAction::Entry;
    Pnid list{};      ///< the list it belongs to; 0 for a group and for tracks
    QString listName; ///< its name at that time, or the group's, or the title of a single track
    int count = 0;    ///< entries that came, went or got other values; tracks that did
    QDateTime moment;
};

/// The word under which an action stands in the side file: keep.
[[nodiscard]] QString actionWord(ListAction action);
[[nodiscard]] std::optional<ListAction> actionOfWord(QStringView word);

/// What the step did, in the user's language: "3 Titel in „Party“ eingefügt".
[[nodiscard]] QString stepText(const ConfigObjects& texts, const ListStep& step);

/// Captions of the two commands; without a step they say that there is nothing to do.
[[nodiscard]] QString undoText(const ConfigObjects& texts, const std::optional<ListStep>& step);
[[nodiscard]] QString redoText(const ConfigObjects& texts, const std::optional<ListStep>& step);

/// The question to be asked when the list was changed elsewhere since.
[[nodiscard]] QString changedElsewhereText(const ConfigObjects& texts, const ListStep& step);

} // namespace melovane
