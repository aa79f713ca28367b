#include "trees/favorit_lists.h"
#include "trees/plain_tree.h"
#include "trees/tree_key.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The playlist panel without a window, over a real file.
class PlaylistFavoritTest : public testing::Test
{
protected:
    PlaylistFavoritTest() { start(); }

    void start()
    {
        send(u"refresh.all"_s, u"start"_s);
        lists.messages.clear();
    }

    void send(const QString& name, const Value& value1 = {}, const Value& value2 = {})
    {
        BusSender(lists.bus, u"MLVDB"_s).SendMessage(name, value1, value2);
    }

    int rowOf(int list) const
    {
        const int row = tree.find(treekey::playlist(list));
        return row >= 0 ? row : tree.find(treekey::jingleList(list));
    }

    int groupRow(int group) const { return tree.find(treekey::group(group)); }

    QString picture(int list) const { return tree.row(rowOf(list)).picture; }

    void press(const QString& tool, int row)
    {
        tree.current = row;
        panel.toolPressed(tool);
    }

    void choose(int entry, int row)
    {
        lists.answers.expectPopup(entry);
        tree.current = row;
        panel.contextMenu(row);
    }

    test::FavoritLists lists;
    test::PlainTree tree;
    test::StillLoop loop;
    PlaylistFavorit panel{lists.parts(loop), tree};
};

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
    tree.current = rowOf(lists.dance);
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
              (QStringList{u"playlist.set.lock|PLG?Playlist??%1|all.lock"_s.arg(lists.main),
                           u"playlist.aktivieren|%1|-1"_s.arg(lists.main)}));
    press(u"all.lock"_s, rowOf(lists.main));
    EXPECT_EQ(lists.of(lists.main, u"lock"_s), u"0"_s);
    EXPECT_EQ(picture(lists.main), u"all.audio"_s);
}

// ---- new rows and names

