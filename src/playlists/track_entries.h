#pragma once

#include "playlists/playlist_ids.h"
#include "playlists/playlist_table.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>

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
    /// Values of kTakenFields.
    using Track = std::array<Value, kTakenFields.size()>;

    void read(const QString& condition);

    Database& m_database;
    QStringList m_fids;
    QHash<QString, Track> m_tracks; ///< those with a length, by identifier in lower case
};

} // namespace melovane
