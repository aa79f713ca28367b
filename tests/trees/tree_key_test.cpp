#include "trees/tree_key.h"

#include <gtest/gtest.h>

namespace melovane::treekey {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TreeKey, AKeyWithAnEmptyValueSendsNoMessage)
{
    EXPECT_FALSE(clickValues(artist({})));
    EXPECT_FALSE(clickValues(heading()));
    EXPECT_FALSE(clickValues(informationRoot()));
    EXPECT_FALSE(clickValues(QString()));
}

TEST(TreeKey, AValueHoldingTheMarkSendsNoMessageASingleQuestionMarkDoes)
{
    EXPECT_FALSE(clickValues(album(u"Who??"_s)));
    EXPECT_FALSE(clickValues(album(u"Wh??o"_s)));
    EXPECT_EQ(clickValues(album(u"Why? Me?"_s))->value1, u"Why? Me?"_s);
}

TEST(TreeKey, AnArtistBelowAGenreGivesTheGenreAsThirdValueWhichTheLibraryIgnores)
{
    EXPECT_EQ(genreArtist(u"Rock"_s, u"Bob"_s), u"GEX?Rock?Interpret??Bob"_s);
    const ClickValues click = *clickValues(genreArtist(u"Rock"_s, u"Bob"_s));
    EXPECT_EQ(click, (ClickValues{u"Bob"_s, u"Interpret"_s, u"Rock"_s}));
    EXPECT_EQ(libraryRequest(click), (LibraryRequest{u"Interpret"_s, u"Interpret"_s, u"Bob"_s}));
}

TEST(TreeKey, ADiscGivesItsVolumeNameAsField)
{
    EXPECT_EQ(discDirectory(u"Disc1"_s, u"E:\\music\\"_s), u"CDDIR?Disc1?CDDIR??E:\\music\\"_s);
    EXPECT_EQ(libraryRequest(*clickValues(discDirectory(u"Disc1"_s, u"E:\\music\\"_s))),
              (LibraryRequest{u"CDDIR"_s, u"Disc1"_s, u"E:\\music\\"_s}));
}

TEST(TreeKey, ADayOfTheStatisticsGivesTheColumnOfTheDayAsField)
{
    EXPECT_EQ(statisticsDay(u"01.02.2011"_s, 40575), u"STATE?01.02.2011?Statistik??40575"_s);
    EXPECT_EQ(libraryRequest(*clickValues(statisticsDay(u"01.02.2011"_s, 40575))),
              (LibraryRequest{u"Statistik"_s, u"tday:long"_s, u"40575"_s}));
}

TEST(TreeKey, AGroupIsSentWithAFieldThatTheLibraryIgnores)
{
    const ClickValues click = *clickValues(group(7));
    EXPECT_EQ(click, (ClickValues{u"7"_s, u"Gruppe"_s, {}}));
    EXPECT_TRUE(click.value2.contains(u"gruppe"_s, Qt::CaseInsensitive));
    EXPECT_TRUE(clickValues(jingleGroup())->value2.contains(u"gruppe"_s, Qt::CaseInsensitive));
}

TEST(TreeKey, AClickOnALetterRowSendsThePredicate)
{
    EXPECT_EQ(*clickValues(artistLetter(u'A')),
              (ClickValues{u"like '[A]*'"_s, u"RootInterpret"_s, {}}));
    EXPECT_EQ(clickValues(artistDigits())->value1, u"like '[0-9]*'"_s);
    EXPECT_EQ(clickValues(artistOthers())->value1, u"not like '[0-9A-Z]*'"_s);
}

struct Row
{
    const char* name;
    QString key;
    QString expected;
};

class TreeKeyForm : public testing::TestWithParam<Row>
{};

