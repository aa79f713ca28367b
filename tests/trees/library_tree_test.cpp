#include "trees/library_tree_panel.h"
#include "trees/tree_children.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::LibraryTreeTest;

QStringList letters()
{
    QStringList result;
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        result.append(u"  "_s + QChar(letter));
    }
    return result + QStringList{u"  0-9"_s, u"  Other"_s};
}

TEST_F(LibraryTreeTest, AFilterOpensEachRowToWhatItOpensToAlone)
{
    for (const auto& name : {u"10cc"_s, u"Abba"_s, u"abc"_s, u"Ärzte"_s, u"A\u0308rger"_s,
                             u"it's"_s, u"Zoë"_s, u"ßen"_s, u"[x]*"_s, u"_a"_s, u" Anna"_s,
                             u"\u05D0\u05D1"_s, u"Øre"_s, u"?"_s, u"anna"_s}) {
        addNamed(u"tree_interpret"_s, name, 3, name == u"Abba"_s ? 1 : 0);
    }
    for (const auto& genre : {u"Pop"_s, u"R & B"_s, u"Leer"_s}) {
        addNamed(u"tree_genre"_s, genre, 3, genre == u"Pop"_s ? 1 : 0);
    }
    addGenreArtist(u"Pop"_s, u"Abba"_s, 2, true);
    addGenreArtist(u"Pop"_s, u"Zoë"_s, 2);
    addGenreArtist(u"R & B"_s, u"Anna"_s, 1);
    for (const auto& [kind, tool, below] :
         {std::tuple(TreeKind::Interpret, u"tree.interpret"_s, 15),
          {TreeKind::Genre, u"tree.genre"_s, 4},
          {TreeKind::Favorit, u"tree.favorit"_s, 1}}) {
        auto& page = show(kind, tool);
        const auto database = lists.Suite::open();
        std::vector<TreeRow> expected;
        for (const TreeRow& row : page.rows) {
            expected.push_back(row);
            expected.back().fillable = false;
            const auto rows = treerows::children(*database, row.fillable ? row.key : QString());
            expected.insert(expected.end(), rows.begin(), rows.end());
        }
        EXPECT_EQ(expected.size(), page.rows.size() + size_t(below)) << int(kind);
        tree.filterBegins();
        EXPECT_EQ(page.rows, expected) << int(kind);
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, ALibraryWithoutTracksSaysSoInEachKindUntilItHasSome)
{
    lists.execute(u"delete from db_all"_s);
    const QList<std::pair<TreeKind, QString>> kinds{{TreeKind::Dir, u"tree.dir"_s},
                                                    {TreeKind::Genre, u"tree.genre"_s},
                                                    {TreeKind::Album, u"tree.album"_s},
                                                    {TreeKind::Interpret, u"tree.interpret"_s},
                                                    {TreeKind::Favorit, u"tree.favorit"_s}};
    for (const auto& [kind, tool] : kinds) {
        EXPECT_EQ(show(kind, tool).note.title, u"Noch keine Titel - MP3s importieren"_s)
            << int(kind);
    }
    lists.library.add({.Interpret = u"Anna"_s});
    tree.Refresh(u"111111"_s);
    for (const auto& [kind, tool] : kinds) {
        EXPECT_EQ(show(kind, tool).note, EmptyNote()) << int(kind);
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, ANewLibraryShowsOnlyRootRowsAnd28LetterRowsAmongTheArtists)
{
    EXPECT_EQ(show(TreeKind::Dir, u"tree.dir"_s).texts(), QStringList{u"Favorit"_s});
    EXPECT_EQ(show(TreeKind::Genre, u"tree.genre"_s).texts(),
              (QStringList{u"Favorit"_s, u"Genre"_s}));
    EXPECT_EQ(show(TreeKind::Album, u"tree.album"_s).texts(),
              (QStringList{u"Favorit"_s, u"Album"_s}));
    EXPECT_EQ(show(TreeKind::Interpret, u"tree.interpret"_s).texts(),
              (QStringList{u"Favorit"_s, u"Interpret"_s} + letters()));
    EXPECT_EQ(show(TreeKind::Favorit, u"tree.favorit"_s).texts(),
              (QStringList{u"Interpret"_s, u"Directory"_s, u"Album"_s, u"Genre"_s}));
    EXPECT_TRUE(show(TreeKind::State, u"tree.state"_s).texts().isEmpty());
    EXPECT_EQ(form.pages[size_t(TreeKind::State)].note.title, u"Noch nichts gespielt"_s);
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, AFolderShowsItsOwnTracksAndThoseBelowUnlessTheyAreTheSame)
{
    addDirectory(u"/m/"_s, 0, u"/"_s, 0, 15, false, 2, u"Platte"_s);
    addDirectory(u"/m/a/"_s, 1, u"a"_s, 0, 12);
    addDirectory(u"/m/a/b/"_s, 2, u"b"_s, 3, 12, true);
    addDirectory(u"/m/c/"_s, 1, u"c"_s, 7, 7);
    const auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Favorit"_s, u"  b [3]"_s, u"/ Platte [15]"_s,
                                         u"  a [12]"_s, u"    b [3 - 12]"_s, u"  c [7]"_s}));
    EXPECT_EQ(keys(page), (QStringList{QString(), u"FAV?Path?\?/m/a/b/"_s, u"DIR?Path?\?/m/*"_s,
                                       u"DIR?Path?\?/m/a/*"_s, u"DIR?Path?\?/m/a/b/*"_s,
                                       u"DIR?Path?\?/m/c/*"_s}));
    EXPECT_EQ(page.row(2).picture, u"tree.DRIVE_2"_s);
    EXPECT_TRUE(page.row(2).heading);
    EXPECT_EQ(page.row(2).tick, RowTick::None) << "a folder without tracks of its own";
    EXPECT_EQ(page.row(4).tick, RowTick::On);
    EXPECT_EQ(page.row(4).countLetters, 8);
    EXPECT_EQ(page.row(5).tick, RowTick::Off);
    EXPECT_TRUE(page.isOpen(2));
    EXPECT_TRUE(page.isOpen(3)) << "seen down to level 2";
}

