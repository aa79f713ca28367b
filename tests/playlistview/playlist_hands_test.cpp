// What the user's hands do with the rows of the playlist view.
#include "playlistview/playlist_view_fixture.h"
#include "support/disk_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class PlaylistHands : public test::PlaylistViewTest
{
protected:
    [[nodiscard]] QString plids(const QList<int>& ofRows)
    {
        QStringList ids;
        for (const int row : ofRows) {
            ids.append(cell(row, u"PLID").toText());
        }
        return lists.entriesText(ids);
    }
};

TEST_F(PlaylistHands, DraggingOneUnselectedRowDragsThatRow)
{
    openList(3);
    grid.current = 1;
    EXPECT_EQ(view.dragContent().text, plids({1}));
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}}));
}

TEST_F(PlaylistHands, ASelectionOfFlaggedRowsCarriesNothingAndInsertsNothing)
{
    openList(3);
    lists.execute(u"update db_all set del=-1"_s);
    view.RefreshGrid();
    others.SendMessage(u"refresh.playlist"_s);
    grid.selected = {{0, 2}};
    EXPECT_TRUE(view.dragContent().text.isEmpty());
    clipboard.content = u"DRAG_TYP_PLID:1"_s;
    view.toolPressed(u"all.copy"_s);
    EXPECT_EQ(clipboard.content, u"DRAG_TYP_PLID:"_s) << "nothing of an earlier copy is pasted";
    for (const QString& empty : {u"DRAG_TYP_PLID:"_s, u"DRAG_TYP_FID_MP3DB:"_s}) {
        EXPECT_EQ(view.dropEffect(onRow(0, empty)), DropEffect::None);
        clipboard.content = empty;
        view.toolPressed(u"all.clip.insert"_s);
        view.toolPressed(u"all.clip.append"_s);
        others.SendMessage(u"playlist.append.data"_s, empty);
        others.SendMessage(u"playlist.insert.data"_s, empty);
    }
    EXPECT_EQ(lists.entryCount(list), 3);
    EXPECT_EQ(rows(), u"1 2 3"_s);
}

TEST_F(PlaylistHands, AMoveOntoTheRowItselfChangesNothing)
{
    openList(3);
    stand(1);
    const QString text = view.dragContent().text;
    EXPECT_EQ(view.dropEffect(onRow(1, text)), DropEffect::None);
    view.drop(onRow(1, text));
    EXPECT_EQ(rows(), u"1 2 3"_s);
    EXPECT_TRUE(sent.isEmpty());
    // With the copy key held it is a copy.
    EXPECT_EQ(view.dropEffect(onRow(1, text, true)), DropEffect::Copy);
    view.drop(onRow(1, text, true));
    EXPECT_EQ(rows(), u"1 2 2 3"_s);
}

TEST_F(PlaylistHands, RowsAreMovedInFrontOfTheRowUnderThePointer)
{
    openList(4);
    grid.selected = {{2, 3}};
    const QString text = view.dragContent().text;
    EXPECT_EQ(view.dropEffect(onRow(0, text)), DropEffect::Move);
    view.drop(onRow(0, text));
    EXPECT_EQ(rows(), u"3 4 1 2"_s);
    EXPECT_EQ(sentOf(u"playlist.change"_s).size(), 1);
}

TEST_F(PlaylistHands, ADropBelowTheRowsGoesToTheEndAndOnTheHeadingsToTheTop)
{
    openList(3);
    stand(0);
    view.drop({view.dragContent().text, {}, false, DropOffer::Spot::BelowRows, -1});
    EXPECT_EQ(rows(), u"2 3 1"_s);
    stand(1);
    view.drop({view.dragContent().text, {}, false, DropOffer::Spot::AboveRows, -1});
    EXPECT_EQ(rows(), u"3 2 1"_s);
    view.drop({lists.tracksText({4}), {}, false, DropOffer::Spot::AboveRows, -1});
    EXPECT_EQ(rows(), u"4 3 2 1"_s);
    view.drop({lists.tracksText({5, 6}), {}, false, DropOffer::Spot::BelowRows, -1});
    EXPECT_EQ(rows(), u"4 3 2 1 5 6"_s);
}

