#include "config/update_colors.h"
#include "trees/favorit_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using PlaylistFavoritTest = test::PlaylistFavoritTest;

TEST_F(PlaylistFavoritTest, ShowsJinglesOnTopAndTheMarkedListsOfEachGroup)
{
    lists.set(lists.reserve, u"activ=false"_s);
    send(u"refresh.playlist.tree"_s);
    EXPECT_EQ(tree.texts(),
              (QStringList{u"Jingle"_s, u"  Kennung"_s, u"  Wetter"_s, u"Freitag"_s,
                           u"  Hauptset"_s, u"  Warm-up"_s, u"Samstag"_s, u"  Tanz"_s}));
    EXPECT_EQ(tree.row(0).key, u"Dir.Jingle?JingleGruppe?\?-1"_s);
    EXPECT_EQ(tree.row(0).picture, u"tree.dir.jingle"_s);
    EXPECT_EQ(tree.row(3).picture, u"tree.dir"_s);
}

TEST_F(PlaylistFavoritTest, PicturesTellTheStateAndALockWins)
{
    lists.set(lists.main, u"lock=true"_s);
    lists.set(lists.weather, u"lock=true"_s);
    send(u"favorit.refresh"_s);
    EXPECT_EQ(picture(lists.main), u"all.lock"_s);
    EXPECT_TRUE(tree.row(rowOf(lists.main)).bold);
    EXPECT_EQ(picture(lists.warmUp), u"tree.playlist"_s);
    EXPECT_EQ(picture(lists.station), u"Tree.Jingle.Playlist.Activ"_s);
    EXPECT_EQ(picture(lists.weather), u"all.lock"_s);
    lists.set(lists.main, u"lock=false"_s);
    send(u"favorit.refresh"_s);
    EXPECT_EQ(picture(lists.main), u"all.audio"_s);
}

TEST_F(PlaylistFavoritTest, TheRowsStayAsTheyAreWhileAnotherProgramHasTheLibrary)
{
    const QStringList rows = tree.texts();
    send(u"db.disconnect"_s);
    lists.set(lists.main, u"name='Anders'"_s);
    for (const QString& message :
         {u"refresh.playlist.tree"_s, u"favorit.refresh"_s, u"db.change"_s, u"refresh.all"_s}) {
        send(message);
    }
    send(u"playlist.change"_s, lists.main);
    EXPECT_EQ(tree.texts(), rows);
    EXPECT_EQ(tree.note.title, u"Ein anderes Programm benutzt die Bibliothek"_s);
    send(u"db.reconnect"_s);
    EXPECT_EQ(tree.note, EmptyNote());
    EXPECT_TRUE(tree.texts().contains(u"  Anders"_s));
}

TEST_F(PlaylistFavoritTest, InAnotherLibraryItsActiveListIsOpenedAndWhatWasTypedGoesNowhere)
{
    send(u"start"_s);
    const QString other = lists.file(u"andere.mdb"_s);
    lists.engine->BackupDatabase(lists.dbName(), other);
    const auto database = lists.engine->OpenDatabase(other);
    database->Execute(u"update pl_name set name='Dort '&name"_s);
    database->Execute(u"update pl_name set isplay=(nid=%1)"_s.arg(lists.dance));
    tree.setFolded({u"GRUP??%1"_s.arg(lists.friday)});
    panel.rename(rowOf(lists.main));
    ASSERT_TRUE(tree.isEditing());
    lists.messages.clear();
    send(u"db.disconnect"_s);
    lists.settings->SetDbName(other);
    send(u"db.reconnect"_s);
    send(u"db.change"_s);
    EXPECT_FALSE(tree.isEditing());
    EXPECT_TRUE(tree.texts().contains(u"  Dort Tanz"_s)) << qPrintable(tree.texts().join(u'/'));
    EXPECT_EQ(tree.current, rowOf(lists.dance));
    EXPECT_EQ(tree.folded(), QStringList());
    EXPECT_EQ(lists.messages.filter(u"playlist.aktivieren"_s),
              QStringList{u"playlist.aktivieren|%1|0"_s.arg(lists.dance)});
    lists.messages.clear();
    send(u"db.change"_s);
    EXPECT_EQ(lists.messages, QStringList{u"db.change"_s}) << "new content of the same library";
}

