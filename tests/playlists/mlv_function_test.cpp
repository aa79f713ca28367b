#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "playlists/list_fixture.h"
#include "playlists/mlv_function.h"
#include "store/file_locator.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;
using Outcome = ListHistory::Outcome;

class MlvFunctionTest : public testing::Test
{
protected:
    MlvFunctionTest() { lists.addTracks(9); }

    [[nodiscard]] Plid firstEntry(Pnid list) const
    {
        return Plid(lists.plids(list).first().toInt());
    }

    [[nodiscard]] QString number(Pnid list) const { return QString::number(numberOf(list)); }

    [[nodiscard]] Value cell(const QString& column, Plid entry) const
    {
        return lists.value(
            u"select %1 from pl_all where plid=%2"_s.arg(column).arg(numberOf(entry)));
    }

    Lists lists;
    MLVFunction function{lists.parts, lists.clock};
};

TEST_F(MlvFunctionTest, AStopOf0ReadsAsTheLengthOfTheTrackAndIsStoredByAWrite)
{
    const Plid entry = firstEntry(lists.addList({1}));
    MlvPlaylistDetail detail = function.GetPlaylistDetailByPLID(entry);
    EXPECT_EQ(detail.FrameStop, 2297); // 60000 ms / 26.12245
    function.PlaylistUpdate(detail);
    EXPECT_EQ(cell(u"FrameStop"_s, entry).toLong(), 2297);
}

TEST_F(MlvFunctionTest, ADetailHoldsEntryTrackFileStylesCommandsAndGroup)
{
    const QString file = lists.write(u"stück.mp3"_s, "x");
    lists.execute(u"update db_all set Path='%1/', DName='stück.mp3', Interpret=null "
                  "where fid='800000000001'"_s.arg(lists.dataFolder()));
    const Pnid list = lists.addList({4});
    const Plid entry = firstEntry(list);
    lists.execute(u"update pl_all set Aktion=2, Command='oak=11&x', MixIn='1,2,3,4,5', "
                  "MixOut='1,2', EQ='7,1,2,3,4', MixTime=0, Volume=null"_s);
    const MlvPlaylistDetail detail = function.GetPlaylistDetailByPLID(entry);
    EXPECT_EQ(detail.FID, Lists::fid(1));
    EXPECT_EQ(detail.PLID, entry);
    EXPECT_EQ(detail.PNID, list);
    EXPECT_EQ(detail.Titel, u"Titel 1"_s);
    EXPECT_EQ(detail.Interpret, QString());
    EXPECT_EQ(detail.Volume, 0);
    EXPECT_EQ(detail.file, file);
    EXPECT_EQ(detail.Aktion, 2);
    EXPECT_EQ(detail.commands.value(kFormerAktion), u"11"_s);
    EXPECT_EQ(detail.mixInStyle.MixValue5, 5);
    EXPECT_EQ(MixStyleToString(detail.mixOutStyle), u"0,3000,2000,5000,10000"_s);
    EXPECT_EQ(detail.MixOut, u"1,2"_s);
    EXPECT_EQ(detail.eqStyle.EQValue5, 7);
    EXPECT_EQ(detail.MixTime, 5000);
    EXPECT_GT(numberOf(detail.GRID), 0);
}

TEST_F(MlvFunctionTest, AMissingEntryOrDatabaseGivesAMostlyEmptyRecord)
{
    EXPECT_EQ(function.GetPlaylistDetailByPLID(Plid{4711}).FID, QString());
    EXPECT_EQ(function.GetPlaylistDetailByPLID(Plid{4711}).MixTime, 5000);
    EXPECT_EQ(function.GetPlaylistDetailByFID(u"' or 1=1"_s).Titel, QString());
    lists.settings->SetDbName(lists.file(u"fehlt.mdb"_s));
    EXPECT_EQ(function.GetPlaylistDetailByPLID(Plid{1}).FID, QString());
}