TEST_F(PlaylistFavoritTest, ANewPlaylistStandsLastInTheGroupOfTheCurrentRowAndWaitsForItsName)
{
    press(u"all.newdoc"_s, rowOf(lists.main));
    const int row = rowOf(lists.reserve) + 1;
    EXPECT_EQ(tree.row(row).text, u"New Playlist 14.03.26 15.09"_s);
    EXPECT_EQ(tree.row(row).picture, u"tree.playlist"_s);
    EXPECT_EQ(tree.current, row);
    EXPECT_EQ(tree.editedRow, row);
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Reserve,New Playlist 14.03.26 15.09"_s);
    const int list = panel.GetPlaylistID(row).toInt();
    EXPECT_FALSE(lists.of(list, u"updatetime"_s).isEmpty());
    EXPECT_EQ(lists.of(list, u"activ"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritTest, ANewListBelowTheJinglesIsAJingleList)
{
    press(u"all.newdoc"_s, 0);
    EXPECT_EQ(tree.row(3).text, u"Neue Jingleliste 14.03.26"_s);
    EXPECT_EQ(tree.row(3).picture, u"Tree.Jingle.Playlist"_s);
    EXPECT_TRUE(treekey::isJingleRow(tree.row(3).key));
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter,Neue Jingleliste 14.03.26"_s);
}

TEST_F(PlaylistFavoritTest, ANewPlaylistWithoutAGroupIsNotMade)
{
    press(u"all.newdoc"_s, -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_name"_s).toLong(), 6);
    EXPECT_TRUE(lists.messages.first().startsWith(u"show.statustext|"_s));
}

TEST_F(PlaylistFavoritTest, ANewGroupComesLastAndWaitsForItsName)
{
    press(u"all.newdir"_s, -1);
    const int row = tree.rowCount() - 1;
    EXPECT_EQ(tree.row(row).text, u"New Group 14.03.26 15.09"_s);
    EXPECT_EQ(tree.editedRow, row);
    EXPECT_EQ(lists.column(u"select sid from pl_group order by grid"_s).last(), u"1000000"_s);
}

TEST_F(PlaylistFavoritTest, EachPairOfMarksInANameFormatIsADateAndALoneOneStays)
{
    ListNames& names = lists.lists.names();
    EXPECT_EQ(names.nameFromFormat(u"#DD# und #MM#!"_s), u"14 und 03!"_s);
    EXPECT_EQ(names.nameFromFormat(u"Nr # 5"_s), u"Nr # 5"_s);
    EXPECT_EQ(names.nameFromFormat(u"#YYYY##"_s), u"2026#"_s);
    EXPECT_EQ(names.nameFromFormat(u"a##b"_s), u"ab"_s);
    EXPECT_EQ(names.nameFromFormat(u"'#HH.NN'#\""_s), u"'15.09'\""_s);
    EXPECT_EQ(names.nameFromFormat({}), QString());
}

TEST_F(PlaylistFavoritTest, ARenamedPlaylistWaitsToBeSavedAndTheOtherPanelsLearnItsName)
{
    panel.rowEdited(rowOf(lists.dance), u" Don't stop "_s);
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), u"Don*t stop"_s);
    EXPECT_EQ(lists.of(lists.dance, u"sicherung"_s), u"-1"_s);
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Don*t stop"_s);
    EXPECT_EQ(lists.messages,
              QStringList{u"update.tree.row|PLG?Playlist??%1|Don*t stop "_s.arg(lists.dance)});
}

TEST_F(PlaylistFavoritTest, ARenamedGroupTellsItsName)
{
    panel.rowEdited(groupRow(lists.friday), u"Freitags"_s);
    EXPECT_EQ(lists.value(u"select name from pl_group where grid=%1"_s.arg(lists.friday)).toText(),
              u"Freitags"_s);
    EXPECT_EQ(lists.messages,
              QStringList{u"update.tree.row|PLGROUP?Gruppe??%1|Freitags"_s.arg(lists.friday)});
}

TEST_F(PlaylistFavoritTest, HostileNamesAreKeptAsFarAsTheColumnHolds)
{
    for (const QString& name :
         {u"a\"b"_s, u"[x]*?#"_s, u"x; delete from pl_name"_s, u"zwei\nZeilen"_s}) {
        panel.rowEdited(rowOf(lists.dance), name);
        EXPECT_EQ(lists.of(lists.dance, u"name"_s), name);
    }
    panel.rowEdited(rowOf(lists.dance), QString(10'000, u'ä'));
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), QString(255, u'ä'));
    panel.rowEdited(rowOf(lists.dance), u"   "_s);
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), QString(255, u'ä'));
}

TEST_F(PlaylistFavoritTest, TheCountIsNotPartOfTheNameThatIsChanged)
{
    panel.UpdateTreeRow(treekey::playlist(lists.dance), u"Tanz [12] "_s);
    panel.rename(rowOf(lists.dance));
    EXPECT_EQ(tree.editedText, u"Tanz"_s);
    EXPECT_EQ(panel.GetPlaylistname(rowOf(lists.dance)), u"Tanz"_s);
    EXPECT_EQ(withoutCount(u"[12]"_s), u"[12]"_s);
    EXPECT_EQ(withoutCount(u"Tanz [12"_s), u"Tanz [12"_s);
}

