#include "store/check_database.h"
#include "store/create_db.h"
#include "store/vpl_all.h"
#include "support/suite_fixture.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

const QString kBackup = u"Melovane.Backup.(343).20260314_150926.mdb"_s;

class OpenTest : public test::SuiteFixture
{
protected:
    [[nodiscard]] QString level() const
    {
        return suite.value(u"select Version from db_version where id='DB.SubVersion'"_s).toText();
    }

    void setLevel(const QString& level) const
    {
        suite.execute(u"update db_version set version='"_s + level +
                      u"' where id='DB.SubVersion'"_s);
    }

    [[nodiscard]] QStringList backups() const
    {
        return QDir(suite.dataFolder()).entryList({u"Melovane.Backup*"_s});
    }

    /// Turns the library into one as releases before level 343 left it: versions under a number,
    /// no upgrade level, an older VPL_ALL.
    void makeOldLayout() const
    {
        const auto database = suite.open();
        database->tableDefs().Delete(u"db_version"_s);
        TableDef versions;
        versions.Name = u"db_version"_s;
        versions.Fields.resize(2);
        versions.Fields[0].Name = u"id"_s;
        versions.Fields[0].Type = FieldType::Long;
        versions.Fields[1].Name = u"Version"_s;
        versions.Fields[1].Size = 50;
        versions.Indexes = {{u"PrimaryKey"_s, {u"id"_s}, true, true}};
        database->tableDefs().Append(versions);
        database->Execute(u"insert into db_version (id,Version) values (1,'3.4')"_s);
        database->queryDefs().Delete(u"VPL_ALL"_s);
        database->CreateQueryDef(u"VPL_ALL"_s, u"SELECT * FROM pl_all"_s)->Close();
    }
};

} // namespace

TEST_F(OpenTest, TheShippedDatabaseOpensAndIsAtTheLevelOfThisRelease)
{
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(level(), u"34150"_s);
    EXPECT_EQ(backups(), QStringList());
    EXPECT_EQ(suite.log, QStringList());
}

TEST_F(OpenTest, AMissingDatabaseGivesATextAndIsNotMade)
{
    suite.engine->Release(suite.dbName());
    ASSERT_TRUE(suite.files.remove(suite.dbName()));
    EXPECT_NE(suite.check().openTest(), QString());
    EXPECT_FALSE(suite.files.fileExists(suite.dbName()));
}

TEST_F(OpenTest, AFileOfAnOlderReleaseWithNumericIdAndNoLevelIsUpgraded)
{
    makeOldLayout();
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(level(), u"34150"_s);
    EXPECT_EQ(suite.value(u"select Version from db_version where id='DB.Version'"_s).toText(),
              u"3.4"_s);
    const auto database = suite.open();
    EXPECT_EQ(database->tableDefs().Item(u"db_version"_s).Fields.at(0).Type, FieldType::Text);
    EXPECT_EQ(database->tableDefs().Item(u"db_version"_s).Fields.at(0).Size, 50);
    EXPECT_EQ(database->queryDefs().Item(u"vpl_all"_s)->SQL(), vplAllStatement());
}

TEST_F(OpenTest, TheUpgradeLeavesABackupOfTheFileAsItWasThatOpens)
{
    suite.library.add({.Titel = u"Kept"_s});
    makeOldLayout();
    (void)suite.check().openTest();
    ASSERT_EQ(backups(), QStringList{kBackup});
    const auto backup = suite.engine->OpenDatabase(suite.file(kBackup));
    EXPECT_EQ(backup->OpenRecordset(u"select Titel from db_all"_s)->value(0).toText(), u"Kept"_s);
    EXPECT_EQ(backup->tableDefs().Item(u"db_version"_s).Fields.at(0).Type, FieldType::Long);
}

TEST_F(OpenTest, ABackupOfTheSameSecondIsOverwritten)
{
    suite.write(kBackup, "older");
    suite.check().backup(343);
    EXPECT_NO_THROW((void)suite.engine->OpenDatabase(suite.file(kBackup)));
}