TEST_F(MlvFunctionTest, ATrackGivesTheSameRecordWithoutNumbers)
{
    const MlvPlaylistDetail detail = function.GetPlaylistDetailByFID(Lists::fid(2));
    EXPECT_EQ(detail.Titel, u"Titel 2"_s);
    EXPECT_EQ(detail.FrameStart, 20);
    EXPECT_EQ(detail.PLID, Plid{});
    EXPECT_EQ(detail.Command, QString());
    EXPECT_EQ(detail.file, QString());
}

TEST_F(MlvFunctionTest, AnUpdateWritesWhatDiffersAndANullDiffersFromEveryValue)
{
    const Plid entry = firstEntry(lists.addList({1}));
    lists.execute(u"update pl_all set FrameStop=9, Volume=null, Command=null"_s);
    MlvPlaylistDetail detail = function.GetPlaylistDetailByPLID(entry);
    detail.FrameStart = 33;
    detail.eqStyle = EQStyleSplit(u"1,2,3,4,5");
    function.PlaylistUpdate(detail);
    EXPECT_EQ(cell(u"FrameStart"_s, entry).toLong(), 33);
    EXPECT_FALSE(cell(u"Volume"_s, entry).isNull());
    EXPECT_FALSE(cell(u"Command"_s, entry).isNull());
    EXPECT_EQ(cell(u"EQ"_s, entry).toText(), u"1,2,3,4,5"_s);
    EXPECT_EQ(detail.eq, u"1,2,3,4,5"_s);
    EXPECT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(cell(u"FrameStart"_s, entry).toLong(), 0);
    EXPECT_TRUE(cell(u"Volume"_s, entry).isNull());
}

TEST_F(MlvFunctionTest, AnActionIsSavedWithACommandUnlessItIsNullAndCanBeUndone)
{
    const Plid entry = firstEntry(lists.addList({1}));
    function.PlaylistSaveAktion(entry, kAktionJingle2, u"oak=2&"_s);
    function.PlaylistSaveAktion(entry, kAktionLoop, QString());
    EXPECT_EQ(cell(u"Aktion"_s, entry).toLong(), 2);
    EXPECT_EQ(cell(u"Command"_s, entry).toText(), u"oak=2&"_s);
    function.PlaylistSaveAktion(entry, kAktionStop, u""_s);
    EXPECT_EQ(cell(u"Command"_s, entry).toText(), QString());
    EXPECT_EQ(lists.history.undo().step.action, ListAction::Aktion);
    EXPECT_EQ(cell(u"Aktion"_s, entry).toLong(), 2);
    EXPECT_EQ(cell(u"Command"_s, entry).toText(), u"oak=2&"_s);
}

TEST_F(MlvFunctionTest, StartAndStopBecomeTheTracksOnlyWhenAskedFor)
{
    MlvPlaylistDetail detail = function.GetPlaylistDetailByFID(Lists::fid(1));
    detail.FrameStart = 7;
    detail.FrameStop = 70;
    function.PlaylistSaveStartStopDefault(detail);
    EXPECT_EQ(lists.value(u"select FrameStart from db_all where fid='800000000001'"_s).toLong(),
              10);
    detail.saveDefault = true;
    function.PlaylistSaveStartStopDefault(detail);
    EXPECT_EQ(lists.value(u"select FrameStop from db_all where fid='800000000001'"_s).toLong(), 70);
    EXPECT_EQ(lists.value(u"select FrameStart from db_all where fid='800000000002'"_s).toLong(),
              20);
}

