#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class Database;
class Files;
class ListHistory;

/// A missing track and where its file is now.
struct RelinkOrder
{
    QString fid;
    QString
        storedPlace; ///< folder and name as they were read; a row that differs now is left alone
    QString folder;  ///< new, with its separator
    QString name;
};

struct RelinkResult
{
    int moved = 0;
    int left = 0; ///< tracks that others have changed or removed, and files that are gone again
    bool isCancelled = false; ///< nothing has changed then
};

/// How many of how many are written. False ends the work and takes all of it back.
using RelinkStep = std::function<bool(int done, int size)>;

/// Tracks written between two questions: some 20 ms.
inline constexpr int kRelinksAtOnce = 50;

/// Gives missing tracks the places of their files: path, name, drive, and the mark as missing goes
/// (`DEL` 2 becomes 0, 3 becomes -1). No file is touched.
///
/// All of it is one transaction and one step of the history. Lists that hold such a track are
/// marked to be written again, since their files name its place; who calls has the folder tree made
/// anew. A file that another row has already is left alone: no file stands in two rows.
/// \throws DbError, and nothing has changed
[[nodiscard]] RelinkResult relink(Database& database,
                                  ListHistory& history,
                                  const Files& files,
                                  const std::vector<RelinkOrder>& orders,
                                  const RelinkStep& goOn = {});

} // namespace melovane
