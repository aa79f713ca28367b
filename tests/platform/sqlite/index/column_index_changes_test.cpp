#include "platform/sqlite/index/column_index_fixture.h"

/// The index follows every change, whoever makes it.
namespace melovane::test {
namespace {

const QString kAll = u"select [FID] ,[TITEL] from db_all\n where ( [Titel] like 'a*' ) "
                     "order by [Titel] ASC"_s;

class ColumnIndexChanges : public ColumnIndexTest
{
protected:
    ColumnIndexChanges()
    {
        addTrack(u"1"_s, u"Abba"_s);
        addTrack(u"2"_s, u"Adele"_s);
        addTrack(u"3"_s, u"Beck"_s);
    }
};

TEST_F(ColumnIndexChanges, TheFirstSearchLoadsAndLaterOnesDoNot)
{
    EXPECT_EQ(found(kAll), QStringList({u"1|Abba"_s, u"2|Adele"_s}));
    EXPECT_EQ(found(kAll), QStringList({u"1|Abba"_s, u"2|Adele"_s}));
    EXPECT_EQ(figures().loads, 1);
}

TEST_F(ColumnIndexChanges, RowsAddedChangedAndDeletedByASiblingAreSeenByTheNextSearch)
{
    ASSERT_EQ(found(kAll).size(), 2);
    const auto other = sibling();
    other->Execute(u"insert into db_all (FID, Titel) values ('4', 'Aaa')"_s);
    other->Execute(u"update db_all set Titel='Azz' where FID='1'"_s);
    EXPECT_EQ(found(kAll), QStringList({u"4|Aaa"_s, u"2|Adele"_s, u"1|Azz"_s}));
    other->Execute(u"delete from db_all where FID='2'"_s);
    EXPECT_EQ(found(kAll), QStringList({u"4|Aaa"_s, u"1|Azz"_s}));
    other->Execute(u"delete from db_all"_s);
    EXPECT_EQ(found(kAll), QStringList());
    EXPECT_EQ(figures().loads, 1);
}

TEST_F(ColumnIndexChanges, ARowNumberUsedAgainStandsForItsNewRow)
{
    ASSERT_EQ(found(kAll).size(), 2);
    raw(u"DELETE FROM db_all WHERE FID='1'"_s);
    raw(u"INSERT INTO db_all(mlv_row,FID,Titel) VALUES(1,'9','Again')"_s);
    EXPECT_EQ(found(kAll), QStringList({u"2|Adele"_s, u"9|Again"_s}));
}

TEST_F(ColumnIndexChanges, AnOpenTransactionIsSeenByItsOwnSearchesAndByNoOther)
{
    ASSERT_EQ(found(kAll).size(), 2);
    indexed().BeginTrans();
    indexed().Execute(u"update db_all set Titel='Axel' where FID='3'"_s);
    EXPECT_EQ(rowsOf(indexed(), kAll).size(), 3);
    const auto beside = m_indexedEngine->OpenDatabase(path());
    EXPECT_EQ(rowsOf(*beside, kAll).size(), 2);
    indexed().Rollback();
    EXPECT_EQ(found(kAll).size(), 2);
}

TEST_F(ColumnIndexChanges, AnOpenSetKeepsItsRowsAndTheirOrder)
{
    const auto set = indexed().OpenRecordset(kAll);
    sibling()->Execute(u"update db_all set Titel='zz' where FID='1'"_s);
    ASSERT_EQ(found(kAll), QStringList{u"2|Adele"_s});
    ASSERT_EQ(set->rowCount(), 2);
    set->Refresh();
    set->SetAbsolutePosition(0);
    EXPECT_EQ(set->value(u"Titel").toText(), u"zz"_s);
}

TEST_F(ColumnIndexChanges, ATrackIsFoundInANewOrder)
{
    const auto former = indexed().OpenRecordset(kAll);
    former->SetAbsolutePosition(0);
    QString turned = kAll;
    turned.replace("ASC"_L1, "DESC"_L1);
    const auto set = indexed().OpenRecordset(turned);
    EXPECT_EQ(set->rowOfSame(*former, former->bookmark()), 1);
    EXPECT_EQ(figures().answers, 2);
}

TEST_F(ColumnIndexChanges, MoreChangesThanItIsWorthwhileToFollowLoadTheTableAnew)
{
    ASSERT_EQ(found(kAll).size(), 2);
    raw(u"WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i+1 FROM n WHERE i<30000) "
        "INSERT INTO db_all(FID,Titel) SELECT i,'Bulk' FROM n"_s);
    // The search that finds the index behind is SQLite's, the next one begins to load.
    ASSERT_EQ(rowsOf(indexed(), kAll).size(), 2);
    EXPECT_EQ(found(kAll).size(), 2);
    EXPECT_EQ(figures().loads, 2);
    EXPECT_EQ(cellOf(indexed(), u"select count(*) as anz from db_all"_s).toInt64(), 29904);
}

TEST_F(ColumnIndexChanges, AnotherSetOfColumnsLoadsTheTableAnew)
{
    ASSERT_EQ(found(kAll).size(), 2);
    sibling()->Execute(u"alter table db_all add column Extra text(20)"_s);
    ASSERT_EQ(rowsOf(indexed(), kAll).size(), 2);
    sibling()->Execute(u"update db_all set Titel='Zorn', Extra='x' where FID='1'"_s);
    EXPECT_EQ(found(kAll).size(), 1);
    EXPECT_EQ(found(u"select [FID] from db_all where [Extra] like '*'"_s), QStringList{u"1"_s});
}

TEST_F(ColumnIndexChanges, TheListOfChangesBelongsToNoCatalogue)
{
    const qsizetype tables = qsizetype(plain().tableDefs().All().size());
    ASSERT_EQ(found(kAll).size(), 2);
    EXPECT_EQ(qsizetype(indexed().tableDefs().All().size()), tables);
    EXPECT_FALSE(indexed().tableDefs().Contains(u"mlv_change"_s));
    EXPECT_EQ(m_raw->number(u"SELECT count(*) FROM sqlite_schema WHERE name='mlv_change'"_s), 1);
}

TEST_F(ColumnIndexChanges, WhileAnotherProgramWritesTheFirstSearchDoesNotWait)
{
    raw(u"BEGIN IMMEDIATE"_s);
    EXPECT_EQ(rowsOf(indexed(), kAll).size(), 2);
    EXPECT_EQ(m_time->paused().count(), 0);
    EXPECT_EQ(figures().answers, 0);
    raw(u"COMMIT"_s);
    EXPECT_EQ(found(kAll).size(), 2);
}

TEST_F(ColumnIndexChanges, NullMatchesNothingNotEvenAStar)
{
    raw(u"INSERT INTO db_all(FID,Titel) VALUES('5',NULL),('6','')"_s);
    EXPECT_EQ(found(u"select [FID] from db_all where [Titel] like '*'"_s).size(), 4);
}

TEST_F(ColumnIndexChanges, OtherStatementsAreLeftToSqlite)
{
    for (const QString& statement :
         {u"select distinct [FID] from db_all where [Titel] like 'a*'"_s,
          u"select top 1 [FID] from db_all where [Titel] like 'a*'"_s,
          u"select [FID] from db_all where not [Titel] like 'b*'"_s,
          u"select [FID] from db_all where [Titel] like 'a*' order by len(Titel)"_s,
          u"select [FID] from db_all as x where [Titel] like 'a*'"_s,
          u"select [FID], [Titel] as FID from db_all where [Titel] like 'a*' order by FID"_s,
          u"select [FID] from db_all where [DEL] like '0'"_s,
          u"select [FID] from db_all where [Titel] = 5"_s,
          u"select [FID] from db_all where format([Play],'DD.MM.YYYY') = '01.01.2020'"_s}) {
        EXPECT_EQ(rowsOf(indexed(), statement), rowsOf(plain(), statement))
            << statement.toStdString();
    }
    EXPECT_EQ(figures().answers, 0);
}

TEST_F(ColumnIndexChanges, PiecesTypedOnAndBackFindWhatSqliteFinds)
{
    raw(u"WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i+1 FROM n WHERE i<700) "
        "INSERT INTO db_all(FID,Titel,Interpret,DName) SELECT i,"
        "'Lied O''Mond '||(i*7919%997),'Über Ümläut '||(i%37),"
        "'Über - Lied O''Mond '||(i*7919%997)||'.mp3' FROM n"_s);
    QStringList pieces;
    for (const QString& text : {u"*mond 12"_s, u"*ümläut 3"_s, u"*lied*mond*7"_s, u"*o*m*1*.mp"_s,
                                u"*- li*9?.mp3"_s, u"*mp3"_s, u"*zzz"_s}) {
        for (int length = 1; length <= text.size(); ++length) {
            pieces.append(text.left(length));
        }
        pieces.append(text.left(3));
    }
    for (const QString& piece : pieces) {
        const QString statement =
            u"select [FID] from db_all\n where ( [Titel] like '%1*' or [Interpret] like '%1*' or "
            "[DName] like '%1*' ) order by [FID] ASC"_s.arg(piece);
        ASSERT_EQ(found(statement), rowsOf(plain(), statement)) << piece.toStdString();
    }
}

/// A program with a message loop, which gives a large library's load a turn now and then. The
/// search that begins the load does one slice of it.
class ColumnIndexSlices : public ColumnIndexChanges
{
protected:
    ColumnIndexSlices()
    {
        addBulk(100, 40'000);
        m_database = m_slicedEngine->OpenDatabase(path());
    }

    [[nodiscard]] std::unique_ptr<DBEngine> slicedEngine(std::chrono::milliseconds timeout)
    {
        return sqlite::makeEngine(
            m_clock, {.searchIndex = m_counts,
                      .whenIdle = [this](std::function<bool()> next) { m_work = std::move(next); },
                      .searchTimeout = timeout,
                      .time = m_time});
    }

    /// Turns of the message loop until the library is in memory, with the search that begins the
    /// load given so much time, while each look at the time says that 25 ms more have passed.
    int slicesLeftAfter(std::chrono::milliseconds timeout)
    {
        m_time->setPerLook(std::chrono::milliseconds(25));
        const auto engine = slicedEngine(timeout);
        EXPECT_EQ(rowsOf(*engine->OpenDatabase(path()), kAll).size(), 2);
        int slices = 0;
        while (m_work()) {
            ++slices;
        }
        return slices;
    }

    void addBulk(int first, int last)
    {
        raw(u"WITH RECURSIVE n(i) AS (SELECT %1 UNION ALL SELECT i+1 FROM n WHERE i<%2) "
            "INSERT INTO db_all(FID,Titel,Album,DName) SELECT i,'Bulk '||i,'Album '||(i%500),"
            "i||'.mp3' FROM n"_s.arg(first)
                .arg(last));
    }

    void finishLoad()
    {
        while (m_work()) {
        }
    }

    std::function<bool()> m_work;
    std::shared_ptr<sqlite::IndexFigures> m_counts = std::make_shared<sqlite::IndexFigures>();
    std::unique_ptr<DBEngine> m_slicedEngine = slicedEngine(std::chrono::milliseconds(0));
    std::unique_ptr<Database> m_database;
};

TEST_F(ColumnIndexSlices, ALargeLibraryIsSearchedBySqliteUntilItIsLoaded)
{
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    ASSERT_EQ(m_counts->answers, 0);
    ASSERT_TRUE(m_work && m_work());
    sibling()->Execute(u"update db_all set Titel='Changed meanwhile' where FID='2'"_s);
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 1);
    ASSERT_EQ(m_counts->answers, 0);
    finishLoad();
    EXPECT_EQ(rowsOf(*m_database, kAll), QStringList{u"1|Abba"_s});
    EXPECT_EQ(m_counts->answers, 1);
    EXPECT_EQ(m_counts->loads, 1);
}

TEST_F(ColumnIndexSlices, TheTurnIsGivenBackOftenWhileColumnsAreSortedToo)
{
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    int turns = 1;
    while (m_work()) {
        ++turns;
    }
    // Twenty of them read the 40,000 rows.
    EXPECT_GT(turns, 60);
    EXPECT_EQ(rowsOf(*m_database, kAll).size(), 2);
    EXPECT_EQ(m_counts->answers, 1);
}

TEST_F(ColumnIndexSlices, ALibraryThatIsThereBeforeTheTimeOutAnswersTheFirstSearch)
{
    const auto engine = slicedEngine(std::chrono::milliseconds(60));
    EXPECT_EQ(rowsOf(*engine->OpenDatabase(path()), kAll).size(), 2);
    EXPECT_EQ(m_counts->answers, 1);
    EXPECT_EQ(m_counts->loads, 1);
}

TEST_F(ColumnIndexSlices, ASearchWaitsForALargeLibraryUntilTheTimeOutAndNoLonger)
{
    const int without = slicesLeftAfter(std::chrono::milliseconds(0));
    // Looks after 25, 50 and 75 ms.
    EXPECT_EQ(slicesLeftAfter(std::chrono::milliseconds(60)), without - 2);
    EXPECT_EQ(m_counts->answers, 0);
    EXPECT_EQ(m_counts->loads, 2);
}

TEST_F(ColumnIndexSlices, WhileManyChangesAreLoadedAnewTheFormerTableServesOn)
{
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    finishLoad();
    addBulk(50'001, 55'000);
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    m_work = {};
    addBulk(60'001, 60'001);
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    ASSERT_TRUE(m_work && m_work());
    sibling()->Execute(u"update db_all set Titel='Axel' where FID='3'"_s);
    EXPECT_EQ(rowsOf(*m_database, kAll).size(), 3);
    finishLoad();
    EXPECT_EQ(rowsOf(*m_database, kAll).size(), 3);
    EXPECT_EQ(m_counts->answers, 4);
    EXPECT_EQ(m_counts->loads, 2);
}

TEST_F(ColumnIndexSlices, ALoadThatCannotGoOnIsBegunAnewByALaterSearch)
{
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    ASSERT_TRUE(m_work());
    raw(u"ALTER TABLE db_all RENAME TO db_all2"_s);
    EXPECT_FALSE(m_work());
    raw(u"ALTER TABLE db_all2 RENAME TO db_all"_s);
    ASSERT_EQ(rowsOf(*m_database, kAll).size(), 2);
    finishLoad();
    EXPECT_EQ(rowsOf(*m_database, kAll).size(), 2);
    EXPECT_EQ(m_counts->answers, 1);
}

} // namespace
} // namespace melovane::test
