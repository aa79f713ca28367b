#include "platform/db/sql_text.h"
#include "store/shipped_database.h"
#include "store/vpl_all.h"
#include "support/suite_fixture.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

using ShippedDatabase = test::SuiteFixture;

QStringList namesOf(const std::vector<FieldDef>& fields)
{
    QStringList names;
    for (const FieldDef& field : fields) {
        names.append(field.Name);
    }
    return names;
}

} // namespace

TEST_F(ShippedDatabase, HoldsEveryPermanentTableAndTemplate)
{
    const auto database = suite.open();
    for (const QString& name : {u"db_all"_s,
                                u"pl_all"_s,
                                u"pl_name"_s,
                                u"pl_group"_s,
                                u"pl_stat"_s,
                                u"genre"_s,
                                u"config"_s,
                                u"todo"_s,
                                u"db_edit"_s,
                                u"db_version"_s,
                                u"TreeErweitertConfig"_s,
                                u"ChangeTree"_s,
                                u"X_TEMP_MP3Edit"_s,
                                u"X_TEMP_MP3Import"_s,
                                u"X_TEMP_PLImport"_s,
                                u"X_TEMP_PLImportM3U"_s,
                                u"X_TEMP_PL_UNDO"_s,
                                u"x_tree_dir"_s,
                                u"x_tree_album"_s,
                                u"x_TREE_GENRE"_s,
                                u"x_TREE_GENRE_INTERPRET"_s,
                                u"x_TREE_INTERPRET"_s,
                                u"x_TREE_default"_s}) {
        EXPECT_TRUE(database->tableDefs().Contains(name)) << name.toStdString();
        EXPECT_EQ(database->tableDefs().Item(name).Attributes, 0) << name.toStdString();
    }
}

TEST_F(ShippedDatabase, TheLibraryTableHasTheColumnsThatProgramsShareInTheirSpelling)
{
    EXPECT_EQ(
        namesOf(suite.open()->tableDefs().Item(u"DB_ALL"_s).Fields),
        u"FID Titel Interpret Album Genre Jahr Track Kommentar Note BPM Path DName DLen DTime "
        "DTimeMsec DKhz DBit DTSDatei DTSImport DriveTyp DriveName DEL FrameStart FrameStop "
        "Normalize Pitch Volume MixIn MixOut eq MixTime Play PlayCountDay PlayCountAll favorit "
        "Image Kategorie Situation Stimmung Tempo User1 User2 User3 User4 User5"_s.split(u' '));
}

TEST_F(ShippedDatabase, IdentifiersAreTwelveLettersWideAndVersionIdsFifty)
{
    const auto database = suite.open();
    for (const QString& name : {u"db_all"_s, u"X_TEMP_MP3Edit"_s, u"X_TEMP_PLImportM3U"_s}) {
        EXPECT_EQ(database->tableDefs().Item(name).Fields.at(0).Size, 12) << name.toStdString();
    }
    EXPECT_EQ(database->tableDefs().Item(u"db_version"_s).Fields.at(0).Size, 50);
}

TEST_F(ShippedDatabase, TheVersionRowsSayGenerationAndLevelOfThisRelease)
{
    EXPECT_EQ(suite.value(u"select Version from db_version where id='DB.Version'"_s).toText(),
              u"3.4"_s);
    EXPECT_EQ(suite.value(u"select Version from db_version where id='DB.SubVersion'"_s).toText(),
              u"34150"_s);
    EXPECT_EQ(suite.column(u"select id from db_version"_s).size(), 2);
}

TEST_F(ShippedDatabase, AVersionIdStandsOnce)
{
    EXPECT_THROW(suite.execute(u"insert into db_version (id,version) values ('db.version','x')"_s),
                 DbError);
}