TEST_F(LibraryTreeTest, ADiscShowsItsVolumeAtItsRootAloneAndHasNoTicks)
{
    addDirectory(u"E:\\"_s, 0, u"E: Disc1"_s, 0, 5, false, 4, u"Disc1"_s);
    addDirectory(u"E:\\Disc1 live\\"_s, 1, u"Disc1 live Disc1"_s, 5, 0, false, 4, u"Disc1"_s);
    const auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Favorit"_s, u"E: Disc1 [5]"_s, u"  Disc1 live [5]"_s}));
    EXPECT_EQ(page.row(2).key, u"CDDIR?Disc1?CDDIR??E:\\Disc1 live\\"_s);
    EXPECT_EQ(page.row(2).tick, RowTick::None);
}

TEST_F(LibraryTreeTest, AnAlbumWithOneTrackIsListedAmongTheFavouritesAlone)
{
    addNamed(u"tree_album"_s, u"Single"_s, 1, 1);
    addNamed(u"tree_album"_s, u"Einsam"_s, 1);
    addNamed(u"tree_album"_s, u"Album"_s, 12);
    EXPECT_EQ(show(TreeKind::Album, u"tree.album"_s).texts(),
              (QStringList{u"Favorit"_s, u"  Single [1]"_s, u"Album"_s, u"  Album [12]"_s}));
}

TEST_F(LibraryTreeTest, AnAlbumWithOneTrackIsReachedThroughItsArtist)
{
    addNamed(u"tree_album"_s, u"Single"_s, 1);
    addNamed(u"tree_interpret"_s, u"Mara"_s, 1);
    EXPECT_EQ(show(TreeKind::Album, u"tree.album"_s).find(u"ABM?Album??Single"_s), -1);
    auto& artists = show(TreeKind::Interpret, u"tree.interpret"_s);
    tree.rowOpening(artists.find(u"INP?RootInterpret??like '[M]*'"_s));
    tree.rowClicked(artists.find(u"IEX?Interpret??Mara"_s));
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|Mara|Interpret|"_s);
}

TEST_F(LibraryTreeTest, TheNewestFavouriteStandsFirst)
{
    addNamed(u"tree_interpret"_s, u"Alt"_s, 3, 1);
    addNamed(u"tree_interpret"_s, u"Neu"_s, 4, 9);
    EXPECT_EQ(show(TreeKind::Interpret, u"tree.interpret"_s).texts().mid(0, 4),
              (QStringList{u"Favorit"_s, u"  Neu [4]"_s, u"  Alt [3]"_s, u"Interpret"_s}));
}