TEST_F(PlaylistHands, EntriesOfAnotherListAreCopiedNeverMoved)
{
    openList(2);
    const Pnid other = lists.addList({1, 2, 3}, u"Andere"_s);
    const QString text = lists.entriesText({lists.plids(other).at(2)});
    EXPECT_EQ(view.dropEffect(onRow(0, text)), DropEffect::Copy);
    view.drop(onRow(0, text));
    EXPECT_EQ(rows(), u"3 1 2"_s);
    EXPECT_EQ(lists.entryCount(other), 3);
    // One foreign entry among own ones makes the whole drag a copy.
    const QString mixed = lists.entriesText({lists.plids(list).at(0), lists.plids(other).at(0)});
    EXPECT_EQ(view.dropEffect(onRow(1, mixed)), DropEffect::Copy);
}

TEST_F(PlaylistHands, ALockedListRefusesEveryDropAndPaste)
{
    openList(2, true);
    clipboard.content = lists.tracksText({1});
    EXPECT_EQ(view.dropEffect(onRow(0, lists.tracksText({1}))), DropEffect::None);
    EXPECT_EQ(view.dropEffect({{}, {u"/music/a.mp3"_s}, false, DropOffer::Spot::BelowRows, -1}),
              DropEffect::None);
    view.drop(onRow(0, lists.tracksText({1})));
    view.toolPressed(u"all.clip.insert"_s);
    view.toolPressed(u"all.clip.append"_s);
    stand(0);
    view.deletePressed();
    view.moveRow(1);
    view.digitPressed(1);
    others.SendMessage(u"playlist.insert.data"_s, lists.tracksText({1}));
    others.SendMessage(u"playlist.append.data"_s, lists.tracksText({1}));
    EXPECT_EQ(rows(), u"1 2"_s);
    EXPECT_TRUE(sentOf(u"playlist.change"_s).isEmpty());
}

TEST_F(PlaylistHands, PastingRowsAtTheTopAlwaysLandsAtSidZeroWhateverIsSelected)
{
    openList(3);
    clipboard.content = plids({2});
    stand(1);
    view.toolPressed(u"all.clip.insert"_s);
    EXPECT_EQ(rows(), u"3 1 2 3"_s);
    EXPECT_EQ(cell(0, u"SID").toLong(), 0);
}

TEST_F(PlaylistHands, PastedTracksComeInFrontOfTheCurrentRowOrToTheEnd)
{
    openList(3);
    clipboard.content = lists.tracksText({5});
    stand(1);
    view.toolPressed(u"all.clip.insert"_s);
    EXPECT_EQ(rows(), u"1 5 2 3"_s);
    view.toolPressed(u"all.clip.append"_s);
    EXPECT_EQ(rows(), u"1 5 2 3 5"_s);
    clipboard.content = u"irgendein Text: 1,2"_s;
    view.toolPressed(u"all.clip.append"_s);
    EXPECT_EQ(rows(), u"1 5 2 3 5"_s);
}

TEST_F(PlaylistHands, AJingleListTakesNewTracksAsJingles)
{
    openList(1, false, u"jinglelist.aktivieren"_s);
    others.SendMessage(u"playlist.append.data"_s, lists.tracksText({2}));
    EXPECT_EQ(aktion(1).toLong(), kAktionJinglePlay);
}

TEST_F(PlaylistHands, CtrlDownOnTheLastRowDoesNothingAndTakesNoSnapshot)
{
    lists.write(u"Undo.conf"_s, "Playlist.Taste.Runter.an\nPlaylist.Taste.Hoch.an\n");
    openList(3);
    stand(2);
    view.moveRow(1);
    stand(0);
    view.moveRow(-1);
    EXPECT_EQ(rows(), u"1 2 3"_s);
    EXPECT_EQ(lists.value(u"select count(*) from TEMP_PL_UNDO"_s).toLong(), 0);
    EXPECT_FALSE(lists.history.nextUndo().has_value());
    view.moveRow(1);
    EXPECT_EQ(lists.value(u"select count(*) from TEMP_PL_UNDO"_s).toLong(), 3);
}

