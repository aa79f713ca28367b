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
    QString rows; ///< of the track, its list entries and its statistics; see bringBack()
};

/// The tracks that meet a condition on `db_all`, in the order of the table.
[[nodiscard]] std::vector<RemovedTrack> tracksToRemove(Database& database,
                                                       const QString& condition);

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
/// come back into lists that still stand, at their positions; one whose number was given away gets
/// a new one. The counts of these lists follow. Entries of a list that is gone stay away.
/// \param rows of a RemovedTrack; a text that is none brings nothing back
/// To be used inside a transaction. \throws DbError
BroughtBack bringBack(Database& database, const QString& rows);

} // namespace melovane
