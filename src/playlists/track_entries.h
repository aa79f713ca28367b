#pragma once

#include "platform/db/value.h"
#include "playlists/playlist_ids.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace melovane {

class Database;

/// Makes entries from tracks of the library.
class TrackEntries
{
public:
    /// Reads the tracks. \throws DbError
    TrackEntries(Database& database, const QStringList& fids);

    /// Adds an entry for each track that is known and has a length, in the order of the ids: the
    /// first at `before` + 1. Others use no position. \throws DbError; the entries before it stay
    void append(Pnid list, qint64 before, int aktion);

private:
    /// Columns of `db_all` that an entry takes over.
    struct Track
    {
        Value FrameStart;
        Value FrameStop;
        Value Pitch;
        Value Volume;
        Value MixIn;
        Value MixOut;
        Value eq;
    };

    void read(const QString& condition);

    Database& m_database;
    QStringList m_fids;
    QHash<QString, Track> m_tracks; ///< those with a length, by identifier in lower case
};

} // namespace melovane
