#pragma once

#include "tagbench/bench_apply.h"
#include "tagbench/bench_tracks.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class ListHistory;
class NewTracks;
class TagReader;

/// What stands on the bench.
enum class BenchMode
{
    Edit,   ///< the tracks that the console has marked
    Import, ///< files that the library does not know yet
};

/// The tag tool as its user meets it: which tracks, what was changed, applying it. Knows no window.
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
        QString dataFolder; ///< of `ChangeDir.conf`
    };

    BenchSession(const Parts& parts, BenchMode mode);
    ~BenchSession();

    [[nodiscard]] BenchMode mode() const { return m_mode; }

    [[nodiscard]] const ConfigObjects& texts() const { return m_parts.texts; }

    [[nodiscard]] const Parts& parts() const { return m_parts; }

    [[nodiscard]] BenchTracks& tracks() { return m_tracks; }

    [[nodiscard]] const BenchTracks& tracks() const { return m_tracks; }

    /// Takes the marked tracks over from the console, which may then mark others. Nothing for new
    /// files. \throws DbError
    void load();

    /// How many of how many are done; 0 of 0 while folders are looked through. False ends the work.
    using GoOn = std::function<bool(int done, int size)>;

    /// Puts the new MP3 files of folders and single files on the bench. What the library knows
    /// already, and what is no music, is counted and left out. \throws DbError
    void addFiles(const QStringList& places, const GoOn& goOn);

    /// The last addFiles() in one sentence.
    [[nodiscard]] const QString& addedText() const { return m_addedText; }

    /// Writes everything; what was written is no change any more. \throws DbError, and nothing is
    /// written
    [[nodiscard]] BenchOutcome apply(bool removeEmptyFolders, const GoOn& goOn);

    /// What came of it, a line for each track that was left out; the first line is the summary.
    [[nodiscard]] QStringList outcomeLines(const BenchOutcome& outcome) const;

    /// True when there is something to apply.
    [[nodiscard]] bool canApply() const;

    /// Why the library must not be written now, in the user's words; empty when it may be. The
    /// window asks before each apply(), for another program may have taken it since. May be empty.
    std::function<QString()> whyNotNow;

    /// Called behind each apply() that has changed something; may be empty.
    std::function<void()> whenWritten;

    [[nodiscard]] QStringList genres();
    /// Texts offered for a selection field.
    [[nodiscard]] QStringList choices(TrackField field);

    [[nodiscard]] QString title() const;

private:
    [[nodiscard]] Database& database();
    [[nodiscard]] NewTracks& newTracks();

    Parts m_parts;
    BenchMode m_mode;
    BenchTracks m_tracks;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<NewTracks> m_newTracks;
    QString m_addedText;
};

} // namespace melovane
