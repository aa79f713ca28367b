#include "care/ber_db_fixture.h"
#include "playlists/list_edit.h"
#include "playlists/list_history.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kRemembered = u"todo where id=1"_s;

} // namespace

TEST_F(BerDbTest, MarkedTracksAreRemovedAndTracksThatAreMissingTooStay)
{
    const QString stays = addTrack({});
    addTrack({.DEL = -1});
    const QString both = addTrack({.DEL = 3});
    run({0, 2});
    EXPECT_EQ(suite.column(u"select fid from db_all order by fid"_s), (QStringList{stays, both}));
    EXPECT_EQ(form.shown.boxes[0].note, u"1 Titel entfernt"_s);
    EXPECT_EQ(form.shown.boxes[2].note, u"0 Titel entfernt"_s);
}

TEST_F(BerDbTest, ABoxWhoseStepHasRunIsUntickedAndOff)
{
    addTrack({.DEL = -1});
    run({0, 3});
    for (const size_t done : {size_t{0}, size_t{3}}) {
        EXPECT_FALSE(form.shown.boxes[done].isTicked);
        EXPECT_FALSE(form.shown.boxes[done].isEnabled);
        EXPECT_TRUE(form.shown.boxes[done].isDone);
    }
    EXPECT_TRUE(form.shown.boxes[1].isEnabled);
    EXPECT_TRUE(form.shown.boxes[2].isEnabled);
    dialog.checkBer(0, true);
    EXPECT_FALSE(form.shown.boxes[0].isTicked);
    EXPECT_FALSE(form.shown.mayRun);
}

TEST_F(BerDbTest, WithBoxThreeAloneOrphansAreSearched)
{
    const QString fid = addTrack({});
    suite.library.addPlaylist({.tracks = {fid, u"826816169999"_s}});
    suite.library.addPlayback(u"826816169998"_s, suite.clock.now());
    run({3});
    EXPECT_EQ(suite.column(u"select fid from pl_all"_s), QStringList{fid});
    EXPECT_EQ(count(u"pl_stat"_s), 0);
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 1);
    EXPECT_EQ(suite.value(u"select UpdateTime from pl_name"_s).toDateTime(), suite.clock.now());
    EXPECT_EQ(form.shown.boxes[3].note, u"1 Eintrag, 0 Listen entfernt"_s);
}

TEST_F(BerDbTest, WithBoxesZeroAndThreeOlderOrphansStay)
{
    const QString removed = addTrack({.DEL = -1});
    suite.library.addPlaylist({.tracks = {removed, u"826816169999"_s}});
    run({0, 3});
    EXPECT_EQ(suite.column(u"select fid from pl_all"_s), QStringList{u"826816169999"_s});
}

TEST_F(BerDbTest, AnEmptyListThatIsShownOrPlayedStays)
{
    const QString fid = addTrack({.DEL = -1});
    const int shown = suite.library.addPlaylist({.tracks = {fid}, .Activ = true});
    const int played = suite.library.addPlaylist({.tracks = {fid}, .Activ = false, .IsPlay = true});
    suite.library.addPlaylist({.tracks = {fid}, .Activ = false});
    run({0, 3});
    EXPECT_EQ(suite.column(u"select nid from pl_name order by nid"_s),
              (QStringList{QString::number(shown), QString::number(played)}));
    EXPECT_EQ(count(u"pl_group"_s), 2) << "the group of the third list is gone with it";
    EXPECT_EQ(form.shown.boxes[3].note, u"3 Einträge, 1 Liste entfernt"_s);
}

TEST_F(BerDbTest, AJingleListHasNoGroupAndTheCleaningOfGroupsDoesNotTouchIt)
{
    const QString fid = addTrack({});
    const int jingles = suite.library.addPlaylist({.GRID = -1, .tracks = {fid}, .Activ = false});
    const int empty = suite.library.addGroup(u"Leer"_s);
    run({3});
    EXPECT_EQ(suite.column(u"select nid from pl_name"_s), QStringList{QString::number(jingles)});
    EXPECT_EQ(count(u"pl_group where grid=%1"_s.arg(empty)), 0);
}

TEST_F(BerDbTest, RowsOfIdOneNeverSurviveARun)
{
    addTrack({.DEL = -1});
    suite.execute(u"insert into todo (ID, FID) values (1, 'of a run that was killed')"_s);
    suite.execute(u"insert into todo (ID, FID) values (1028, 'somebody else''s')"_s);
    run({0});
    EXPECT_EQ(count(kRemembered), 0);
    EXPECT_EQ(count(u"todo"_s), 1);
}

