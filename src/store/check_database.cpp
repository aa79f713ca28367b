#include "store/check_database.h"

#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "store/create_db.h"
#include "store/keep_aside.h"
#include "store/vpl_all.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The executable, in upper case, that may change the database's level.
constexpr QStringView kConsole = u"MELOVANEDB";

/// Levels of the releases that brought a change: keep.
constexpr int kLevelOfTextIds = 343;
constexpr int kLevelOfPlaceholder = 3464;

/// What a side file that cannot be used reports. Beside a missing file or table these are damages
/// of a file whose content is not worth keeping.
constexpr std::array kRebuildErrors{
    dberror::kFileNotFound, dberror::kObjectNotFound,     dberror::kItemNotFound,
    dberror::kCorrupt,      dberror::kUnrecognisedFormat, dberror::kPreviousEngineFile,
};

QString descriptionOf(const DbError& error)
{
    return error.text().isEmpty() ? QString::number(error.number()) : error.text();
}

} // namespace

CheckDatabase::CheckDatabase(DBEngine& engine,
                             Files& files,
                             const Clock& clock,
                             DatabasePlace place,
                             ErrorSink sink)
    : m_engine(engine)
    , m_files(files)
    , m_clock(clock)
    , m_place(std::move(place))
    , m_sink(std::move(sink))
{}

QString CheckDatabase::firstTableError()
{
    m_openError = 0;
    try {
        const auto database = m_engine.OpenDatabase(m_place.dbName);
        for (const QString& table : database->tableDefs().ownNames()) {
            database->OpenRecordset(table)->Close();
        }
    } catch (const DbError& error) {
        m_openError = error.number();
        return descriptionOf(error);
    }
    return {};
}

QString CheckDatabase::openTest()
{
    QString error = firstTableError();
    if (error.isEmpty()) {
        upgradeCheck();
    }
    return error;
}

bool CheckDatabase::hasVersions() const
{
    bool found = false;
    quietly(m_sink, u"CheckDatabase.Open"_s, [&] {
        found = m_engine.OpenDatabase(m_place.dbName)->tableDefs().Contains(u"db_version"_s);
    });
    return found;
}

int CheckDatabase::storedLevel() const
{
    int level = 0;
    quietly(m_sink, u"CheckDatabase.ReadLevel"_s, [&] {
        const auto database = m_engine.OpenDatabase(m_place.dbName);
        const auto row =
            database->OpenRecordset(u"select Version from db_version where id='DB.SubVersion'"_s);
        level = row->value(u"Version").toLong();
    });
    return level;
}

void CheckDatabase::writeLevel(int level) const
{
    quietly(m_sink, u"CheckDatabase.WriteLevel"_s, [&] {
        m_engine.OpenDatabase(m_place.dbName)
            ->Execute(u"update db_version set version="_s + sql::text(QString::number(level)) +
                      u" where id='DB.SubVersion'"_s);
    });
}

void CheckDatabase::upgradeCheck()
{
    if (upperCase(m_place.programName) != kConsole || !hasVersions()) {
        return;
    }
    const int target = databaseLevelOfThisRelease();
    const int stored = storedLevel();
    if (stored == target) {
        return;
    }
    if (stored < kLevelOfTextIds) {
        upgrade343();
    }
    if (stored < kLevelOfPlaceholder) {
        upgrade3464();
    }
    writeLevel(target);
}

void CheckDatabase::upgrade3464() const
{
    // Nothing changed with that level. It keeps its place in the chain, for numbers only rise.
}

void CheckDatabase::upgrade343() const
{
    const QString where = u"CheckDatabase.Upgrade343"_s;
    quietly(m_sink, where, [&] { backup(kLevelOfTextIds); });
    const auto change = [&](const auto& step) {
        quietly(m_sink, where, [&] { step(*m_engine.OpenDatabase(m_place.dbName)); });
    };
    const auto execute = [&](const QString& statement) {
        change([&](Database& database) { database.Execute(statement); });
    };
    quietly(m_sink, where, [&] {
        MLVCreateDB creator(m_engine, m_files);
        creator.targetFile = m_place.dbName;
        creator.CreateQuerydef(kVplAllName.toString(), vplAllStatement());
    });
    execute(u"alter table db_version alter COLUMN id text(50)"_s);
    execute(u"update db_version set id='DB.Version' where id='1'"_s);
    execute(u"insert into db_version (id,version) values ('DB.SubVersion' , '0')"_s);
}

void CheckDatabase::backup(int upgrade) const
{
    const QString name = u"/Melovane.Backup.(%1).%2.mdb"_s.arg(upgrade).arg(
        m_clock.now().toString(u"yyyyMMdd_HHmmss"_s));
    m_engine.BackupDatabase(m_place.dbName, m_place.dataFolder + name);
}

bool CheckDatabase::mustRebuild(const QString& testLink, const QString& sideFile) const
{
    std::unique_ptr<Database> database;
    if (quietly(m_sink, u"CheckDatabase.Open"_s,
                [&] { database = m_engine.OpenDatabase(m_place.dbName); }) != 0) {
        return false;
    }
    bool elsewhere = false;
    const int error = quietly({}, {}, [&] {
        const QString connect = database->tableDefs().connectOf(testLink);
        elsewhere = upperCase(connect) != u";DATABASE="_s + upperCase(sideFile);
        if (!elsewhere) {
            database->OpenRecordset(testLink)->Close();
        }
    });
    return elsewhere ||
           std::find(kRebuildErrors.begin(), kRebuildErrors.end(), error) != kRebuildErrors.end();
}