TEST_F(PlaylistFavoritTest, TheJingleGroupCannotBeRenamed)
{
    panel.rename(0);
    EXPECT_FALSE(tree.isEditing());
    panel.rename(rowOf(lists.weather));
    EXPECT_EQ(tree.editedRow, rowOf(lists.weather));
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

// ---- order

TEST_F(PlaylistFavoritTest, SortingByNameAscends)
{
    choose(1004, rowOf(lists.reserve));
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Reserve,Warm-up"_s);
    EXPECT_EQ(tree.row(groupRow(lists.friday) + 2).text, u"Reserve"_s);
    EXPECT_EQ(tree.current, rowOf(lists.reserve));
}

TEST_F(PlaylistFavoritTest, SortingByDateOfTheJingleListsWorks)
{
    lists.set(lists.station, u"createtime=#2026-03-01#"_s);
    lists.set(lists.weather, u"createtime=#2025-03-01#"_s);
    choose(1005, rowOf(lists.station));
    EXPECT_EQ(lists.order(-1), u"Wetter,Kennung"_s);
    EXPECT_EQ(lists.of(lists.weather, u"sid"_s), u"1"_s);
    EXPECT_EQ(tree.row(1).text, u"Wetter"_s);
}

TEST_F(PlaylistFavoritTest, ADroppedListMovesToItsNewPlaceAndAllRowsAreCounted)
{
    panel.rowDropped(rowOf(lists.reserve), rowOf(lists.main), DropPlace::Above);
    EXPECT_EQ(lists.order(lists.friday), u"Reserve,Hauptset,Warm-up"_s);
    EXPECT_EQ(lists.of(lists.reserve, u"sid"_s), u"5"_s);
    EXPECT_EQ(lists.of(lists.dance, u"sid"_s), u"9"_s);
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist"_s));
    EXPECT_EQ(tree.current, rowOf(lists.reserve));
    panel.rowDropped(rowOf(lists.reserve), rowOf(lists.warmUp), DropPlace::Below);
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Reserve"_s);
}

TEST_F(PlaylistFavoritTest, AListDroppedOnAGroupBecomesItsLast)
{
    panel.rowDropped(rowOf(lists.main), groupRow(lists.saturday), DropPlace::Into);
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz,Hauptset"_s);
    EXPECT_EQ(lists.order(lists.friday), u"Warm-up,Reserve"_s);
    EXPECT_EQ(picture(lists.main), u"all.audio"_s);
}

TEST_F(PlaylistFavoritTest, APlayingPlaylistDroppedAmongJinglesStopsBeingThePlayingOne)
{
    panel.rowDropped(rowOf(lists.main), 0, DropPlace::Into);
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter,Hauptset"_s);
    EXPECT_EQ(lists.playing(), QString::number(lists.station));
    EXPECT_EQ(tree.row(tree.current).key, treekey::jingleList(lists.main));
}

TEST_F(PlaylistFavoritTest, AGroupIsNotMovedByADrop)
{
    const QStringList before = tree.texts();
    panel.rowDropped(groupRow(lists.friday), rowOf(lists.dance), DropPlace::Below);
    panel.rowDropped(rowOf(lists.dance), 99, DropPlace::Below);
    panel.rowDropped(rowOf(lists.dance), rowOf(lists.dance), DropPlace::Below);
    EXPECT_EQ(tree.texts(), before);
    EXPECT_TRUE(lists.messages.isEmpty());
}

// ---- marks

TEST_F(PlaylistFavoritTest, AListCanBeTakenOutOfThePanelAndPutBack)
{
    choose(1009, rowOf(lists.dance));
    EXPECT_EQ(rowOf(lists.dance), -1);
    EXPECT_EQ(lists.of(lists.dance, u"activ"_s), u"0"_s);
    choose(1010, -1);
    EXPECT_TRUE(tree.row(rowOf(lists.dance)).dimmed);
    choose(1009, rowOf(lists.dance));
    choose(1010, -1);
    EXPECT_FALSE(tree.row(rowOf(lists.dance)).dimmed);
    EXPECT_EQ(lists.of(lists.dance, u"activ"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritTest, TheMenuHoldsItsEntriesWithLinesUnderTheirNumbers)
{
    choose(0, rowOf(lists.dance));
    const auto& shown = lists.answers.lastPopup;
    ASSERT_EQ(shown.size(), 10);
    for (size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i].id, 1001 + int(i));
        EXPECT_EQ(shown[i].caption.isEmpty(), i == 2 || i == 5 || i == 7);
    }
    EXPECT_EQ(shown[0].caption, u"Aktivieren"_s);
    EXPECT_EQ(shown[6].caption, u"Eigenschaften Playliste"_s);
    choose(0, 0);
    EXPECT_FALSE(lists.answers.lastPopup[0].enabled);
    EXPECT_FALSE(lists.answers.lastPopup[1].enabled);
}

// ---- deleting

TEST_F(PlaylistFavoritTest, ADeletionOfALockedListThatIsPlayingShowsTheLockWarning)
{
    press(u"all.lock"_s, rowOf(lists.main));
    lists.answers.expectMessage(lists.texts.text(u"warnDelPlaylistLock"));
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_TRUE(lists.answers.messages.first().startsWith(u"Achtung !"_s));
    EXPECT_EQ(lists.of(lists.main, u"name"_s), u"Hauptset"_s);
}

TEST_F(PlaylistFavoritTest, APlaylistIsDeletedWithItsEntriesAfterTheQuestion)
{
    lists.execute(u"insert into pl_all (pnid, fid) values (%1, '800000000001')"_s.arg(lists.main));
    lists.answers.expectMessage(u"''Hauptset''"_s, WarningAnswer::No);
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_GE(rowOf(lists.main), 0);
    lists.answers.expectMessage(u"''Hauptset''"_s, WarningAnswer::Yes);
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_EQ(rowOf(lists.main), -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_name where nid=%1"_s.arg(lists.main)).toLong(),
              0);
    EXPECT_EQ(lists.value(u"select count(*) from pl_all where pnid=%1"_s.arg(lists.main)).toLong(),
              0);
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist.tree"_s));
}

TEST_F(PlaylistFavoritTest, AGroupWithAnyPlaylistCannotBeDeletedEvenWhenNoneIsMarked)
{
    lists.set(lists.dance, u"activ=false"_s);
    send(u"refresh.all"_s);
    ASSERT_EQ(tree.texts().last(), u"Samstag"_s);
    lists.answers.expectMessage(u"''Samstag''"_s);
    press(u"all.delete"_s, groupRow(lists.saturday));
    EXPECT_EQ(tree.texts().last(), u"Samstag"_s);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group"_s).toLong(), 2);
}

TEST_F(PlaylistFavoritTest, AnEmptyGroupIsDeletedWithoutAQuestion)
{
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(lists.dance));
    press(u"all.delete"_s, groupRow(lists.saturday));
    EXPECT_EQ(groupRow(lists.saturday), -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group"_s).toLong(), 1);
}

TEST_F(PlaylistFavoritTest, TheJingleGroupHasTheNumberMinusOneAndDeletingItDoesNothing)
{
    EXPECT_EQ(panel.GetGroupID(0), u"-1"_s);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group where grid=-1"_s).toLong(), 0);
    press(u"all.delete"_s, 0);
    EXPECT_EQ(tree.texts().first(), u"Jingle"_s);
    EXPECT_TRUE(lists.answers.messages.isEmpty());
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter"_s);
}

TEST_F(PlaylistFavoritTest, AListThatAnotherProgramDeletedMeanwhileDoesNoHarm)
{
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(lists.dance));
    const int row = rowOf(lists.dance);
    press(u"all.lock"_s, row);
    panel.rowEdited(row, u"Fort"_s);
    panel.rowActivated(row);
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.main).arg(lists.station));
    send(u"refresh.playlist.tree"_s);
    EXPECT_EQ(rowOf(lists.dance), -1);
}

TEST_F(PlaylistFavoritTest, ADatabaseThatCannotBeReadLeavesTheTreeAsItWas)
{
    const QStringList before = tree.texts();
    lists.settings->SetDbName(lists.file(u"fort.mdb"_s));
    send(u"refresh.all"_s);
    press(u"all.lock"_s, rowOf(lists.dance));
    press(u"all.newdir"_s, -1);
    EXPECT_EQ(tree.texts(), before);
    EXPECT_FALSE(lists.log.isEmpty());
}

} // namespace
} // namespace melovane
