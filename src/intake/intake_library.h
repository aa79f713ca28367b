#pragma once

#include "intake/library_places.h"
#include "intake/track_insert.h"
#include "platform/db/database.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace melovane {

/// A row as the comparison with its file needs it.
struct StoredFile
{
    QString FID;
    QString Path;
    QString DName;
    qint64 DLen = 0;
    QDateTime DTSDatei;
    int DEL = 0;
    int DriveTyp = 0;
};

/// The library as the importer reads and writes it.
///
/// Changes are gathered in portions of one transaction each: a killed import keeps all portions
/// that were committed, and writing one row costs no wait for the disk. All operations throw
/// DbError.
class IntakeLibrary
{
public:
    IntakeLibrary(DBEngine& engine, const QString& file, const Files& files, const Clock& clock);
    ~IntakeLibrary();

    [[nodiscard]] Database& database() { return *m_database; }

    /// The definition of `db_all`, for the widths of its columns.
    [[nodiscard]] TableDef columns();

    /// From now on the files that add() will get are compared with the rows of their folders.
    void beginComparing() { m_places.comparedSince(m_database->DataVersion()); }

    /// Begins to read the rows of a folder, letter by letter as stored.
    /// \param folder with its separator at the end
    void openFolder(const QString& folder);
    /// Adds some hundred more rows of that folder by file name; false when there are no more.
    bool readFolder(QHash<QString, StoredPlace>& places);

    /// Opens the walk over all rows for nextStored(), in the order of folder and name.
    void openStored();
    /// Rows of that walk.
    [[nodiscard]] qint64 storedCount() const;
    /// Nothing behind the last row.
    [[nodiscard]] std::optional<StoredFile> nextStored();

    /// Whether a row has the file, under whatever name of its folder.
    [[nodiscard]] bool hasFile(const ImportedTrack& track);

    /// The row of an identifier; nothing when there is none.
    [[nodiscard]] std::optional<StoredPlace> placeOf(const QString& fid);

    // -- Changes. Each belongs to the present portion and begins one if there is none. --

    /// Adds a row, unless its file or the identifier of its tag has one.
    [[nodiscard]] TrackInsert::Result add(ImportedTrack& track);

    /// The file of a row lies where the track's file lies now. A row that was missing is there
    /// again.
    void move(const StoredPlace& row, const ImportedTrack& track);

    /// The missing file of a row is there again: `DEL` 2 becomes 0, 3 becomes -1.
    void giveBack(const QString& fid, int del);

    /// Writes what was read anew from a row's file.
    ///
    /// Play counts, mix values, dates of import and identifier stay. Texts that the tag lacks keep
    /// their value; a row whose own changes still wait to be written to the file (`db_edit`) keeps
    /// all its texts. Start and stop are kept unless they mean the whole track or lie behind its
    /// end. The place stays as it is stored, wherever the file was read.
    void update(const QString& fid, const ImportedTrack& track);

    /// Notes that the trees of folders, artists, albums and genres must be made anew.
    void markTrees();

    // -- Portions --

    /// True when the portion is large or old enough to be committed.
    [[nodiscard]] bool isPortionDue() const;
    void commitPortion();
    /// Undoes the portion; never throws.
    void dropPortion();

private:
    void begin();
    [[nodiscard]] bool hasPendingEdit(const QString& fid);

    std::unique_ptr<Database> m_database;
    LibraryPlaces m_places;
    TrackInsert m_insert;
    std::unique_ptr<Recordset> m_stored;
    std::unique_ptr<Recordset> m_folderRows; ///< none between folders
    QString m_folder;
    std::optional<Transaction> m_portion;
    std::chrono::steady_clock::time_point m_begun;
    int m_changes = 0;
};

} // namespace melovane
