#pragma once

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

    /// Most files that one drop takes; the rest of a larger one is left out.
    static constexpr int kMostFiles = 5000;

    struct Result
    {
        QStringList fids;    ///< in the order of the files; those of a folder by name
        QStringList skipped; ///< files that hold no sound or cannot be read
    };

    /// The tracks of files with the extension "mp3", folders with all below them. A file that the
    /// library does not know enters it, all new ones in one transaction. \throws DbError, and
    /// nothing entered
    [[nodiscard]] Result take(const QStringList& places);

private:
    void collect(const QString& place, int depth, QStringList& found) const;

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    const Files& m_files;
    const TagReader& m_reader;
    const Clock& m_clock;
};

} // namespace melovane
