#pragma once

#include "intake/library_places.h"
#include "intake/tag_import.h"
#include "intake/track_insert.h"
#include "platform/media/track_tags.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Database;
class GlobalSettings;
class QueryDef;
class Recordset;

/// Audio files that a list or a drop names and that the library may not know yet: finds them in it,
/// or reads them to be entered later, all together.
class NewTracks
{
public:
    /// Reads genres and column widths. \throws DbError
    NewTracks(Database& database,
              const GlobalSettings& settings,
              const Files& files,
              const TagReader& reader,
              const Clock& clock);
    ~NewTracks();

    /// The track of a file, from the query `QU_FindFile`, also when it is stored under another name
    /// of its folder; at its end when there is none.
    /// \param folder with its separator \throws DbError
    [[nodiscard]] std::unique_ptr<Recordset> find(const QString& folder, const QString& name);

    struct Reading
    {
        int code = 0;                         ///< 0, or a number of importerror
        QString detail;                       ///< what was found; mostly empty
        const ImportedTrack* track = nullptr; ///< until the next call; null for a failure
    };

    /// Reads a file; one that was read before is not read again. Its identifier is not final
    /// before write().
    [[nodiscard]] Reading read(const QString& file);

    /// True when read() would not open the file.
    [[nodiscard]] bool wasRead(const QString& file) const { return m_byFile.contains(file); }

    /// Asked between two slices of a long work: how many of how many are done. False ends it.
    using GoOn = std::function<bool(qint64 done, qint64 size)>;

    /// Tracks entered between two questions: some 200 ms on a slow machine.
    static constexpr size_t kTracksAtOnce = 100;

    /// Enters what was read, as part of the caller's transaction, and notes that the trees are out
    /// of date with it. A file that was entered by
    /// another program meanwhile keeps the row that it has. False when it was ended by `goOn`: the
    /// transaction is to be left. \throws DbError
    [[nodiscard]] bool write(const GoOn& goOn = {});

    /// Rows that write() has made.
    [[nodiscard]] int entered() const { return m_entered; }

    /// Whether another program had entered a file before write() came to it.
    [[nodiscard]] bool wasKnown(const QString& file) const;

    /// The row that a file has since write(); empty for one that was not read or could not be.
    [[nodiscard]] QString fidOf(const QString& file) const;

private:
    struct Outcome
    {
        int code = 0;
        QString detail;
        int index = -1; ///< in m_tracks
    };

    void noteTrees();
    [[nodiscard]] std::unique_ptr<Recordset> findAsStored(const QString& folder,
                                                          const QString& name);
    [[nodiscard]] Outcome readNew(const QString& file);

    Database& m_database;
    const Files& m_files;
    const TagReader& m_reader;
    const Clock& m_clock;
    TagImport m_import;
    LibraryPlaces m_places;
    std::unique_ptr<QueryDef> m_find;
    std::vector<ImportedTrack> m_tracks;
    QHash<QString, Outcome> m_byFile;
    QSet<int> m_known; ///< of m_tracks: those that had a row already
    int m_entered = 0;
};

} // namespace melovane
