#pragma once

#include "store/error_sink.h"

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
class DBEngine;
class Files;

/// Which database is to be checked, and by whom.
struct DatabasePlace
{
    QString dbName;      ///< full path of melovane.mdb
    QString dataFolder;  ///< folder of the side files and backups, no separator at its end
    QString programName; ///< executable without extension; only "MelovaneDB" upgrades
};

/// Proves that a database can be used, brings it to the level of this release, and keeps the two
/// side files made and linked.
///
/// Made for one place and used at once; when the database changes, another one is made.
class CheckDatabase
{
public:
    /// \param sink learns of every ignored failure, under the name of the step
    CheckDatabase(DBEngine& engine,
                  Files& files,
                  const Clock& clock,
                  DatabasePlace place,
                  ErrorSink sink);

    /// Hears of a side file that was damaged, with the path under which it is kept; the new one
    /// stands in its place. May be empty.
    std::function<void(const QString& kept)> whenKeptAside;

    /// Opens the database and each of its plain tables, in catalogue order, up to the first error.
    /// Returns the description of that error, or an empty text; then the upgrade check has run.
    /// A file that is no database of the suite is left as it is, byte for byte.
    [[nodiscard]] QString openTest();

    /// Number of the error that openTest() found, 0 for none.
    [[nodiscard]] int openError() const { return m_openError; }

    /// Brings the database to the level of this release. Does nothing in other programs than the
    /// console, at an equal level, and in a database without the table `db_version`.
    ///
    /// Every change whose number lies above the stored level is made, the first after a backup;
    /// what fails is passed over. A higher level, of a later release, is set back to that of this
    /// one. Never fails.
    void upgradeCheck();

    /// Makes `melovane.temp.mdb` anew, empty, when its links are missing, lead elsewhere or lead to
    /// a file that is gone or no database. Its rows are never kept. Never fails: a database that
    /// cannot be opened is left alone.
    void checkTempTables();

    /// The same for `melovane.tree.mdb`, of which a single missing table is made beside the others,
    /// which keep their rows. -1 when anything was made, so that trees have to be filled, else 0.
    [[nodiscard]] int checkTreeTables();

    /// Copies the database, as it is now, to "Melovane.Backup.(<upgrade>).<time>.mdb" in the data
    /// folder. \throws DbError
    void backup(int upgrade) const;

private:
    /// A table of a side file, and the table of the main database that it is made after.
    struct SideTable
    {
        QString templateName;
        QString name;
    };

    [[nodiscard]] QString firstTableError();
    [[nodiscard]] bool hasVersions() const;
    [[nodiscard]] int storedLevel() const;
    void writeLevel(int level) const;
    void upgrade343() const;
    void upgrade3464() const;
    /// True when the file is the library itself, under whatever name it is reached.
    [[nodiscard]] bool isLibrary(const QString& file) const;
    void keepDamaged(const QString& sideFile);
    [[nodiscard]] bool mustRebuild(const QString& testLink, const QString& sideFile) const;
    [[nodiscard]] bool isMissing(const QString& table) const;
    [[nodiscard]] bool addMissing(const QString& fileName, const std::vector<SideTable>& tables);
    bool
    checkSideFile(const QString& testLink, const QString& fileName, const std::vector<SideTable>&);

    DBEngine& m_engine;
    Files& m_files;
    const Clock& m_clock;
    DatabasePlace m_place;
    ErrorSink m_sink;
    int m_openError = 0;
};

} // namespace melovane
