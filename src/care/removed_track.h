#pragma once

#include "platform/db/value.h"

#include <QString>

#include <vector>

namespace melovane {

class Database;

/// A track that leaves the library, and all that the library knows of it.
struct RemovedTrack
{
    QString fid;
    QString title; ///< artist and title, for a person
    QString path;
    QString name;
    bool isOnDisc = false;
    QString rows; ///< of the track and what goes with it; see bringBack()
};

/// What becomes of the list entries and the statistics of a removed track.
enum class Dependencies
{
    Go,  ///< with it
    Stay ///< with the track that takes its place
};

/// The tracks that meet a condition on `db_all`, in the order of the table.
[[nodiscard]] std::vector<RemovedTrack>
tracksToRemove(Database& database, const QString& condition, Dependencies dependencies);

/// What came back of a removed track.
struct BroughtBack
{
    bool hasTrack = false;
    int entries = 0;
    int plays = 0;
};

/// Writes the rows of a removed track again, each unless it is there.
///
/// The track comes back with every column, but no longer marked as deleted or missing. Its entries
/// come back into their lists, at their positions; one whose number was given away gets a new one.
/// The counts of these lists follow. A list that is gone comes back with its group, unless it was
/// one that only the user can have removed: shown or played. Entries of that one stay away.
/// \param rows of a RemovedTrack; a text that is none brings nothing back
/// To be used inside a transaction. \throws DbError
BroughtBack bringBack(Database& database, const QString& rows);

} // namespace melovane
