#pragma once

#include "playlists/list_edit.h"
#include "playlists/playlist_table.h"
#include "store/track_writing.h"

#include <QStringList>

namespace melovane {

/// Changes of tracks that the user makes at once, as one step that can be taken back: cells,
/// ratings, the tag panel, many tracks together.
///
/// Rows, orders to write the files and the record of the step are one transaction. Columns that say
/// where a file lies stand in no step but ListAction::Relink: taking them back would not move the
/// file, and what was found lies where it is.
class TrackStep
{
public:
    /// Begins the transaction. \throws DbError when the database cannot be written
    TrackStep(ListHistory& history, Database& database, ListAction action);

    /// \see writeTrack()
    void write(const QString& fid, std::span<const ColumnValue> values, TagOrder order);

    /// A change that was written by other means within the same transaction.
    void wrote(const TrackChange& change);

    /// Ends the step. Without it everything is undone. \throws DbError, with nothing written
    void commit();

    /// The trees that are out of date with all of it, each once.
    [[nodiscard]] const QStringList& trees() const { return m_trees; }

private:
    Database& m_database;
    TrackReach m_reach;
    ListEdit m_edit;
    QStringList m_trees;
    QString m_only; ///< the track, as long as it is the only one
    int m_tracks = 0;
};

} // namespace melovane