TEST_F(MlvFunctionTest, AnOutStyleWithBothStylesUnsetWritesNothingAlsoNoNull)
{
    const Plid entry = firstEntry(lists.addList({1}));
    lists.execute(u"update pl_all set MixOut='keep', MixIn='keep', EQ='keep'"_s);
    MlvPlaylistDetail detail;
    detail.PLID = entry;
    function.PlaylistSaveMixOUT(detail);
    function.PlaylistSaveMixIN(detail);
    function.PlaylistSaveEQ(detail);
    EXPECT_EQ(cell(u"MixOut"_s, entry).toText(), u"keep"_s);
    EXPECT_EQ(cell(u"MixIn"_s, entry).toText(), u"keep"_s);
    EXPECT_EQ(cell(u"EQ"_s, entry).toText(), u"keep"_s);
    detail.mixInStyle = MixStyleSplit(u"1,2,3,4,5");
    detail.eqStyle = EQStyleSplit(u"1,2,3,4,5");
    function.PlaylistSaveMixOUT(detail);
    function.PlaylistSaveMixIN(detail);
    function.PlaylistSaveEQ(detail);
    EXPECT_EQ(cell(u"MixOut"_s, entry).toText(), u"0,0,0,0,0"_s);
    EXPECT_EQ(cell(u"MixIn"_s, entry).toText(), u"1,2,3,4,5"_s);
    EXPECT_EQ(cell(u"EQ"_s, entry).toText(), u"1,2,3,4,5"_s);
}

TEST_F(MlvFunctionTest, TheStylesOfTwoEntriesGoToTheWholeListAndCanBeUndone)
{
    const Pnid list = lists.addList({1, 2, 3});
    const Pnid other = lists.addList({1});
    const QStringList plids = lists.plids(list);
    lists.execute(u"update pl_all set MixOut='out' where plid="_s + plids[0]);
    lists.execute(u"update pl_all set MixIn='in' where plid="_s + plids[1]);
    function.PlaylistSetAllMixStyle(number(list), plids[0], plids[1]);
    const QString styles = u"select MixOut+MixIn from pl_all where pnid="_s + number(list);
    EXPECT_EQ(lists.column(styles), QStringList(3, u"outin"_s));
    EXPECT_TRUE(cell(u"MixIn"_s, firstEntry(other)).isNull());
    function.PlaylistSetAllMixStyle(number(list), u"x"_s, QString());
    EXPECT_EQ(lists.column(styles), QStringList(3, u"outin"_s));
    EXPECT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_TRUE(cell(u"MixIn"_s, firstEntry(list)).isNull());
}

TEST_F(MlvFunctionTest, AResetListIsAsIfItsEntriesHadJustComeAndCanBeUndone)
{
    const Pnid list = lists.addList({1, 2});
    lists.execute(u"update pl_all set FrameStart=5, Pitch=3, Volume=8, MixIn='a', Command='b', "
                  "MixTime=4, Aktion=2"_s);
    function.PlaylistReset(list);
    const Plid entry = firstEntry(list);
    EXPECT_EQ(cell(u"FrameStart"_s, entry).toLong(), 0);
    EXPECT_EQ(cell(u"FrameStop"_s, entry).toLong(), 2297);
    EXPECT_EQ(cell(u"Volume"_s, entry).toLong(), 0);
    EXPECT_TRUE(cell(u"MixIn"_s, entry).isNull());
    EXPECT_TRUE(cell(u"Command"_s, entry).isNull());
    EXPECT_EQ(cell(u"Aktion"_s, entry).toLong(), 2);
    lists.history.undo();
    EXPECT_EQ(cell(u"FrameStart"_s, entry).toLong(), 5);
    EXPECT_EQ(cell(u"Command"_s, entry).toText(), u"b"_s);
    function.PlaylistDeleteAllMixStyle(list);
    EXPECT_TRUE(cell(u"MixIn"_s, entry).isNull());
    EXPECT_EQ(cell(u"MixTime"_s, entry).toLong(), 0);
}

