#pragma once

#include "intake/tag_import.h"
#include "platform/media/track_tags.h"
#include "store/make_fid.h"

#include <QHash>
#include <QStringList>

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

    /// The track of a file, from the query `QU_FindFile`; at its end when there is none.
    /// \param folder with its separator \throws DbError
    [[nodiscard]] std::unique_ptr<Recordset> find(const QString& folder, const QString& name);

    struct Reading
    {
        int code = 0;                         ///< 0, or a number of importerror
        const ImportedTrack* track = nullptr; ///< until the next call; null for a failure
    };

    /// Reads a file; one that was read before is not read again. Its identifier is one that no
    /// other track has. \throws DbError
    [[nodiscard]] Reading read(const QString& file);

    /// True when read() would not open the file.
    [[nodiscard]] bool wasRead(const QString& file) const { return m_byFile.contains(file); }

    /// Enters what was read, as part of the caller's transaction. \throws DbError
    void write();

private:
    struct Outcome
    {
        int code = 0;
        int index = -1; ///< in m_tracks
    };

    [[nodiscard]] Outcome readNew(const QString& file);
    [[nodiscard]] QString freeFid(const QString& candidate);

    Database& m_database;
    const Files& m_files;
    const TagReader& m_reader;
    TagImport m_import;
    Mod_Make_FID::FidMaker m_ids;
    std::unique_ptr<QueryDef> m_find;
    std::vector<ImportedTrack> m_tracks;
    QHash<QString, Outcome> m_byFile;
    QHash<QString, int> m_byFid;
};

} // namespace melovane