TEST_F(PlaylistHands, OnePressMovesARowOverAnEntryThatTheGridDoesNotShow)
{
    openList(4);
    lists.execute(u"delete from db_all where fid in ('800000000002','800000000004')"_s);
    view.Refresh();
    ASSERT_EQ(rows(), u"1 3"_s);
    stand(1);
    view.moveRow(-1);
    EXPECT_EQ(rows(), u"3 1"_s);
    EXPECT_EQ(grid.current, 0);
    stand(1);
    view.moveRow(1);
    EXPECT_EQ(rows(), u"3 1"_s);
    view.undo();
    EXPECT_EQ(rows(), u"1 3"_s);
    EXPECT_FALSE(lists.history.nextUndo().has_value()) << "what is not seen is no step";
}

TEST_F(PlaylistHands, AMovedRowStaysCurrentAndIsToldOnceTheHandRests)
{
    openList(4);
    lists.execute(u"update pl_name set sicherung=false"_s);
    stand(0);
    view.moveRow(1);
    view.moveRow(1);
    EXPECT_EQ(rows(), u"2 3 1 4"_s);
    EXPECT_EQ(grid.current, 2);
    EXPECT_TRUE(sentOf(u"playlist.change"_s).isEmpty());
    ASSERT_TRUE(loop.fire(500));
    EXPECT_EQ(sentOf(u"playlist.change"_s).size(), 1);
    EXPECT_TRUE(lists.value(u"select sicherung from pl_name"_s).toBool());
    EXPECT_FALSE(loop.fire(500));
}

TEST_F(PlaylistHands, AnotherListDoesNotTakeOverWhatWaitsToBeNoted)
{
    openList(2);
    lists.execute(u"update pl_name set sicherung=false"_s);
    stand(0);
    view.moveRow(1);
    const Pnid other = lists.addList({5}, u"Andere"_s);
    lists.execute(u"update pl_name set sicherung=false where name='Andere'"_s);
    others.SendMessage(u"playlist.aktivieren"_s, numberOf(other), false);
    EXPECT_EQ(lists.column(u"select name from pl_name where sicherung=true"_s),
              QStringList(u"Party"_s));
}

TEST_F(PlaylistHands, DeletedRowsGoWithASnapshotAndCanComeBack)
{
    lists.write(u"Undo.conf"_s, "Playlist.Taste.Del.an\n");
    openList(4);
    grid.selected = {{1, 2}};
    grid.current = 2;
    view.deletePressed();
    EXPECT_EQ(rows(), u"1 4"_s);
    EXPECT_EQ(lists.value(u"select count(*) from TEMP_PL_UNDO"_s).toLong(), 4);
    EXPECT_EQ(undoTip, u"Rückgängig: 2 Titel aus „Party“ gelöscht"_s);
    view.undo();
    EXPECT_EQ(rows(), u"1 2 3 4"_s);
    view.redo();
    EXPECT_EQ(rows(), u"1 4"_s);
}

TEST_F(PlaylistHands, CutRowsGoAndComeBackWithAllTheirValuesWhereverTheyArePasted)
{
    openList(4);
    stand(1);
    view.setAktion(kAktionLoop);
    functions.PlaylistSaveStartStop(Plid(cell(1, u"PLID").toLong()), 1000, 2000);
    lists.execute(u"update db_all set del=-1 where fid='800000000003'"_s);
    grid.selected = {{1, 2}};
    const QString cut = plids({1, 2});
    view.toolPressed(u"all.clip.cut"_s);
    EXPECT_EQ(rows(), u"1 4"_s);
    EXPECT_EQ(clipboard.content, cut) << "a flagged track as well: it is gone from the list";
    view.toolPressed(u"all.clip.append"_s);
    EXPECT_EQ(rows(), u"1 4 2 3"_s);
    EXPECT_EQ(cell(2, u"Start").toLong(), 1000);
    EXPECT_EQ(cell(2, u"Stop").toLong(), 2000);
    EXPECT_EQ(aktion(2).toLong(), kAktionLoop);
    view.undo();
    view.undo();
    EXPECT_EQ(rows(), u"1 2 3 4"_s);
}

