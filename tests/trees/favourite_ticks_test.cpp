#include "trees/library_tree_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::LibraryTreeTest;

TEST_F(LibraryTreeTest, ATickedFolderBecomesAFavouriteAndLosesTheFlagAgainInPlace)
{
    addDirectory(u"/m/"_s, 0, u"m"_s, 0, 5);
    addDirectory(u"/m/a/"_s, 1, u"a"_s, 3, 5);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    tick(page, u"DIR?Path?\?/m/a/*"_s, true);
    EXPECT_EQ(flag(u"tree_dir"_s, u"path"_s, u"/m/a/"_s), u"-1"_s);
    EXPECT_EQ(ticks(page, u"/a/"_s),
              (QStringList{u"FAV?Path?\?/m/a/*=1"_s, u"FAV?Path?\?/m/a/*=1"_s}));
    EXPECT_EQ(page.row(1).picture, u"ALL.AUDIO"_s);
    EXPECT_EQ(page.row(1).level, 1);
    // Made in place: the star is cut, so the flag goes.
    tick(page, u"FAV?Path?\?/m/a/*"_s, false);
    EXPECT_EQ(flag(u"tree_dir"_s, u"path"_s, u"/m/a/"_s), u"0"_s);
    EXPECT_EQ(ticks(page, u"/a/"_s), QStringList{u"DIR?Path?\?/m/a/*=0"_s});
    EXPECT_EQ(lists.messages, QStringList()) << "lists have nothing to do with it";
}

TEST_F(LibraryTreeTest, TheTickOfAFilledFolderTakesItsRowOutOfTheFavourites)
{
    addDirectory(u"/m/a/"_s, 0, u"a"_s, 3, 5, true);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    ASSERT_EQ(page.rowCount(), 3);
    tick(page, u"DIR?Path?\?/m/a/*"_s, false);
    EXPECT_EQ(flag(u"tree_dir"_s, u"path"_s, u"/m/a/"_s), u"0"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Favorit"_s, u"a [3 - 5]"_s}));
}

TEST_F(LibraryTreeTest, AFolderTakenOutThroughItsRowAmongTheFavouritesComesBack)
{
    addDirectory(u"/m/a/"_s, 0, u"a"_s, 3, 5, true);
    auto& page = show(TreeKind::Dir, u"tree.dir"_s);
    EXPECT_TRUE(tree.tickTip(1).contains(u"Bleibt ein Favorit"_s));
    tick(page, u"FAV?Path?\?/m/a/"_s, false);
    EXPECT_EQ(ticks(page, u"/a/"_s), QStringList{u"DIR?Path?\?/m/a/*=0"_s});
    EXPECT_EQ(flag(u"tree_dir"_s, u"path"_s, u"/m/a/"_s), u"-1"_s) << "its separator was cut";
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_EQ(ticks(page, u"/a/"_s),
              (QStringList{u"FAV?Path?\?/m/a/=1"_s, u"DIR?Path?\?/m/a/*=1"_s}));
}

TEST_F(LibraryTreeTest, ATickedGenreMakesAllItsArtistsFavourites)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 2);
    addGenreArtist(u"Rock"_s, u"Cleo"_s, 3);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    tree.rowOpening(page.find(u"GEN?Genre??Rock"_s));
    tick(page, u"GEN?Genre??Rock"_s, true);
    EXPECT_EQ(flag(u"tree_genre"_s, u"name"_s, u"Rock"_s), u"-1"_s);
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"genre"_s, u"Rock"_s), u"-1,-1"_s);
    EXPECT_EQ(ticks(page, u"GEX?"_s),
              (QStringList{u"GEX?Rock?Interpret??Bob=1"_s, u"GEX?Rock?Interpret??Cleo=1"_s}));
    EXPECT_EQ(page.row(1).text, u"Rock"_s) << "without a count";
    EXPECT_EQ(page.row(1).picture, u"Tree.Genre"_s);
    EXPECT_TRUE(page.row(1).fillable);
    tick(page, u"FGN?Genre??Rock"_s, false, 1);
    EXPECT_EQ(flag(u"tree_genre"_s, u"name"_s, u"Rock"_s), u"0"_s);
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"genre"_s, u"Rock"_s), u"0,0"_s);
    EXPECT_EQ(ticks(page, u"?"_s),
              (QStringList{u"GEN?Genre??Rock=0"_s, u"GEX?Rock?Interpret??Bob=0"_s,
                           u"GEX?Rock?Interpret??Cleo=0"_s}));
}

