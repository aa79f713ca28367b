#pragma once

#include "intake/imported_track.h"
#include "intake/intake_fids.h"
#include "intake/library_places.h"
#include "store/row_statements.h"

#include <optional>

namespace melovane {

/// Adds tracks to the library: nothing else inserts into `db_all`.
///
/// No file enters twice, whoever added it a moment ago: the look for its row and the insert belong
/// to one transaction of the caller, in which nobody else can write.
class TrackInsert
{
public:
    /// \throws DbError
    TrackInsert(Database& database, LibraryPlaces& places, const Clock& clock);

    /// What to do with a file whose identifier belongs to a row already.
    enum class TakenFid
    {
        MakeNew, ///< it is another track
        Tell     ///< the caller decides; nothing is written
    };

    struct Result
    {
        enum class Kind
        {
            Added,
            FileIsKnown, ///< nothing was written, `row` has the file
            FidIsTaken   ///< nothing was written, `row` has the identifier
        };

        Kind kind = Kind::Added;
        StoredPlace row; ///< empty behind Added
    };

    /// Adds a row.
    /// \param track its FID is a candidate: kept when it can be trusted and is free, else replaced
    ///     by a new one
    /// \throws DbError, and nothing was written
    [[nodiscard]] Result add(ImportedTrack& track, TakenFid taken);

private:
    /// Nothing when the row stands, else the row that has its identifier.
    [[nodiscard]] std::optional<StoredPlace> insert(const ImportedTrack& track);

    LibraryPlaces& m_places;
    IntakeFids m_fids;
    RowInsert m_insert;
};

} // namespace melovane
