#pragma once

#include "tagbench/bench_apply.h"
#include "tagbench/bench_covers.h"
#include "tagbench/bench_tracks.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class ConfigObjects;
class CoverReader;
class Database;
class DBEngine;
class FileLock;
class Files;
class GlobalSettings;
class ListHistory;
class NewTracks;
class PictureMaker;
class TagReader;
class Worker;

/// What stands on the bench.
enum class BenchMode
{
    Edit,   ///< the tracks that the console has marked
    Import, ///< files that the library does not know yet
};

/// The tag tool as its user meets it: which tracks, what was changed, applying it. Knows no window.
///
/// The library is open only while one of the operations works, so that another program can take it
/// at any time; what was changed waits on the bench until it is back.
class BenchSession
{
public:
    struct Parts
    {
        DBEngine& engine;
        ListHistory& history;
        GlobalSettings& settings;
        Files& files;
        const TagReader& reader;
        const Clock& clock;
        const ConfigObjects& texts;
        const CoverReader& covers;
        const PictureMaker& pictures;
        Worker& worker;     ///< for pictures
        QString dataFolder; ///< of `ChangeDir.conf`
        /// Lets one tool at a time write; null while another one does. Empty where no lock can be
        /// made.
        std::function<std::unique_ptr<FileLock>()> claim = {};
    };

    BenchSession(const Parts& parts, BenchMode mode);
    ~BenchSession();

    [[nodiscard]] BenchMode mode() const { return m_mode; }

    [[nodiscard]] const ConfigObjects& texts() const { return m_parts.texts; }

    /// Full path of the database that the tracks are of.
    [[nodiscard]] const QString& library() const { return m_library; }

    [[nodiscard]] const Parts& parts() const { return m_parts; }

    [[nodiscard]] BenchTracks& tracks() { return m_tracks; }

    [[nodiscard]] const BenchTracks& tracks() const { return m_tracks; }

    [[nodiscard]] BenchCovers& covers() { return m_covers; }

    /// Takes the marked tracks over from the console, which may then mark others; for new files
    /// there are none. Names of files that a tool left unfinished when it was killed are mended
    /// before, and a library that no console has opened yet gets the file that the marked ones
    /// lie in. \throws DbError
    void load();

    /// How many of how many are done; 0 of 0 while folders are looked through. False ends the work.
    using GoOn = std::function<bool(int done, int size)>;

    /// Puts the new MP3 files of folders and single files on the bench. What the library knows
    /// already, and what is no music, is counted and left out. \throws DbError
    void addFiles(const QStringList& places, const GoOn& goOn);

    /// The last addFiles() in one sentence; of one that the library was taken away from, why.
    [[nodiscard]] const QString& addedText() const { return m_addedText; }

    /// Writes everything; what was written is no change any more. \throws DbError, and nothing is
    /// written
    [[nodiscard]] BenchOutcome apply(bool removeEmptyFolders, const GoOn& goOn);

    /// What came of it, a line for each track that was left out; the first line is the summary.
    [[nodiscard]] QStringList outcomeLines(const BenchOutcome& outcome) const;

    /// True when there is something to apply.
    [[nodiscard]] bool canApply() const;

    /// Why the library must not be touched now, in the user's words; empty when it may be. Another
    /// program may take it at any time: the window asks before each apply(), and long works ask
    /// between their steps and end then. May be empty.
    std::function<QString()> whyNotNow;

    /// Lets a file be heard, from its beginning or its middle; gives why it is not. Empty where
    /// there is no sound: the buttons are grey then.
    std::function<QString(const QString& stored, bool fromMiddle)> play;
    std::function<void()> stopPlaying;

    /// Called behind each apply() that has changed something; may be empty.
    std::function<void()> whenWritten;

    [[nodiscard]] QStringList genres();
    /// Texts offered for a selection field.
    [[nodiscard]] QStringList choices(TrackField field);

    [[nodiscard]] QString title() const;

private:
    void prepareSideFile() const;
    [[nodiscard]] std::unique_ptr<NewTracks> newTracks(Database& database) const;

    [[nodiscard]] QString obstacle() const { return whyNotNow ? whyNotNow() : QString(); }

    [[nodiscard]] BenchOutcome
    applyTo(Database& library, bool removeEmptyFolders, const GoOn& goOn);
    [[nodiscard]] bool readNewFiles(NewTracks& fresh, const GoOn& goOn) const;

    Parts m_parts;
    BenchMode m_mode;
    QString m_library; ///< whatever the settings say by now: the tracks are of this one
    BenchTracks m_tracks;
    BenchCovers m_covers;
    QString m_addedText;
};

} // namespace melovane