TEST_F(LibraryTreeTest, ALetterIsReadWhenItIsOpenedInTheOrderOfItsNumbers)
{
    for (const QString& name : {u"Anton"_s, u"berta"_s, u"abba"_s, u"1000 Robota"_s, u"Ärzte"_s}) {
        addNamed(u"tree_interpret"_s, name, 2);
    }
    auto& page = show(TreeKind::Interpret, u"tree.interpret"_s);
    const int a = page.find(u"INP?RootInterpret??like '[A]*'"_s);
    ASSERT_TRUE(page.row(a).fillable);
    tree.rowOpening(a);
    EXPECT_EQ(page.texts().mid(a, 3),
              (QStringList{u"  A"_s, u"    Anton [2]"_s, u"    abba [2]"_s}));
    EXPECT_TRUE(page.isOpen(a));
    EXPECT_EQ(page.row(a + 1).key, u"IEX?Interpret??Anton"_s);
    tree.rowOpening(page.find(u"INP?RootInterpret??like '[0-9]*'"_s));
    EXPECT_TRUE(page.texts().contains(u"    1000 Robota [2]"_s));
    tree.rowOpening(page.find(u"INP?RootInterpret??not like '[0-9A-Z]*'"_s));
    EXPECT_TRUE(page.texts().contains(u"    Ärzte [2]"_s));
}

TEST_F(LibraryTreeTest, AGenreThatIsOpenedTwiceReadsNothingTheSecondTime)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 5);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    const int rock = page.find(u"GEN?Genre??Rock"_s);
    tree.rowOpening(rock);
    addGenreArtist(u"Rock"_s, u"Cleo"_s, 5);
    tree.rowOpening(rock);
    EXPECT_EQ(page.texts().mid(rock), (QStringList{u"  Rock [5]"_s, u"    Bob [5]"_s}));
    EXPECT_EQ(page.row(rock + 1).key, u"GEX?Rock?Interpret??Bob"_s);
    // The keys outlive a refill: what was opened before gets no rows again.
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(page.texts().mid(rock), QStringList{u"  Rock [5]"_s});
    EXPECT_FALSE(page.row(rock).fillable);
    tree.rowOpening(rock);
    EXPECT_EQ(page.texts().mid(rock), QStringList{u"  Rock [5]"_s});
}

TEST_F(LibraryTreeTest, RefreshWithAnyMaskLeavesNoTreeMarkedAsFilled)
{
    for (const QString& mask : {u"0000000"_s, u"10000"_s, u""_s, u"1111111"_s, u"4711"_s}) {
        lists.execute(u"delete from tree_album"_s);
        auto& page = show(TreeKind::Album, u"tree.album"_s);
        show(TreeKind::State, u"tree.state"_s);
        addNamed(u"tree_album"_s, u"Neu"_s, 2);
        show(TreeKind::Album, u"tree.album"_s);
        EXPECT_FALSE(page.texts().contains(u"  Neu [2]"_s)) << "filled stays filled";
        show(TreeKind::State, u"tree.state"_s);
        send(u"refresh.tree"_s, mask);
        show(TreeKind::Album, u"tree.album"_s);
        EXPECT_TRUE(page.texts().contains(u"  Neu [2]"_s)) << qPrintable(mask);
        lists.execute(u"delete from tree_album"_s);
        send(u"refresh.tree"_s, mask);
    }
}

TEST_F(LibraryTreeTest, TheVisibleTreeIsReadAgainAtOnceAndTheFoldersKeepWhatIsOpen)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
    addDirectory(u"/a/"_s, 1, u"a"_s, 0, 5);
    addDirectory(u"/a/x/"_s, 2, u"x"_s, 0, 5);
    addDirectory(u"/a/x/y/"_s, 3, u"y"_s, 5, 5);
    addDirectory(u"/b/"_s, 1, u"b"_s, 0, 4);
    addDirectory(u"/b/z/"_s, 2, u"z"_s, 4, 4);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    page.setOpen(page.find(u"DIR?Path?\?/a/x/*"_s), true);
    page.setOpen(page.find(u"DIR?Path?\?/b/*"_s), false);
    page.current = page.find(u"DIR?Path?\?/a/x/y/*"_s);
    lists.execute(u"delete from tree_dir where path='/b/z/'"_s);
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(page.rowCount(), 6) << "read at once";
    EXPECT_TRUE(page.isOpen(page.find(u"DIR?Path?\?/a/x/*"_s)));
    EXPECT_TRUE(page.isOpen(page.find(u"DIR?Path?\?/a/*"_s)));
    EXPECT_EQ(page.row(page.current).key, u"DIR?Path?\?/a/x/y/*"_s);
}

