#pragma once

#include "store/track_writing.h"
#include "tagbench/bench_tracks.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class CoverWork;
class Database;
class Files;
class ListHistory;
class NewTracks;

/// Why a track on the bench was left as it is stored.
enum class BenchFault
{
    Gone,        ///< no row has its identifier any more
    ChangedElse, ///< somebody else has changed the same field since it was read
    NotImported, ///< a new file that could not enter the library
    NotRenamed,  ///< all else of it was written
    NoCover,     ///< the same
};

struct BenchProblem
{
    int track = 0;
    BenchFault fault = BenchFault::Gone;
    QString reason; ///< of the system, mostly empty
};

/// What applying has come to.
struct BenchOutcome
{
    std::vector<int> written = {}; ///< tracks whose changes are stored, new ones included
    std::vector<BenchProblem> problems = {};
    QStringList trees = {};            ///< that are out of date with it
    std::vector<BenchCell> left = {};  ///< of these tracks: what could not be stored
    std::vector<BenchCell> found = {}; ///< what somebody else has stored in tracks that were left
    int imported = 0;
    int renamed = 0;
    bool isCancelled = false; ///< nothing has changed then
    QString reason = {};      ///< why, when it was not the user who cancelled

    [[nodiscard]] bool hasChanged() const { return !written.empty(); }
};

/// Writes what was changed on the bench: into the rows, into the order for the job that writes tags
/// and, for new names, on the disk. All of it is one transaction: it stands whole, or, when the
/// database fails or the user cancels, not at all, and every file has its former name again.
///
/// What it changes in the fields is one step that the console can take back. Names of files are in
/// no step. Files get their names first and their rows follow; a journal beside the library tells
/// the next tool when this one is killed in between, see RenameJournal. Lists that hold a renamed
/// track are marked to be written again, since their files name its place.
class BenchApply
{
public:
    struct Parts
    {
        Database& database;
        ListHistory& history; ///< gets all of it as one step
        Files& files;
        QString dataFolder;             ///< of `ChangeDir.conf`
        QString library;                ///< full path of the database
        NewTracks* newTracks = nullptr; ///< that has read the tracks without an identifier
        CoverWork* covers = nullptr;    ///< without it no cover is changed
        bool removeEmptyFolders = false;
    };

    /// How many of how many tracks are written. False ends the work and takes all of it back.
    using GoOn = std::function<bool(int done, int size)>;

    /// Tracks written between two questions: some 20 ms.
    static constexpr int kTracksAtOnce = 50;

    explicit BenchApply(Parts parts);

    /// `tracks` itself stays as it is, but for identifiers that new files have got.
    /// \throws DbError, and nothing has changed
    [[nodiscard]] BenchOutcome apply(BenchTracks& tracks, const GoOn& goOn = {});

private:
    class Run;

    Parts m_parts;
};

} // namespace melovane