TEST_F(MlvFunctionTest, EveryWriteOfAnEntryMarksItsListForItsFileAndNoOther)
{
    const Pnid list = lists.addList({1, 2});
    lists.addList({1});
    const Plid entry = firstEntry(list);
    MlvPlaylistDetail detail = function.GetPlaylistDetailByPLID(entry);
    detail.Volume = 9;
    detail.mixInStyle = detail.mixOutStyle = MixStyleSplit(u"1,2,3,4,5"_s);
    detail.eqStyle = EQStyleSplit(u"1,2,3,4,5"_s);
    const QString plid = lists.plids(list).first();
    const std::vector<std::function<void()>> writes{
        [&] { function.PlaylistUpdate(detail); },
        [&] { function.PlaylistSaveStartStop(entry, 7, 70); },
        [&] { function.PlaylistSaveAktion(entry, 3, u"x"_s); },
        [&] { function.PlaylistSaveMixIN(detail); },
        [&] { function.PlaylistSaveMixOUT(detail); },
        [&] { function.PlaylistSaveEQ(detail); },
        [&] { function.PlaylistSetAllMixStyle(number(list), plid, plid); },
        [&] { function.PlaylistDeleteAllMixStyle(list); },
        [&] { function.PlaylistReset(list); }};
    for (size_t i = 0; i < writes.size(); ++i) {
        lists.execute(u"update pl_name set sicherung=false"_s);
        writes[i]();
        EXPECT_EQ(lists.column(u"select nid from pl_name where sicherung=true"_s),
                  QStringList{number(list)})
            << "write " << i;
    }
}

TEST_F(MlvFunctionTest, TheWalkGoesOnBehindTheLastItemWithTheFirst)
{
    function.setPlaylist(lists.addList({7, 2, 5}));
    function.PlayListFill();
    ASSERT_EQ(function.walk().count(), 3);
    EXPECT_EQ(function.walk().current()->SID, Sid{2});
    EXPECT_EQ(function.PlaylistGetNext()->SID, Sid{5});
    EXPECT_EQ(function.PlaylistGetNext()->position, 3);
    EXPECT_EQ(function.PlaylistGetNext()->position, 1);
}

TEST_F(MlvFunctionTest, TheWalkTakesTheYoungerOfEqualPositionsFirst)
{
    const Pnid list = lists.addList({7, 7, 2});
    function.setPlaylist(list);
    function.PlayListFill();
    EXPECT_EQ(function.walk().current()->FID, Lists::fid(3));
    EXPECT_EQ(function.PlaylistGetNext()->FID, Lists::fid(2));
    EXPECT_EQ(function.PlaylistGetNext()->FID, Lists::fid(1));
}

TEST_F(MlvFunctionTest, APositionBeyondTheCountStaysAndGivesTheOldItem)
{
    const Pnid list = lists.addList({1, 2});
    function.setPlaylist(list);
    function.PlayListFill();
    EXPECT_EQ(function.PlaylistSetPosition(2)->position, 2);
    EXPECT_EQ(function.PlaylistSetPosition(3)->position, 2);
    EXPECT_EQ(function.PlaylistSetPosition(0)->position, 2);
    EXPECT_EQ(function.PlaylistFindTrackNO(firstEntry(list)), 1);
    EXPECT_EQ(function.PlaylistFindTrackNO(Plid{4711}), 10000);
}

TEST_F(MlvFunctionTest, ARefreshStaysAtItsEntryOrGoesToTheFirst)
{
    const Pnid list = lists.addList({1, 2, 3});
    const QStringList plids = lists.plids(list);
    function.setPlaylist(list);
    function.PlayListFill();
    function.PlaylistSetPosition(2);
    lists.execute(u"delete from pl_all where plid="_s + plids[0]);
    function.PlaylistRefresh();
    EXPECT_EQ(function.walk().index(), 1);
    EXPECT_EQ(numberOf(function.walk().current()->PLID), plids[1].toInt());
    function.PlaylistSetPosition(2);
    lists.execute(u"delete from pl_all where plid="_s + plids[2]);
    function.PlaylistRefresh();
    EXPECT_EQ(function.walk().index(), 1);
}

