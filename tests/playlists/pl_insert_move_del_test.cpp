#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "playlists/drag_list.h"
#include "playlists/list_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;

class PlInsertMoveDel : public testing::Test
{
protected:
    PlInsertMoveDel() { lists.addTracks(9); }

    [[nodiscard]] Value columnOf(Pnid list, const QString& column) const
    {
        return lists.value(
            u"select %1 from pl_all where pnid=%2 order by sid"_s.arg(column).arg(numberOf(list)));
    }

    Lists lists;
    cls_PLInsertMoveDel& edits = lists.edits;
};

TEST(DragList, TypeIdsAndExtraAreTakenApart)
{
    const DragList list = parseDragList(u"DRAG_TYP_PLID:7,8,9:42"_s);
    EXPECT_EQ(list.type, u"DRAG_TYP_PLID"_s);
    EXPECT_EQ(list.ids, (QStringList{u"7"_s, u"8"_s, u"9"_s}));
    EXPECT_EQ(list.extra, 42);
    EXPECT_EQ(parseDragList(u"DRAG_TYP_PLID:7:1:2"_s).extra, 0);
}

TEST(DragList, APrefixAloneHasNoIds)
{
    EXPECT_TRUE(parseDragList(u"DRAG_TYP_PLID:"_s).ids.isEmpty());
    EXPECT_TRUE(parseDragList(u"DRAG_TYP_PLID:, ,"_s).ids.isEmpty());
    EXPECT_TRUE(parseDragList(QString()).ids.isEmpty());
}