TEST_F(PlaylistFavoritTest, GroupsOfTheSameNameStayTwo)
{
    lists.execute(u"update pl_group set name='Freitag'"_s);
    send(u"refresh.all"_s);
    EXPECT_EQ(tree.texts().count(u"Freitag"_s), 2);
    EXPECT_EQ(panel.FindGRID(rowOf(lists.dance)), QString::number(lists.saturday));
}

TEST_F(PlaylistFavoritTest, TheStartOpensThePlayingListAlsoWhenItIsLocked)
{
    lists.set(lists.main, u"isplay=false"_s);
    lists.set(lists.dance, u"isplay=true, lock=true"_s);
    send(u"start"_s);
    EXPECT_EQ(tree.current, rowOf(lists.dance));
    EXPECT_TRUE(lists.messages.contains(u"playlist.aktivieren|%1|-1"_s.arg(lists.dance)));
}

TEST_F(PlaylistFavoritTest, TheStartOpensTheFirstPlaylistWhenNoneIsPlaying)
{
    lists.set(lists.main, u"isplay=false"_s);
    send(u"start"_s);
    EXPECT_EQ(tree.current, rowOf(lists.main));
}

TEST_F(PlaylistFavoritTest, AnEmptyDatabaseShowsTheJingleGroupAlone)
{
    lists.execute(u"delete from pl_name"_s);
    lists.execute(u"delete from pl_group"_s);
    send(u"start"_s);
    EXPECT_EQ(tree.texts(), QStringList{u"Jingle"_s});
    for (const QString& tool : {u"all.activate"_s, u"all.lock"_s, u"all.delete"_s, u"all.book"_s}) {
        press(tool, -1);
    }
    EXPECT_EQ(tree.texts(), QStringList{u"Jingle"_s});
    EXPECT_TRUE(lists.log.isEmpty());
}

TEST_F(PlaylistFavoritTest, ARefillKeepsCurrentRowFoldedGroupsAndThePlaceOnTheScreen)
{
    send(u"playlist.aktivieren"_s, lists.dance);
    tree.first = rowOf(lists.weather);
    tree.foldedKeys = {treekey::group(lists.friday)};
    lists.add(u"Davor"_s, lists.friday, 0);
    for (const QString& name : {u"favorit.refresh"_s, u"refresh.all"_s, u"refresh.playlist"_s,
                                u"Refresh.Playlist.Tree"_s}) {
        const int fills = tree.fills;
        send(name);
        EXPECT_EQ(tree.fills, fills + 1) << name.toStdString();
    }
    EXPECT_EQ(tree.current, rowOf(lists.dance));
    EXPECT_EQ(tree.first, rowOf(lists.weather));
    EXPECT_EQ(tree.foldedKeys, QStringList{treekey::group(lists.friday)});
    EXPECT_TRUE(tree.texts().contains(u"  Davor"_s));
}

TEST_F(PlaylistFavoritTest, ARefillWaitsUntilANameIsTyped)
{
    panel.rename(rowOf(lists.dance));
    lists.add(u"Neu"_s, lists.friday, 9);
    const int fills = tree.fills;
    send(u"refresh.playlist.tree"_s);
    EXPECT_EQ(tree.fills, fills);
    tree.editing = false;
    panel.editEnded();
    EXPECT_TRUE(tree.texts().contains(u"  Neu"_s));
}

TEST_F(PlaylistFavoritTest, ImportedListsGoIntoTheGroupOfTheCurrentRow)
{
    tree.current = rowOf(lists.dance);
    EXPECT_EQ(numberOf(panel.importGroup()), lists.saturday);
    tree.current = rowOf(lists.main);
    EXPECT_EQ(numberOf(panel.importGroup()), lists.friday);
}