TEST_F(PlaylistHands, ALockedListIsNotCut)
{
    openList(2, true);
    stand(0);
    clipboard.content = u"before"_s;
    view.toolPressed(u"all.clip.cut"_s);
    EXPECT_EQ(rows(), u"1 2"_s);
    EXPECT_EQ(clipboard.content, u"before"_s);
}

TEST_F(PlaylistHands, AnEntryWhoseTrackIsFlaggedCanStillBeDeleted)
{
    openList(2);
    lists.execute(u"update db_all set del=2 where fid='800000000001'"_s);
    others.SendMessage(u"refresh.playlist"_s);
    stand(0);
    view.deletePressed();
    EXPECT_EQ(rows(), u"2"_s);
}

TEST_F(PlaylistHands, RefreshingTellsTheStepsThatAnotherConsoleHasTaken)
{
    openList(3);
    stand(0);
    view.deletePressed();
    const QString own = undoTip;
    ASSERT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    view.toolPressed(u"all.refresh"_s);
    EXPECT_EQ(rows(), u"1 2 3"_s);
    EXPECT_NE(undoTip, own);
    EXPECT_EQ(undoTip, undoText(texts, std::nullopt));
}

TEST_F(PlaylistHands, UndoAsksBeforeItWritesOverWhatOthersHaveChanged)
{
    openList(3);
    stand(0);
    view.deletePressed();
    lists.execute(u"delete from pl_all where fid='800000000003'"_s);
    view.undo();
    ASSERT_EQ(log.size(), 1);
    EXPECT_TRUE(log.first().contains(u"„Party“ wurde inzwischen anderswo geändert"_s));
    EXPECT_EQ(lists.entryCount(list), 2) << "nothing was written";
    warnings.answer = WarningAnswer::Yes;
    view.undo();
    EXPECT_TRUE(rows().startsWith(u"1"_s));
}

TEST_F(PlaylistHands, UndoAndRedoOpenTheListSelectWhatChangedAndSaySo)
{
    openList(5);
    const Pnid party = list;
    grid.selected = {{1, 1}, {3, 3}};
    view.deletePressed();
    const Pnid other = lists.addList({10}, u"Andere"_s);
    others.SendMessage(u"playlist.aktivieren"_s, numberOf(other));
    sent.clear();
    view.undo();
    EXPECT_EQ(view.GetPNID(), party);
    EXPECT_EQ(rows(), u"1 2 3 4 5"_s);
    EXPECT_EQ(grid.current, 1);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}, {3, 3}}));
    EXPECT_EQ(sentOf(u"playlist.aktivieren"_s),
              QStringList{u"playlist.aktivieren %1 0"_s.arg(numberOf(party))});
    EXPECT_EQ(takeStatus(), QStringList{u"Rückgängig: 2 Titel aus „Party“ gelöscht"_s});

    others.SendMessage(u"playlist.aktivieren"_s, numberOf(other));
    sent.clear();
    view.redo();
    EXPECT_EQ(view.GetPNID(), party);
    EXPECT_EQ(rows(), u"1 3 5"_s);
    EXPECT_EQ(takeStatus(), QStringList{u"Wiederholen: 2 Titel aus „Party“ gelöscht"_s});
}