TEST_F(OpenTest, AnUpgradeOfAFileThatHasTheNewLayoutAlreadyChangesNothingElse)
{
    setLevel(u"12"_s);
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(suite.column(u"select id from db_version order by id"_s),
              QStringList({u"DB.SubVersion"_s, u"DB.Version"_s}));
    EXPECT_EQ(level(), u"34150"_s);
    EXPECT_EQ(backups(), QStringList{kBackup});
}

TEST_F(OpenTest, AMissingLevelRowIsAddedAndWritten)
{
    suite.execute(u"delete from db_version where id='DB.SubVersion'"_s);
    (void)suite.check().openTest();
    EXPECT_EQ(level(), u"34150"_s);
}

TEST_F(OpenTest, ATargetLevelBelowTheStoredOneIsStillWrittenAndNoStepRuns)
{
    setLevel(u"99999"_s);
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(level(), u"34150"_s);
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(OpenTest, ALevelBetweenTheStepsRunsNoBackup)
{
    setLevel(u"343"_s);
    (void)suite.check().openTest();
    EXPECT_EQ(level(), u"34150"_s);
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(OpenTest, ProgramsWithAnotherNameNeverWriteTheLevel)
{
    setLevel(u"12"_s);
    for (const QString& program : {u"mediaintake"_s, u"MelovaneDB2"_s, u""_s}) {
        EXPECT_EQ(suite.check(program).openTest(), QString());
    }
    EXPECT_EQ(level(), u"12"_s);
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(OpenTest, TheConsolesNameCountsInAnyLetterCase)
{
    setLevel(u"12"_s);
    (void)suite.check(u"melovanedb"_s).openTest();
    EXPECT_EQ(level(), u"34150"_s);
}

TEST_F(OpenTest, AFailedBackupDoesNotStopTheUpgrade)
{
    makeOldLayout();
    CheckDatabase check(*suite.engine, suite.files, suite.clock,
                        {suite.dbName(), suite.file(u"missing"_s), u"MelovaneDB"_s}, {});
    EXPECT_EQ(check.openTest(), QString());
    EXPECT_EQ(level(), u"34150"_s);
}

TEST_F(OpenTest, ASiblingReadsTheVersionOfAnOldFileByItsNumberBeforeTheConsoleUpgradedIt)
{
    makeOldLayout();
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->CheckDBVersion(), 0);
    suite.execute(u"update db_version set Version='2.9' where id=1"_s);
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_EQ(settings->DBVersion(), u"2.9"_s);
}

TEST_F(OpenTest, TheConsoleFindsTheVersionOfAnUpgradedFileByItsText)
{
    makeOldLayout();
    (void)suite.check().openTest();
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->DbName(), suite.dbName());
    EXPECT_EQ(settings->CheckDBVersion(), 0);
    EXPECT_EQ(settings->DBVersion(), u"3.4"_s);
}

TEST_F(OpenTest, TheShippedSettingsSearchWithEveryKey)
{
    EXPECT_EQ(suite.makeSettings()->LiveSuche(), 1);
}

TEST_F(OpenTest, ADatabaseWithoutVersionsIsLeftAlone)
{
    MLVCreateDB creator(*suite.engine, suite.files);
    creator.targetFile = suite.file(u"empty.mdb"_s);
    creator.CreateDB();
    CheckDatabase check(*suite.engine, suite.files, suite.clock,
                        {creator.targetFile, suite.dataFolder(), u"MelovaneDB"_s}, {});
    EXPECT_EQ(check.openTest(), QString());
    EXPECT_TRUE(suite.engine->OpenDatabase(creator.targetFile)->queryDefs().Names().isEmpty());
    EXPECT_EQ(backups(), QStringList());
}

namespace {

struct HostileDatabase
{
    const char* name;
    QByteArray (*bytes)(const QByteArray& good);
};

QByteArray random(int size)
{
    QRandomGenerator generator(7);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes) {
        byte = char(generator.bounded(256));
    }
    return bytes;
}

const HostileDatabase kHostileDatabases[] = {
    {"Empty", [](const QByteArray&) { return QByteArray(); }},
    {"RandomBytes", [](const QByteArray&) { return random(100'000); }},
    {"Text", [](const QByteArray&) { return QByteArray("[Global]\nDBName=x\n"); }},
    {"CutOffInTheHeader", [](const QByteArray& good) { return good.left(60); }},
    {"CutOffInTheMiddle", [](const QByteArray& good) { return good.left(good.size() / 2); }},
    {"PreviousEngine",
     [](const QByteArray&) {
         return QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, '\0');
     }},
    {"RandomBehindTheHeader",
     [](const QByteArray& good) { return good.left(100) + random(int(good.size()) - 100); }},
    {"ZerosBehindTheFirstPage",
     [](const QByteArray& good) { return good.left(4096) + QByteArray(good.size() - 4096, '\0'); }},
};

class HostileDatabaseFile : public testing::TestWithParam<HostileDatabase>
{};

} // namespace

TEST_P(HostileDatabaseFile, GivesATextAtTheOpenTestAndIsUnchangedByteForByte)
{
    test::Suite suite(test::Suite::SideFiles::None);
    const QByteArray bytes = GetParam().bytes(suite.read(u"melovane.mdb"_s));
    suite.write(u"melovane.mdb"_s, bytes);
    EXPECT_NE(suite.check().openTest(), QString());
    suite.engine->Release(suite.dbName());
    EXPECT_EQ(suite.read(u"melovane.mdb"_s), bytes);
    EXPECT_TRUE(QDir(suite.dataFolder()).entryList({u"Melovane.Backup*"_s}).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Files,
                         HostileDatabaseFile,
                         testing::ValuesIn(kHostileDatabases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(OpenTest, AFolderInPlaceOfTheDatabaseGivesAText)
{
    suite.engine->Release(suite.dbName());
    ASSERT_TRUE(suite.files.remove(suite.dbName()));
    QDir().mkpath(suite.dbName());
    EXPECT_NE(suite.check().openTest(), QString());
}

namespace {

class SideFiles : public testing::Test
{
protected:
    [[nodiscard]] QString temp() const { return suite.file(u"melovane.temp.mdb"_s); }

    [[nodiscard]] QString tree() const { return suite.file(u"melovane.tree.mdb"_s); }

    void addFavourite() const
    {
        suite.execute(u"insert into tree_album (Name,anzahl) values ('Mine',3)"_s);
    }

    [[nodiscard]] int albums() const
    {
        return suite.value(u"select count(*) as anz from tree_album"_s).toLong();
    }

    void replaceTree(const QByteArray& bytes)
    {
        suite.engine->Release(suite.dbName());
        suite.engine->Release(tree());
        suite.write(u"melovane.tree.mdb"_s, bytes);
    }

    void removeTree()
    {
        suite.engine->Release(suite.dbName());
        suite.engine->Release(tree());
        ASSERT_TRUE(suite.files.remove(tree()));
    }

    test::Suite suite;
};

} // namespace

TEST(FirstStart, MakesAndLinksBothSideFiles)
{
    test::Suite suite(test::Suite::SideFiles::None);
    suite.check().checkTempTables();
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    const auto database = suite.open();
    for (const QString& name :
         {u"TEMP_MP3Edit"_s,     u"TEMP_MP3Import"_s, u"TEMP_PLImport"_s,
          u"TEMP_PLImportM3U"_s, u"TEMP_PL_UNDO"_s,   u"TREE_DIR"_s,
          u"TREE_ALBUM"_s,       u"TREE_GENRE"_s,     u"TREE_GENRE_INTERPRET"_s,
          u"TREE_INTERPRET"_s,   u"TREE_SITUATION"_s, u"TREE_STIMMUNG"_s,
          u"TREE_TEMPO"_s,       u"TREE_KATEGORIE"_s, u"TREE_USER1"_s,
          u"TREE_USER2"_s,       u"TREE_USER3"_s,     u"TREE_USER4"_s,
          u"TREE_USER5"_s,       u"TREE_IMPORTDATE"_s}) {
        EXPECT_TRUE(database->tableDefs().Item(name).isLink()) << name.toStdString();
        EXPECT_TRUE(database->OpenRecordset(name)->Eof()) << name.toStdString();
    }
    EXPECT_EQ(suite.log, QStringList());
}

TEST_F(SideFiles, LinkedFilesAreLeftAsTheyAre)
{
    addFavourite();
    suite.check().checkTempTables();
    EXPECT_EQ(suite.check().checkTreeTables(), 0);
    EXPECT_EQ(albums(), 1);
}

TEST_F(SideFiles, AMissingTreeFileIsMadeAnewAndTheTreesMustBeFilled)
{
    addFavourite();
    removeTree();
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    EXPECT_EQ(albums(), 0);
    EXPECT_EQ(suite.check().checkTreeTables(), 0);
}

TEST_F(SideFiles, AMissingTempFileIsMadeAnew)
{
    suite.engine->Release(suite.dbName());
    suite.engine->Release(temp());
    ASSERT_TRUE(suite.files.remove(temp()));
    suite.check().checkTempTables();
    EXPECT_TRUE(suite.open()->OpenRecordset(u"TEMP_PL_UNDO"_s)->Eof());
}

TEST_F(SideFiles, AFileThatLacksTheTestTableIsMadeAnew)
{
    suite.engine->Release(suite.dbName());
    suite.engine->OpenDatabase(tree())->tableDefs().Delete(u"TREE_DIR"_s);
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    EXPECT_TRUE(suite.open()->OpenRecordset(u"tree_dir"_s)->Eof());
}

TEST_F(SideFiles, AFileThatWasDamagedIsToldWithItsNewNameAndOneThatIsMissingIsNot)
{
    QStringList kept;
    auto check = suite.check();
    check.whenKeptAside = [&kept](const QString& file) { kept.append(file); };
    replaceTree("not a database");
    EXPECT_EQ(check.checkTreeTables(), -1);
    EXPECT_EQ(kept, QStringList{suite.file(u"melovane.tree.mdb.damaged"_s)});
    removeTree();
    EXPECT_EQ(check.checkTreeTables(), -1);
    EXPECT_EQ(kept.size(), 1);
}

TEST_F(SideFiles, GarbageInPlaceOfASideFileIsReplacedAndTheLibraryStays)
{
    suite.library.add({.Titel = u"Kept"_s});
    for (const QByteArray& garbage :
         {QByteArray(), QByteArray("not a database"), QByteArray(8192, '\xA5'),
          QByteArray("SQLite format 3\0", 16) + QByteArray(5000, 'x')}) {
        replaceTree(garbage);
        EXPECT_EQ(suite.check().checkTreeTables(), -1);
        EXPECT_EQ(albums(), 0);
    }
    EXPECT_EQ(suite.column(u"select Titel from db_all"_s), QStringList{u"Kept"_s});
    EXPECT_EQ(suite.read(u"melovane.tree.mdb.damaged.2"_s), "not a database");
    EXPECT_TRUE(QFile::exists(suite.file(u"melovane.tree.mdb.damaged.4"_s)));
    EXPECT_FALSE(QFile::exists(suite.file(u"melovane.tree.mdb.damaged.5"_s)));
}

TEST_F(SideFiles, GarbageInPlaceOfASideFileDoesNotFailTheOpenTest)
{
    replaceTree("garbage");
    EXPECT_EQ(suite.check().openTest(), QString());
}

TEST_F(SideFiles, ALibraryThatBearsTheNameOfASideFileIsNeverReplaced)
{
    suite.engine->Release(suite.dbName());
    for (const QString& name : {temp(), tree()}) {
        suite.engine->Release(name);
        ASSERT_TRUE(suite.files.remove(name));
        suite.engine->BackupDatabase(suite.dbName(), name);
        suite.engine->Release(name);
        CheckDatabase check(*suite.engine, suite.files, suite.clock,
                            {name, suite.dataFolder(), u"MelovaneDB"_s}, {});
        check.checkTempTables();
        EXPECT_EQ(check.checkTreeTables(), 0) << name.toStdString();
        EXPECT_TRUE(suite.engine->OpenDatabase(name)->tableDefs().Contains(u"db_all"_s))
            << name.toStdString();
    }
}

TEST_F(SideFiles, AMovedDataFolderGetsNewEmptySideFilesAndTheOldOnesStay)
{
    addFavourite();
    suite.engine->Release(suite.dbName());
    const QString moved = suite.file(u"moved"_s);
    QDir().mkpath(moved);
    CheckDatabase check(*suite.engine, suite.files, suite.clock,
                        {suite.dbName(), moved, u"MelovaneDB"_s}, {});
    check.checkTempTables();
    EXPECT_EQ(check.checkTreeTables(), -1);
    EXPECT_EQ(albums(), 0);
    EXPECT_TRUE(suite.files.fileExists(moved + u"/melovane.tree.mdb"_s));
    EXPECT_TRUE(suite.files.fileExists(moved + u"/melovane.temp.mdb"_s));
    const auto old = suite.engine->OpenDatabase(tree());
    EXPECT_FALSE(old->OpenRecordset(u"TREE_ALBUM"_s)->Eof());
    EXPECT_EQ(check.checkTreeTables(), 0);
}

TEST_F(SideFiles, ALinkWhosePathDiffersOnlyInLetterCaseIsAccepted)
{
    const QString folder = suite.file(u"data"_s);
    QDir().mkpath(folder);
    ASSERT_TRUE(QFile::link(folder, suite.file(u"DATA"_s)));
    CheckDatabase check(*suite.engine, suite.files, suite.clock,
                        {suite.dbName(), folder, u"MelovaneDB"_s}, {});
    ASSERT_EQ(check.checkTreeTables(), -1);
    addFavourite();
    MLVCreateDB creator(*suite.engine, suite.files);
    creator.targetFile = suite.dbName();
    creator.sourceFile = suite.file(u"DATA/melovane.tree.mdb"_s);
    creator.LinkTable(u"TREE_DIR"_s);
    EXPECT_EQ(check.checkTreeTables(), 0);
    EXPECT_EQ(albums(), 1);
}

TEST_F(SideFiles, AMissingLinkIsMadeAgain)
{
    suite.open()->tableDefs().Delete(u"TREE_DIR"_s);
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    EXPECT_TRUE(suite.open()->OpenRecordset(u"tree_dir"_s)->Eof());
}

TEST_F(SideFiles, AMissingTemplateFailsQuietlyAndItsTableAtItsNextUse)
{
    suite.open()->tableDefs().Delete(u"x_tree_album"_s);
    removeTree();
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    EXPECT_FALSE(suite.log.isEmpty());
    const auto database = suite.open();
    try {
        (void)database->OpenRecordset(u"tree_album"_s);
        FAIL() << "the link points at nothing";
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kObjectNotFound);
    }
    EXPECT_TRUE(database->OpenRecordset(u"tree_genre"_s)->Eof());
}

TEST_F(SideFiles, ADatabaseThatCannotBeOpenedGetsNoSideFiles)
{
    const QString empty = suite.file(u"empty"_s);
    QDir().mkpath(empty);
    CheckDatabase check(*suite.engine, suite.files, suite.clock,
                        {empty + u"/melovane.mdb"_s, empty, u"MelovaneDB"_s}, {});
    check.checkTempTables();
    EXPECT_EQ(check.checkTreeTables(), 0);
    EXPECT_TRUE(QDir(empty).isEmpty());
}

TEST_F(SideFiles, AConnectionOpenBeforeTheRebuildSeesTheNewTables)
{
    const auto window = suite.open();
    addFavourite();
    EXPECT_FALSE(window->OpenRecordset(u"tree_album"_s)->Eof());
    ASSERT_TRUE(suite.files.remove(tree()));
    EXPECT_EQ(suite.check().checkTreeTables(), -1);
    EXPECT_TRUE(window->OpenRecordset(u"tree_album"_s)->Eof());
    window->Execute(u"insert into tree_album (Name) values ('new')"_s);
    EXPECT_EQ(albums(), 1);
}