TEST_F(BerDbTest, RowsOfARunThatWasKilledAreFollowedUpByTheNextOne)
{
    const int list = suite.library.addPlaylist({.tracks = {u"826816169999"_s}});
    suite.execute(u"insert into todo (ID, FID) values (1, '826816169999')"_s);
    run({3});
    EXPECT_EQ(suite.value(u"select anzahl from pl_name where nid=%1"_s.arg(list)).toLong(), 0);
    EXPECT_EQ(count(u"pl_all"_s), 0);
}

TEST_F(BerDbTest, FilesOfTheFirstTwoBoxesAreMovedAndThenTheirRowsAreRemoved)
{
    addTrack({.DName = u"a.mp3"_s, .DEL = -1}, u"Rock/"_s);
    addTrack({.DName = u"b.mp3"_s, .DTime = u"MP3ERROR"_s}, u"Rock/"_s);
    addTrack({.DName = u"c.mp3"_s, .DEL = 2}, u"Rock/"_s);
    run({0, 1, 2, 4});
    EXPECT_EQ(count(u"db_all"_s), 0);
    EXPECT_TRUE(QFile::exists(disk.file(u"MelovaneRecycler/Rock/a.mp3"_s)));
    EXPECT_TRUE(QFile::exists(disk.file(u"MelovaneRecycler/MP3ERROR/Rock/b.mp3"_s)));
    EXPECT_TRUE(QFile::exists(music(u"Rock/c.mp3"_s))) << "the file of the third box stays";
    EXPECT_EQ(form.shown.boxes[4].note, u"2 Dateien verschoben"_s);
    EXPECT_FALSE(form.shown.boxes[4].isEnabled);
}

TEST_F(BerDbTest, AFileThatCannotBeMovedStaysAndItsRowIsRemovedAllTheSame)
{
    addTrack({.DName = u"stubborn.mp3"_s, .DEL = -1});
    addTrack({.DName = u"b.mp3"_s, .DEL = -1});
    run({0, 4});
    EXPECT_EQ(count(u"db_all"_s), 0);
    EXPECT_TRUE(QFile::exists(music(u"stubborn.mp3"_s)));
    EXPECT_EQ(form.shown.boxes[4].note, u"1 Datei verschoben"_s);
}

TEST_F(BerDbTest, BoxFourIsOffWithoutTheFirstTwo)
{
    dialog.Show();
    EXPECT_FALSE(form.shown.boxes[4].isEnabled);
    dialog.checkBer(2, true);
    EXPECT_FALSE(form.shown.boxes[4].isEnabled);
    dialog.checkBer(1, true);
    EXPECT_TRUE(form.shown.boxes[4].isEnabled);
    dialog.checkBer(1, false);
    EXPECT_FALSE(form.shown.boxes[4].isEnabled);
}

TEST_F(BerDbTest, WhatEachBoxWouldDoIsCountedBesideTheWindow)
{
    const QString fid = addTrack({.DLen = 5'000'000, .DEL = -1});
    addTrack({.DLen = 3'000'001, .DTime = u"MP3ERROR"_s});
    suite.library.addPlaylist({.tracks = {fid, u"826816169999"_s}});
    suite.library.addPlaylist({.tracks = {u"826816169999"_s}, .Activ = false});
    worker.isSlow = true;
    dialog.Show();
    EXPECT_EQ(form.shown.boxes[0].note, u"wird gezählt ..."_s);
    worker.later();
    EXPECT_EQ(form.shown.boxes[0].note, u"1 Titel"_s);
    EXPECT_EQ(form.shown.boxes[2].note, u"0 Titel"_s);
    EXPECT_EQ(form.shown.boxes[3].note, u"2 Einträge, 1 Liste"_s);
    dialog.checkBer(0, true);
    EXPECT_EQ(form.shown.boxes[4].note, u"1 Datei, 5 MB"_s);
    dialog.checkBer(1, true);
    EXPECT_EQ(form.shown.boxes[4].note, u"2 Dateien, 9 MB"_s);
}

TEST_F(BerDbTest, ACountThatComesBehindTheEndOfTheDialogFindsNobody)
{
    worker.isSlow = true;
    {
        frmBerDB closed(parts(), form);
        closed.Show();
    }
    const QString before = form.shown.boxes[0].note;
    worker.later();
    EXPECT_EQ(form.shown.boxes[0].note, before);
}