TEST_F(MlvFunctionTest, AnEmptyWalkGivesNothing)
{
    EXPECT_FALSE(function.PlaylistGetNext());
    EXPECT_FALSE(function.PlaylistSetPosition(1));
    function.setPlaylist(lists.addList({}));
    function.PlayListFill();
    EXPECT_FALSE(function.PlaylistGetNext());
}

TEST_F(MlvFunctionTest, TheWalkLeavesOutEntriesWithoutTrackAndKnowsDiscs)
{
    const Pnid list = lists.addList({1, 2, 3});
    lists.execute(u"delete from db_all where fid='800000000002'"_s);
    function.setPlaylist(list);
    function.PlayListFill();
    EXPECT_EQ(function.walk().count(), 2);
    EXPECT_FALSE(function.walk().hasDisc());
    lists.execute(u"update db_all set DriveTyp=4 where fid='800000000003'"_s);
    function.PlayListFill();
    EXPECT_TRUE(function.walk().hasDisc());
}

TEST_F(MlvFunctionTest, AGroupWithOnePlaylistIsNotDeleted)
{
    lists.addList({1});
    const QString group = lists.value(u"select grid from pl_group"_s).toText();
    EXPECT_FALSE(function.KannGroupDel(group));
    EXPECT_EQ(lists.column(u"select grid from pl_group"_s).size(), 1);
    EXPECT_TRUE(function.KannGroupDel(u"4711"_s));
    EXPECT_EQ(lists.column(u"select grid from pl_group"_s).size(), 1);
}

TEST_F(MlvFunctionTest, ADeletedListAndItsGroupComeBackOneAfterTheOther)
{
    const Pnid list = lists.addList({3, 4}, u"Hochzeit"_s);
    const QString group = lists.value(u"select grid from pl_group"_s).toText();
    const QStringList plids = lists.plids(list);
    lists.execute(u"update pl_name set Info='Notiz', isplay=true, lock=true"_s);
    function.DeletePlaylist(list);
    EXPECT_TRUE(lists.column(u"select plid from pl_all"_s).isEmpty());
    EXPECT_TRUE(function.KannGroupDel(group));
    EXPECT_EQ(lists.history.nextUndo()->action, ListAction::DeleteGroup);
    EXPECT_EQ(lists.history.nextUndo()->listName, u"Gruppe"_s);
    EXPECT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.history.nextUndo()->listName, u"Hochzeit"_s);
    EXPECT_EQ(lists.history.nextUndo()->count, 2);
    EXPECT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.value(u"select grid from pl_group"_s).toText(), group);
    EXPECT_EQ(lists.plids(list), plids);
    EXPECT_EQ(lists.value(u"select Info from pl_name"_s).toText(), u"Notiz"_s);
    EXPECT_TRUE(lists.value(u"select isplay from pl_name"_s).toBool());
    EXPECT_EQ(lists.history.redo().outcome, Outcome::Done);
    EXPECT_EQ(lists.column(u"select nid from pl_name"_s).size(), 0);
    EXPECT_EQ(lists.history.redo().outcome, Outcome::Done);
    EXPECT_EQ(lists.column(u"select grid from pl_group"_s).size(), 0);
}

TEST_F(MlvFunctionTest, AListThatComesBackPlaysNotBesideAnotherAndFindsAGroup)
{
    const Pnid list = lists.addList({3});
    const Pnid other = lists.addList({1});
    function.catalogue().activate(list);
    function.DeletePlaylist(list);
    function.catalogue().activate(other);
    lists.execute(u"update pl_group set grid=77"_s);
    EXPECT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.column(u"select nid from pl_name where isplay=true"_s),
              (QStringList{number(other)}));
    EXPECT_EQ(lists.value(u"select grid from pl_name where nid="_s + number(list)).toLong(), 77);
}

