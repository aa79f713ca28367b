#include "platform/sqlite/engine/engine_fixture.h"

namespace melovane::test {
namespace {

/// Three tracks, and a playlist that holds the first twice.
class EngineJoin : public EngineTest
{
protected:
    EngineJoin()
    {
        makeSuite();
        for (int i = 0; i < 3; ++i) {
            addTrack(u"00%1"_s.arg(i), u"T%1"_s.arg(i));
        }
        for (const auto& fid : {u"000"_s, u"002"_s, u"000"_s}) {
            db().Execute(
                u"insert into pl_all (PNID, SID, FID, FrameStart) values (1, 2, '%1', 9)"_s.arg(
                    fid));
        }
    }
};

TEST_F(EngineJoin, BothSidesOfThePlaylistViewCanBeWritten)
{
    const auto set = db().OpenRecordset(u"select * from VPL_ALL where pnid=1"_s);
    ASSERT_EQ(set->rowCount(), 3);
    ASSERT_TRUE(set->Updatable());
    set->Edit();
    set->setValue(u"SID", 5);
    set->setValue(u"Note", u"4"_s);
    set->Update();
    EXPECT_EQ(set->value(u"SID").toLong(), 5);
    EXPECT_EQ(set->value(u"Note").toText(), u"4"_s);
    EXPECT_EQ(rowsOf(*sibling(), u"select SID from pl_all order by plid"_s).count(u"5"_s), 1);
    EXPECT_EQ(cellOf(*sibling(),
                     u"select note from db_all where fid='%1'"_s.arg(set->value(u"FID").toText()))
                  .toText(),
              u"4"_s);
}

TEST_F(EngineJoin, ATrackThatStandsTwiceShowsItsChangeInBothRows)
{
    const auto set = db().OpenRecordset(u"select * from VPL_ALL where fid='000' order by plid"_s);
    ASSERT_EQ(set->rowCount(), 2);
    set->MoveLast();
    EXPECT_TRUE(set->value(u"Note").isNull());
    set->MoveFirst();
    set->Edit();
    set->setValue(u"Note", u"5"_s);
    set->Update();
    set->MoveLast();
    EXPECT_EQ(set->value(u"Note").toText(), u"5"_s);
}

TEST_F(EngineJoin, OneColumnUnderTwoNamesShowsWhatWasSet)
{
    const auto set = db().OpenRecordset(u"VPL_ALL"_s);
    set->Edit();
    set->setValue(u"Start", 77);
    EXPECT_EQ(set->value(u"FrameStart").toLong(), 77);
    EXPECT_EQ(errorOf([&] { set->setValue(u"Nr", 1); }), dberror::kFieldReadOnly);
    set->Update();
    EXPECT_EQ(set->value(u"FrameStart").toLong(), 77);
}

TEST_F(EngineJoin, DeleteTakesTheRowOfTheFirstTable)
{
    const auto set = db().OpenRecordset(u"VPL_ALL"_s);
    set->Delete();
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from pl_all"_s).toLong(), 2);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from db_all"_s).toLong(), 3);
}

TEST_F(EngineJoin, ANewRowOfOneTableAppearsWithItsPartner)
{
    const auto set = db().OpenRecordset(u"VPL_ALL"_s);
    set->AddNew();
    set->setValue(u"PNID", 1);
    set->setValue(u"SID", 1);
    set->setValue(0 + set->fieldIndex(u"FID"), u"001"_s);
    set->Update();
    ASSERT_TRUE(set->LastModified().isValid());
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"Titel").toText(), u"T1"_s);
    EXPECT_EQ(set->rowCount(), 4);
    set->AddNew();
    set->setValue(u"PNID", 1);
    set->setValue(u"Note", u"1"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kReadOnly);
}

TEST_F(EngineJoin, AnUpdateThatFailsOnOneSideLeavesTheOther)
{
    const auto set = db().OpenRecordset(
        u"select a.sid, a.plid, b.fid, b.titel from pl_all as a, db_all as b where a.fid=b.fid order by a.plid"_s);
    ASSERT_TRUE(set->Updatable());
    set->Edit();
    set->setValue(u"sid", 99);
    set->setValue(u"fid", u"001"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kDuplicateKey);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from pl_all where sid=99"_s).toLong(), 0);
}

