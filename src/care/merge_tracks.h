#pragma once

#include "care/removed_track.h"

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

class Database;
class FileLocator;
class Files;
class ListHistory;

/// A row of the library as it was looked at.
struct MergedRow
{
    QString fid;
    QString place; ///< folder and name; a row that lies elsewhere now is left alone
};

/// Rows of one recording, of which one stays.
struct MergeOrder
{
    MergedRow kept;
    std::vector<MergedRow> others;
};

struct MergeResult
{
    int removed = 0;
    int left = 0; ///< rows that others have changed or removed, or whose kept one has no file
    /// The removed ones whose files may go to the recycle folder: not those that are the file of
    /// the row that stays, under whatever name, and not those that another row has, too.
    std::vector<RemovedTrack> files;
    bool isCancelled = false; ///< nothing has changed then
};

/// What a merge asks about files.
struct MergeDisk
{
    const Files& files;
    FileLocator& locator;
};

/// How many of how many orders are done. False ends the work and takes all of it back.
using MergeStep = std::function<bool(int done, int size)>;

/// Called with the files of a result before the change is made for good: what it throws takes all
/// of it back.
using MergeRecord = std::function<void(const std::vector<RemovedTrack>& files)>;

/// Makes one row of several: list entries and all that was played go over to the one that stays,
/// its counters take up theirs, the others leave the library. An entry stays where it stands in its
/// list, with its own cue points and styles; a list that held two of them holds the kept one twice.
///
/// All of it is one transaction and one step of the history. Lists that held such a track are
/// marked to be written again. No file is touched; who calls has the trees made anew.
/// \throws DbError, and what `record` throws: nothing has changed then
[[nodiscard]] MergeResult mergeTracks(Database& database,
                                      ListHistory& history,
                                      const MergeDisk& disk,
                                      const std::vector<MergeOrder>& orders,
                                      const MergeStep& goOn = {},
                                      const MergeRecord& record = {});

} // namespace melovane