TEST_F(ShippedDatabase, TheGenreListHasTheNumbersOfId3AndNoneAs255)
{
    EXPECT_EQ(suite.value(u"select count(*) as anz from genre"_s).toLong(), 193);
    EXPECT_EQ(suite.value(u"select name from genre where genre_id=0"_s).toText(), u"Blues"_s);
    EXPECT_EQ(suite.value(u"select name from genre where genre_id=17"_s).toText(), u"Rock"_s);
    EXPECT_EQ(suite.value(u"select name from genre where genre_id=79"_s).toText(), u"Hard Rock"_s);
    EXPECT_EQ(suite.value(u"select name from genre where genre_id=80"_s).toText(), u"Folk"_s);
    EXPECT_EQ(suite.value(u"select name from genre where genre_id=191"_s).toText(), u"Psybient"_s);
    EXPECT_EQ(suite.column(u"select * from genre where genre_id<> 255 order by genre_id"_s).size(),
              192);
    EXPECT_EQ(suite.value(u"select * from genre where name=''"_s).toLong(), 255);
}

TEST_F(ShippedDatabase, GenreNamesAreDifferentFromEachOther)
{
    QStringList names = suite.column(u"select Name from genre"_s);
    for (QString& name : names) {
        name = name.toLower();
    }
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_F(ShippedDatabase, TheSelectionFieldsHaveValuesInGermanAndEnglish)
{
    for (const QString& name : {u"Kategorie"_s, u"Stimmung"_s, u"Situation"_s, u"Tempo"_s}) {
        const QString where = u" from config where name='"_s + name + u"'"_s;
        const int german = suite.value(u"select count(*)"_s + where + u" and lang=49"_s).toLong();
        EXPECT_GE(german, 5) << name.toStdString();
        EXPECT_EQ(suite.value(u"select count(*)"_s + where + u" and lang=44"_s).toLong(), german);
        QStringList texts = suite.column(u"select Beschreibung"_s + where + u" order by value"_s);
        EXPECT_EQ(texts.removeDuplicates(), 0);
    }
    EXPECT_TRUE(
        suite.column(u"select Name from config where Lang=-1 or Beschreibung=''"_s).isEmpty());
}

TEST_F(ShippedDatabase, ThePlaylistStatementIsTheOneOfTheUpgradeWordForWord)
{
    const QString stored = suite.open()->queryDefs().Item(u"VPL_ALL"_s)->SQL();
    EXPECT_EQ(stored, vplAllStatement());
    EXPECT_TRUE(stored.startsWith(u" SELECT 1 AS Nr, PL_ALL.Aktion, PL_ALL.FrameStop, "));
    EXPECT_TRUE(stored.contains(u"PL_ALL.FrameStop AS Stop,  PL_ALL.FID, "));
    EXPECT_TRUE(stored.endsWith(u"db_all.DriveName,  PL_ALL.Command FROM PL_ALL INNER JOIN db_all "
                                "ON PL_ALL.FID = db_all.FID ORDER BY PL_ALL.SID"));
}

TEST_F(ShippedDatabase, ANewTrackHasZerosWhereProgramsCompareAndNullsWhereTheyCount)
{
    suite.execute(u"insert into db_all (FID) values ('826816166000')"_s);
    const auto database = suite.open();
    const auto row = database->OpenRecordset(u"db_all"_s);
    for (const QStringView name :
         {u"DLen", u"DTimeMsec", u"DEL", u"FrameStart", u"FrameStop", u"MixTime", u"DriveTyp"}) {
        EXPECT_EQ(row->value(name), Value(0)) << name.toString().toStdString();
    }
    for (const QStringView name :
         {u"PlayCountDay", u"PlayCountAll", u"Play", u"favorit", u"MixIn"}) {
        EXPECT_TRUE(row->value(name).isNull()) << name.toString().toStdString();
    }
    EXPECT_FALSE(row->value(u"DTSImport").isNull());
    EXPECT_FALSE(database->OpenRecordset(u"select * from db_all where del = False"_s)->Eof());
}

TEST_F(ShippedDatabase, ANewPlaylistKnowsWhenItWasMadeAndIsNeitherLockedNorPlayed)
{
    const int number = suite.library.addPlaylist();
    const auto database = suite.open();
    const auto row =
        database->OpenRecordset(u"select * from pl_name where lock=false and isplay=false"_s);
    EXPECT_EQ(row->value(u"NID").toLong(), number);
    EXPECT_FALSE(row->value(u"CreateTime").isNull());
}

TEST_F(ShippedDatabase, APathAsLongAsTheSystemAllowsFits)
{
    const QString path = u"/"_s + QString(4094, u'x') + u"/"_s;
    suite.library.add({.Path = path});
    EXPECT_EQ(suite.value(u"select Path from db_all"_s).toText(), path);
}

TEST_F(ShippedDatabase, ATrackMayWaitForTheTagWriterSeveralTimes)
{
    suite.execute(u"insert into db_edit (fid) values ('826816166000')"_s);
    suite.execute(u"insert into db_edit (fid) values ('826816166000')"_s);
    EXPECT_EQ(suite.column(u"select fid from db_edit"_s).size(), 2);
}

TEST_F(ShippedDatabase, ASecondRowForAFolderOfTheSameVolumeIsRefused)
{
    const auto add = [&](const QString& path, const QString& volume) {
        suite.execute(u"insert into tree_dir (Path,vName) values ("_s + sql::text(path) + u","_s +
                      sql::text(volume) + u")"_s);
    };
    add(u"E:\\music\\"_s, u"Disc1"_s);
    EXPECT_NO_THROW(add(u"E:\\music\\"_s, u"Disc2"_s));
    EXPECT_THROW(add(u"E:\\music\\"_s, u"Disc1"_s), DbError);
}

namespace {

class BuildShippedDatabase : public testing::Test
{
protected:
    BuildShippedDatabase()
    {
        for (const QString& name : {u"tables.txt"_s, u"rows/db_version.txt"_s}) {
            m_folder.write(u"schema/"_s + name,
                           m_suite.files.read(test::schemaFolder() + u'/' + name, 1 << 20));
        }
        QDir().mkpath(m_folder.file(u"schema/queries"_s));
    }

    void build()
    {
        buildShippedDatabase(*m_suite.engine, m_suite.files, m_folder.file(u"schema"_s), target());
    }

    [[nodiscard]] QString target() const { return m_folder.file(u"melovane.mdb"_s); }

    test::TempFolder m_folder;
    test::Suite m_suite{test::Suite::SideFiles::None};
};

} // namespace

TEST_F(BuildShippedDatabase, ReplacesAnOlderFileAndLeavesNothingBeside)
{
    m_folder.write(u"melovane.mdb"_s, "older");
    build();
    EXPECT_TRUE(m_suite.engine->OpenDatabase(target())->tableDefs().Contains(u"db_all"_s));
    m_suite.engine->Release(target());
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{u"melovane.mdb"_s});
}

TEST_F(BuildShippedDatabase, ASourceThatIsNotUnderstoodIsNamedAndTheOldFileStays)
{
    m_folder.write(u"melovane.mdb"_s, "older");
    m_folder.write(u"schema/rows/genre.txt"_s, "Genre_ID | Nmae\n");
    try {
        build();
        FAIL();
    } catch (const IoError& error) {
        EXPECT_TRUE(error.path().endsWith(u"rows/genre.txt"));
        EXPECT_TRUE(error.reason().contains(u"Nmae"));
    }
    EXPECT_EQ(m_folder.read(u"melovane.mdb"_s), QByteArray("older"));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{u"melovane.mdb"_s});
}

TEST_F(BuildShippedDatabase, AQueryThatIsNoStatementStopsTheBuild)
{
    m_folder.write(u"schema/queries/VDB_ALL.sql"_s, "SELEKT *");
    EXPECT_THROW(build(), DbError);
}

TEST_F(BuildShippedDatabase, AMissingFolderOfSourcesStopsTheBuild)
{
    EXPECT_THROW(
        buildShippedDatabase(*m_suite.engine, m_suite.files, m_folder.file(u"none"_s), target()),
        IoError);
}