TEST_F(PlaylistHands, UndoOfAMoveSelectsTheEntryThatMovedAndNotThoseThatMadeRoom)
{
    openList(6);
    view.drop(onRow(1, test::Lists::entriesText({cell(4, u"PLID").toText()})));
    ASSERT_EQ(rows(), u"1 5 2 3 4 6"_s);
    view.undo();
    EXPECT_EQ(rows(), u"1 2 3 4 5 6"_s);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{4, 4}}));
    view.redo();
    EXPECT_EQ(rows(), u"1 5 2 3 4 6"_s);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}}));
}

TEST_F(PlaylistHands, AJingleListThatIsUndoneIsOpenedAsOne)
{
    openList(2, false, u"jinglelist.aktivieren"_s);
    lists.execute(u"update pl_name set grid=-1 where nid=%1"_s.arg(numberOf(list)));
    stand(0);
    view.deletePressed();
    const Pnid other = lists.addList({10}, u"Andere"_s);
    others.SendMessage(u"playlist.aktivieren"_s, numberOf(other));
    view.undo();
    EXPECT_EQ(view.GetPNID(), list);
    EXPECT_TRUE(view.isJingleMode());
}

TEST_F(PlaylistHands, WhatIsDroppedOnAListElsewhereComesToItsEndInOneStepAndIsTold)
{
    openList(3);
    const Pnid other = lists.addList({10}, u"Andere"_s);
    view.append(test::Lists::tracksText({2, 3}), other);
    EXPECT_EQ(lists.entryCount(other), 3);
    EXPECT_EQ(takeStatus(), QStringList{u"2 Titel an „Andere“ angehängt"_s});
    view.append(test::Lists::entriesText({cell(2, u"PLID").toText()}), other);
    EXPECT_EQ(lists.entryCount(other), 4);
    EXPECT_EQ(sentOf(u"playlist.change"_s),
              QStringList{u"playlist.change %1 "_s.arg(numberOf(other))});
    EXPECT_EQ(rows(), u"1 2 3"_s) << "they are copies";
    view.undo();
    EXPECT_EQ(lists.entryCount(other), 3);
    view.undo();
    EXPECT_EQ(lists.entryCount(other), 1);
    lists.execute(u"update pl_name set lock=true where nid=%1"_s.arg(numberOf(other)));
    sent.clear();
    view.append(test::Lists::tracksText({2}), other);
    EXPECT_EQ(lists.entryCount(other), 1);
    EXPECT_EQ(takeStatus(), QStringList{u"Die Playliste ist schreibgeschützt."_s});
}

TEST_F(PlaylistHands, TracksThatAreDroppedOnAJingleListAreJingles)
{
    openList(1);
    const Pnid jingles = lists.addList({10}, u"Kennung"_s);
    lists.execute(u"update pl_name set grid=-1 where nid=%1"_s.arg(numberOf(jingles)));
    view.append(test::Lists::tracksText({2}), jingles);
    EXPECT_EQ(lists
                  .column(u"select aktion from pl_all where pnid=%1 order by sid"_s.arg(
                      numberOf(jingles)))
                  .last(),
              QString::number(kAktionJinglePlay));
}

TEST_F(PlaylistHands, WhatIsPastedOrDroppedIsSelectedAndItsFirstRowCurrent)
{
    using Ranges = std::vector<RowRange>;
    openList(4);
    stand(3);
    view.drop(onRow(1, test::Lists::tracksText({5, 6})));
    ASSERT_EQ(rows(), u"1 5 6 2 3 4"_s);
    EXPECT_EQ(grid.selected, (Ranges{{1, 2}}));
    EXPECT_EQ(grid.current, 1);
    view.drop(onRow(1, test::Lists::entriesText({cell(5, u"PLID").toText()})));
    ASSERT_EQ(rows(), u"1 4 5 6 2 3"_s);
    EXPECT_EQ(grid.selected, (Ranges{{1, 1}})) << "what was moved";
    clipboard.content = test::Lists::entriesText({cell(0, u"PLID").toText()});
    view.toolPressed(u"all.clip.append"_s);
    EXPECT_EQ(grid.selected, (Ranges{{6, 6}}));
}