TEST_F(PlaylistFavoritTest, WithoutACurrentRowImportedListsGetAGroupOfTheirOwn)
{
    tree.current = -1;
    const GroupId group = panel.importGroup();
    EXPECT_NE(numberOf(group), 0);
    EXPECT_NE(numberOf(group), lists.friday);
    EXPECT_NE(numberOf(group), lists.saturday);
    send(u"favorit.refresh"_s);
    EXPECT_NE(numberOf(panel.importGroup()), numberOf(group)) << "each import has its own";
}

TEST_F(PlaylistFavoritTest, WithTheJinglesCurrentImportedListsAreOrdinaryOnes)
{
    for (const int row : {tree.find(treekey::jingleGroup()), rowOf(lists.station)}) {
        tree.current = row;
        EXPECT_GT(numberOf(panel.importGroup()), 0);
    }
}

// ---- the marked row

TEST_F(PlaylistFavoritTest, TheMarkedRowIsThatOfTheOpenListWhoeverOpensIt)
{
    ASSERT_EQ(tree.current, rowOf(lists.main));
    send(u"playlist.aktivieren"_s, lists.dance);
    EXPECT_EQ(tree.current, rowOf(lists.dance));
    send(u"jinglelist.aktivieren"_s, lists.weather);
    EXPECT_EQ(tree.current, rowOf(lists.weather));
    tree.current = groupRow(lists.friday);
    send(u"playlist.aktivieren"_s, lists.warmUp);
    EXPECT_EQ(tree.current, rowOf(lists.warmUp));
    // One that has no row, since it is not marked for the panel.
    lists.set(lists.reserve, u"activ=false"_s);
    send(u"favorit.refresh"_s);
    send(u"playlist.aktivieren"_s, lists.reserve);
    EXPECT_EQ(tree.current, -1);
}

TEST_F(PlaylistFavoritTest, ARefillMarksTheListThatIsOpenByNowAndAChosenHeadingStays)
{
    tree.current = rowOf(lists.dance);
    send(u"refresh.playlist"_s);
    EXPECT_EQ(tree.current, rowOf(lists.main));
    tree.current = groupRow(lists.saturday);
    send(u"refresh.playlist"_s);
    EXPECT_EQ(tree.current, groupRow(lists.saturday));
    lists.open = {};
    tree.current = rowOf(lists.main);
    send(u"refresh.playlist"_s);
    EXPECT_EQ(tree.current, -1) << "the list was deleted";
}

TEST_F(PlaylistFavoritTest, ABrokenOffMenuAndAMouseThatLeavesMarkTheOpenListAgain)
{
    choose(0, rowOf(lists.dance));
    EXPECT_EQ(tree.current, rowOf(lists.main));
    tree.current = rowOf(lists.warmUp);
    panel.handLeft();
    EXPECT_EQ(tree.current, rowOf(lists.main));
    EXPECT_TRUE(lists.messages.isEmpty()) << "and nothing else is opened";
}

TEST_F(PlaylistFavoritTest, WhatIsDoneToARowThatTheArrowKeysHaveReachedIsDoneToTheOpenList)
{
    const auto isOpenBefore = [&](const QString& message) {
        const qsizetype place = lists.messages.indexOf(message);
        const qsizetype open =
            lists.messages.indexOf(u"playlist.aktivieren|%1|0"_s.arg(numberOf(lists.open)));
        lists.messages.clear();
        return open >= 0 && open < place;
    };
    press(u"all.lock"_s, rowOf(lists.dance));
    EXPECT_TRUE(isOpenBefore(u"playlist.set.lock|PLG?Playlist??%1|all.lock|-1"_s.arg(lists.dance)));
    EXPECT_EQ(numberOf(lists.open), lists.dance);
    tree.current = rowOf(lists.warmUp);
    send(u"playlist.save.file"_s);
    EXPECT_TRUE(isOpenBefore(u"playlist.save.file.show|%1"_s.arg(lists.warmUp)));
    tree.current = rowOf(lists.reserve);
    lists.answers.expectMessage(u"Reserve"_s, WarningAnswer::No);
    panel.deleteRow(tree.current);
    EXPECT_EQ(numberOf(lists.open), lists.reserve);
    choose(1011, rowOf(lists.warmUp));
    EXPECT_EQ(lists.saved, QList<int>{lists.warmUp});
    EXPECT_EQ(numberOf(lists.open), lists.warmUp);
}

