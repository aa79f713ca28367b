#pragma once

#include "platform/controls/tree_control.h"
#include "playlists/playlist_ids.h"

#include <optional>
#include <vector>

namespace melovane {

class Database;

/// A playlist or jingle list as the trees show it.
struct ListState
{
    Pnid list{};
    bool isJingle = false;
    QString name;
    bool isPlay = false;
    bool lock = false;
    bool activ = true; ///< marked for the playlist panel
    int entries = 0;   ///< as the list itself counts them

    bool operator==(const ListState&) const = default;
};

/// A group of lists.
struct GroupState
{
    qint64 group = 0;
    QString name;
    bool activ = true; ///< marked for the playlist panel
};

/// The name of the picture of a list; it tells the state of the row. A lock wins over playing.
[[nodiscard]] QString pictureOf(const ListState& list);

/// Bold while it is the playing one.
[[nodiscard]] TreeRow rowOf(const ListState& list);

/// The rows of the playlist panel: the jingle lists below their heading, then each group with its
/// lists. Groups without a list have their row, too. \throws DbError
/// \param all also the lists that are not marked for the panel, dimmed
[[nodiscard]] std::vector<TreeRow>
readFavoritRows(Database& database, const QString& jingleCaption, bool all);

/// The lists of a group in their order. \throws DbError
[[nodiscard]] std::vector<ListState> readListsOfGroup(Database& database, qint64 group);

/// All groups in their order. \throws DbError
[[nodiscard]] std::vector<GroupState> readGroups(Database& database);

/// Nothing when there is no such list. \throws DbError
[[nodiscard]] std::optional<ListState> readList(Database& database, Pnid list);

/// A row's text without the count "[12]" at its end.
[[nodiscard]] QString withoutCount(const QString& text);

} // namespace melovane
