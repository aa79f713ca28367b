#include "library/create_sql_find.h"
#include "platform/db/db_error.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kFilter = u" and del in (0,-1) "_s;

/// A builder over `db_all` with two columns and the library's filter.
struct Builder : public testing::Test
{
    Builder()
    {
        sql.SetTableName(u"db_all"_s);
        sql.AddTableField(u"FID"_s);
        sql.AddTableField(u"Titel"_s);
        sql.ViewDEL(kFilter);
    }

    void find(const QStringList& columns, const QString& text)
    {
        sql.ClearFieldFind();
        for (const QString& column : columns) {
            sql.AddFieldFind(column);
        }
        sql.SetFind(text);
    }

    test::NoEngine engine;
    cls_CreateSqlFind sql{engine};
};

using CreateSqlFind = Builder;

TEST_F(CreateSqlFind, PrefixSearchInTwoColumns)
{
    find({u"Titel"_s, u"Interpret"_s}, u"Licht"_s);
    EXPECT_EQ(sql.GetSql(2),
              u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] like 'Licht*' or  "
              "[Interpret] like 'Licht*'  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, ExactSearchInOneColumnIsAnEqualsSignWithItsQuotes)
{
    find({u"Note"_s}, u"5"_s);
    sql.SetOrderBy(u"Titel"_s);
    sql.SetSortRichtung(u"DESC"_s);
    EXPECT_EQ(sql.GetSql(3), u"select  [FID] , [TITEL]  from db_all\n where ( [Note] = '5'  )  and "
                             "del in (0,-1) \norder by [Titel] DESC"_s);
}

TEST_F(CreateSqlFind, Mode4ComparesAllColumns)
{
    find({u"Album"_s, u"Genre"_s}, u"x"_s);
    EXPECT_EQ(sql.GetSql(4), u"select  [FID] , [TITEL]  from db_all\n where ( [Album] like 'x' and "
                             "[Genre] like 'x'  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, TheMode1TextIsInvalidAndHoldsNeitherFindTextNorClosingQuote)
{
    find({u"Titel"_s, u"Album"_s}, u"x"_s);
    EXPECT_EQ(sql.GetSql(1), u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] like '* "
                             "[Album] like )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AContainsSearchWritesAStarIntoTheFindText)
{
    find({u"Titel"_s}, u"*love"_s);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] like "
                             "'*love*'  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AnApostropheAndEachBracketBecomeAStar)
{
    find({u"Titel"_s}, u"it's [live]"_s);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] like "
                             "'it*s *live**'  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AZeroCharacterDoesNotEndTheStatement)
{
    find({u"Titel"_s}, u"a"_s + QChar(0) + u"b"_s);
    EXPECT_EQ(sql.GetWehre(), u"Titel like 'ab*'"_s);
}

TEST_F(CreateSqlFind, AStarInTheFindTextKeepsLikeEvenWithOneFindColumn)
{
    find({u"Titel"_s}, u"a*b"_s);
    EXPECT_TRUE(sql.GetSql(3).contains(u" [Titel] like 'a*b' "_s));
}

TEST_F(CreateSqlFind, OnePrefixColumnWithoutStarComparesEqualToTheTextWithItsStar)
{
    find({u"Titel"_s}, u"Licht"_s);
    EXPECT_TRUE(sql.GetSql(2).contains(u" where ( [Titel] = 'Licht*'  ) "_s));
}

TEST_F(CreateSqlFind, WithTwoFindColumnsLikeStaysEvenWithoutAStar)
{
    find({u"Titel"_s, u"Interpret"_s}, u"Licht"_s);
    EXPECT_EQ(sql.GetSql(3).count(u"like"_s), 2);
}

TEST_F(CreateSqlFind, TheReplacementOfLikeIsBlindAndCaseSensitive)
{
    find({u"Titel"_s}, u"I like Like"_s);
    EXPECT_EQ(sql.GetSql(3), u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] = 'I = Like' "
                             " )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, WithoutFindColumnsThereIsNoWhereAndTheFilterIsNotApplied)
{
    find({}, u"x"_s);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\n"_s);
    EXPECT_EQ(sql.GetSqlByNummer(3), u"select  [FID] , [TITEL]  from db_all\n"_s);
    EXPECT_EQ(sql.countStatement(2), u"select count(*) as anz from db_all\n"_s);
    EXPECT_EQ(sql.GetWehre(), QString());
}

TEST_F(CreateSqlFind, AnEmptySelectListIsAStar)
{
    sql.ClearTableFields();
    EXPECT_EQ(sql.GetSql(2), u"select  * from db_all\n"_s);
}

TEST_F(CreateSqlFind, ClearTableFieldsAlsoEmptiesTheViewFilter)
{
    sql.ClearTableFields();
    find({u"Titel"_s, u"Album"_s}, u"x"_s);
    EXPECT_EQ(sql.GetSql(2),
              u"select  * from db_all\n where ( [Titel] like 'x*' or  [Album] like 'x*'  ) \n"_s);
}

TEST_F(CreateSqlFind, ARepeatedTableFieldIsSkippedWhateverItsCase)
{
    sql.AddTableField(u"titel"_s);
    EXPECT_EQ(sql.GetFieldCount(), 2);
}

TEST_F(CreateSqlFind, SetFieldsFromConfigTableDoesNothing)
{
    sql.SetFieldsFromConfigTable(u"config"_s);
    EXPECT_EQ(sql.GetFieldCount(), 2);
}

TEST_F(CreateSqlFind, KindsHaveTheirComparisonsWhateverTheirCase)
{
    find({u"PNID:Long"_s, u"DTSImport:DATE"_s, u"x:where"_s, u"Titel:nonsense"_s}, u"7"_s);
    EXPECT_EQ(sql.GetSql(3),
              u"select  [FID] , [TITEL]  from db_all\n where ( [PNID] = 7 or  "
              "format([DTSImport],'DD.MM.YYYY') = '7' or  7 Or  [Titel] like '7'  )  and del in "
              "(0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AConditionOfItsOwnKeepsItsQuotesBracketsAndWords)
{
    EXPECT_EQ(sql.GetSqlWhere(u"[Titel] = 'I''d like it' or FID in ('1','2')"_s),
              u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] = 'I''d like it' or FID in "
              "('1','2')  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AConditionAsFindTextEndsCleanly)
{
    find({u"x:where"_s}, u"BPM > 100"_s);
    EXPECT_EQ(sql.GetSql(3),
              u"select  [FID] , [TITEL]  from db_all\n where ( BPM > 100  )  and del "
              "in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, AnOrderColumnOutsideTheSelectListIsStillTheMainOrder)
{
    find({}, QString());
    sql.SetOrderBy(u"Play"_s);
    sql.SetSortRichtung(u"ASC"_s);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\norder by [Play] ASC"_s);
}

TEST_F(CreateSqlFind, OnlyTheSecondaryListIsFilteredByTheSelectList)
{
    sql.SetOrderBy(u"FID"_s);
    sql.SetSortRichtung(u"ASC"_s);
    sql.AddOrderBy(u"Track"_s, 100);
    sql.AddOrderBy(u"Titel"_s, 100);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\norder by [FID] ASC , [Titel] "
                             "ASC  "_s);
}

TEST_F(CreateSqlFind, TheMainColumnIsNotRepeatedWhateverItsCase)
{
    sql.SetOrderBy(u"TITEL"_s);
    sql.SetSortRichtung(u"DESC"_s);
    sql.AddOrderBy(u"Titel"_s, 100);
    EXPECT_EQ(sql.GetSql(2), u"select  [FID] , [TITEL]  from db_all\norder by [TITEL] DESC"_s);
}

TEST_F(CreateSqlFind, AnyKindButAscendingIsDescending)
{
    sql.SetOrderBy(u"FID"_s);
    sql.SetSortRichtung(u"ASC"_s);
    sql.AddOrderBy(u"Titel"_s, 101);
    EXPECT_TRUE(sql.GetSql(2).endsWith(u"order by [FID] ASC , [Titel] DESC "_s));
}

TEST_F(CreateSqlFind, AddOrderByOfAKnownNameChangesItsKindWithoutMovingIt)
{
    sql.AddTableField(u"Track"_s);
    sql.SetOrderBy(u"FID"_s);
    sql.SetSortRichtung(u"ASC"_s);
    sql.AddOrderBy(u"Track"_s, 100);
    sql.AddOrderBy(u"Titel"_s, 100);
    sql.AddOrderBy(u"TRACK"_s, 0);
    EXPECT_TRUE(sql.GetSql(2).endsWith(u"order by [FID] ASC , [Track] DESC  , [Titel] ASC  "_s));
}

TEST_F(CreateSqlFind, RemoveOrderByDropsTheSecondaryListAlone)
{
    sql.SetOrderBy(u"FID"_s);
    sql.SetSortRichtung(u"ASC"_s);
    sql.AddOrderBy(u"Titel"_s, 100);
    sql.RemoveOrderBy();
    EXPECT_TRUE(sql.GetSql(2).endsWith(u"\norder by [FID] ASC"_s));
}

TEST_F(CreateSqlFind, GetLastSqlGivesTheLastStatementTheOrderOfNow)
{
    sql.SetOrderBy(u"FID"_s);
    sql.SetSortRichtung(u"ASC"_s);
    find({u"Titel"_s, u"Album"_s}, u"x"_s);
    const QString before = sql.GetSql(2);
    find({u"Path"_s}, u"other"_s);
    sql.SetOrderBy(u"Titel"_s);
    sql.SetSortRichtung(u"DESC"_s);
    QString expected = before;
    expected.replace(u"order by [FID] ASC"_s, u"order by [Titel] DESC"_s);
    EXPECT_EQ(sql.GetLastSQL(), expected);
    sql.SetOrderBy({});
    EXPECT_TRUE(sql.GetLastSQL().endsWith(u" and del in (0,-1) \n"_s));
}

TEST_F(CreateSqlFind, TheStatementOfADiscFolderHasNoLineFeedBehindItsCondition)
{
    sql.SetOrderBy(u"Titel"_s);
    sql.SetSortRichtung(u"ASC"_s);
    find({u"Titel"_s}, u"x"_s);
    EXPECT_EQ(sql.GetCDSql(u"D:\\Rock 'n Roll\\"_s, u"DISC'1"_s),
              u"select  [FID] , [TITEL]  from db_all\n where path like 'D:\\Rock ''n Roll\\' and "
              "drivename='DISC''1' and del=false order by [Titel] ASC"_s);
}

TEST_F(CreateSqlFind, NumericEqualityUsesTheEntryWhole)
{
    find({u"tday"_s, u"PNID:long"_s}, u"20260314"_s);
    EXPECT_EQ(sql.GetSqlByNummer(3),
              u"select  [FID] , [TITEL]  from db_all\n where (  [tday] =20260314 or [PNID:long] "
              "=20260314  )  and del in (0,-1) \n"_s);
}

TEST_F(CreateSqlFind, NumericEqualityInOtherModesKeepsItsStrayStarAndQuote)
{
    find({u"a"_s}, u"1"_s);
    EXPECT_TRUE(sql.GetSqlByNummer(1).contains(u" where (  [a] =*1*'  ) "_s));
    EXPECT_TRUE(sql.GetSqlByNummer(2).contains(u" where (  [a] =1*'  ) "_s));
}

TEST_F(CreateSqlFind, NumericGreaterOrEqualKeepsLikeInItsTextAlone)
{
    find({u"PlayCountAll"_s}, u"3"_s);
    EXPECT_EQ(sql.GetSqlByNummerGreater(2),
              u"select  [FID] , [TITEL]  from db_all\n where (  [PlayCountAll] >=3 )  and del in "
              "(0,-1) \n"_s);
}

TEST_F(CreateSqlFind, TextGreaterOrEqualKeepsItsQuotes)
{
    find({u"BPM"_s}, u"130"_s);
    sql.SetOrderBy(u"BPM"_s);
    sql.SetSortRichtung(u"ASC"_s);
    EXPECT_EQ(sql.GetSqlByTextGreater(2),
              u"select  [FID] , [TITEL]  from db_all\n where (  [BPM] >='130' )  and del in (0,-1) "
              "\norder by [BPM] ASC"_s);
    EXPECT_EQ(sql.GetLastSQL(), sql.GetSqlByTextGreater(3));
}

TEST_F(CreateSqlFind, TheCountIgnoresKindsHasNoOrderAndABlankBehindItsBracket)
{
    sql.SetOrderBy(u"Titel"_s);
    find({u"Titel"_s, u"PNID:long"_s}, u"Licht"_s);
    EXPECT_EQ(sql.countStatement(2), u"select count(*) as anz from db_all\n where ( [Titel] like "
                                     "'Licht*' or [PNID] like 'Licht*' )  and del in (0,-1) "_s);
    EXPECT_EQ(sql.countStatement(1), u"select count(*) as anz from db_all\n where ( [Titel] like "
                                     "'*Licht*' or [PNID] like '*Licht*' )  and del in (0,-1) "_s);
}

TEST_F(CreateSqlFind, TheConditionAloneHasNoBracketsAndNoKinds)
{
    find({u"Titel"_s, u"PNID:long"_s}, u"x"_s);
    EXPECT_EQ(sql.GetWehre(), u"Titel like 'x*' or PNID like 'x*'"_s);
}

TEST_F(CreateSqlFind, ALookUpThatCannotOpenTheDatabaseTellsItsCaller)
{
    EXPECT_THROW((void)sql.GetCount(2), DbError);
    EXPECT_THROW((void)sql.GetGenreID(u"Pop"_s), DbError);
    EXPECT_THROW(sql.SetFieldsFromTable(u"db_all"_s), DbError);
}

} // namespace
} // namespace melovane