TEST_F(EngineJoin, TheNullSideOfALeftJoinReadsAsNull)
{
    const auto set = db().OpenRecordset(
        u"select b.fid, a.plid from db_all as b left join pl_all as a on a.fid=b.fid where b.fid='001'"_s);
    ASSERT_EQ(set->rowCount(), 1);
    EXPECT_TRUE(set->value(1).isNull());
    EXPECT_EQ(set->value(0).toText(), u"001"_s);
}

TEST_F(EngineJoin, ANewRowIsFoundInASetWithParametersAndTop)
{
    const auto query = db().CreateQueryDef(
        {}, u"parameters list long; select top 50 * from VPL_ALL where pnid=[list]"_s);
    query->SetParameter(u"list"_s, 1);
    const auto set = query->OpenRecordset();
    for (int i = 0; i < 3; ++i) {
        set->AddNew();
        set->setValue(u"PNID", 1);
        set->setValue(u"FID", u"00%1"_s.arg(i));
        set->Update();
        set->SetBookmark(set->LastModified());
        EXPECT_EQ(set->value(u"Titel").toText(), u"T%1"_s.arg(i));
        EXPECT_EQ(set->value(u"PLID").toLong(), 4 + i);
    }
    EXPECT_EQ(set->rowCount(), 6);
}

TEST_F(EngineJoin, ANewRowThatTheJoinDoesNotShowIsWrittenAndHasNoBookmark)
{
    const auto set = db().OpenRecordset(u"VPL_ALL"_s);
    set->AddNew();
    set->setValue(u"FID", u"nowhere"_s);
    set->Update();
    EXPECT_FALSE(set->LastModified().isValid());
    EXPECT_EQ(set->rowCount(), 3);
    EXPECT_EQ(cellOf(*sibling(), u"select count(*) as n from pl_all"_s).toLong(), 4);
}

TEST_F(EngineJoin, APartnerDeletedElsewhereLeavesNoWrongRow)
{
    const auto set = db().OpenRecordset(u"select * from VPL_ALL order by plid"_s);
    set->MoveNext();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T2"_s);
    sibling()->Execute(u"delete from db_all where fid='002'"_s);
    set->Refresh();
    EXPECT_EQ(errorOf([&] { (void)set->value(u"Titel"); }), dberror::kRecordDeleted);
    EXPECT_EQ(errorOf([&] { set->Edit(); }), dberror::kRecordDeleted);
    set->MoveNext();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T0"_s);
    set->Requery();
    EXPECT_EQ(set->rowCount(), 2);
}

TEST_F(EngineJoin, AChangeElsewhereIsShownAfterARefreshOnBothSides)
{
    const auto set = db().OpenRecordset(u"select * from VPL_ALL order by plid"_s);
    EXPECT_EQ(set->value(u"SID").toLong(), 2);
    sibling()->Execute(u"update pl_all set sid=77"_s);
    sibling()->Execute(u"update db_all set Note='3'"_s);
    EXPECT_EQ(set->value(u"SID").toLong(), 2) << "the row of the moment it was fetched";
    set->Refresh();
    EXPECT_EQ(set->value(u"SID").toLong(), 77);
    EXPECT_EQ(set->value(u"Note").toText(), u"3"_s);
}

TEST_F(EngineJoin, TheNullSideOfALeftJoinCannotBeWritten)
{
    const auto set = db().OpenRecordset(
        u"select b.fid, b.titel, a.sid from db_all as b left join pl_all as a on a.fid=b.fid where b.fid='001'"_s);
    set->Edit();
    set->setValue(u"titel", u"new"_s);
    set->setValue(u"sid", 5);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kReadOnly);
    EXPECT_EQ(cellOf(*sibling(), u"select titel from db_all where fid='001'"_s).toText(), u"T1"_s);
}

} // namespace
} // namespace melovane::test
