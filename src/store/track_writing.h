#pragma once

#include "platform/db/value.h"

#include <QString>
#include <QStringList>

#include <span>
#include <vector>

namespace melovane {

class Database;

/// A column of a track's row and what it is to hold.
struct ColumnValue
{
    QString column; ///< in `db_all`, without regard to case
    Value value;
};

/// A column whose value a write has changed.
struct ColumnChange
{
    QString column; ///< as it was given
    Value before;
    Value after;
};

/// What one write has changed in the row of a track.
struct TrackChange
{
    QString fid;
    std::vector<ColumnChange> columns; ///< without those that held their value already

    /// The trees that are out of date with it, in the words of PendingJobs::ChangeTree.
    [[nodiscard]] QStringList trees() const;

    /// Whether the file holds one of the columns in its tag.
    [[nodiscard]] bool isInFile() const;
};

/// Whether a change of a track is to reach its file.
enum class TagOrder
{
    Enter, ///< the track is entered for the job that writes tags
    None,  ///< the file knows nothing of the columns
};

/// The one way by which a change that the user makes enters the row of a track: cells of the grids,
/// ratings, the tag panel, covers.
///
/// Row and order to write the file stand together or not at all. Within a transaction of the caller
/// they belong to that. A track with nothing to change is entered all the same.
/// \throws DbError kNoCurrentRecord for a track that is not there, kItemNotFound, kFieldTooSmall,
///         kTypeMismatch; nothing is written then
TrackChange writeTrack(Database& database,
                       const QString& fid,
                       std::span<const ColumnValue> values,
                       TagOrder order);

} // namespace melovane