TEST_P(TreeKeyForm, IsAsOthersKnowIt)
{
    EXPECT_EQ(GetParam().key, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Keys,
    TreeKeyForm,
    testing::Values(
        Row{"Directory", directory(u"/m/"_s), u"DIR?Path?\?/m/*"_s},
        Row{"FavouriteDirectory", favouriteDirectory(u"/m/"_s), u"FAV?Path?\?/m/"_s},
        Row{"Genre", genre(u"Rock"_s), u"GEN?Genre??Rock"_s},
        Row{"FavouriteGenre", favouriteGenre(u"Rock"_s), u"FGN?Genre??Rock"_s},
        Row{"FavouriteGenreArtist", favouriteGenreArtist(u"R"_s, u"B"_s), u"FEX?R?Interpret??B"_s},
        Row{"Album", album(u"A"_s), u"ABM?Album??A"_s},
        Row{"FavouriteAlbum", favouriteAlbum(u"A"_s), u"AFAV?Album??A"_s},
        Row{"Artist", artist(u"B"_s), u"IEX?Interpret??B"_s},
        Row{"FavouriteArtist", favouriteArtist(u"B"_s), u"IFAV?Interpret??B"_s},
        Row{"InFavouritesArtist", inFavouritesArtist(u"B"_s), u"FFAV?Interpret??B"_s},
        Row{"InFavouritesDirectory", inFavouritesDirectory(u"/m/"_s), u"FFAV?Path?\?/m/"_s},
        Row{"InFavouritesAlbum", inFavouritesAlbum(u"A"_s), u"FFAV?Album??A"_s},
        Row{"InFavouritesGenre", inFavouritesGenre(u"R"_s), u"FGEN?Genre??R"_s},
        Row{"InFavouritesGenreArtist", inFavouritesGenreArtist(u"B"_s), u"FFEX?Interpret??B"_s},
        Row{"StatisticsYear", statisticsYear(2026), u"STATE?dir??2026"_s},
        Row{"StatisticsMonth", statisticsMonth(2026, 3), u"STATE?dirmon??2026_3"_s},
        Row{"Group", group(4), u"PLGROUP?Gruppe??4"_s},
        Row{"Playlist", playlist(4), u"PLG?Playlist??4"_s},
        Row{"JingleList", jingleList(4), u"Jingle?Playlist??4"_s},
        Row{"JingleGroup", jingleGroup(), u"Dir.Jingle?JingleGruppe?\?-1"_s},
        Row{"JingleGroupLookup", jingleGroupLookup(), u"Dir.Jingle?Jingle?\?-1"_s},
        Row{"InformationPlaylist", informationPlaylist(4), u"PLAY?Playlist??4"_s},
        Row{"Information", information(u"Jahr"_s, u"1999"_s), u"INFO?Jahr??1999"_s},
        Row{"InformationRoot", informationRoot(), u"INFO?info"_s},
        Row{"Heading", heading(), u"Info?Info"_s},
        Row{"ExtendedHeading", extendedHeading(3), u"Info?Info??3"_s},
        Row{"Extended", extended(u"Tempo"_s, u"x"_s), u"Info?Tempo??x"_s},
        Row{"RunProc", runProc(u"Sleeve.Viewer"_s, u"a.jpg"_s), u"RunProc?Sleeve.Viewer??a.jpg"_s}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TreeKey, EveryTypeIsTakenForItself)
{
    EXPECT_EQ(typeOf(directory(u"/"_s)), Type::Directory);
    EXPECT_EQ(typeOf(favouriteDirectory(u"/"_s)), Type::FavouriteDirectory);
    EXPECT_EQ(typeOf(genre(u"R"_s)), Type::Genre);
    EXPECT_EQ(typeOf(favouriteGenre(u"R"_s)), Type::FavouriteGenre);
    EXPECT_EQ(typeOf(genreArtist(u"R"_s, u"B"_s)), Type::GenreArtist);
    EXPECT_EQ(typeOf(favouriteGenreArtist(u"R"_s, u"B"_s)), Type::FavouriteGenreArtist);
    EXPECT_EQ(typeOf(artistLetter(u'Z')), Type::ArtistLetter);
    EXPECT_EQ(typeOf(artist(u"B"_s)), Type::Artist);
    EXPECT_EQ(typeOf(favouriteArtist(u"B"_s)), Type::FavouriteArtist);
    EXPECT_EQ(typeOf(album(u"A"_s)), Type::Album);
    EXPECT_EQ(typeOf(favouriteAlbum(u"A"_s)), Type::FavouriteAlbum);
    EXPECT_EQ(typeOf(group(1)), Type::Group);
    EXPECT_EQ(typeOf(playlist(1)), Type::Playlist);
    EXPECT_EQ(typeOf(madeFavourite(playlist(1))), Type::FavouritePlaylist);
    EXPECT_EQ(typeOf(inFavouritesGenre(u"R"_s)), Type::InFavouritesGenre);
    EXPECT_EQ(typeOf(u"dir?Path?\?/"_s), Type::Other);
    EXPECT_TRUE(isPlaylistRow(playlist(1)));
    EXPECT_TRUE(isJingleRow(jingleList(1)));
    EXPECT_FALSE(isJingleRow(jingleGroup()));
}

TEST(TreeKey, ARowMadeAFavouriteInPlaceKeepsItsStarAndComesBack)
{
    EXPECT_EQ(madeFavourite(directory(u"/m/"_s)), u"FAV?Path?\?/m/*"_s);
    for (const QString& key : {directory(u"/m/"_s), genre(u"R"_s), genreArtist(u"R"_s, u"B"_s),
                               album(u"A"_s), artist(u"B"_s), playlist(3)}) {
        EXPECT_NE(madeFavourite(key), key);
        EXPECT_EQ(unmadeFavourite(madeFavourite(key)), key);
    }
    EXPECT_EQ(madeFavourite(group(3)), group(3));
}

TEST(TreeKey, AWordInAValueIsChangedToo)
{
    EXPECT_EQ(madeFavourite(album(u"ABM? live"_s)), u"AFAV?Album??AFAV? live"_s);
}

TEST(TreeKey, AnIdIsWhatStandsBehindTheFirstMark)
{
    EXPECT_EQ(idOf(playlist(42)), 42);
    EXPECT_EQ(idOf(jingleGroup()), -1);
    EXPECT_EQ(idOf(heading()), 0);
    EXPECT_EQ(playlistId(playlist(42)), u"42"_s);
    EXPECT_EQ(playlistId(jingleList(5)), u"5"_s);
    EXPECT_EQ(playlistId(group(5)), QString());
    EXPECT_EQ(groupId(group(5)), u"5"_s);
    EXPECT_EQ(groupId(jingleGroup()), u"-1"_s);
    EXPECT_EQ(groupId(playlist(5)), QString());
    EXPECT_EQ(groupId(jingleGroupLookup()), QString());
}

TEST(TreeKey, EnteringARowRunsAFunctionOrTellsTheCell)
{
    EXPECT_EQ(enterMessage(*split(runProc(u"Sleeve.Viewer"_s, u"a"_s))), u"Run.Proc"_s);
    EXPECT_EQ(enterMessage(*split(album(u"a"_s))), u"tree.enter.cell"_s);
}

} // namespace
} // namespace melovane::treekey
