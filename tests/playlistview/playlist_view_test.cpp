#include "playlistview/playlist_view_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class PlaylistView : public test::PlaylistViewTest
{
protected:
    using PlaylistViewTest::PlaylistViewTest;

    QString number(Pnid of) { return QString::number(numberOf(of)); }

    void setAktion(qint64 row, int value, const QString& command = {})
    {
        functions.PlaylistSaveAktion(Plid(cell(row, u"PLID").toLong()), value, command);
        view.RefreshGrid();
    }
};

TEST_F(PlaylistView, ShowsNothingBeforeAListIsOpened)
{
    EXPECT_EQ(view.GetPNID(), Pnid{});
    EXPECT_EQ(view.Data1().rowCount(), 0);
    EXPECT_EQ(grid.note.title, u"Keine Playliste geöffnet"_s);
    view.toolPressed(u"all.delete"_s);
    view.toolPressed(u"all.clip.append"_s);
    view.moveRow(1);
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(PlaylistView, AListIsOpenedOverTheBusInItsOrder)
{
    openList(3);
    EXPECT_EQ(rows(), u"1 2 3"_s);
    EXPECT_EQ(view.GetPNID(), list);
    EXPECT_EQ(view.activeList(), list);
    EXPECT_EQ(view.Data1().RecordSource(), u"select * from vpl_all where pnid="_s + number(list) +
                                               u" order by SID, PLID desc"_s);
    EXPECT_FALSE(view.isJingleMode());
}

TEST_F(PlaylistView, OfEqualPositionsTheYoungerEntryStandsFirst)
{
    openList(3);
    lists.execute(u"update pl_all set SID=10 where SID=20"_s);
    view.Refresh();
    EXPECT_EQ(rows(), u"2 1 3"_s);
}

TEST_F(PlaylistView, ACommandMeansTheListOnTheScreenElseTheActiveOne)
{
    EXPECT_EQ(view.listOfCommands(), Pnid{});
    openList(1);
    EXPECT_EQ(view.listOfCommands(), list);
    lists.execute(u"delete from pl_name where nid="_s + number(list));
    others.SendMessage(u"refresh.playlist"_s);
    ASSERT_EQ(view.GetPNID(), Pnid{});
    EXPECT_EQ(view.listOfCommands(), view.activeList());
}

TEST_F(PlaylistView, LoadingTheSameNumberTwiceDoesNotReload)
{
    openList(3);
    int refreshes = 0;
    QObject::connect(&view.Data1(), &DataControl::refreshed, &view, [&] { ++refreshes; });
    others.SendMessage(u"playlist.aktivieren"_s, numberOf(list), true);
    EXPECT_EQ(refreshes, 0);
    EXPECT_TRUE(view.isLocked());
    const Pnid other = lists.addList({5}, u"Andere"_s);
    others.SendMessage(u"Playlist.Aktivieren"_s, numberOf(other), false);
    EXPECT_EQ(refreshes, 1);
    EXPECT_EQ(rows(), u"1"_s);
}

TEST_F(PlaylistView, SettingAnActionOnAnEmptyGridEndsSilently)
{
    openList(0);
    for (const QString& name : {u"playlist.set.play.normal"_s, u"playlist.set.play.loop"_s,
                                u"playlist.set.play.stop"_s}) {
        others.SendMessage(name);
    }
    view.toolPressed(u"playlist.jingle.loop"_s);
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(PlaylistView, AnActionIsWrittenToTheCurrentRowAndTold)
{
    openList(3);
    stand(1);
    others.SendMessage(u"playlist.set.play.stop"_s);
    EXPECT_EQ(aktion(1).toLong(), kAktionStop);
    EXPECT_EQ(sentOf(u"playlist.aktion.change"_s).size(), 1);
    EXPECT_TRUE(sent.first().contains(cell(1, u"PLID").toText()));
    EXPECT_EQ(aktion(0).toLong(), 0);
}

TEST_F(PlaylistView, ALockedListKeepsItsActions)
{
    openList(2, true);
    stand(0);
    others.SendMessage(u"playlist.set.play.stop"_s);
    view.toolPressed(u"playlist.jingle.loop"_s);
    EXPECT_EQ(aktion(0).toLong(), 0);
}

TEST_F(PlaylistView, AToggledLoopRestoresTheEarlierActionExactlyIncludingJingleBanks)
{
    openList(1);
    const auto turnTwice = [this](int former) {
        setAktion(0, former, u"a=b&"_s);
        stand(0);
        view.toolPressed(u"playlist.jingle.loop"_s);
        EXPECT_EQ(aktion(0).toLong(), kAktionLoop);
        EXPECT_EQ(cell(0, u"Command").toText(), u"a=b&oak=%1&"_s.arg(former));
        view.toolPressed(u"playlist.jingle.loop"_s);
        EXPECT_EQ(aktion(0).toLong(), former);
        EXPECT_EQ(cell(0, u"Command").toText(), u"a=b&"_s);
    };
    for (const int former :
         {kAktionMix, kAktionStop, kAktionJinglePlay, kAktionJingle1, kAktionJingle2}) {
        turnTwice(former);
    }
    EXPECT_EQ(sentOf(u"playlist.loop"_s).size(), 10);
    others.SendMessage(u"jinglelist.aktivieren"_s, numberOf(list), false);
    ASSERT_TRUE(view.isJingleMode());
    for (const int former : {kAktionJinglePlay, kAktionJingle1, kAktionJingle2}) {
        turnTwice(former);
    }
}

TEST_F(PlaylistView, ALoopWithoutAFormerActionMixesAndAJingleListAlwaysPlaysJingles)
{
    openList(1);
    setAktion(0, kAktionLoop);
    stand(0);
    view.toolPressed(u"playlist.jingle.loop"_s);
    EXPECT_EQ(aktion(0).toLong(), kAktionMix);
    others.SendMessage(u"jinglelist.aktivieren"_s, numberOf(list), false);
    EXPECT_TRUE(view.isJingleMode());
    stand(0);
    setAktion(0, kAktionLoop);
    view.toolPressed(u"playlist.jingle.loop"_s);
    EXPECT_EQ(aktion(0).toLong(), kAktionJinglePlay);
    EXPECT_EQ(sentOf(u"playlist.jingle.change.playmode"_s).size(), 1);
}

TEST_F(PlaylistView, ACommandThatCannotBeReadIsLeftAlone)
{
    openList(1);
    setAktion(0, kAktionMix, u"a=1&a=2&"_s);
    stand(0);
    view.toolPressed(u"playlist.jingle.loop"_s);
    EXPECT_EQ(aktion(0).toLong(), kAktionMix);
    EXPECT_EQ(cell(0, u"Command").toText(), u"a=1&a=2&"_s);
}

TEST_F(PlaylistView, RapidRowChangesSendOneInfoEveryQuarterOfASecond)
{
    openList(5);
    for (qint64 row = 0; row < 5; ++row) {
        view.rowChanged(row);
    }
    EXPECT_EQ(sentOf(u"info.from.fid"_s), QStringList(u"info.from.fid 800000000001 "_s));
    ASSERT_TRUE(loop.fire(250));
    EXPECT_EQ(sentOf(u"info.from.fid"_s).size(), 2);
    EXPECT_TRUE(sent.last().contains(u"800000000005"_s));
    ASSERT_TRUE(loop.fire(250));
    EXPECT_EQ(sentOf(u"info.from.fid"_s).size(), 2);
    EXPECT_FALSE(loop.fire(250));
    view.rowChanged(1);
    EXPECT_EQ(sentOf(u"info.from.fid"_s).size(), 3);
}

TEST_F(PlaylistView, ThePlayedEntryIsMarkedAndScrolledTo)
{
    openList(40);
    const int played = cell(30, u"PLID").toLong();
    others.SendMessage(u"refresh.playlist.plid"_s, played, cell(31, u"PLID").toLong());
    EXPECT_EQ(view.PLID(), Plid(played));
    EXPECT_EQ(grid.shownRow, 30);
    EXPECT_EQ(grid.current, -1) << "the user's own place stays";
}

TEST_F(PlaylistView, ThePlayedEntryIsNotScrolledToWhenTheSettingIsOff)
{
    openList(40);
    lists.settings->WriteKeyValue(u"Global"_s, u"View.Current.Playlist.Pos"_s, u"0"_s);
    others.SendMessage(u"refresh.playlist.plid"_s, cell(30, u"PLID").toLong(), 0);
    EXPECT_EQ(grid.shownRow, -1);
}

TEST_F(PlaylistView, AReloadKeepsTheEntryWhereverItStandsNow)
{
    openList(4);
    stand(2);
    lists.execute(u"update pl_all set sid=1 where plid="_s + cell(2, u"PLID").toText());
    others.SendMessage(u"refresh.playlist"_s, 0);
    EXPECT_EQ(rows(), u"3 1 2 4"_s);
    EXPECT_EQ(grid.current, 0);
}

TEST_F(PlaylistView, ADisconnectedViewLetsGoAndComesBackToItsList)
{
    openList(3);
    others.SendMessage(u"db.disconnect"_s);
    EXPECT_EQ(view.Data1().rowCount(), 0);
    // The grid may still have a row marked that the view has no longer.
    stand(1);
    view.deletePressed();
    view.moveRow(1);
    others.SendMessage(u"playlist.append.data"_s, lists.tracksText({1}));
    EXPECT_EQ(lists.entries(list), u"10:1 20:2 30:3"_s);
    EXPECT_TRUE(sentOf(u"playlist.change"_s).isEmpty());
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(rows(), u"1 2 3"_s);
}

TEST_F(PlaylistView, MonitorCommandsCarryTrackEntryStartAndStop)
{
    openList(2);
    stand(1);
    view.toolPressed(u"play.center"_s);
    EXPECT_EQ(sent.last(),
              u"player.monitor.play.center 800000000002 "_s + cell(1, u"PLID").toText());
    lists.settings->SetGridSwapEditPlay(1);
    sent.clear();
    view.rowActivated(1);
    EXPECT_EQ(sentOf(u"player.monitor.play.center"_s).size(), 1);
}

TEST_F(PlaylistView, AnEntryThatIsHeardIsMarkedUntilTheMonitorStops)
{
    openList(2);
    stand(1);
    view.toolPressed(u"play.start"_s);
    EXPECT_EQ(static_cast<const PlaylistLook&>(view.look()).heard(), view.currentEntry());
    view.toolPressed(u"play.stop"_s);
    EXPECT_EQ(static_cast<const PlaylistLook&>(view.look()).heard(), Plid{});
}

TEST_F(PlaylistView, TheMarkOfAHeardEntryGoesWhenItsTrackPlaysNoLonger)
{
    openList(2);
    stand(1);
    const auto& look = static_cast<const PlaylistLook&>(view.look());
    const QString fid = view.GetFID();
    view.toolPressed(u"play.start"_s);
    view.setHeardTrack(fid);
    EXPECT_EQ(look.heard(), view.currentEntry());
    view.setHeardTrack({});
    EXPECT_EQ(look.heard(), Plid{});
    // Played from elsewhere it is no longer this entry that is heard.
    view.setHeardTrack(fid);
    EXPECT_EQ(look.heard(), Plid{});
    view.toolPressed(u"play.start"_s);
    view.setHeardTrack(u"800000000001"_s);
    EXPECT_EQ(look.heard(), Plid{});
}

TEST_F(PlaylistView, RewindAndForwardBeginASeekOverTheBusAndTellItsPlaceAtEachTick)
{
    openList(2);
    const auto seeks = [this] {
        return sentOf(u"player.monitor.seek"_s) + sentOf(u"player.monitor.seek.set"_s);
    };
    monitorFrame = 1000;
    view.toolPressed(u"play.vor"_s);
    EXPECT_EQ(seeks(), QStringList{u"player.monitor.seek 0 "_s});
    view.toolPressed(u"play.vor"_s); // five seconds are 191 frames
    ASSERT_TRUE(loop.fire(50));
    EXPECT_EQ(seeks(),
              (QStringList{u"player.monitor.seek 0 "_s, u"player.monitor.seek.set 1382 "_s}));
    ASSERT_TRUE(loop.fire(50));
    EXPECT_FALSE(loop.fire(50));
    sent.clear();
    monitorFrame = 100;
    view.toolPressed(u"play.zur"_s);
    loop.fire(50);
    EXPECT_EQ(seeks(), (QStringList{u"player.monitor.seek 0 "_s, u"player.monitor.seek.set 0 "_s}));
}

TEST_F(PlaylistView, TheTempoFinderGetsTrackAndEntry)
{
    openList(2);
    stand(0);
    others.SendMessage(u"playlist.BeatGauge.Menu.Click"_s);
    others.SendMessage(u"playlist.BeatGauge.Menu.Manuell.Click"_s);
    const QString plid = cell(0, u"PLID").toText();
    EXPECT_EQ(tempoSearches,
              (QStringList{u"auto 800000000001 "_s + plid, u"manuell 800000000001 "_s + plid}));
}

TEST_F(PlaylistView, TheSampleToolGetsTheCurrentEntryUnlessTheMenuWasTheLibrarys)
{
    openList(2);
    view.toolPressed(u"all.sample"_s);
    EXPECT_TRUE(sampled.empty()) << "no row, no entry";
    stand(1);
    others.SendMessage(u"show.melovane.kiv"_s, 2);
    EXPECT_TRUE(sampled.empty());
    others.SendMessage(u"show.melovane.kiv"_s, 1);
    others.SendMessage(u"show.melovane.kiv"_s);
    view.toolPressed(u"all.sample"_s);
    ASSERT_EQ(sampled.size(), 3U);
    EXPECT_EQ(numberOf(sampled[0].PLID), cell(1, u"PLID").toInt64());
    EXPECT_EQ(sampled[0].FID, u"800000000002"_s);
}

TEST_F(PlaylistView, ATransitionIsRehearsedIntoTheEntryBelowAndBehindTheLastIntoTheFirst)
{
    openList(3);
    view.toolPressed(u"play.mix"_s);
    EXPECT_TRUE(rehearsed.empty()) << "no row, no transition";
    stand(1);
    view.toolPressed(u"play.mix"_s);
    stand(2);
    view.toolPressed(u"play.mix"_s);
    ASSERT_EQ(rehearsed.size(), 2U);
    EXPECT_EQ(rehearsed[0], std::pair(u"800000000002"_s, u"800000000003"_s));
    EXPECT_EQ(rehearsed[1], std::pair(u"800000000003"_s, u"800000000001"_s));
}

TEST_F(PlaylistView, TheOnlyEntryOfAListHasNoTransition)
{
    openList(1);
    stand(0);
    view.toolPressed(u"play.mix"_s);
    EXPECT_TRUE(rehearsed.empty());
    EXPECT_EQ(sentOf(u"show.statustext"_s).size(), 1);
}

TEST_F(PlaylistView, StartAndStopOfTheSampleToolAreTakenAndCanBeUndone)
{
    openList(2);
    stand(1);
    const Plid entry{cell(1, u"PLID").toLong()};
    view.takeSample(entry, u"800000000002"_s, 40, 900);
    EXPECT_EQ(cell(1, u"Start").toLong(), 40);
    EXPECT_EQ(cell(1, u"Stop").toLong(), 900);
    EXPECT_EQ(sentOf(u"jingle.playlist.change"_s).size(), 1);
    view.undo();
    EXPECT_NE(cell(1, u"Start").toLong(), 40);
}

TEST_F(PlaylistView, WhatTheSampleToolSaysOfAnotherEntryOrOfNoRangeIsNotTaken)
{
    openList(2);
    const Plid entry{cell(1, u"PLID").toLong()};
    const QString before = cell(1, u"Start").toText() + u' ' + cell(1, u"Stop").toText();
    view.takeSample(entry, u"800000000001"_s, 40, 900);
    view.takeSample(Plid{4711}, u"800000000002"_s, 40, 900);
    view.takeSample(Plid{}, {}, 40, 900);
    view.takeSample(entry, u"800000000002"_s, -1, 900);
    view.takeSample(entry, u"800000000002"_s, 900, 40);
    others.SendMessage(u"playlist.set.lock"_s, true);
    view.takeSample(entry, u"800000000002"_s, 40, 900);
    EXPECT_EQ(cell(1, u"Start").toText() + u' ' + cell(1, u"Stop").toText(), before);
    EXPECT_TRUE(sentOf(u"jingle.playlist.change"_s).isEmpty());
}

TEST_F(PlaylistView, AResetSetsTheListBackUnlessItIsLocked)
{
    openList(1);
    lists.execute(u"update pl_all set volume=7, mixin='1,2,3,4,5'"_s);
    others.SendMessage(u"playlist.set.lock"_s, true);
    others.SendMessage(u"playlist.reset"_s, numberOf(list));
    EXPECT_EQ(lists.value(u"select volume from pl_all"_s).toLong(), 7);
    others.SendMessage(u"playlist.set.lock"_s, false);
    others.SendMessage(u"playlist.reset"_s, numberOf(list));
    EXPECT_EQ(lists.value(u"select volume from pl_all"_s).toLong(), 0);
    EXPECT_TRUE(lists.value(u"select mixin from pl_all"_s).isNull());
}

TEST_F(PlaylistView, ALockToldByTheTreeConcernsTheOpenListAlone)
{
    openList(1);
    const auto tellLock = [this](int id, bool locked) {
        others.SendMessage(u"playlist.set.lock"_s, u"PLG?Playlist??%1"_s.arg(id), u"all.lock"_s,
                           locked);
        lists.execute(u"update pl_all set volume=7"_s);
        others.SendMessage(u"playlist.reset"_s, numberOf(list));
        return lists.value(u"select volume from pl_all"_s).toLong();
    };
    EXPECT_EQ(tellLock(int(numberOf(list)) + 1, true), 0);
    EXPECT_EQ(tellLock(int(numberOf(list)), true), 7);
    EXPECT_EQ(tellLock(int(numberOf(list)) + 1, false), 7);
    EXPECT_EQ(tellLock(int(numberOf(list)), false), 0);
}

TEST_F(PlaylistView, AListRenamedInTheTreeIsTitledAnew)
{
    openList(1);
    QString name;
    QObject::connect(&view, &ctl_Playlist::summaryChanged, &view,
                     [&name](const PlaylistSummary& summary) { name = summary.name; });
    lists.execute(u"update pl_name set name='Neuer Name' where nid=%1"_s.arg(numberOf(list)));
    others.SendMessage(u"update.tree.row"_s, u"PLG?Playlist??%1"_s.arg(numberOf(list)),
                       u"Neuer Name "_s);
    EXPECT_EQ(name, u"Neuer Name"_s);
}

TEST_F(PlaylistView, AListDeletedElsewhereIsNoLongerOpen)
{
    const Pnid other = lists.addList({}, u"Andere"_s);
    openList(2);
    stand(0);
    lists.execute(u"delete from pl_all where pnid=%1"_s.arg(numberOf(list)));
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(numberOf(list)));
    others.SendMessage(u"refresh.playlist"_s, numberOf(list));
    EXPECT_EQ(view.GetPNID(), Pnid{});
    EXPECT_EQ(view.Data1().rowCount(), 0);
    EXPECT_EQ(grid.note.title, u"Keine Playliste geöffnet"_s);
    others.SendMessage(u"playlist.append.data"_s, test::Lists::tracksText({1}));
    view.toolPressed(u"all.clip.append"_s);
    EXPECT_EQ(lists.entryCount(other), 0);
    others.SendMessage(u"playlist.aktivieren"_s, numberOf(other), false);
    others.SendMessage(u"playlist.append.data"_s, test::Lists::tracksText({1}));
    EXPECT_EQ(rows(), u"1"_s);
}

TEST_F(PlaylistView, TracksNeverEnterALockedListThatIsNotTheOneShown)
{
    openList(1);
    const Pnid playing = lists.addList({5}, u"Läuft"_s);
    lists.execute(
        u"update pl_name set isplay=true, lock=true, grid=1 where nid=%1"_s.arg(numberOf(playing)));
    stand(0);
    others.SendMessage(u"ToAktivPlaylist"_s);
    EXPECT_EQ(lists.entryCount(playing), 1);
    EXPECT_EQ(takeStatus(), QStringList{u"Die Playliste ist schreibgeschützt."_s});
    lists.execute(u"update pl_name set lock=false where nid=%1"_s.arg(numberOf(playing)));
    others.SendMessage(u"ToAktivPlaylist"_s);
    EXPECT_EQ(lists.entryCount(playing), 2);
}

TEST_F(PlaylistView, ALockedListIsNeitherUndoneNorRedone)
{
    openList(2);
    stand(0);
    const auto setLock = [this](bool on) {
        lists.execute(u"update pl_name set lock=%1 where nid=%2"_s.arg(on ? u"true"_s : u"false"_s)
                          .arg(numberOf(list)));
    };
    view.deletePressed();
    ASSERT_EQ(rows(), u"2"_s);
    setLock(true);
    sent.clear();
    view.undo();
    EXPECT_EQ(rows(), u"2"_s);
    EXPECT_EQ(takeStatus().size(), 1);
    setLock(false);
    view.undo();
    EXPECT_EQ(rows(), u"1 2"_s);
    setLock(true);
    view.redo();
    EXPECT_EQ(rows(), u"1 2"_s);
}

TEST_F(PlaylistView, ALockedListSaysSoWhenTheUserTriesToChangeIt)
{
    openList(2, true);
    stand(0);
    const std::vector<std::function<void()>> attempts = {
        [this] { view.deletePressed(); }, [this] { view.digitPressed(1); },
        [this] { view.moveRow(1); }, [this] { view.setAktion(1); },
        [this] { view.AutocueTitel(); }};
    for (const auto& attempt : attempts) {
        attempt();
        EXPECT_EQ(takeStatus(), QStringList{u"Die Playliste ist schreibgeschützt."_s});
    }
}

TEST_F(PlaylistView, WhatWaitsToBeNotedIsNotedBeforeTheFileIsGivenAway)
{
    openList(2);
    stand(0);
    view.moveRow(1);
    lists.execute(u"update pl_name set sicherung=false where nid=%1"_s.arg(numberOf(list)));
    others.SendMessage(u"db.disconnect"_s);
    EXPECT_TRUE(
        lists.value(u"select sicherung from pl_name where nid=%1"_s.arg(numberOf(list))).toBool());
}

TEST_F(PlaylistView, TheCurrentRowIsTheSameAfterTheFileWasAway)
{
    openList(3);
    stand(2);
    others.SendMessage(u"db.disconnect"_s);
    grid.current = -1;
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(grid.current, 2);
}

TEST_F(PlaylistView, ActionsOfferedFitTheKindOfTheList)
{
    openList(1);
    EXPECT_EQ(view.currentAktion(), -1);
    stand(0);
    EXPECT_EQ(view.currentAktion(), 0);
    EXPECT_EQ(view.aktionChoices(), (std::vector<int>{0, 1, 2}));
    others.SendMessage(u"jinglelist.aktivieren"_s, numberOf(list), false);
    EXPECT_EQ(view.aktionChoices(), (std::vector<int>{3, 2, 11, 12}));
}

TEST_F(PlaylistView, StartAndStopAreSetToWhereTheSoundBeginsAndEndsAndCanComeBack)
{
    const QString file = lists.write(u"ton.mp3"_s, "sound");
    openList(1);
    lists.execute(u"update db_all set Path='%1/', DName='ton.mp3'"_s.arg(QFileInfo(file).path()));
    const int former = cell(0, u"FrameStop").toLong();
    stand(0);
    cues = CueRange{40, 400};
    view.AutocueTitel();
    EXPECT_EQ(cueSearches, QStringList{file + u" 10000 700"_s});
    EXPECT_EQ(cell(0, u"FrameStart").toLong(), 40);
    EXPECT_EQ(cell(0, u"FrameStop").toLong(), 400);
    EXPECT_EQ(takeStatus(), QStringList());
    view.undo();
    EXPECT_EQ(cell(0, u"FrameStop").toLong(), former);
    EXPECT_EQ(takeStatus().size(), 1);

    cues.reset();
    stand(0);
    view.AutocueTitel();
    EXPECT_EQ(takeStatus().size(), 1);
    EXPECT_EQ(cell(0, u"FrameStop").toLong(), former);
}

TEST_F(PlaylistView, MixStylesAreSpreadAndTakenAwayOverTheBus)
{
    openList(3);
    lists.execute(u"update pl_all set mixout='1,1,1,1,1' where plid="_s +
                  cell(0, u"PLID").toText());
    lists.execute(u"update pl_all set mixin='2,2,2,2,2' where plid="_s + cell(1, u"PLID").toText());
    EXPECT_EQ(view.whyNot(u"mixstyle.all.copy"), u"Der Player spielt keine Playliste"_s);
    others.SendMessage(u"refresh.playlist.plid"_s, cell(0, u"PLID"), cell(1, u"PLID"));
    EXPECT_EQ(view.whyNot(u"mixstyle.all.copy"), QString());
    others.SendMessage(u"mixstyle.all.copy"_s);
    EXPECT_EQ(lists
                  .value(u"select count(*) from pl_all where mixout='1,1,1,1,1' and "
                         u"mixin='2,2,2,2,2'"_s)
                  .toLong(),
              3);
    others.SendMessage(u"mixstyle.all.del"_s);
    EXPECT_EQ(lists.value(u"select count(*) from pl_all where mixout is null"_s).toLong(), 3);
    EXPECT_EQ(sentOf(u"playlist.change"_s).size(), 2);
}

TEST_F(PlaylistView, TheSummaryNamesTheListItsEntriesAndItsLength)
{
    PlaylistSummary told;
    QObject::connect(&view, &ctl_Playlist::summaryChanged, &view,
                     [&](const PlaylistSummary& summary) { told = summary; });
    openList(0);
    lists.execute(u"update pl_name set name='Ein ''Name'' <b>'"_s);
    others.SendMessage(u"playlist.append.data"_s, lists.tracksText({1, 2}));
    EXPECT_EQ(told.name, u"Ein 'Name' <b>"_s);
    EXPECT_EQ(told.entries, 2);
    EXPECT_NEAR(double(told.milliseconds), 180'000 - 30 * 26.12, 100);
}

TEST_F(PlaylistView, InAnotherLibraryNoListIsOpenAndEveryEditGoesThere)
{
    const QString other = lists.file(u"andere.mdb"_s);
    const Pnid former = openList(2);
    stand(0);
    view.moveRow(1);
    view.setPlayed(view.currentEntry(), view.currentEntry());
    view.toolPressed(u"all.copy"_s);
    lists.engine->BackupDatabase(lists.dbName(), other);
    lists.execute(u"update pl_name set sicherung=false"_s);
    lists.settings->SetDbName(other);
    others.SendMessage(u"db.change"_s);

    EXPECT_EQ(view.GetPNID(), Pnid{});
    EXPECT_EQ(view.activeList(), Pnid{});
    EXPECT_EQ(view.Data1().rowCount(), 0);
    EXPECT_EQ(view.PLID(), Plid{});
    EXPECT_EQ(view.NextPlid(), Plid{});
    EXPECT_EQ(clipboard.content, QString()) << "its numbers mean other entries here";
    EXPECT_TRUE(
        lists.value(u"select sicherung from pl_name where nid=%1"_s.arg(numberOf(former))).toBool())
        << "what waited belongs to the former library";
    EXPECT_EQ(undoTip, u"Nichts rückgängig zu machen"_s);

    const QString before = lists.entries(former);
    view.undo();
    lists.edits.AppendFromMP3DB(lists.tracksText({1}), former, kAktionMix);
    EXPECT_EQ(lists.entries(former), before);
    const auto database = lists.engine->OpenDatabase(other);
    const auto there = database->OpenRecordset(
        u"select count(*) from pl_all where pnid=%1"_s.arg(numberOf(former)));
    EXPECT_EQ(there->value(0).toLong(), 3);
}

TEST_F(PlaylistView, WhileTheLibraryIsLentTheGridAndEveryCommandSayWhy)
{
    openList(2);
    stand(0);
    view.moveRow(1);
    others.SendMessage(u"db.disconnect"_s);
    const QString note = u"Ein anderes Programm benutzt die Bibliothek"_s;
    EXPECT_EQ(grid.note.title, note);
    sent.clear();
    const std::pair<const char*, std::function<void()>> kCommands[] = {
        {"undo", [this] { view.undo(); }},
        {"redo", [this] { view.redo(); }},
        {"delete", [this] { view.deletePressed(); }},
        {"move", [this] { view.moveRow(1); }},
        {"rate", [this] { view.digitPressed(3); }},
        {"action", [this] { view.setAktion(1); }},
        {"append",
         [this] { others.SendMessage(u"playlist.append.data"_s, lists.tracksText({1})); }},
        {"open", [this] { others.SendMessage(u"playlist.aktivieren"_s, numberOf(list), false); }}};
    for (const auto& [name, work] : kCommands) {
        work();
        EXPECT_EQ(takeStatus(), QStringList{note}) << name;
    }
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_NE(grid.note.title, note);
}

TEST_F(PlaylistView, AFileThatCannotBeReadYetIsTakenBackByALaterMessage)
{
    openList(3);
    others.SendMessage(u"db.disconnect"_s);
    const QString name = lists.settings->DbName();
    lists.settings->SetDbName(lists.file(u"gone.mdb"_s));
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(view.Data1().rowCount(), 0);
    lists.settings->SetDbName(name);
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(rows(), u"1 2 3"_s);
}

TEST_F(PlaylistView, ABoldFontOfTheSettingsIsTheFontOfTheGrid)
{
    EXPECT_FALSE(grid.font.bold);
    lists.settings->WriteKeyValue(u"Color"_s, u"FontBold"_s, u"-1"_s);
    others.SendMessage(u"update.color"_s);
    EXPECT_TRUE(grid.font.bold);
}

/// The view as it stands in the player's window.
class PlaylistViewOfPlayer : public test::PlaylistViewTest
{
protected:
    PlaylistViewOfPlayer()
        : PlaylistViewTest(u"MelovaneDJ"_s)
    {}
};

TEST_F(PlaylistViewOfPlayer, ADoubleClickIsToldWithListEntryAndTrack)
{
    openList(2);
    QVariantList values;
    const auto spy = bus.subscribe([&](const MLVMessage& message) {
        if (message.Command.endsWith(u".dblclick"_s)) {
            values = {message.Value1.toText(), message.Value2.toText(), message.Value3.toText()};
        }
    });
    view.rowActivated(1);
    EXPECT_EQ(sentOf(u"playlist.position.dblclick"_s).size(), 1);
    EXPECT_EQ(values, (QVariantList{QString::number(numberOf(list)), cell(1, u"PLID").toText(),
                                    lists.fid(2)}));
    EXPECT_TRUE(sentOf(u"jinglelist.position.dblclick"_s).isEmpty());
}

TEST_F(PlaylistViewOfPlayer, ADoubleClickOnAJingleIsToldAsOne)
{
    openList(2, false, u"jinglelist.aktivieren"_s);
    view.rowActivated(0);
    EXPECT_EQ(sentOf(u"jinglelist.position.dblclick"_s),
              QStringList(u"jinglelist.position.dblclick %1 %2"_s.arg(numberOf(list))
                              .arg(cell(0, u"PLID").toText())));
    EXPECT_TRUE(sentOf(u"playlist.position.dblclick"_s).isEmpty());
}

TEST_F(PlaylistView, InTheConsoleADoubleClickIsNothingForThePlayer)
{
    openList(2);
    view.rowActivated(1);
    EXPECT_TRUE(sent.filter(u".dblclick"_s).isEmpty());
}

TEST_F(PlaylistViewOfPlayer, ADoubleClickBesideTheRowsOrInALockedListTellsNothing)
{
    openList(1);
    view.rowActivated(-1);
    view.rowActivated(1);
    others.SendMessage(u"playlist.set.lock"_s, true);
    view.rowActivated(0);
    EXPECT_TRUE(sent.filter(u".dblclick"_s).isEmpty());
}

} // namespace
} // namespace melovane