TEST_F(LibraryTreeTest, AnOpenRowWhoseFolderIsGoneIsSkipped)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
    addDirectory(u"/a/"_s, 1, u"a"_s, 0, 5);
    addDirectory(u"/a/x/"_s, 2, u"x"_s, 5, 5);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    ASSERT_TRUE(page.isOpen(page.find(u"DIR?Path?\?/a/*"_s)));
    lists.execute(u"delete from tree_dir where rLevel>0"_s);
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Favorit"_s, u"/ [9]"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, AFolderIsShownWithAllAboveItOpen)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
    addDirectory(u"/a/"_s, 1, u"a"_s, 0, 5);
    addDirectory(u"/a/x/"_s, 2, u"x"_s, 0, 5);
    addDirectory(u"/a/x/y/"_s, 3, u"y"_s, 5, 5);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    send(u"context.show.dir"_s, u"/a/x/y/"_s);
    auto& folders = form.pages[size_t(TreeKind::Dir)];
    EXPECT_EQ(form.top, TreeKind::Dir);
    EXPECT_EQ(folders.row(folders.current).key, u"DIR?Path?\?/a/x/y/*"_s);
    EXPECT_TRUE(folders.isOpen(folders.find(u"DIR?Path?\?/a/x/*"_s)));
    send(u"context.show.dir"_s, u"/nirgends/"_s);
    EXPECT_EQ(folders.row(folders.current).key, u"DIR?Path?\?/a/x/y/*"_s) << "the tree stays";
    EXPECT_EQ(page.rowCount(), 2);
}

TEST_F(LibraryTreeTest, AFolderThatIsShownStandsFiveLinesFromTheTopFoldedRowsNotCounted)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
    for (char16_t name = u'a'; name <= u'h'; ++name) {
        addDirectory(u"/%1/"_s.arg(QChar(name)), 1, QString(QChar(name)), 1, 2);
        addDirectory(u"/%1/x/"_s.arg(QChar(name)), 2, u"x"_s, 0, 1);
        addDirectory(u"/%1/x/y/"_s.arg(QChar(name)), 3, u"y"_s, 1, 1);
    }
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    page.scrolls = true;
    send(u"context.show.dir"_s, u"/h/"_s);
    EXPECT_EQ(page.row(page.first).key, u"DIR?Path?\?/e/x/*"_s)
        << "behind it f, its x, g and its x: every y is folded away";
}

TEST_F(LibraryTreeTest, AFolderOfADiscIsShownByItsVolume)
{
    addDirectory(u"E:\\"_s, 0, u"E: Eins"_s, 0, 5, false, 4, u"Eins"_s);
    addDirectory(u"E:\\m\\"_s, 1, u"m Eins"_s, 5, 0, false, 4, u"Eins"_s);
    addDirectory(u"E:\\m\\"_s, 1, u"m Zwei"_s, 5, 0, false, 4, u"Zwei"_s);
    show(TreeKind::Dir, u"tree.dir"_s);
    send(u"context.show.dir"_s, u"E:\\m\\"_s, u"Zwei"_s);
    auto& folders = form.pages[size_t(TreeKind::Dir)];
    EXPECT_EQ(folders.row(folders.current).key, u"CDDIR?Zwei?CDDIR??E:\\m\\"_s);
}

TEST_F(LibraryTreeTest, AClickSendsValueFieldAuxAndTheTextOfTheRow)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 5);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    const int rock = page.find(u"GEN?Genre??Rock"_s);
    tree.rowClicked(rock);
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|Rock|Genre|"_s);
    tree.rowOpening(rock);
    tree.rowClicked(rock + 1);
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|Bob|Interpret|Rock"_s);
    EXPECT_TRUE(lists.messages.contains(u"tree.enter.cell|Bob|Interpret|Rock"_s));
    lists.messages.clear();
    tree.rowClicked(0);
    EXPECT_EQ(lists.messages, QStringList()) << "a heading selects nothing";
}

