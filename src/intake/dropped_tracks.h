#pragma once

#include "intake/skipped.h"

#include <QStringList>

#include <functional>

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

    /// Files that one drop takes at most; the rest of a larger one is left out and counted.
    static constexpr int kMaxFiles = 5000;

    /// Asked between the steps of the work, how many files of how many are done; 0 of 0 while
    /// folders are looked through. False ends the drop with nothing changed.
    using GoOn = std::function<bool(const QString& place, qint64 done, qint64 size)>;

    struct Result
    {
        QStringList fids;       ///< in the order of the files, see FolderWalk
        Skipped skipped;        ///< what holds no sound, cannot be read or is of another kind
        qint64 beyond = 0;      ///< files beyond the first kMaxFiles
        int entered = 0;        ///< tracks that the library did not know
        bool isGivenUp = false; ///< by `goOn`: then there is nothing else
    };

    /// The tracks of MP3 files, folders with all below them. A file that the library does not know
    /// enters it, all new ones in one transaction. Lists among the places are not read, but named
    /// with the other kinds. \throws DbError, and nothing entered
    [[nodiscard]] Result take(const QStringList& places, const GoOn& goOn = {});

private:
    [[nodiscard]] QStringList
    filesOf(const QStringList& places, const GoOn& goOn, Result& result) const;
    void enter(const QStringList& files, const GoOn& goOn, Result& result);

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    const Files& m_files;
    const TagReader& m_reader;
    const Clock& m_clock;
};

} // namespace melovane