TEST_F(PlaylistHands, APasteIntoAnEmptyListMakesItsFirstRowCurrent)
{
    openList(0);
    clipboard.content = test::Lists::tracksText({1, 2});
    view.toolPressed(u"all.clip.append"_s);
    ASSERT_EQ(rows(), u"1 2"_s);
    EXPECT_EQ(grid.current, 0);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{0, 1}}));
}

TEST_F(PlaylistHands, RatingsAreStoredTheOtherWayRoundAndGoToTheTags)
{
    openList(1);
    stand(0);
    const QList<std::pair<int, QString>> stored = {
        {1, u"5"_s}, {2, u"4"_s}, {3, u"3"_s}, {4, u"2"_s}, {5, u"1"_s}};
    for (const auto& [digit, text] : stored) {
        view.digitPressed(digit);
        EXPECT_EQ(lists.value(u"select note from db_all where fid='800000000001'"_s).toText(),
                  text);
    }
    view.digitPressed(0);
    EXPECT_TRUE(lists.value(u"select note from db_all where fid='800000000001'"_s).isNull());
    view.digitPressed(6);
    EXPECT_EQ(sentOf(u"db.refresh.by.fid"_s).size(), 6);
    EXPECT_EQ(lists.value(u"select count(*) from db_edit"_s).toLong(), 6);
}

TEST_F(PlaylistHands, ARatingWhoseTrackCannotBeEnteredForTheTagsIsNotStored)
{
    openList(1);
    stand(0);
    const QString note = u"select note from db_all where fid='800000000001'"_s;
    const QString before = lists.value(note).toText();
    lists.execute(u"drop table db_edit"_s);
    view.digitPressed(1);
    EXPECT_EQ(lists.value(note).toText(), before);
    EXPECT_EQ(sentOf(u"db.refresh.by.fid"_s), QStringList());
    EXPECT_EQ(sentOf(u"show.statustext"_s).size(), 1);
}

TEST_F(PlaylistHands, FilesAreTakenAsTheTracksTheyHold)
{
    openList(2);
    const DropOffer files{
        u"file:///music/neu.mp3"_s, {u"/music/neu.mp3"_s}, false, DropOffer::Spot::OnRow, 1};
    EXPECT_EQ(view.dropEffect(files), DropEffect::Copy);
    fileTracks = {lists.fid(4), lists.fid(5)};
    view.drop(files);
    EXPECT_EQ(rows(), u"1 4 5 2"_s);
    DropOffer text = files;
    text.files = {u"/music/notiz.txt"_s};
    EXPECT_EQ(view.dropEffect(text), DropEffect::None);
    text.files = {u"/music/Vol. 2"_s};
    EXPECT_EQ(view.dropEffect(text), DropEffect::None) << "nothing of that name is there";
    folders = {u"/music/Vol. 2"_s};
    EXPECT_EQ(view.dropEffect(text), DropEffect::Copy);
    fileTracks.clear();
    view.drop(files);
    EXPECT_EQ(rows(), u"1 4 5 2"_s);
    EXPECT_EQ(sentOf(u"show.statustext"_s), QStringList())
        << "who has looked into the files has told what was among them";
}

TEST_F(PlaylistHands, FilesThatWereReadWhileTheLibraryWasTakenStandInNoList)
{
    openList(2);
    fileTracks = {lists.fid(4)};
    whileFilesAreRead = [this] { others.SendMessage(u"db.disconnect"_s); };
    view.drop({u""_s, {u"/m/a.mp3"_s}, false, DropOffer::Spot::BelowRows, -1});
    ASSERT_EQ(sentOf(u"show.statustext"_s).size(), 1);
    EXPECT_TRUE(sentOf(u"show.statustext"_s).last().contains(texts.text(u"library.lent.title"_s)));
    whileFilesAreRead = {};
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(rows(), u"1 2"_s);
}

