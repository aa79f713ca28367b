#pragma once

#include "platform/media/track_tags.h"
#include "playlistfiles/m3u_text.h"
#include "store/record_fields.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>

#include <functional>
#include <span>
#include <vector>

namespace melovane {

class Clock;
class Database;
class DBEngine;
class FileLocator;
class Files;
class GlobalSettings;
class ListHistory;
class M3uErrors;
class ModUndoRedo;
class NewTracks;
class Recordset;

/// What list files are read and written with; outlives MlvM3U.
struct M3uParts
{
    DBEngine& engine;
    const GlobalSettings& settings; ///< names the database and the choice of tags
    Files& files;
    FileLocator& locator;
    const TagReader& reader;
    const Clock& clock;
    ListHistory& history;
    ModUndoRedo& snapshots;
    QStringList logFolders; ///< for `M3UImportError.log`, see M3uErrors
};

/// What the work with list files tells while it goes on; each may be empty.
struct M3uEvents
{
    /// A failure without a runtime error.
    std::function<void(int code, const QString& file, const QString& source)> Message;
    /// A failure with one: `text` is its text.
    std::function<void(int code, const QString& text, const QString& source)> RtError;
    /// The tags of a file are about to be read.
    std::function<void(const QString& path)> ProgressImport;
    /// Asked some twenty times a second while a list is loaded: how far it is, in bytes. False ends
    /// the load with nothing changed. May turn the message loop.
    std::function<bool(qint64 done, qint64 size)> goOn;
};

/// One entry of a list file with its track.
struct M3uRow
{
    QString FID;
    QString Path, DName;
    int Volume = 0;
    int Pitch = 0;
    int FrameStart = 0; ///< frames
    int FrameStop = 0;
    int MixTime = 0; ///< milliseconds
    QString MixIn, MixOut, eq;
};

using M3uField = RecordField<M3uRow>;

/// The fields of M3uRow.
[[nodiscard]] std::span<const M3uField> m3uFields();

/// Finds the tracks of one list file. Writes nothing but the log.
class M3uLoader
{
public:
    /// Longest list that is read, in bytes: a file that is larger is none.
    static constexpr qint64 kLargestList = 64LL * 1024 * 1024;

    M3uLoader(const M3uParts& parts,
              const M3uEvents& events,
              Database& database,
              NewTracks& tracks,
              M3uErrors& errors);
    ~M3uLoader();

    /// False when the load was given up by `goOn`. \throws IoError, DbError
    [[nodiscard]] bool load(const QString& file);

    /// Gives the rows of new files what those have got in the library, once they were written.
    void takeWritten();

    /// What was found so far, in the order of the file.
    [[nodiscard]] const std::vector<M3uRow>& rows() const { return m_rows; }

private:
    /// Where a path line leads.
    struct Place
    {
        QString folder; ///< with its separator; empty when there is none
        QString name;
        bool isThere = false; ///< the file, not only its folder
    };

    /// A row whose file was read to enter the library.
    struct NewRow
    {
        size_t row = 0;    ///< in m_rows
        int FrameStop = 0; ///< of the file
    };

    void readKnown(const std::vector<M3uRecord>& records);
    void store(const M3uRecord& record);
    void storeAsTold(const M3uRecord& record, const QString& fid);
    [[nodiscard]] Place placeOf(const M3uRecord& record);
    [[nodiscard]] Place placeOf(const QString& text);
    /// The folder as the disk spells it, empty for none; each is looked for once in a load.
    [[nodiscard]] QString located(const QString& folder);
    [[nodiscard]] bool takeFromLibrary(const M3uRecord& record, const Place& place);
    void storeTrack(const Recordset& track, const Place& place);
    void storeNew(const M3uRecord& record, const Place& place);
    void fail(int code, const QString& source, const QString& file);
    [[nodiscard]] bool mayGoOn(qint64 done, qint64 size);

    const M3uParts& m_parts;
    const M3uEvents& m_events;
    Database& m_database;
    NewTracks& m_tracks;
    M3uErrors& m_errors;
    QString m_listFolder;
    bool m_onDisc = false;
    QSet<QString> m_known;             ///< identifiers that the library has, of the records at hand
    QHash<QString, QString> m_folders; ///< see located()
    std::vector<M3uRow> m_rows;
    std::vector<NewRow> m_newRows;
    QElapsedTimer m_sinceTurn;
};

} // namespace melovane
