#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

#include <optional>

namespace melovane {

class Database;

/// What is told about the list that is shown.
struct PlaylistSummary
{
    QString name; ///< empty when no list is shown
    int entries = 0;
    qint64 milliseconds = 0;
    bool locked = false;
};

/// All of it but the lock, with one look at the database; nothing for a list that is gone. Entries
/// whose track is gone count, too. \throws DbError
[[nodiscard]] std::optional<PlaylistSummary> readSummary(Database& database, Pnid list);

} // namespace melovane
