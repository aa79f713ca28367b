#include "trees/library_tree_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::LibraryTreeTest;

TEST_F(LibraryTreeTest, AllGroupsAndListsAreShownWithTheirCountsAndTheListThatPlaysIsBold)
{
    lists.set(lists.reserve, u"activ=false, lock=true, anzahl=7"_s);
    const auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    EXPECT_TRUE(form.hasGroupButtons);
    EXPECT_EQ(page.texts(),
              (QStringList{u"  Freitag"_s, u"    Hauptset [0]"_s, u"    Warm-up [0]"_s,
                           u"    Reserve [7]"_s, u"  Samstag"_s, u"    Tanz [0]"_s}));
    EXPECT_TRUE(page.row(1).bold);
    EXPECT_EQ(page.row(1).picture, u"all.audio"_s);
    EXPECT_EQ(page.row(2).picture, u"tree.playlist"_s);
    EXPECT_EQ(page.row(3).picture, u"all.lock"_s);
    EXPECT_EQ(page.row(3).tick, RowTick::Off);
    EXPECT_EQ(page.row(0).tick, RowTick::On);
    EXPECT_TRUE(page.isOpen(0)) << "a list plays: all groups are open";
    show(TreeKind::Dir, u"tree.dir"_s);
    EXPECT_FALSE(form.hasGroupButtons);
}

TEST_F(LibraryTreeTest, WithoutAListThatPlaysTheGroupsAreFolded)
{
    lists.execute(u"update pl_name set isplay=false"_s);
    EXPECT_FALSE(show(TreeKind::Playlist, u"tree.playlist"_s).isOpen(0));
}

TEST_F(LibraryTreeTest, ATickDecidesWhatThePanelOfListsShows)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    const QString key = treekey::playlist(lists.warmUp);
    tick(page, key, false);
    EXPECT_EQ(lists.of(lists.warmUp, u"activ"_s), u"0"_s);
    EXPECT_EQ(lists.messages, QStringList{u"favorit.refresh"_s});
    tick(page, key, true);
    EXPECT_EQ(lists.of(lists.warmUp, u"activ"_s), u"-1"_s);
    const QString made = u"PLA?Playlist??%1"_s.arg(lists.warmUp);
    EXPECT_GE(page.find(made), 0);
    tick(page, made, false);
    EXPECT_EQ(lists.of(lists.warmUp, u"activ"_s), u"0"_s);
    tick(page, made, true);
    EXPECT_EQ(lists.of(lists.warmUp, u"activ"_s), u"0"_s) << "ignored until the next fill";
    EXPECT_EQ(page.row(page.find(made)).tick, RowTick::Off);
    tick(page, treekey::group(lists.friday), false);
    EXPECT_EQ(lists.column(u"select activ from pl_group where grid=%1"_s.arg(lists.friday)),
              QStringList{u"0"_s});
}

TEST_F(LibraryTreeTest, AListIsRenamedWithoutItsCount)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    tree.rename(1);
    EXPECT_EQ(page.editedText, u"Hauptset"_s);
    tree.rowEdited(1, u"Große Nacht"_s);
    EXPECT_EQ(lists.of(lists.main, u"name"_s), u"Große Nacht"_s);
    EXPECT_EQ(page.row(1).text, u"Große Nacht [0]"_s);
    EXPECT_EQ(lists.messages.last(), u"update.tree.row|%1|Große Nacht "_s.arg(page.row(1).key));
    tree.rename(0);
    tree.rowEdited(0, u"Wochenende"_s);
    EXPECT_EQ(page.row(0).text, u"Wochenende"_s);
    EXPECT_EQ(lists.messages.last(), u"update.tree.row|%1|Wochenende"_s.arg(page.row(0).key));
}

TEST_F(LibraryTreeTest, ANameThatThePanelOfListsHasChangedStandsHereWithItsCount)
{
    const auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    lists.set(lists.main, u"name='Neu', anzahl=3"_s);
    send(u"update.tree.row"_s, treekey::playlist(lists.main), u"Neu "_s);
    EXPECT_EQ(page.row(1).text, u"Neu [3]"_s);
    send(u"playlist.set.lock"_s, treekey::playlist(lists.warmUp), u"all.lock"_s);
    EXPECT_EQ(page.row(2).picture, u"all.lock"_s);
    lists.execute(u"update pl_name set isplay=(nid=%1)"_s.arg(lists.warmUp));
    send(u"playlist.play"_s, lists.warmUp);
    EXPECT_FALSE(page.row(1).bold);
    EXPECT_TRUE(page.row(2).bold);
}

