#pragma once

#include "platform/db/database_care.h"
#include "playlists/playlist_ids.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
class Database;
class DBEngine;
class Files;

/// What can be wrong with a library, in the order in which it is looked for and told.
enum class Flaw
{
    Unreadable,     ///< the file cannot be opened, or no row of it: sentence of the fault
    PageDamaged,    ///< a page or a row: what the engine says
    IndexDamaged,   ///< an index does not agree with its rows: what the engine says
    TableLost,      ///< a table that is never empty has no rows: its name
    TemplateFilled, ///< a table that others are made after, and so has no rows, has some: its name
    JobUnknown,     ///< notes for jobs that no job can follow: how many
    CountWrong,     ///< a list has not as many entries as it says: its name
    EntryWithoutTrack, ///< entries of tracks that are not in the library: how many
    EntryWithoutList,  ///< entries that no list shows: how many
    ListWithoutGroup,  ///< a list that no group shows: its name
    PlayWithoutTrack,  ///< rows of the statistics without a track: how many
    TrackWithoutId,    ///< tracks that nothing can refer to: how many
    SideFileMissing,   ///< path
    SideFileDamaged,   ///< path
    HistoryDamaged,    ///< path
    ListFileMissing    ///< the file of a list is gone: its path
};

/// One thing that is wrong.
struct Finding
{
    Flaw flaw = Flaw::Unreadable;
    QString what;

    bool operator==(const Finding&) const = default;
};

/// True when repair() can mend it without losing anything.
[[nodiscard]] bool canBeMended(Flaw flaw);

/// Proves that a library is whole, and mends what can be mended without loss.
///
/// Uses an engine of its own choice and nothing of a window, so it may run on a worker.
class LibraryCheck
{
public:
    struct Parts
    {
        DBEngine& engine;
        DatabaseCare& care;
        Files& files;
        const Clock& clock;
    };

    struct Place
    {
        QString library;                     ///< full path
        QString dataFolder = {};             ///< of the side files; empty: they are not looked at
        QHash<Pnid, QString> listFiles = {}; ///< where the files of lists stand, if they are meant
        QString restName = {};               ///< of what repair() gives those without a home
    };

    LibraryCheck(const Parts& parts, Place place);

    /// Changes nothing but what the engine itself brings into the file from its journal.
    /// \return nothing when `step` gave it up
    [[nodiscard]] std::optional<std::vector<Finding>> run(DatabaseCare::Depth depth,
                                                          const SliceStep& step);

    /// Mends what can be mended, see canBeMended(). To be called when no other program works in
    /// the library. Nothing is written into one whose pages are damaged. What fails stays; the
    /// next run() tells it again.
    /// \return true when the tables of the trees were made anew and have to be filled
    /// \throws DbError when the library cannot be written at all
    bool repair(const std::vector<Finding>& findings);

    [[nodiscard]] QString sideFile(QStringView name) const;

private:
    [[nodiscard]] bool checkFile(DatabaseCare::Depth depth, const SliceStep& step);
    void checkRows(Database& database);
    void checkTables(Database& database);
    void checkJobs(Database& database);
    void checkCounts(Database& database);
    void checkOrphans(Database& database);
    void addCount(Database& database, Flaw flaw, const QString& statement);
    [[nodiscard]] bool checkSideFiles(const SliceStep& step);
    [[nodiscard]] std::optional<bool> isWhole(const QString& file, const SliceStep& step);
    void checkListFiles(Database& database);

    void add(Flaw flaw, const QString& what) { m_findings.push_back({flaw, what}); }

    static void dropJobs(Database& database);
    static void emptyTemplates(Database& database, const std::vector<Finding>& findings);
    void mendCounts(Database& database) const;
    void mendHomeless(Database& database) const;
    [[nodiscard]] qint64 restGroup(Database& database) const;
    void mendListFiles(Database& database) const;
    void dropSideFile(const QString& file) const;

    Parts m_parts;
    Place m_place;
    std::vector<Finding> m_findings;
};

/// Names of the side files of a library: keep, other programs of the suite know them.
inline constexpr QStringView kTempFile = u"melovane.temp.mdb";
inline constexpr QStringView kTreeFile = u"melovane.tree.mdb";

} // namespace melovane