TEST_F(PlaylistHands, DroppedListsAreReadWhereTheyFall)
{
    openList(2);
    DropOffer files{
        u""_s, {u"/m/a.m3u"_s, u"/m/x.mp3"_s, u"/m/B.M3U8"_s}, false, DropOffer::Spot::OnRow, 1};
    EXPECT_EQ(view.dropEffect(files), DropEffect::Copy);
    view.drop(files);
    files.spot = DropOffer::Spot::AboveRows;
    view.drop(files);
    files.spot = DropOffer::Spot::BelowRows;
    view.drop(files);
    EXPECT_EQ(insertedLists, (QStringList{u"/m/a.m3u,/m/B.M3U8 into list at 20 as 0"_s,
                                          u"/m/a.m3u,/m/B.M3U8 into list at 0 as 0"_s,
                                          u"/m/a.m3u,/m/B.M3U8 into list at the end as 0"_s}));
    EXPECT_EQ(sentOf(u"playlist.change"_s).size(), 3);
    ASSERT_EQ(sentOf(u"show.statustext"_s).size(), 3);
    EXPECT_TRUE(sentOf(u"show.statustext"_s)
                    .last()
                    .contains(u"Playlisten gelesen, die anderen Dateien daneben nicht: 1"_s));
}

TEST_F(PlaylistHands, ADroppedListInAJingleListGivesJingles)
{
    openList(1, false, u"jinglelist.aktivieren"_s);
    view.drop({u""_s, {u"/m/a.m3u"_s}, false, DropOffer::Spot::BelowRows, -1});
    EXPECT_EQ(insertedLists, QStringList{u"/m/a.m3u into list at the end as 3"_s});
}

TEST_F(PlaylistHands, ADroppedListWithoutEntriesChangesNothing)
{
    openList(1);
    listsHaveEntries = false;
    view.drop({u""_s, {u"/m/a.m3u"_s}, false, DropOffer::Spot::BelowRows, -1});
    EXPECT_EQ(insertedLists.size(), 1);
    EXPECT_EQ(sentOf(u"playlist.change"_s), QStringList());
}

TEST_F(PlaylistHands, ALockedListRefusesDroppedLists)
{
    openList(1, true);
    EXPECT_EQ(view.dropEffect({u""_s, {u"/m/a.m3u"_s}, false, DropOffer::Spot::BelowRows, -1}),
              DropEffect::None);
}

TEST_F(PlaylistHands, TheSelectionGoesToThePlayingList)
{
    openList(2);
    const Pnid playing = lists.addList({1}, u"Läuft"_s);
    lists.execute(u"update pl_name set isplay=true where name='Läuft'"_s);
    grid.selected = {{0, 1}};
    others.SendMessage(u"ToAktivPlaylist"_s);
    EXPECT_EQ(lists.entryCount(playing), 3);
    EXPECT_EQ(rows(), u"1 2"_s);
}

TEST_F(PlaylistHands, WithoutAPlayingListTheSelectionGoesNowhereAndThatIsSaid)
{
    openList(2);
    stand(0);
    others.SendMessage(u"ToAktivPlaylist"_s);
    EXPECT_EQ(rows(), u"1 2"_s);
    EXPECT_EQ(takeStatus(), QStringList(u"Keine Playliste wird gespielt"_s));
}

TEST_F(PlaylistHands, KeysOfTheWindowActOnlyWithTheKeyboardOrWhenAsked)
{
    openList(1);
    clipboard.content = lists.tracksText({2});
    EXPECT_FALSE(view.SendKeyUp(u"append"_s));
    EXPECT_TRUE(view.SendKeyUp(u"append"_s, true));
    grid.keyboard = true;
    EXPECT_TRUE(view.SendKeyUp(u"append"_s));
    EXPECT_EQ(rows(), u"1 2 2"_s);
    EXPECT_FALSE(view.SendKeyUp(u"nix"_s));
    EXPECT_EQ(sentOf(u"playlist.insert.data.end"_s).size(), 2);
}