TEST_F(BerDbTest, CancelClosesTheDialogWhenNothingRuns)
{
    dialog.Show();
    dialog.cmdAbbruch();
    EXPECT_TRUE(form.isClosed);
}

TEST_F(BerDbTest, OkWithoutABoxDoesNothing)
{
    addTrack({.DEL = -1});
    run({});
    run({4});
    EXPECT_EQ(count(u"db_all"_s), 1);
    EXPECT_EQ(loop.turns, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(BerDbTest, CancelledWhileFilesMoveTheRowsStayAndTheDialogIsOpen)
{
    const QString fid = addTrack({.DName = u"a.mp3"_s, .DEL = -1});
    addTrack({.DName = u"b.mp3"_s, .DTime = u"MP3ERROR"_s});
    const QString missing = suite.library.add({.DEL = 2});
    loop.whenTurned = [this] { dialog.cmdAbbruch(); };
    run({0, 1, 2, 4});
    EXPECT_FALSE(form.isClosed);
    EXPECT_EQ(count(u"db_all"_s), 2) << "the third box has no loop over files";
    EXPECT_EQ(count(u"db_all where fid='%1'"_s.arg(missing)), 0);
    EXPECT_TRUE(form.shown.boxes[0].isTicked);
    EXPECT_TRUE(form.shown.boxes[0].isEnabled);
    EXPECT_TRUE(form.shown.boxes[1].isTicked);
    EXPECT_TRUE(form.shown.boxes[4].isTicked);
    EXPECT_TRUE(form.shown.boxes[2].isDone);
    EXPECT_EQ(form.shown.step, u"Abgebrochen. Was erledigt ist, bleibt erledigt."_s);
    EXPECT_EQ(count(kRemembered), 0);
    loop.whenTurned = {};
    dialog.cmdOk();
    EXPECT_EQ(count(u"db_all where fid='%1'"_s.arg(fid)), 0) << "running again ends the work";
    EXPECT_TRUE(QFile::exists(disk.file(u"MelovaneRecycler/a.mp3"_s)));
}

TEST_F(BerDbTest, CancelledWhileOrphansAreSearchedWhatWasFoundGoes)
{
    QStringList orphans;
    for (int i = 0; i < 200; ++i) {
        orphans.append(QString::number(826816160000 + i));
    }
    suite.library.addPlaylist({.tracks = orphans});
    loop.whenTurned = [this] {
        if (loop.turns == 2) { // the first is that of the step's beginning
            dialog.cmdAbbruch();
        }
    };
    run({3});
    EXPECT_EQ(count(u"pl_all"_s), 200 - 51);
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 200 - 51);
    EXPECT_EQ(count(kRemembered), 0);
}

TEST_F(BerDbTest, ARunCannotBeBegunWithinItself)
{
    addTrack({.DEL = -1});
    loop.whenTurned = [this] {
        dialog.checkBer(2, true);
        dialog.cmdOk();
    };
    run({0});
    EXPECT_FALSE(form.shown.boxes[2].isTicked);
    EXPECT_EQ(form.shown.boxes[0].note, u"1 Titel entfernt"_s);
}

TEST_F(BerDbTest, ADiskThatDoesNotAnswerKeepsTheRowsWhenTheUserCancels)
{
    addTrack({.DEL = -1});
    wait.isDead = true;
    loop.whenTurned = [this] {
        if (loop.turns == 4) {
            dialog.cmdAbbruch();
        }
    };
    run({0, 4});
    EXPECT_EQ(count(u"db_all"_s), 1);
    EXPECT_EQ(form.shown.step, u"Abgebrochen. Was erledigt ist, bleibt erledigt."_s);
}

TEST_F(BerDbTest, ALibraryThatIsGivenAwayMeanwhileEndsTheRunAndWhatWasDoneStays)
{
    addTrack({.DEL = -1});
    addTrack({.DEL = 2});
    loop.whenTurned = [this] {
        if (loop.turns == 2) { // between the first and the third box
            suite.engine->GiveAway(suite.dbName());
        }
    };
    run({0, 2});
    suite.engine->TakeBack(suite.dbName());
    EXPECT_EQ(count(u"db_all"_s), 1);
    EXPECT_TRUE(form.shown.boxes[0].isDone);
    EXPECT_FALSE(form.shown.boxes[2].isDone);
    EXPECT_EQ(form.shown.step, u"failed"_s);
    EXPECT_FALSE(form.shown.isRunning);
    EXPECT_EQ(changes, 1);
}

TEST_F(BerDbTest, AStatementThatFailsUndoesItsStepAlone)
{
    const QString fid = addTrack({.DEL = -1});
    suite.library.addPlaylist({.tracks = {fid}, .Activ = false});
    suite.execute(u"drop table pl_stat"_s);
    run({0, 3});
    EXPECT_EQ(count(u"db_all"_s), 0);
    EXPECT_EQ(count(u"pl_all"_s), 1) << "an entry is not removed without the rest";
    EXPECT_EQ(count(u"pl_name"_s), 1);
    EXPECT_EQ(form.shown.step, u"failed"_s);
    EXPECT_EQ(count(kRemembered), 0);
}

TEST_F(BerDbTest, EachRunBeginsWithABackupAndNoneWhenTheUserDoesNotWantItWithout)
{
    addTrack({.DEL = -1});
    wantsRun = false;
    run({0});
    EXPECT_EQ(count(u"db_all"_s), 1);
    EXPECT_TRUE(form.shown.boxes[0].isTicked);
    EXPECT_TRUE(form.shown.boxes[0].isEnabled);
    EXPECT_FALSE(form.shown.isRunning);
    wantsRun = true;
    dialog.cmdOk();
    EXPECT_EQ(count(u"db_all"_s), 0);
    EXPECT_EQ(backups, 2);
}

TEST_F(BerDbTest, NoStepOfTheListsBringsEntriesOfRemovedTracksBack)
{
    const QString removed = addTrack({.DEL = -1});
    const QString stays = addTrack({});
    const int list = suite.library.addPlaylist({.tracks = {removed, stays}});
    ListHistory history(*suite.engine, suite.files, suite.clock, *settings, {});
    {
        const auto database = suite.open();
        ListEdit edit(history, *database, ListAction::Delete, Pnid(list));
        const QString entry = u"fid='%1'"_s.arg(removed);
        edit.before(entry);
        database->Execute(u"delete from pl_all where "_s + entry);
        edit.commit();
    }
    ASSERT_TRUE(history.nextUndo());
    run({0, 3});
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Nothing);
    EXPECT_EQ(suite.column(u"select fid from pl_all"_s), QStringList{stays});
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 1);
}

