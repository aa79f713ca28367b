#pragma once

#include "intake/imported_track.h"
#include "platform/media/audio_identity.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace melovane {

class Database;
class Files;
class Recordset;

/// Which rows of the library a new file may be, when its tag does not say: rows with exactly its
/// size and length, and rows whose sound was kept and is the same.
///
/// Reads the library once, in slices; rows that are added meanwhile are none of them.
class MovedRows
{
public:
    /// \param files to read what was kept of their sound \throws DbError
    MovedRows(Database& database, const Files& files);
    ~MovedRows();

    /// Reads some thousand rows more; false when there are no more. \throws DbError
    bool read();

    /// Identifiers of the rows that the file may be, the surest first. Their own files may still be
    /// there: the caller looks. \throws DbError
    [[nodiscard]] QStringList of(const ImportedTrack& track,
                                 const std::optional<AudioPrint>& sound) const;

private:
    struct Row
    {
        qint64 size = 0; ///< bytes
        qint64 fid = 0;
        int milliseconds = 0;
    };

    [[nodiscard]] bool isLike(qint64 fid, const ImportedTrack& track) const;

    Database& m_database;
    std::unique_ptr<Recordset> m_reading; ///< null when all rows were read
    std::vector<Row> m_rows;              ///< by size, when all were read
    QHash<QString, AudioPrint> m_sounds;
    QMultiHash<qint64, QString> m_bySound; ///< identifiers by bytes of sound
};

} // namespace melovane