TEST_F(LibraryTreeTest, AKeyWithAnEmptyValueOrASecondMarkSendsNothing)
{
    addNamed(u"tree_album"_s, u""_s, 5);
    addNamed(u"tree_album"_s, u"Wer??"_s, 5);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    for (int row = 0; row < page.rowCount(); ++row) {
        tree.rowClicked(row);
    }
    EXPECT_EQ(lists.messages, QStringList());
}

TEST_F(LibraryTreeTest, ALetterSendsItsPredicateAndADiscItsVolumeAsField)
{
    addDirectory(u"E:\\music\\"_s, 1, u"music Disc1"_s, 5, 0, false, 4, u"Disc1"_s);
    auto& page = show(TreeKind::Interpret, u"tree.interpret"_s);
    tree.rowClicked(page.find(u"INP?RootInterpret??like '[A]*'"_s));
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|like '[A]*'|RootInterpret|"_s);
    auto& folders = show(TreeKind::Dir, u"tree.dir"_s);
    tree.rowClicked(folders.find(u"CDDIR?Disc1?CDDIR??E:\\music\\"_s));
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|E:\\music\\|CDDIR|Disc1"_s);
}

TEST_F(LibraryTreeTest, SeveralRowsAreSearchedTogether)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5);
    addNamed(u"tree_album"_s, u"Zwei's"_s, 5);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    page.selected = {2, 3};
    tree.rowClicked(3);
    EXPECT_EQ(lists.messages.last(),
              u"tree.click.row|[Album] = 'Eins' or [Album] = 'Zwei''s'|FID:where|"_s);
}

TEST_F(LibraryTreeTest, TheStatisticsShareAMonthThatFollowsTheSameMonthOfAnotherYear)
{
    const QString fid = lists.library.add();
    lists.library.addPlayback(fid, QDateTime(QDate(2026, 3, 1), QTime(22, 0)));
    lists.library.addPlayback(fid, QDateTime(QDate(2025, 3, 2), QTime(22, 0)));
    lists.library.addPlayback(fid, QDateTime(QDate(2025, 1, 4), QTime(22, 0)));
    const auto& page = show(TreeKind::State, u"tree.state"_s);
    ASSERT_EQ(page.rowCount(), 7);
    EXPECT_EQ(page.row(0).key, u"STATE?dir??2026"_s);
    EXPECT_EQ(page.row(0).text, u"2026 "_s);
    EXPECT_EQ(page.row(1).key, u"STATE?dirmon??2026_3"_s);
    EXPECT_EQ(page.row(2).text, u"01.03.2026"_s);
    EXPECT_EQ(page.row(2).level, 3);
    EXPECT_EQ(page.row(3).key, u"STATE?dir??2025"_s);
    EXPECT_EQ(page.row(4).text, u"02.03.2025"_s) << "below the month of the year before";
    EXPECT_EQ(page.row(5).key, u"STATE?dirmon??2025_1"_s);
}

TEST_F(LibraryTreeTest, ExpandTreeFoldsAndOpensByTurnsInTheKindsThatHaveIt)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
    addDirectory(u"/a/"_s, 1, u"a"_s, 0, 5);
    addDirectory(u"/a/x/"_s, 2, u"x"_s, 5, 5);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    tree.toolPressed(u"tree.collaps.close"_s);
    EXPECT_FALSE(page.isOpen(page.find(u"DIR?Path?\?/a/*"_s)));
    EXPECT_FALSE(form.folds);
    tree.toolPressed(u"TREE.COLLAPS.CLOSE"_s);
    EXPECT_TRUE(page.isOpen(page.find(u"DIR?Path?\?/a/*"_s)));
    EXPECT_TRUE(form.folds);
    show(TreeKind::State, u"tree.state"_s);
    tree.toolPressed(u"tree.collaps.close"_s);
    EXPECT_TRUE(form.folds) << "not in the statistics";
}

