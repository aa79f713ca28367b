#pragma once

#include "playlists/removed_rows.h"

#include <QString>

#include <functional>

namespace melovane {

class Clock;
class Database;

/// The boxes of the cleaning, by their index.
enum class CleaningBox
{
    Deleted, ///< tracks that are marked as deleted
    Damaged, ///< tracks without sound, "MP3ERROR"
    Missing, ///< tracks whose file is missing
    Orphans, ///< rows of other tables about tracks that are gone
    Recycle, ///< files of the first two go to the recycle folder
};

inline constexpr int kCleaningBoxes = 5;

/// What the cleaning would find now.
struct CleaningCounts
{
    qint64 tracks[3] = {};    ///< of the first three boxes
    qint64 files[2] = {};     ///< that the first two would move, none twice
    qint64 fileBytes[2] = {}; ///< of these
    qint64 entries = 0;       ///< of lists, about tracks that are gone
    qint64 lists = 0;         ///< that would be empty without them, and that nobody uses
};

/// What went with tracks that are gone.
struct RemovedDependencies
{
    int entries = 0; ///< of lists
    int plays = 0;   ///< rows of the statistics
    int lists = 0;
    int groups = 0;
    QSet<qint64> entryKeys; ///< PLID
    QSet<qint64> listKeys;  ///< NID

    [[nodiscard]] bool isAny() const { return entries + plays + lists + groups > 0; }
};

/// Removes rows from the library for good. Rows with `DEL` 3 stay.
///
/// Which tracks were removed stands in `todo` as rows of id 1 until forgetRemoved(). All operations
/// throw DbError; what one of them has not finished it has not done.
class Cleaning
{
public:
    Cleaning(Database& database, const Clock& clock);

    /// The rows of one of the first three boxes, as a condition on `db_all`.
    [[nodiscard]] static QString condition(CleaningBox box);

    [[nodiscard]] CleaningCounts count() const;

    /// Removes the tracks of one of the first three boxes. Their number.
    int removeTracks(CleaningBox box);

    /// Removes list entries and statistics of the tracks that were removed since the last
    /// forgetRemoved(); when there were none, of all tracks that are gone. Then the counts of lists
    /// are set right, empty lists go that are neither shown nor played, and groups without lists.
    /// \param goesOn asked while tracks that are gone are looked for, with how far that is; false
    ///               ends the search, and what was found goes
    RemovedDependencies removeOrphans(const std::function<bool(qint64 done, qint64 whole)>& goesOn);

    /// The tracks that were removed, or found to be gone, since the last forgetRemoved().
    [[nodiscard]] QSet<QString> removedTracks() const;

    void forgetRemoved();

private:
    void findOrphans(const std::function<bool(qint64 done, qint64 whole)>& goesOn);
    void setCounts();
    int execute(const QString& statement);
    [[nodiscard]] QSet<qint64> numbers(const QString& statement) const;
    [[nodiscard]] qint64 number(const QString& statement) const;

    Database& m_database;
    const Clock& m_clock;
};

} // namespace melovane