TEST_F(LibraryTreeTest, ANewGroupStandsBehindAllAndIsNamedAtOnce)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    tree.toolPressed(u"NEWGENRE"_s);
    EXPECT_EQ(page.rowCount(), 7);
    EXPECT_TRUE(page.row(6).key.startsWith(u"PLGROUP?Gruppe??"_s));
    EXPECT_TRUE(page.editing);
    EXPECT_EQ(page.editedRow, 6);
}

TEST_F(LibraryTreeTest, AGroupWithListsIsNotDeletedAndALockedListNeither)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    page.current = 0;
    lists.answers.expectMessage(u"Gruppe"_s);
    tree.toolPressed(u"DELETE"_s);
    lists.set(lists.warmUp, u"lock=true"_s);
    send(u"refresh.playlist.tree"_s);
    page.current = 2;
    lists.answers.expectMessage(lists.texts.text(u"warnDelPlaylistLock"_s));
    tree.deletePressed(2);
    EXPECT_EQ(page.rowCount(), 6);
    lists.answers.expectMessage(u"Tanz"_s, WarningAnswer::Yes);
    page.current = 5;
    tree.toolPressed(u"delete"_s);
    page.current = 4;
    tree.toolPressed(u"delete"_s);
    EXPECT_EQ(page.rowCount(), 4) << "an empty group goes";
}

TEST_F(LibraryTreeTest, InALibraryThatCannotBeWrittenNoListIsChangedAndEachTrySaysWhy)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    mayWrite = false;
    page.current = 1;
    tree.rename(1);
    tree.deletePressed(1);
    tree.toolPressed(u"NEWGENRE"_s);
    tree.toolPressed(u"DELETE"_s);
    tree.rowDropped(1, 4, DropPlace::Into);
    EXPECT_FALSE(page.editing);
    EXPECT_EQ(page.rowCount(), 6);
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Reserve"_s);
    EXPECT_EQ(lists.messages.count(u"show.statustext|Die Bibliothek ist schreibgeschützt"_s), 5);
    EXPECT_EQ(lists.messages.size(), 5);
}

TEST_F(LibraryTreeTest, AListThatIsDroppedMovesAndGroupsGetTheirPlaces)
{
    auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    tree.rowDropped(1, 4, DropPlace::Into);
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz,Hauptset"_s);
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist|%1"_s.arg(lists.main)))
        << qPrintable(lists.messages.join(u'/'));
    EXPECT_EQ(page.row(1).text, u"Warm-up [0]"_s) << "the rows are read again";
    EXPECT_EQ(lists.column(u"select sid from pl_group where grid=%1"_s.arg(lists.saturday)),
              QStringList{u"4"_s});
}

TEST_F(LibraryTreeTest, TracksAreDroppedOnAListAndRefusedByAGroup)
{
    const auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    const auto offer = [](int row) {
        return DropOffer{u"DRAG_TYP_FID_MP3DB:1,2"_s, {}, false, DropOffer::Spot::OnRow, row};
    };
    EXPECT_EQ(tree.drops().dropEffect(offer(0)), DropEffect::None);
    ASSERT_EQ(tree.drops().dropEffect(offer(1)), DropEffect::Copy);
    tree.drops().drop(offer(1));
    EXPECT_EQ(appended.first, u"DRAG_TYP_FID_MP3DB:1,2"_s);
    EXPECT_EQ(appended.second, Pnid(lists.main));
    EXPECT_EQ(page.rowCount(), 6);
}

TEST_F(LibraryTreeTest, AClickOnAListSendsItsNumberAndOneOnAGroupToo)
{
    const auto& page = show(TreeKind::Playlist, u"tree.playlist"_s);
    tree.rowClicked(1);
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|%1|Playlist|"_s.arg(lists.main));
    tree.rowClicked(0);
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|%1|Gruppe|"_s.arg(lists.friday));
    EXPECT_EQ(page.rowCount(), 6);
}

} // namespace
} // namespace melovane