TEST_F(PlInsertMoveDel, AppendToAnEmptyPlaylistPutsTheFirstEntryAtSid2)
{
    const Pnid list = lists.addList({});
    edits.AppendFromMP3DB(Lists::tracksText({3, 1}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"2:3 3:1"_s);
    EXPECT_EQ(lists.entryCount(list), 2);
}

TEST_F(PlInsertMoveDel, AnAppendLeavesOnePositionBehindTheLastEntryFree)
{
    const Pnid list = lists.addList({1, 2});
    edits.AppendFromMP3DB(Lists::tracksText({5}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 2:2 4:5"_s);
    edits.InsertORMoveFromPlaylist(99, kEndOfList, list,
                                   Lists::entriesText({lists.plids(list).first()}), 0);
    EXPECT_EQ(lists.entries(list), u"1:1 2:2 4:5 6:1"_s);
}

TEST_F(PlInsertMoveDel, CopiesInsertedAtPosition0AheadOf5_6_7Take0And1AndTheOldRowsBecome2_3_4)
{
    const Pnid list = lists.addList({5, 6, 7});
    const QStringList plids = lists.plids(list);
    edits.InsertORMoveFromPlaylist(1, Sid{0}, list, Lists::entriesText({plids[2], plids[0]}), 0);
    EXPECT_EQ(lists.entries(list), u"0:3 1:1 2:1 3:2 4:3"_s);
    EXPECT_EQ(lists.plids(list).sliced(2), plids);
}

TEST_F(PlInsertMoveDel, ThreeTracksInsertedAtRow10Stand11_12_13TheOldRowBecomes14And10StaysFree)
{
    const Pnid list = lists.addList({9, 10});
    edits.InsertFromMP3DB(Sid{10}, list, Lists::tracksText({7, 8, 9}), kAktionMix);
    EXPECT_EQ(lists.entries(list), u"9:1 11:7 12:8 13:9 14:2"_s);
    EXPECT_EQ(lists.entryCount(list), 5);
}

TEST_F(PlInsertMoveDel, ATrackWithoutLengthAddsNoRowAndTheCountStaysTrue)
{
    lists.execute(u"update db_all set DTimeMsec=0 where fid='800000000002'"_s);
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({2, 3}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:3"_s);
    edits.InsertFromMP3DB(Sid{1}, list, Lists::tracksText({2, 4, 99}), kAktionMix);
    EXPECT_EQ(lists.entries(list), u"2:4 5:1 6:3"_s);
    EXPECT_EQ(lists.entryCount(list), 3);
}

TEST_F(PlInsertMoveDel, DeletingAllRowsButOneLeavesThatRowsSidAsItWas)
{
    const Pnid list = lists.addList({3, 5, 8});
    const QStringList plids = lists.plids(list);
    edits.DeletePlaylistRecords(Lists::entriesText({plids[0], plids[1]}), list);
    EXPECT_EQ(lists.entries(list), u"8:3"_s);
    EXPECT_EQ(lists.entryCount(list), 1);
}

TEST_F(PlInsertMoveDel, TracksForADeletedListLandInTheOneWithTheLowestNumber)
{
    const Pnid first = lists.addList({});
    const Pnid second = lists.addList({});
    lists.execute(u"delete * from pl_name where nid="_s + QString::number(numberOf(second)));
    edits.AppendFromMP3DB(Lists::tracksText({1}), second, kAktionMix);
    EXPECT_EQ(lists.entries(first), u"2:1"_s);
    EXPECT_EQ(lists.entries(second), QString());
}

TEST_F(PlInsertMoveDel, WithoutAnyListAnOperationEndsSilently)
{
    lists.execute(u"delete * from pl_name"_s);
    edits.AppendFromMP3DB(Lists::tracksText({1}), Pnid{1}, kAktionMix);
    edits.InsertFromMP3DB(Sid{0}, Pnid{1}, Lists::tracksText({1}), kAktionMix);
    edits.InsertORMoveFromPlaylist(1, Sid{0}, Pnid{1}, u"DRAG_TYP_PLID:1"_s, 0);
    EXPECT_TRUE(lists.column(u"select plid from pl_all"_s).isEmpty());
}

TEST_F(PlInsertMoveDel, MovingRowsDownLeavesTheirPlacesEmptyAndTheOrderCorrect)
{
    const Pnid list = lists.addList({1, 2, 3, 4, 5});
    const QStringList plids = lists.plids(list);
    edits.InsertORMoveFromPlaylist(2, Sid{4}, list, Lists::entriesText({plids[0], plids[1]}), 0);
    EXPECT_EQ(lists.entries(list), u"3:3 4:1 5:2 6:4 7:5"_s);
    EXPECT_EQ(lists.entryCount(list), 5);
}

TEST_F(PlInsertMoveDel, AMoveToTheEndStandsBehindTheLastRow)
{
    const Pnid list = lists.addList({1, 2, 3});
    edits.InsertORMoveFromPlaylist(2, kEndOfList, list,
                                   Lists::entriesText({lists.plids(list).first()}), 0);
    EXPECT_EQ(lists.entries(list), u"2:2 3:3 4:1"_s);
}

TEST_F(PlInsertMoveDel, EntriesTakeStartStopAndStylesOfTheirTrackAndTheCallersAction)
{
    lists.execute(u"update db_all set MixIn='1,2,3,4,5', Volume=77 where fid='800000000001'"_s);
    lists.execute(u"update db_all set FrameStop=123 where fid='800000000002'"_s);
    const Pnid list = lists.addList({});
    edits.AppendFromMP3DB(Lists::tracksText({1, 2}), list, kAktionJinglePlay);
    EXPECT_EQ(columnOf(list, u"FrameStop"_s).toLong(), 2297); // 60000 / 26.12245
    EXPECT_EQ(columnOf(list, u"FrameStart"_s).toLong(), 10);
    EXPECT_EQ(columnOf(list, u"MixIn"_s).toText(), u"1,2,3,4,5"_s);
    EXPECT_EQ(columnOf(list, u"Volume"_s).toLong(), 77);
    EXPECT_EQ(columnOf(list, u"Aktion"_s).toLong(), 3);
    EXPECT_TRUE(columnOf(list, u"Command"_s).isNull());
    EXPECT_EQ(lists.value(u"select FrameStop from pl_all where fid='800000000002'"_s).toLong(),
              123);
}

TEST_F(PlInsertMoveDel, ANullStopOfATrackStaysNull)
{
    lists.execute(u"update db_all set FrameStop=null where fid='800000000001'"_s);
    const Pnid list = lists.addList({});
    edits.AppendFromMP3DB(Lists::tracksText({1}), list, kAktionMix);
    EXPECT_TRUE(columnOf(list, u"FrameStop"_s).isNull());
}

TEST_F(PlInsertMoveDel, ACopyTakesEveryColumnButNumberListAndPosition)
{
    const Pnid list = lists.addList({1});
    const Pnid other = lists.addList({});
    lists.execute(u"update pl_all set Aktion=11, Command='oak=2&', MixTime=900, EQ='1,2,3,4,5'"_s);
    edits.InsertORMoveFromPlaylist(1, Sid{4}, other, Lists::entriesText(lists.plids(list)), 3);
    EXPECT_EQ(lists.entries(other), u"4:1"_s);
    EXPECT_EQ(columnOf(other, u"Aktion"_s).toLong(), 11);
    EXPECT_EQ(columnOf(other, u"Command"_s).toText(), u"oak=2&"_s);
    EXPECT_EQ(columnOf(other, u"MixTime"_s).toLong(), 900);
    EXPECT_EQ(columnOf(other, u"EQ"_s).toText(), u"1,2,3,4,5"_s);
}

TEST_F(PlInsertMoveDel, AnUnknownEntryKeepsItsPlaceInAnInsertAndHasNoneInAnAppend)
{
    const Pnid list = lists.addList({1, 2});
    const QString plid = lists.plids(list).first();
    edits.InsertORMoveFromPlaylist(1, Sid{1}, list, Lists::entriesText({u"99999"_s, plid}), 0);
    EXPECT_EQ(lists.entries(list), u"2:1 3:1 4:2"_s);
    edits.InsertORMoveFromPlaylist(99, kEndOfList, list,
                                   Lists::entriesText({u"99999"_s, u"x' or 1=1"_s, plid}), 0);
    EXPECT_EQ(lists.entries(list), u"2:1 3:1 4:2 6:1"_s);
}

TEST_F(PlInsertMoveDel, ThePlayingListIsMeantByItsNumberInEveryOperation)
{
    const Pnid first = lists.addList({1});
    const Pnid playing = lists.addList({1, 2});
    const Pnid alsoPlaying = lists.addList({});
    lists.execute(u"update pl_name set isplay=true where nid in (%1,%2)"_s.arg(numberOf(playing))
                      .arg(numberOf(alsoPlaying)));
    EXPECT_EQ(edits.ExistPNID(kPlayingPlaylist), playing);
    edits.AppendFromMP3DB(Lists::tracksText({5}), kPlayingPlaylist, kAktionMix);
    edits.InsertORMoveFromPlaylist(1, Sid{1}, kPlayingPlaylist,
                                   Lists::entriesText(lists.plids(first)), 0);
    EXPECT_EQ(lists.entries(playing), u"1:1 2:1 3:2 4:5"_s);
    edits.DeletePlaylistRecords(Lists::entriesText(lists.plids(playing)), kPlayingPlaylist);
    EXPECT_EQ(lists.entryCount(playing), 0);
}

TEST_F(PlInsertMoveDel, WithoutAPlayingListNothingHappens)
{
    const Pnid list = lists.addList({1});
    lists.execute(u"update pl_name set isplay=true, grid=-1"_s);
    EXPECT_EQ(edits.ExistPNID(kPlayingPlaylist), kNoPlaylist);
    edits.AppendFromMP3DB(Lists::tracksText({5}), kPlayingPlaylist, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
}

TEST_F(PlInsertMoveDel, CopiesAndMovesIntoAListThatIsGoneDoNothing)
{
    const Pnid list = lists.addList({1, 2});
    for (const int mode : {1, 2, 99}) {
        edits.InsertORMoveFromPlaylist(mode, Sid{0}, Pnid{4711},
                                       Lists::entriesText(lists.plids(list)), 0);
    }
    EXPECT_EQ(lists.entries(list), u"1:1 2:2"_s);
    EXPECT_EQ(lists.column(u"select plid from pl_all"_s).size(), 2);
}

TEST_F(PlInsertMoveDel, AnotherModeAndAnEmptyIdListDoNothing)
{
    const Pnid list = lists.addList({1, 2});
    lists.execute(u"update pl_name set sicherung=false"_s);
    edits.InsertORMoveFromPlaylist(3, Sid{0}, list, Lists::entriesText(lists.plids(list)), 0);
    edits.InsertORMoveFromPlaylist(1, Sid{0}, list, u"DRAG_TYP_PLID:"_s, 0);
    edits.InsertFromMP3DB(Sid{1}, list, u"DRAG_TYP_FID_MP3DB:"_s, 0);
    edits.AppendFromMP3DB(u"DRAG_TYP_FID_MP3DB:"_s, list, 0);
    edits.DeletePlaylistRecords(u"DRAG_TYP_PLID:"_s, list);
    EXPECT_EQ(lists.entries(list), u"1:1 2:2"_s);
    EXPECT_FALSE(lists.value(u"select sicherung from pl_name"_s).toBool());
    EXPECT_FALSE(lists.history.nextUndo());
}

TEST_F(PlInsertMoveDel, EveryOperationCountsAfreshAndAsksForTheFileToBeSaved)
{
    const Pnid list = lists.addList({1, 2});
    lists.execute(u"update pl_name set anzahl=77, sicherung=false, UpdateTime=null"_s);
    edits.InsertORMoveFromPlaylist(2, Sid{1}, list, Lists::entriesText({lists.plids(list)[1]}), 0);
    EXPECT_EQ(lists.entryCount(list), 2);
    EXPECT_TRUE(lists.value(u"select sicherung from pl_name"_s).toBool());
    EXPECT_EQ(lists.value(u"select UpdateTime from pl_name"_s).toDateTime(), lists.clock.now());
}

TEST_F(PlInsertMoveDel, AListThatEntriesLeaveIsCountedAndAsksForItsFileToBeSaved)
{
    const Pnid from = lists.addList({1, 2, 3});
    const Pnid to = lists.addList({1});
    const QStringList plids = lists.plids(from);
    const auto facts = [&](Pnid list) {
        return lists.column(
            u"select anzahl & '|' & sicherung from pl_name where nid=%1"_s.arg(int(list)));
    };
    lists.execute(u"update pl_name set sicherung=false"_s);
    edits.InsertORMoveFromPlaylist(2, kEndOfList, to, Lists::entriesText({plids[0]}), 0);
    EXPECT_EQ(facts(from), QStringList(u"2|-1"_s));
    EXPECT_EQ(facts(to), QStringList(u"2|-1"_s));
    lists.execute(u"update pl_name set sicherung=false"_s);
    edits.DeletePlaylistRecords(Lists::entriesText({plids[1]}), to);
    EXPECT_EQ(facts(from), QStringList(u"1|-1"_s));
}

TEST_F(PlInsertMoveDel, ADuplicateKeyEndsTheAppendKeepsItsRowsAndRepairsTheAutoNumber)
{
    // A rule of this test stands for an auto-number that has fallen behind: both are error 3022.
    const Pnid list = lists.addList({1});
    lists.execute(u"create unique index Once on pl_all (FID)"_s);
    const int highest = lists.value(u"select max(plid) from pl_all"_s).toLong();
    edits.AppendFromMP3DB(Lists::tracksText({5, 1, 6}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:5"_s);
    EXPECT_EQ(lists.entryCount(list), 2);
    edits.AppendFromMP3DB(Lists::tracksText({6}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:5 5:6"_s);
    // One number for the entry, one that the repair used up.
    EXPECT_EQ(lists.value(u"select max(plid) from pl_all"_s).toLong(), highest + 3);
}

TEST_F(PlInsertMoveDel, AMissingDatabaseIsQuietAndTellsNoList)
{
    edits.SetDbName(lists.file(u"fehlt.mdb"_s));
    edits.AppendFromMP3DB(Lists::tracksText({1}), Pnid{1}, kAktionMix);
    EXPECT_EQ(edits.ExistPNID(Pnid{1}), kNoPlaylist);
    EXPECT_THROW(edits.DeletePlaylistRecords(u"DRAG_TYP_PLID:1"_s, Pnid{1}), DbError);
}

TEST_F(PlInsertMoveDel, HostileIdsChangeNothing)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(u"DRAG_TYP_FID_MP3DB:' or '1'='1,\",[FID],*,"_s + QString(10'000, u'x') +
                              u"\n"_s,
                          list, kAktionMix);
    edits.DeletePlaylistRecords(u"DRAG_TYP_PLID:1 or 1=1"_s, list);
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
}

TEST_F(PlInsertMoveDel, ARowIsSwappedWithItsNeighbourAndStaysAtTheEnds)
{
    const Pnid list = lists.addList({2, 5, 9});
    const QStringList plids = lists.plids(list);
    edits.swapWithNeighbour(Plid(plids[1].toInt()), list, -1);
    EXPECT_EQ(lists.entries(list), u"2:2 5:1 9:3"_s);
    edits.swapWithNeighbour(Plid(plids[1].toInt()), list, -1);
    edits.swapWithNeighbour(Plid(plids[2].toInt()), list, 1);
    EXPECT_EQ(lists.entries(list), u"2:2 5:1 9:3"_s);
    EXPECT_EQ(lists.history.nextUndo()->action, ListAction::MoveUp);
}

TEST_F(PlInsertMoveDel, ARowIsSwappedOverEntriesWhoseTrackIsGone)
{
    const Pnid list = lists.addList({10, 20, 30, 40});
    const QStringList plids = lists.plids(list);
    lists.execute(u"delete from db_all where fid in ('800000000002','800000000004')"_s);
    edits.swapWithNeighbour(Plid(plids[2].toInt()), list, -1);
    EXPECT_EQ(lists.entries(list), u"10:3 20:2 30:1 40:4"_s);
    edits.swapWithNeighbour(Plid(plids[0].toInt()), list, 1);
    EXPECT_EQ(lists.entries(list), u"10:3 20:2 30:1 40:4"_s) << "behind it stands none to be seen";
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"10:1 20:2 30:3 40:4"_s);
    EXPECT_FALSE(lists.history.nextUndo().has_value());
}

TEST_F(PlInsertMoveDel, ASwapOverAGoneTrackOnASharedPositionExchangesTheTwoRows)
{
    const Pnid list = lists.addList({5, 5, 5, 9});
    EXPECT_EQ(lists.entries(list), u"5:3 5:2 5:1 9:4"_s);
    const Plid last{lists.plids(list)[2].toInt()};
    lists.execute(u"delete from db_all where fid='800000000002'"_s);
    edits.swapWithNeighbour(last, list, -1);
    EXPECT_EQ(lists.entries(list), u"5:1 6:2 7:3 9:4"_s);
    edits.swapWithNeighbour(last, list, 1);
    EXPECT_EQ(lists.entries(list), u"5:3 6:2 7:1 9:4"_s);
}

TEST_F(PlInsertMoveDel, ASwapAmongEqualPositionsGivesDifferentOnesAndMovesOneRow)
{
    const Pnid list = lists.addList({5, 8, 8, 9, 20});
    // The younger of the two stands first: entries 1 3 2 4 5.
    EXPECT_EQ(lists.entries(list), u"5:1 8:3 8:2 9:4 20:5"_s);
    const Plid below{lists.plids(list)[2].toInt()};
    edits.swapWithNeighbour(below, list, -1);
    EXPECT_EQ(lists.entries(list), u"5:1 8:2 9:3 10:4 20:5"_s);
    edits.swapWithNeighbour(below, list, 1);
    EXPECT_EQ(lists.entries(list), u"5:1 8:3 9:2 10:4 20:5"_s);
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"5:1 8:3 8:2 9:4 20:5"_s);
}

TEST_F(PlInsertMoveDel, ARowThatComesToASharedPositionJumpsOverNobody)
{
    const Pnid list = lists.addList({1, 5, 5, 9});
    const auto entry = [&](int row) { return Plid(lists.plids(list)[row].toInt()); };
    EXPECT_EQ(lists.entries(list), u"1:1 5:3 5:2 9:4"_s);
    edits.swapWithNeighbour(entry(0), list, 1);
    EXPECT_EQ(lists.entries(list), u"1:3 5:1 6:2 9:4"_s);
    const Pnid other = lists.addList({5, 5, 9});
    edits.swapWithNeighbour(Plid(lists.plids(other)[2].toInt()), other, -1);
    EXPECT_EQ(lists.entries(other), u"5:2 6:3 9:1"_s);
}

TEST_F(PlInsertMoveDel, ASwapOnTheLastRowTakesNoSnapshot)
{
    lists.write(u"Undo.conf"_s, "Playlist.Taste.Runter.an\n");
    const Pnid list = lists.addList({1, 2});
    edits.swapWithNeighbour(Plid(lists.plids(list)[1].toInt()), list, 1);
    EXPECT_TRUE(lists.column(u"select UndoID from TEMP_PL_UNDO"_s).isEmpty());
    edits.swapWithNeighbour(Plid(lists.plids(list)[0].toInt()), list, 1);
    EXPECT_EQ(lists.column(u"select UndoID from TEMP_PL_UNDO"_s).size(), 2);
}

TEST_F(PlInsertMoveDel, TheReservedOperationIsEmpty)
{
    EXPECT_EQ(edits.GetFIDFromDragFiles({u"/music/a.mp3"_s}), QString());
}

TEST_F(PlInsertMoveDel, TheReaderOfEntriesCanBeTheCallers)
{
    const Pnid list = lists.addList({1});
    GetPLData reader(*lists.engine);
    edits.SetClonRecord(&reader);
    edits.InsertORMoveFromPlaylist(99, kEndOfList, list, Lists::entriesText(lists.plids(list)), 0);
    EXPECT_EQ(lists.entries(list), u"1:1 3:1"_s);
    EXPECT_THROW(std::ignore = reader.GetDataRec(u"1"_s), DbError);
    reader.DBOpen(lists.dbName());
    EXPECT_EQ(reader.GetDataRec(lists.plids(list).first()).value(u"SID").toLong(), 1);
    EXPECT_TRUE(reader.GetDataRec(u"x"_s).Eof());
}

} // namespace
} // namespace melovane