TEST_F(BerDbTest, StepsThatTouchNothingOfWhatWasRemovedCanStillBeTakenBack)
{
    const QString removed = addTrack({.DEL = -1});
    const QString stays = addTrack({});
    const int one = suite.library.addPlaylist({.tracks = {removed, stays}});
    const int two = suite.library.addPlaylist({.tracks = {stays, stays}});
    const int emptied = suite.library.addPlaylist({.tracks = {removed}, .Activ = false});
    ListHistory history(*suite.engine, suite.files, suite.clock, *settings, {});
    const auto edit = [&](int list, const QString& statement) {
        const auto database = suite.open();
        ListEdit step(history, *database, ListAction::Entry, Pnid(list));
        const QString entries = u"pnid=%1"_s.arg(list);
        step.before(entries);
        database->Execute(statement + u" where "_s + entries);
        step.after(entries);
        step.commit();
    };
    edit(two, u"update pl_all set Volume=7"_s);
    edit(emptied, u"update pl_all set Volume=8"_s);
    edit(one, u"update pl_all set Volume=9"_s);
    edit(two, u"update pl_all set Pitch=3"_s);
    run({0, 3});
    ASSERT_EQ(count(u"pl_all"_s), 3);
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(count(u"pl_all where Pitch=3"_s), 0);
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(count(u"pl_all where Volume=7"_s), 0);
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Nothing);
    EXPECT_EQ(count(u"pl_all where Volume=9"_s), 1) << "its step wrote a removed entry, too";
}

TEST_F(BerDbTest, TheViewsAndTreesHearOfARunThatHasRemovedSomethingAlone)
{
    run({0, 1, 2, 3});
    EXPECT_EQ(changes + treesRebuilt, 0);
    frmBerDB second(parts(), form);
    addTrack({.DEL = -1});
    second.Show();
    second.checkBer(0, true);
    second.cmdOk();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(treesRebuilt, 1);
}

} // namespace melovane::test
