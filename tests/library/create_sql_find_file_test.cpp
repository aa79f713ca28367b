#include "library/create_sql_find.h"
#include "library/test_library.h"
#include "platform/db/db_error.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The builder over a real file.
struct CreateSqlFindOnAFile : public testing::Test
{
    CreateSqlFindOnAFile()
    {
        sql.SetDataBaseName(library.databaseName());
        sql.SetTableName(u"db_all"_s);
        sql.SetFieldsFromTable(u"db_all"_s);
        sql.ViewDEL(u" and del in (0,-1) "_s);
        sql.SetOrderBy(u"Titel"_s);
        sql.SetSortRichtung(u"ASC"_s);
        library.add({{u"Licht aus"_s, u"Die Kanalratten"_s, {}, u"5"_s, 0},
                     {u"Dunkel"_s, u"Lichtblick"_s, {}, u"4"_s, -1},
                     {u"It's only [live]"_s, u"O'Neil \"Quote\""_s, {}, u"5"_s, 0},
                     {u"Licht weg"_s, u"Weg"_s, {}, {}, 2}});
    }

    void find(const QStringList& columns, const QString& text)
    {
        sql.ClearFieldFind();
        for (const QString& column : columns) {
            sql.AddFieldFind(column);
        }
        sql.SetFind(text);
    }

    QStringList titles(const QString& statement)
    {
        QStringList result;
        const auto database = library.engine->OpenDatabase(library.databaseName());
        for (const auto set = database->OpenRecordset(statement); !set->Eof(); set->MoveNext()) {
            result.append(set->value(u"Titel").toText());
        }
        return result;
    }

    test::TestLibrary library;
    cls_CreateSqlFind sql{*library.engine};
};

TEST_F(CreateSqlFindOnAFile, APrefixSearchFindsTitlesAndArtistsOfTheView)
{
    find({u"Titel"_s, u"Interpret"_s}, u"licht"_s);
    EXPECT_EQ(titles(sql.GetSql(2)), (QStringList{u"Dunkel"_s, u"Licht aus"_s}));
    EXPECT_EQ(sql.GetCount(2), 2);
}

TEST_F(CreateSqlFindOnAFile, AnExactSearchInOneColumnFindsEqualTexts)
{
    find({u"Note"_s}, u"5"_s);
    EXPECT_EQ(titles(sql.GetSql(3)), (QStringList{u"It's only [live]"_s, u"Licht aus"_s}));
}

TEST_F(CreateSqlFindOnAFile, AnApostropheAndBracketsMatchAnyLetterThere)
{
    find({u"Titel"_s, u"Interpret"_s}, u"It's only [li"_s);
    EXPECT_EQ(titles(sql.GetSql(2)), QStringList{u"It's only [live]"_s});
}

TEST_F(CreateSqlFindOnAFile, TheMode1TextIsRefusedByTheEngine)
{
    find({u"Titel"_s, u"Interpret"_s}, u"Licht"_s);
    EXPECT_THROW(titles(sql.GetSql(1)), DbError);
}

TEST_F(CreateSqlFindOnAFile, NoFindTextBreaksAStatement)
{
    for (const QString& text :
         {u"'"_s, u"''"_s, u"\""_s, u"[x"_s, u"x]"_s, u"*"_s, u"?"_s, u"#"_s, u"a\nb"_s, u";"_s,
          u"--"_s, u"') or ('1'='1"_s, u"\\"_s, QString(10'000, u'x')}) {
        find({u"Titel"_s, u"Interpret"_s}, text);
        EXPECT_NO_THROW(titles(sql.GetSql(2))) << text.left(20).toStdString();
        EXPECT_NO_THROW((void)sql.GetCount(2)) << text.left(20).toStdString();
    }
}

TEST_F(CreateSqlFindOnAFile, ATextGreaterOrEqualSearchComparesTexts)
{
    library.execute(u"update db_all set BPM='98' where Titel='Dunkel'"_s);
    library.execute(u"update db_all set BPM='130' where Titel='Licht aus'"_s);
    find({u"BPM"_s}, u"90"_s);
    EXPECT_EQ(titles(sql.GetSqlByTextGreater(2)), QStringList{u"Dunkel"_s});
}

TEST_F(CreateSqlFindOnAFile, ANumericSearchComparesNumbers)
{
    library.execute(u"update db_all set PlayCountAll=9 where Titel='Dunkel'"_s);
    library.execute(u"update db_all set PlayCountAll=10 where Titel='Licht aus'"_s);
    find({u"PlayCountAll"_s}, u"9"_s);
    EXPECT_EQ(titles(sql.GetSqlByNummer(3)), QStringList{u"Dunkel"_s});
    EXPECT_EQ(titles(sql.GetSqlByNummerGreater(2)), (QStringList{u"Dunkel"_s, u"Licht aus"_s}));
}

TEST_F(CreateSqlFindOnAFile, ADiscFolderWithAQuoteIsFound)
{
    library.execute(
        u"update db_all set Path='D:\\Rock ''n Roll\\', DriveName='CD''1' where Titel='Licht aus'"_s);
    EXPECT_EQ(titles(sql.GetCDSql(u"D:\\Rock 'n Roll\\"_s, u"CD'1"_s)),
              QStringList{u"Licht aus"_s});
}

TEST_F(CreateSqlFindOnAFile, TheSelectListIsTheTablesInUpperCase)
{
    const auto fields =
        library.engine->OpenDatabase(library.databaseName())->tableDefs().Item(u"db_all"_s).Fields;
    EXPECT_EQ(sql.GetFieldCount(), static_cast<int>(fields.size()));
    EXPECT_TRUE(sql.GetSql(2).startsWith(u"select  [FID] , [TITEL] , [INTERPRET] ,"_s));
}

TEST_F(CreateSqlFindOnAFile, TheSelectListOfAStoredQueryIsItsColumns)
{
    library.engine->OpenDatabase(library.databaseName())
        ->CreateQueryDef(u"vdb_all_del"_s, u"select FID, Titel from db_all where DEL in (-1,3)"_s);
    sql.SetFieldsFromView(u"vdb_all_del"_s);
    sql.SetTableName(u"vdb_all_del"_s);
    find({}, {});
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from vdb_all_del\norder by [Titel] ASC"_s);
    EXPECT_EQ(titles(sql.GetLastSQL()), QStringList{u"Dunkel"_s});
}

TEST_F(CreateSqlFindOnAFile, NamesAreLookedUpByNumber)
{
    library.execute(u"insert into genre (Genre_ID,Name) values (7,'Rock ''n Roll')"_s);
    library.execute(u"insert into pl_group (GRID,Name) values (3,'Freitag')"_s);
    library.execute(u"insert into pl_name (NID,Name) values (-2,'Jingles')"_s);
    EXPECT_EQ(sql.GetGenreName(7), u"Rock 'n Roll"_s);
    EXPECT_EQ(sql.GetGroupName(3), u"Freitag"_s);
    EXPECT_EQ(sql.GetPlaylistname(-2), u"Jingles"_s);
    EXPECT_EQ(sql.GetPlaylistname(99), QString());
}

TEST_F(CreateSqlFindOnAFile, AGenreIsLookedUpByNameWithAQuoteInIt)
{
    library.execute(u"insert into genre (Genre_ID,Name) values (7,'Rock ''n Roll')"_s);
    EXPECT_EQ(sql.GetGenreID(u"Rock 'n Roll"_s), 7);
    EXPECT_EQ(sql.GetGenreID(u"Pop' or '1'='1"_s), std::nullopt);
}

} // namespace
} // namespace melovane