bool CheckDatabase::isLibrary(const QString& file) const
{
    const auto here = m_files.facts(file);
    const auto library = m_files.facts(m_place.dbName);
    return here && library && here->device == library->device && here->inode == library->inode;
}

/// What can be read is made anew from the library; only a file that cannot is kept.
void CheckDatabase::keepDamaged(const QString& sideFile)
{
    const int error = quietly({}, {}, [&] { m_engine.OpenDatabase(sideFile)->Close(); });
    if (error == 0 || !m_files.fileExists(sideFile)) {
        return;
    }
    quietly(m_sink, u"CheckDatabase"_s, [&] {
        const QString kept = keepAside(m_files, sideFile);
        if (m_sink) {
            m_sink(u"CheckDatabase"_s, u"The damaged file was kept as "_s + kept);
        }
        if (whenKeptAside) {
            whenKeptAside(kept);
        }
    });
}

bool CheckDatabase::checkSideFile(const QString& testLink,
                                  const QString& fileName,
                                  const std::vector<SideTable>& tables)
{
    const QString sideFile = path::join(m_place.dataFolder, fileName);
    // A library that was chosen under the name of a side file must never be made anew.
    if (isLibrary(sideFile) || !mustRebuild(testLink, sideFile)) {
        return false;
    }
    keepDamaged(sideFile);
    MLVCreateDB creator(m_engine, m_files);
    creator.targetFile = sideFile;
    creator.sourceFile = m_place.dbName;
    quietly(m_sink, u"CreateDB"_s, [&] { creator.CreateDB(); });
    for (const SideTable& table : tables) {
        quietly(m_sink, u"ClonTableStrukt"_s,
                [&] { creator.ClonTableStrukt(table.templateName, table.name); });
    }
    // From now on it is reached through its library, and let go with it.
    m_engine.Release(sideFile);
    std::swap(creator.targetFile, creator.sourceFile);
    for (const SideTable& table : tables) {
        quietly(m_sink, u"LinkTable"_s, [&] { creator.LinkTable(table.name, {}); });
    }
    return true;
}

bool CheckDatabase::isMissing(const QString& table) const
{
    const int error = quietly({}, {}, [&] {
        m_engine.OpenDatabase(m_place.dbName)
            ->OpenRecordset(u"select top 1 id from "_s + table)
            ->Close();
    });
    return error == dberror::kObjectNotFound || error == dberror::kItemNotFound;
}

/// The others keep their rows, and with them what the user has marked there.
bool CheckDatabase::addMissing(const QString& fileName, const std::vector<SideTable>& tables)
{
    const QString sideFile = path::join(m_place.dataFolder, fileName);
    bool added = false;
    for (const SideTable& table : tables) {
        if (isLibrary(sideFile) || !isMissing(table.name)) {
            continue;
        }
        added = true;
        MLVCreateDB creator(m_engine, m_files);
        creator.targetFile = sideFile;
        creator.sourceFile = m_place.dbName;
        // A table that lacks its link alone is there, with its rows.
        quietly({}, {}, [&] { creator.ClonTableStrukt(table.templateName, table.name); });
        std::swap(creator.targetFile, creator.sourceFile);
        quietly(m_sink, u"LinkTable"_s, [&] { creator.LinkTable(table.name, {}); });
    }
    return added;
}

void CheckDatabase::checkTempTables()
{
    checkSideFile(u"TEMP_MP3Edit"_s, u"melovane.temp.mdb"_s,
                  {{u"X_TEMP_MP3Edit"_s, u"TEMP_MP3Edit"_s},
                   {u"X_TEMP_MP3Import"_s, u"TEMP_MP3Import"_s},
                   {u"X_TEMP_PLImport"_s, u"TEMP_PLImport"_s},
                   {u"X_TEMP_PLImportM3U"_s, u"TEMP_PLImportM3U"_s},
                   {u"X_TEMP_PL_UNDO"_s, u"TEMP_PL_UNDO"_s}});
}

int CheckDatabase::checkTreeTables()
{
    std::vector<SideTable> tables{{u"x_tree_dir"_s, u"TREE_DIR"_s},
                                  {u"x_tree_album"_s, u"TREE_ALBUM"_s},
                                  {u"x_TREE_GENRE"_s, u"TREE_GENRE"_s},
                                  {u"x_TREE_GENRE_INTERPRET"_s, u"TREE_GENRE_INTERPRET"_s},
                                  {u"x_TREE_INTERPRET"_s, u"TREE_INTERPRET"_s}};
    for (const auto name :
         std::array{"TREE_SITUATION"_L1, "TREE_STIMMUNG"_L1, "TREE_TEMPO"_L1, "TREE_KATEGORIE"_L1,
                    "TREE_USER1"_L1, "TREE_USER2"_L1, "TREE_USER3"_L1, "TREE_USER4"_L1,
                    "TREE_USER5"_L1, "TREE_IMPORTDATE"_L1}) {
        tables.push_back({u"x_TREE_default"_s, QString(name)});
    }
    const QString fileName = u"melovane.tree.mdb"_s;
    const bool isNew = checkSideFile(u"TREE_DIR"_s, fileName, tables);
    return isNew || addMissing(fileName, tables) ? -1 : 0;
}

} // namespace melovane