TEST_F(MlvFunctionTest, ANewGroupStandsLastAndIsActive)
{
    const GroupId group = function.CreateNewGroup(u"Neu'e"_s);
    const QString where = u" from pl_group where grid="_s + QString::number(numberOf(group));
    EXPECT_EQ(lists.value(u"select name"_s + where).toText(), u"Neu'e"_s);
    EXPECT_EQ(lists.value(u"select sid"_s + where).toLong(), 1000000);
    EXPECT_TRUE(lists.value(u"select activ"_s + where).toBool());
    const Pnid list = function.catalogue().newList(group, u"Liste"_s);
    EXPECT_EQ(lists.value(u"select grid from pl_name where nid="_s + number(list)).toLong(),
              numberOf(group));
    EXPECT_EQ(lists.value(u"select UpdateTime from pl_name"_s).toDateTime(), lists.clock.now());
}

TEST_F(MlvFunctionTest, NamesLoseTheirQuotesAndAListWaitsToBeSaved)
{
    const Pnid list = lists.addList({});
    lists.execute(u"update pl_name set sicherung=false"_s);
    function.UpdatePlaylistName(list, u"Rock'n'Roll\" [x] *\n"_s);
    EXPECT_EQ(lists.value(u"select name from pl_name"_s).toText(), u"Rock*n*Roll\" [x] *\n"_s);
    EXPECT_TRUE(lists.value(u"select sicherung from pl_name"_s).toBool());
    lists.execute(u"update pl_name set sicherung=false"_s);
    function.UpdateGroupName(GroupId(lists.value(u"select grid from pl_group"_s).toLong()),
                             u"O'Neill"_s);
    EXPECT_EQ(lists.value(u"select name from pl_group"_s).toText(), u"O*Neill"_s);
    EXPECT_TRUE(lists.value(u"select sicherung from pl_name"_s).toBool())
        << "the files of its lists lie in a folder of that name";
}

TEST_F(MlvFunctionTest, TheListsOfAGroupAreRenumberedByAColumn)
{
    const Pnid b = lists.addList({}, u"b"_s);
    const Pnid a = lists.addList({}, u"A"_s);
    const Pnid c = lists.addList({}, u"C"_s);
    const QString order = u"select nid from pl_name order by sid"_s;
    function.SortPlaylistTree(b, u"name"_s);
    EXPECT_EQ(lists.column(order), (QStringList{number(a), number(b), number(c)}));
    EXPECT_EQ(lists.value(u"select max(sid) from pl_name"_s).toLong(), 3);
    function.SortPlaylistTree(b, u"name; drop table pl_name"_s);
    EXPECT_EQ(lists.column(order).size(), 3);
}

TEST_F(MlvFunctionTest, JingleListsAreSortedAndActivatedAmongThemselves)
{
    const Pnid list = lists.addList({});
    const Pnid one = lists.addList({}, u"z"_s);
    const Pnid two = lists.addList({}, u"a"_s);
    lists.execute(u"update pl_name set grid=-1 where nid<>"_s + number(list));
    function.SortPlaylistTree(one, u"name"_s);
    EXPECT_EQ(lists.column(u"select nid from pl_name where grid=-1 order by sid"_s),
              (QStringList{number(two), number(one)}));
    function.catalogue().activate(list);
    function.catalogue().activate(one);
    function.catalogue().activate(two);
    EXPECT_EQ(lists.column(u"select nid from pl_name where isplay=true order by nid"_s),
              (QStringList{number(list), number(two)}));
    function.catalogue().setLock(two, true);
    EXPECT_EQ(lists.column(u"select nid from pl_name where lock=true"_s),
              (QStringList{number(two)}));
}

TEST_F(MlvFunctionTest, ADeletedListWithoutADatabaseIsQuiet)
{
    const Pnid list = lists.addList({1});
    lists.settings->SetDbName(lists.file(u"fehlt.mdb"_s));
    function.DeletePlaylist(list);
    EXPECT_FALSE(function.KannGroupDel(u"1"_s));
    EXPECT_EQ(function.CreateNewGroup(u"x"_s), GroupId{0});
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
}