TEST_F(LibraryTreeTest, ReloadHasTheTableOfTheKindMadeAnew)
{
    const std::pair<TreeKind, QString> kKinds[] = {{TreeKind::Dir, u"dir"_s},
                                                   {TreeKind::Genre, u"genre"_s},
                                                   {TreeKind::Album, u"album"_s},
                                                   {TreeKind::Interpret, u"interpret"_s}};
    for (const auto& [kind, word] : kKinds) {
        show(kind, u"tree."_s + word);
        tree.toolPressed(u"all.refresh"_s);
        EXPECT_EQ(lists.messages, QStringList{u"refresh.tree."_s + word});
    }
    show(TreeKind::Favorit, u"tree.favorit"_s);
    tree.toolPressed(u"all.refresh"_s);
    EXPECT_EQ(lists.messages, QStringList());
}

TEST_F(LibraryTreeTest, ATableThatCannotBeReadIsMadeAnewAndThePanelSaysSo)
{
    lists.library.add({.Interpret = u"Anna"_s});
    lists.execute(u"drop table tree_album"_s);
    const auto& page = show(TreeKind::Album, u"tree.album"_s);
    EXPECT_EQ(page.note.title, u"Dieser Baum kann nicht gelesen werden"_s);
    EXPECT_EQ(rebuilds, 1);
    EXPECT_EQ(failures.size(), 1);
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(rebuilds, 1) << "not again and again";
    show(TreeKind::Genre, u"tree.genre"_s);
    EXPECT_EQ(form.pages[size_t(TreeKind::Genre)].note, EmptyNote());
}

TEST_F(LibraryTreeTest, WhileAnotherProgramHasTheLibraryTheRowsStayBehindANote)
{
    addNamed(u"tree_album"_s, u"Album"_s, 12);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    const QStringList rows = page.texts();
    send(u"db.disconnect"_s);
    addNamed(u"tree_album"_s, u"Neu"_s, 2);
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(page.texts(), rows);
    EXPECT_EQ(page.note.title, u"Ein anderes Programm benutzt die Bibliothek"_s);
    send(u"db.reconnect"_s);
    EXPECT_EQ(page.note, EmptyNote());
    EXPECT_EQ(page.texts(), rows + QStringList{u"  Neu [2]"_s});
}

TEST_F(LibraryTreeTest, TheKindThatWasSeenLastIsTheFirstAtTheNextStart)
{
    show(TreeKind::Album, u"tree.album"_s);
    tree.end();
    test::PlainTreeForm other;
    Tree next(parts(), other);
    next.start();
    EXPECT_EQ(other.top, TreeKind::Album);
    EXPECT_EQ(next.kind(), TreeKind::Album);
}

TEST_F(LibraryTreeTest, TheMenuActsOnTheRowThatItWasAskedForOn)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5);
    addNamed(u"tree_album"_s, u"Zwei"_s, 5);
    show(TreeKind::Album, u"tree.album"_s);
    tree.rowClicked(2);
    lists.messages.clear();
    lists.answers.expectPopup(1001);
    tree.contextMenu(2);
    EXPECT_EQ(lists.messages, QStringList{u"all.db.append"_s});
    lists.messages.clear();
    lists.answers.expectPopup(1002);
    tree.contextMenu(3);
    EXPECT_EQ(lists.messages, (QStringList{u"tree.click.row|Zwei|Album|"_s, u"all.db.insert"_s}));
    lists.messages.clear();
    lists.answers.expectPopup(1004);
    tree.contextMenu(3);
    EXPECT_EQ(lists.messages, QStringList{u"all.db.append.aktuell"_s});
}

TEST_F(LibraryTreeTest, ADragOfARowIsADragOfItsTracks)
{
    const QString one = lists.library.add({.Album = u"Eins"_s, .Path = u"/a/"_s});
    const QString two = lists.library.add({.Album = u"Eins"_s, .Path = u"/b/"_s});
    lists.library.add({.Album = u"Eins"_s, .Path = u"/c/"_s, .DEL = 2});
    lists.library.add({.Album = u"Zwei"_s});
    addNamed(u"tree_album"_s, u"Eins"_s, 2);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    const DragContent content = tree.dragContent({page.find(u"ABM?Album??Eins"_s)});
    EXPECT_EQ(content.text, u"DRAG_TYP_FID_MP3DB:"_s + one + u',' + two);
    EXPECT_EQ(content.files(),
              (QStringList{u"/a/"_s + one + u".mp3"_s, u"/b/"_s + two + u".mp3"_s}));
    EXPECT_EQ(tree.dragContent({0}).text, QString()) << "a heading has no tracks";
}

} // namespace
} // namespace melovane