TEST_F(PlaylistHands, ADoubleClickPlaysInThePlayerAndNeverInALockedList)
{
    openList(1);
    view.rowActivated(0);
    EXPECT_EQ(sentOf(u"show.tagedit.playlist"_s).size(), 1);
    others.SendMessage(u"playlist.set.lock"_s, true);
    sent.clear();
    view.rowActivated(0);
    EXPECT_TRUE(sent.isEmpty());
    view.rowActivated(7);
}

TEST_F(PlaylistHands, SelectionHelpersGoThroughTheRows)
{
    openList(3);
    EXPECT_EQ(view.SetAllBookmarks(u"FID"_s), u"800000000001,800000000002,800000000003"_s);
    EXPECT_EQ(view.SetAllBookmarks(u"null"_s), QString());
    view.SetGridBookmarks(2, 1);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 2}}));
    EXPECT_EQ(view.selectionAnchor(), 2);
    view.SetGridBookmarks(-1, 1);
    EXPECT_EQ(view.selectionAnchor(), 2);
    view.SetAbsolutePosition(Plid(cell(2, u"PLID").toLong()));
    EXPECT_EQ(grid.current, 2);
}

TEST_F(PlaylistHands, TheTagToolGetsTracksAndEntries)
{
    openList(3);
    grid.selected = {{0, 1}};
    view.toolPressed(u"all.book"_s);
    EXPECT_EQ(lists.column(u"select FID from TEMP_MP3Edit order by FID"_s),
              (QStringList{lists.fid(1), lists.fid(2)}));
    EXPECT_EQ(lists.value(u"select PLID from TEMP_MP3Edit order by FID"_s).toText(),
              cell(0, u"PLID").toText());
    EXPECT_EQ(sentOf(u"show.tageditor"_s).size(), 1);
}

// ---- a database that fails

TEST_F(PlaylistHands, ADatabaseThatAnotherProgramHasAloneIsToldForButtonsAndDrops)
{
    openList(2);
    clipboard.content = lists.tracksText({3});
    lists.engine->GiveAway(lists.dbName());
    view.toolPressed(u"all.clip.append"_s);
    view.drop(onRow(0, lists.tracksText({3})));
    const QString told = u"Ein anderes Programm hat die Datenbank gerade für sich allein, deshalb "
                         "geschieht hier nichts: "_s +
                         lists.dbName();
    EXPECT_EQ(takeStatus(), (QStringList{told, told}));
    EXPECT_EQ(lists.log.filter(u"all.clip.append: "_s).size(), 1);
    EXPECT_EQ(lists.log.filter(u"ctl_Playlist.drop: "_s).size(), 1);
    lists.engine->TakeBack(lists.dbName());
    EXPECT_EQ(rows(), u"1 2"_s);
}

class PlaylistHandsOnAFullDisk : protected test::DiskFixture, public PlaylistHands
{
protected:
    PlaylistHandsOnAFullDisk()
    {
        openList(2);
        stand(0);
    }

    void expectTold(const QString& where)
    {
        EXPECT_EQ(takeStatus(), QStringList{u"Der Datenträger ist voll: "_s + lists.dbName()});
        EXPECT_EQ(lists.log.filter(where + u": "_s).size(), 1);
    }
};

TEST_F(PlaylistHandsOnAFullDisk, AMarkThatIsNotWrittenIsToldAndNobodyHearsOfIt)
{
    fillDisk();
    view.digitPressed(1);
    EXPECT_TRUE(sentOf(u"db.refresh.by.fid"_s).isEmpty());
    expectTold(u"PlaylistEdits.rate"_s);
}

TEST_F(PlaylistHandsOnAFullDisk, AListThatCannotBeMarkedForItsFileIsTold)
{
    view.moveRow(1);
    EXPECT_EQ(takeStatus(), QStringList());
    fillDisk();
    view.end();
    expectTold(u"PlaylistEdits.saveNow"_s);
}

} // namespace
} // namespace melovane