class PlayStatistics : public MlvFunctionTest
{
protected:
    [[nodiscard]] Value track(const QString& column) const
    {
        return lists.value(u"select %1 from db_all where fid='800000000001'"_s.arg(column));
    }
};

TEST_F(PlayStatistics, TheFirstPlaySetsBothCountersTo1FromNull)
{
    EXPECT_TRUE(track(u"PlayCountDay"_s).isNull());
    function.PlaylistSaveStatistik(function.GetPlaylistDetailByFID(Lists::fid(1)));
    EXPECT_EQ(track(u"PlayCountDay"_s).toLong(), 1);
    EXPECT_EQ(track(u"PlayCountAll"_s).toLong(), 1);
    EXPECT_EQ(track(u"Play"_s).toDateTime(), lists.clock.now());
    EXPECT_TRUE(
        lists.value(u"select PlayCountAll from db_all where fid='800000000002'"_s).isNull());
}

TEST_F(PlayStatistics, TheDayCountEndsTwelveHoursAfterTheLastPlay)
{
    function.PlaylistSaveStatistik(function.GetPlaylistDetailByFID(Lists::fid(1)));
    lists.clock.addSeconds(qint64{2} * 3600);
    function.PlaylistSaveStatistik(function.GetPlaylistDetailByFID(Lists::fid(2)));
    lists.clock.addSeconds(qint64{11} * 3600);
    lists.settings->UpdateLastPlayDayCount();
    EXPECT_TRUE(track(u"PlayCountDay"_s).isNull());
    EXPECT_EQ(lists.column(u"select fid from db_all where PlayCountDay is not null"_s),
              (QStringList{Lists::fid(2)}));
}

TEST_F(PlayStatistics, ADetailWithoutATrackWritesNothing)
{
    function.PlaylistSaveStatistik(MlvPlaylistDetail());
    EXPECT_TRUE(lists.column(u"select fid from pl_stat"_s).isEmpty());
    EXPECT_TRUE(lists.column(u"select fid from db_all where PlayCountAll>0"_s).isEmpty());
}

TEST_F(PlayStatistics, TwoPlaysOfOneSecondAreTwoRowsOfTheSameMoment)
{
    MlvPlaylistDetail detail = function.GetPlaylistDetailByFID(Lists::fid(1));
    detail.Volume = 77;
    detail.MixIn = u"1,2,3,4,5"_s;
    lists.clock.set(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 100)));
    function.PlaylistSaveStatistik(detail);
    lists.clock.set(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 900)));
    function.PlaylistSaveStatistik(detail);
    const QStringList moments = lists.column(u"select tstamp from pl_stat"_s);
    ASSERT_EQ(moments.size(), 2);
    EXPECT_EQ(moments[0], moments[1]);
    EXPECT_EQ(lists.value(u"select tday from pl_stat"_s).toLong(), 20260304);
    EXPECT_EQ(lists.value(u"select tmon from pl_stat"_s).toLong(), 3);
    EXPECT_EQ(lists.value(u"select tyear from pl_stat"_s).toLong(), 2026);
    EXPECT_EQ(lists.value(u"select Volume from pl_stat"_s).toLong(), 77);
    EXPECT_EQ(lists.value(u"select MixIn from pl_stat"_s).toText(), u"1,2,3,4,5"_s);
    EXPECT_EQ(track(u"PlayCountAll"_s).toLong(), 2);
}

TEST_F(PlayStatistics, WithoutItsTableTheCountersRunAllTheSame)
{
    lists.execute(u"drop table pl_stat"_s);
    function.PlaylistSaveStatistik(function.GetPlaylistDetailByFID(Lists::fid(1)));
    EXPECT_EQ(track(u"PlayCountAll"_s).toLong(), 1);
    EXPECT_FALSE(lists.log.isEmpty());
}

} // namespace
} // namespace melovane
