#pragma once

#include "intake/skipped.h"

#include <QStringList>

namespace melovane {

class Clock;
class DBEngine;
class Files;
class GlobalSettings;
class TagReader;

/// Turns MP3 files and folders that were dropped from a file manager into tracks of the library.
class DroppedTracks
{
public:
    DroppedTracks(DBEngine& engine,
                  const GlobalSettings& settings,
                  const Files& files,
                  const TagReader& reader,
                  const Clock& clock);

    /// Files that one drop takes at most; the rest of a larger one is left out.
    static constexpr int kMaxFiles = 5000;

    struct Result
    {
        QStringList fids; ///< in the order of the files, see FolderWalk
        Skipped skipped;  ///< what holds no sound, cannot be read or is of another kind
    };

    /// The tracks of MP3 files, folders with all below them. A file that the library does not know
    /// enters it, all new ones in one transaction. \throws DbError, and nothing entered
    [[nodiscard]] Result take(const QStringList& places);

private:
    [[nodiscard]] QStringList filesOf(const QStringList& places, Skipped& skipped) const;

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    const Files& m_files;
    const TagReader& m_reader;
    const Clock& m_clock;
};

} // namespace melovane