TEST_F(PlaylistFavoritTest, NothingIsDoneToAListThatCannotBeOpened)
{
    lists.opens = false;
    press(u"all.lock"_s, rowOf(lists.dance));
    EXPECT_EQ(lists.of(lists.dance, u"lock"_s), u"0"_s);
    EXPECT_EQ(tree.current, rowOf(lists.main));
    panel.deleteRow(rowOf(lists.dance)); // asks nothing
    choose(1011, rowOf(lists.dance));
    EXPECT_TRUE(lists.saved.isEmpty());
    EXPECT_EQ(lists.of(lists.main, u"lock"_s), u"0"_s);
}

TEST_F(PlaylistFavoritTest, TheFoldedGroupsComeBackAfterARestart)
{
    tree.foldedKeys = {treekey::group(lists.friday), treekey::jingleGroup()};
    panel.end();
    test::PlainTree next;
    PlaylistFavorit again(lists.parts(loop), next);
    send(u"refresh.all"_s, u"start"_s);
    EXPECT_EQ(next.foldedKeys, tree.foldedKeys);
    EXPECT_EQ(next.foldedKeys.size(), 2);
}

// ---- opening and playing

TEST_F(PlaylistFavoritTest, AClickOpensAListWithItsLockAndAHeadingOpensNothing)
{
    lists.set(lists.dance, u"lock=true"_s);
    send(u"refresh.all"_s);
    lists.messages.clear();
    panel.rowClicked(rowOf(lists.dance));
    panel.rowClicked(rowOf(lists.weather));
    panel.rowClicked(groupRow(lists.friday));
    panel.rowClicked(0);
    panel.rowClicked(-1);
    EXPECT_EQ(lists.messages, (QStringList{u"playlist.aktivieren|%1|-1"_s.arg(lists.dance),
                                           u"jinglelist.aktivieren|%1|0"_s.arg(lists.weather)}));
}

TEST_F(PlaylistFavoritTest, ArrowKeysOpenOnlyTheListOnWhichTheUserRests)
{
    panel.rowEntered(rowOf(lists.warmUp));
    tree.current = rowOf(lists.reserve);
    panel.rowEntered(tree.current);
    EXPECT_TRUE(lists.messages.isEmpty());
    loop.run();
    loop.run();
    EXPECT_EQ(lists.messages, QStringList{u"playlist.aktivieren|%1|0"_s.arg(lists.reserve)});
}

TEST_F(PlaylistFavoritTest, ActivatingAPlaylistClearsThePlaylistBeforeItButNotTheJingleList)
{
    press(u"all.activate"_s, rowOf(lists.dance));
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.dance).arg(lists.station));
    EXPECT_EQ(picture(lists.main), u"tree.playlist"_s);
    EXPECT_EQ(picture(lists.dance), u"all.audio"_s);
    EXPECT_EQ(picture(lists.station), u"Tree.Jingle.Playlist.Activ"_s);
    EXPECT_EQ(lists.messages, (QStringList{u"playlist.aktivieren|%1|0"_s.arg(lists.dance),
                                           u"playlist.play|%1"_s.arg(lists.dance)}));
    lists.messages.clear();
    panel.rowActivated(rowOf(lists.weather));
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.dance).arg(lists.weather));
    EXPECT_EQ(picture(lists.station), u"Tree.Jingle.Playlist"_s);
    EXPECT_EQ(lists.messages.last(), u"playlist.Jingle.play|%1"_s.arg(lists.weather));
}

TEST_F(PlaylistFavoritTest, ALockedListKeepsItsLockWhenPlayingStartsAndEnds)
{
    press(u"all.lock"_s, rowOf(lists.main));
    press(u"all.lock"_s, rowOf(lists.dance));
    panel.rowActivated(rowOf(lists.dance));
    EXPECT_EQ(picture(lists.main), u"all.lock"_s);
    EXPECT_EQ(picture(lists.dance), u"all.lock"_s);
    EXPECT_TRUE(tree.row(rowOf(lists.dance)).bold);
    EXPECT_FALSE(tree.row(rowOf(lists.main)).bold);
}

