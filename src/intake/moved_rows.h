#pragma once

#include "intake/imported_track.h"
#include "platform/media/audio_identity.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

class Database;
class Files;
class WalkedRow;

/// Which rows of the library a new file may be, when its tag does not say: rows with exactly its
/// size and length, and rows whose sound was kept and is the same.
///
/// Reads the library once; rows that are added meanwhile are none of them.
class MovedRows
{
public:
    /// Whether the file of a row is gone. A row whose file was there once is not asked for again:
    /// files that are all alike, such as silence, cost one look each.
    using IsGone = std::function<bool(const QString& fid)>;

    /// \param files to read what was kept of their sound \throws DbError
    MovedRows(Database& database, const Files& files, IsGone isGone);

    /// Identifiers of the rows that the file may be, the surest first; their own files are gone.
    /// \throws DbError
    [[nodiscard]] QStringList of(const ImportedTrack& track,
                                 const std::optional<AudioPrint>& sound);

private:
    struct Row
    {
        qint64 size = 0; ///< bytes
        qint64 fid = 0;
        int milliseconds = 0;
        bool isThere = false; ///< its file was seen
    };

    void addRow(const WalkedRow& row);
    [[nodiscard]] QStringList soundingLike(const AudioPrint& sound);

    [[nodiscard]] bool isLike(qint64 fid, const ImportedTrack& track) const;

    Database& m_database;
    IsGone m_isGone;
    std::vector<Row> m_rows; ///< by size
    QHash<QString, AudioPrint> m_sounds;
    QMultiHash<qint64, QString> m_bySound; ///< identifiers of m_sounds by bytes of sound
};

} // namespace melovane