TEST_F(LibraryTreeTest, UntickingAGenreClearsItsArtistsThoughTheGenreKeepsItsStamp)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5, 7);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 2, true);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    tick(page, u"GEN?Genre??Rock"_s, false);
    EXPECT_EQ(flag(u"tree_genre"_s, u"name"_s, u"Rock"_s), u"0"_s);
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"genre"_s, u"Rock"_s), u"0"_s);
    EXPECT_EQ(lists.value(u"select count(*) from tree_genre where tstamp=40007"_s).toLong(), 1);
    EXPECT_EQ(page.find(u"FGN?Genre??Rock"_s), -1);
}

TEST_F(LibraryTreeTest, TickingAnArtistBelowAGenreMakesTheGenreAFavouriteToo)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5);
    addNamed(u"tree_genre"_s, u"Jazz"_s, 5);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 2);
    addGenreArtist(u"Jazz"_s, u"Bob"_s, 2);
    addGenreArtist(u"Rock"_s, u"Cleo"_s, 2);
    auto& page = show(TreeKind::Genre, u"tree.genre"_s);
    tree.rowOpening(page.find(u"GEN?Genre??Rock"_s));
    tick(page, u"GEX?Rock?Interpret??Bob"_s, true);
    EXPECT_EQ(flag(u"tree_genre"_s, u"name"_s, u"Rock"_s), u"-1"_s);
    EXPECT_EQ(flag(u"tree_genre"_s, u"name"_s, u"Jazz"_s), u"0"_s);
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"name"_s, u"Bob"_s), u"-1,-1"_s)
        << "that artist under every genre";
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"name"_s, u"Cleo"_s), u"0"_s);
    EXPECT_EQ(ticks(page, u"Rock"_s),
              (QStringList{u"FGN?Genre??Rock=1"_s, u"GEN?Genre??Rock=1"_s,
                           u"FEX?Rock?Interpret??Bob=1"_s, u"GEX?Rock?Interpret??Cleo=0"_s}));
    EXPECT_EQ(page.row(1).picture, u"tree.DIR"_s);
    tree.rowOpening(1);
    EXPECT_EQ(page.texts().mid(0, 3), (QStringList{u"Favorit"_s, u"  Rock"_s, u"    Bob [2]"_s}));
    // A second artist goes below the open favourite.
    tick(page, u"GEX?Rock?Interpret??Cleo"_s, true);
    EXPECT_EQ(ticks(page, u"FEX?Rock?Interpret??Cleo"_s).size(), 2);
    tick(page, u"FEX?Rock?Interpret??Bob"_s, false);
    EXPECT_EQ(flag(u"tree_genre_interpret"_s, u"name"_s, u"Bob"_s), u"0,0"_s);
    EXPECT_EQ(ticks(page, u"GEX?Rock?Interpret??Bob"_s),
              QStringList{u"GEX?Rock?Interpret??Bob=0"_s});
}

