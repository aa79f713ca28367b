#pragma once

#include "playlists/list_delta.h"

#include <QHash>
#include <QString>

#include <vector>

namespace melovane {

class Database;

/// Rows of `pl_stat` that go over from one track to another, and back.
///
/// The table has no key. A row is known by its track and its moment; of several with both the same
/// any will do, as long as there are as many. In a difference the key is that moment as a number
/// with a count behind it, and the one column that changes is the track.

/// How many rows of a moment were met.
using PlayCounts = QHash<qint64, int>;

/// The column of the track in such a difference.
inline constexpr int kPlayTrackColumn = 1;

[[nodiscard]] DeltaMaker playDelta();

/// The keys of all that was played of a track. \param counts of the same edit before; goes on
/// \throws DbError
[[nodiscard]] std::vector<qint64>
playKeys(Database& database, const QString& fid, PlayCounts& counts);

/// True when there is a row for each change. \throws DbError
[[nodiscard]] bool playsStand(Database& database, const TableDelta& delta);

/// Gives the rows to the other track; those that are gone are left out. \throws DbError
void movePlays(Database& database, const TableDelta& delta);

} // namespace melovane