TEST_F(PlaylistFavoritTest, AGroupCannotBeActivated)
{
    press(u"all.activate"_s, groupRow(lists.friday));
    press(u"all.activate"_s, 0);
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.main).arg(lists.station));
    EXPECT_TRUE(lists.messages.isEmpty());
}

TEST_F(PlaylistFavoritTest, LockingTellsTheOtherPanelsAndUnlockingShowsWhatIsPlaying)
{
    press(u"all.lock"_s, rowOf(lists.main));
    EXPECT_EQ(lists.of(lists.main, u"lock"_s), u"-1"_s);
    EXPECT_EQ(lists.messages,
              (QStringList{u"playlist.set.lock|PLG?Playlist??%1|all.lock|-1"_s.arg(lists.main),
                           u"playlist.aktivieren|%1|-1"_s.arg(lists.main)}));
    press(u"all.lock"_s, rowOf(lists.main));
    EXPECT_EQ(lists.of(lists.main, u"lock"_s), u"0"_s);
    EXPECT_EQ(picture(lists.main), u"all.audio"_s);
}

// ---- messages

TEST_F(PlaylistFavoritTest, AChangedListIsReadAnewAndTheOtherPanelsLearnItsText)
{
    lists.set(lists.dance, u"name='Tanzen', lock=true"_s);
    send(u"playlist.insert.data.end"_s, lists.dance);
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Tanzen"_s);
    EXPECT_EQ(picture(lists.dance), u"all.lock"_s);
    EXPECT_EQ(lists.messages.size(), 1);
    send(u"playlist.change"_s, lists.dance);
    EXPECT_EQ(lists.messages.last(), u"update.tree.row|PLG?Playlist??%1|Tanzen"_s.arg(lists.dance));
    send(u"playlist.change"_s, 4711);
    EXPECT_EQ(lists.messages.last(), u"playlist.change|4711"_s);
}

TEST_F(PlaylistFavoritTest, NamesThatOthersChangedAreReadAnew)
{
    lists.set(lists.dance, u"name='Anders', sicherung=false"_s);
    lists.execute(u"update pl_group set name='Sonntag' where grid=%1"_s.arg(lists.saturday));
    send(u"update.playlist.name"_s, treekey::playlist(lists.dance));
    send(u"update.group.name"_s, treekey::group(lists.saturday));
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Anders"_s);
    EXPECT_EQ(tree.row(groupRow(lists.saturday)).text, u"Sonntag"_s);
    EXPECT_EQ(lists.of(lists.dance, u"sicherung"_s), u"-1"_s);
    send(u"update.tree.row"_s, treekey::playlist(lists.dance), u"Wieder anders "_s);
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Wieder anders"_s);
}

TEST_F(PlaylistFavoritTest, SavingAndPropertiesNameTheSelectedList)
{
    tree.current = rowOf(lists.dance);
    send(u"playlist.save.file"_s);
    EXPECT_EQ(lists.messages.last(), u"playlist.save.file.show|%1"_s.arg(lists.dance));
    choose(1007, rowOf(lists.dance));
    press(u"all.book"_s, groupRow(lists.friday));
    EXPECT_EQ(lists.details, QList<int>{lists.dance});
}

TEST_F(PlaylistFavoritTest, NoRefreshTurnsTheMessageLoopInWhichTheNextOneWaits)
{
    const int before = loop.turns;
    send(u"favorit.refresh"_s);
    send(u"refresh.playlist.tree"_s, 7);
    send(u"refresh.playlist"_s, 7);
    EXPECT_EQ(loop.turns, before);
}

TEST_F(PlaylistFavoritTest, TheTreeHasTheFontOfTheGrids)
{
    UpdateColors colours(*lists.settings);
    colours.setFont({u"DejaVu Sans"_s, 17, true});
    colours.SaveIni();
    send(u"update.color"_s);
    EXPECT_EQ(tree.font.size, 17);
    EXPECT_TRUE(tree.font.bold);
}

} // namespace
} // namespace melovane