TEST_F(LibraryTreeTest, AnAlbumIsTickedAndUntickedInBothPlaces)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    tick(page, u"ABM?Album??Eins"_s, true);
    EXPECT_EQ(flag(u"tree_album"_s, u"name"_s, u"Eins"_s), u"-1"_s);
    EXPECT_EQ(page.row(1).text, u"Eins [5]"_s);
    EXPECT_EQ(page.row(1).picture, u"Tree.Album"_s);
    tick(page, u"AFAV?Album??Eins"_s, false);
    EXPECT_EQ(flag(u"tree_album"_s, u"name"_s, u"Eins"_s), u"0"_s);
    EXPECT_EQ(ticks(page, u"Eins"_s),
              (QStringList{u"AFAV?Album??Eins=0"_s, u"ABM?Album??Eins=0"_s}));
    // Ignored there until the next fill; the box must not say otherwise.
    tick(page, u"AFAV?Album??Eins"_s, true);
    EXPECT_EQ(flag(u"tree_album"_s, u"name"_s, u"Eins"_s), u"0"_s);
    EXPECT_EQ(page.row(1).tick, RowTick::Off);
    EXPECT_TRUE(tree.tickTip(1).contains(u"erst nach dem Neuladen"_s));
}

TEST_F(LibraryTreeTest, ATickAsksForFewRowsHoweverManyThereAre)
{
    constexpr int kRows = 300;
    constexpr int kFew = 30;
    addDirectory(u"/m/"_s, 0, u"m"_s, 0, kRows);
    for (int i = 0; i < kRows; ++i) {
        addNamed(u"tree_album"_s, u"a%1"_s.arg(i), 5);
        addDirectory(u"/m/%1/"_s.arg(i), 1, QString::number(i), 1, 1);
    }
    auto& albums = show(TreeKind::Album, u"tree.album"_s);
    tick(albums, u"ABM?Album??a299"_s, true);
    albums.rowsAsked = 0;
    tree.rowTicked(1, false);
    EXPECT_LT(albums.rowsAsked, kFew);
    EXPECT_EQ(ticks(albums, u"??a299"_s),
              (QStringList{u"AFAV?Album??a299=0"_s, u"ABM?Album??a299=0"_s}));
    auto& folders = show(TreeKind::Dir, u"tree.dir"_s);
    tick(folders, u"DIR?Path?\?/m/7/*"_s, true);
    folders.rowsAsked = 0;
    tree.rowTicked(1, false);
    EXPECT_LT(folders.rowsAsked, kFew);
    EXPECT_EQ(ticks(folders, u"/m/7/"_s), QStringList{u"DIR?Path?\?/m/7/*=0"_s});
}

TEST_F(LibraryTreeTest, UntickingAnArtistBelowItsLetterLeavesHimAmongTheFavouritesAtTheNextFill)
{
    addNamed(u"tree_interpret"_s, u"Bob"_s, 5, 3);
    addNamed(u"tree_album"_s, u"Bob"_s, 5, 3);
    auto& page = show(TreeKind::Interpret, u"tree.interpret"_s);
    tree.rowOpening(page.find(u"INP?RootInterpret??like '[B]*'"_s));
    EXPECT_TRUE(tree.tickTip(page.find(u"IEX?Interpret??Bob"_s)).contains(u"Bleibt"_s));
    tick(page, u"IEX?Interpret??Bob"_s, false);
    EXPECT_EQ(page.find(u"IFAV?Interpret??Bob"_s), -1);
    EXPECT_EQ(flag(u"tree_interpret"_s, u"name"_s, u"Bob"_s), u"-1"_s);
    EXPECT_EQ(flag(u"tree_album"_s, u"name"_s, u"Bob"_s), u"0"_s)
        << "the album of that name loses its flag";
    send(u"refresh.tree"_s, u"1111111"_s);
    EXPECT_GE(page.find(u"IFAV?Interpret??Bob"_s), 0);
}

TEST_F(LibraryTreeTest, AnArtistLosesTheFlagAmongTheFavourites)
{
    addNamed(u"tree_interpret"_s, u"Bob"_s, 5);
    auto& page = show(TreeKind::Interpret, u"tree.interpret"_s);
    tree.rowOpening(page.find(u"INP?RootInterpret??like '[B]*'"_s));
    tick(page, u"IEX?Interpret??Bob"_s, true);
    EXPECT_EQ(flag(u"tree_interpret"_s, u"name"_s, u"Bob"_s), u"-1"_s);
    EXPECT_EQ(page.row(1).picture, u"tree.interpret"_s);
    tick(page, u"IFAV?Interpret??Bob"_s, false);
    EXPECT_EQ(flag(u"tree_interpret"_s, u"name"_s, u"Bob"_s), u"0"_s);
    EXPECT_EQ(ticks(page, u"IEX?"_s), QStringList{u"IEX?Interpret??Bob=0"_s});
}

TEST_F(LibraryTreeTest, ANameWithAnApostropheCannotBeMadeAFavouriteAndTheTipSaysSo)
{
    addNamed(u"tree_interpret"_s, u"D'Arc"_s, 5);
    addNamed(u"tree_album"_s, u"L'Or"_s, 5);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    EXPECT_EQ(tree.tickTip(page.find(u"ABM?Album??L'Or"_s)),
              u" Add Farvorit \nWird nicht behalten: der Name enthält ein Hochkomma"_s);
    tick(page, u"ABM?Album??L'Or"_s, true);
    EXPECT_EQ(lists.column(u"select favorit from tree_album"_s), QStringList{u"0"_s});
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, ATipSaysWhatATickDoes)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5, 1);
    addNamed(u"tree_album"_s, u"Zwei"_s, 5);
    const auto& page = show(TreeKind::Album, u"tree.album"_s);
    EXPECT_EQ(tree.tickTip(page.find(u"ABM?Album??Eins"_s)), u" Remove Favorit "_s);
    EXPECT_EQ(tree.tickTip(page.find(u"ABM?Album??Zwei"_s)), u" Add Farvorit "_s);
    EXPECT_EQ(tree.tickTip(0), QString());
}

TEST_F(LibraryTreeTest, ANewFavouriteStandsInTheTreeOfFavouritesWhenItIsOpenedNext)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5);
    show(TreeKind::Favorit, u"tree.favorit"_s);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    tick(page, u"ABM?Album??Eins"_s, true);
    const auto& favourites = show(TreeKind::Favorit, u"tree.favorit"_s);
    EXPECT_TRUE(keys(favourites).contains(u"FFAV?Album??Eins"_s));
}

TEST_F(LibraryTreeTest, AFavouriteGenreOfTheTreeOfFavouritesOpensToItsFavouriteArtists)
{
    addNamed(u"tree_genre"_s, u"Rock"_s, 5, 1);
    addGenreArtist(u"Rock"_s, u"Bob"_s, 2, true);
    addGenreArtist(u"Rock"_s, u"Cleo"_s, 2);
    addGenreArtist(u"Rock"_s, u"Dora"_s, 2, true);
    auto& page = show(TreeKind::Favorit, u"tree.favorit"_s);
    const int rock = page.find(u"FGEN?Genre??Rock"_s);
    tree.rowOpening(rock);
    EXPECT_EQ(keys(page).mid(rock + 1),
              (QStringList{u"FFEX?Interpret??Bob"_s, u"FFEX?Interpret??Dora"_s}));
    EXPECT_EQ(page.row(rock + 1).tick, RowTick::None);
}

TEST_F(LibraryTreeTest, InALibraryThatCannotBeWrittenATickGoesBack)
{
    addNamed(u"tree_album"_s, u"Eins"_s, 5);
    auto& page = show(TreeKind::Album, u"tree.album"_s);
    mayWrite = false;
    tick(page, u"ABM?Album??Eins"_s, true);
    EXPECT_EQ(page.row(2).tick, RowTick::Off);
    EXPECT_EQ(lists.messages,
              QStringList{u"show.statustext|Die Bibliothek ist schreibgeschützt"_s});
}

} // namespace
} // namespace melovane
