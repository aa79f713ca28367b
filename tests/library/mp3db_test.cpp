#include "library/view_fixture.h"
#include "platform/db/db_error.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A library of five tracks, or none.
struct Mp3dbTest : public test::LibraryViewTest
{
    void addTracks()
    {
        library.add({{u"Lichtspiel"_s, u"Ostwind"_s, u"Prisma"_s, u"4"_s, 0},
                     {u"Licht aus"_s, u"Kanalratten"_s, u"Unter Tage"_s, {}, -1},
                     {u"Brandung"_s, u"Lichtblick"_s, u"Meer"_s, u"5"_s, 0},
                     {u"Äpfel"_s, u"Trio"_s, u"Licht"_s, {}, 0},
                     {u"Licht weg"_s, u"Fort"_s, {}, {}, 2}});
    }
};

TEST_F(Mp3dbTest, AnEmptyLibraryOffersTheImport)
{
    start();
    EXPECT_EQ(grid.note.title, u"Noch keine Titel - MP3s importieren"_s);
    view.emptyButtonPressed();
    EXPECT_EQ(imports, 1);
}

TEST_F(Mp3dbTest, WithoutALastSearchTheFirstViewIsEmptyAndTellsTheSizeOfTheLibrary)
{
    addTracks();
    start();
    EXPECT_EQ(titles(), QStringList());
    EXPECT_EQ(grid.note.title, u"5 Titel in der Bibliothek"_s);
    EXPECT_EQ(search.text(), QString());
}

TEST_F(Mp3dbTest, TheStartStatementFindsTheStartWord)
{
    library.add({{u"Melovane Jingle"_s, u"Haus"_s, {}, {}, 0}});
    start();
    EXPECT_EQ(titles(), QStringList{u"Melovane Jingle"_s});
    EXPECT_EQ(search.text(), QString());
}

TEST_F(Mp3dbTest, EachChangeOfTheTextShowsWhatBeginsWithIt)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    EXPECT_EQ(titles(), (QStringList{u"Äpfel"_s, u"Brandung"_s, u"Licht aus"_s, u"Lichtspiel"_s}));
    EXPECT_EQ(view.matchCount(), 4);
    search.setText(u"Lichtsp"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(view.matchCount(), 1);
}

TEST_F(Mp3dbTest, AStarFindsTheTextAnywhere)
{
    addTracks();
    start();
    search.setText(u"*aus"_s);
    EXPECT_EQ(titles(), QStringList{u"Licht aus"_s});
    EXPECT_EQ(pointer.shapes.back(), PointerShape::Search);
    EXPECT_EQ(pointer.depth, 0);
}

TEST_F(Mp3dbTest, AnEmptyTextLeavesTheGridAsItIs)
{
    addTracks();
    start();
    search.setText(u"Lichtsp"_s);
    search.setText(u"   "_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbTest, WithLiveSearchOffTypingHasNoEffectUntilEnter)
{
    addTracks();
    start();
    library.settings->SetLiveSuche(0);
    search.setText(u"Lichtsp"_s);
    EXPECT_EQ(titles(), QStringList());
    view.search(search.text());
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbTest, HalfAComparisonLeavesTheRowsAsTheyAre)
{
    addTracks();
    start();
    search.setText(u"Lichtsp"_s);
    for (const QString& half : {u"BPM>"_s, u"b>"_s, u"Note<"_s, u"C>"_s}) {
        search.setText(half);
        EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s}) << half.toStdString();
    }
}

TEST_F(Mp3dbTest, OtherTracksBeginAtTheirFirst)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    grid.goToRow(2, 2);
    search.setText(u"Li"_s);
    EXPECT_EQ(grid.shownRow, 0);
    EXPECT_EQ(grid.current, 2) << "while the user types nothing is selected for him";
    grid.keyboard = true;
    search.setText(u"L"_s);
    EXPECT_EQ(grid.current, 0);
    EXPECT_EQ(grid.top, 0);
}

TEST_F(Mp3dbTest, TheSettingsSayWhichColumnsAreSearchedToo)
{
    addTracks();
    start();
    library.settings->SetSuchAlbum(0);
    search.setText(u"Licht"_s);
    EXPECT_EQ(titles(), (QStringList{u"Brandung"_s, u"Licht aus"_s, u"Lichtspiel"_s}));
    library.settings->SetSuchAlbum(1);
    library.settings->SetSuchKommentar(1);
    library.settings->SetSuchDatei(1);
    library.settings->SetSuchPath(1);
    view.search(search.text());
    const QString statement = view.Data1().RecordSource();
    const QStringList order{u"[Titel] like"_s,     u"[Interpret] like"_s, u"[Album] like"_s,
                            u"[Kommentar] like"_s, u"[Dname] like"_s,     u"[Path] like"_s};
    for (qsizetype index = 1; index < order.size(); ++index) {
        EXPECT_LT(statement.indexOf(order[index - 1]), statement.indexOf(order[index]));
        EXPECT_GT(statement.indexOf(order[index - 1]), 0);
    }
}

TEST_F(Mp3dbTest, TheSameTextTwiceDoesNotRequery)
{
    addTracks();
    start();
    search.setText(u"Licht"_s);
    QSignalSpy refreshed(&view.Data1(), &DataControl::refreshed);
    view.search(u"Licht"_s);
    EXPECT_EQ(refreshed.count(), 0);
}

TEST_F(Mp3dbTest, ASearchWithoutHitsSaysSoAndOffersToSearchInside)
{
    addTracks();
    start();
    search.setText(u"spiel"_s);
    EXPECT_EQ(grid.note.title, u"Keine Treffer für „spiel“"_s);
    EXPECT_FALSE(grid.note.button.isEmpty());
    view.emptyButtonPressed();
    EXPECT_EQ(search.text(), u"*spiel"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(grid.note, EmptyNote());
    EXPECT_EQ(search.focused, 1);
}

TEST_F(Mp3dbTest, ASearchInsideWithoutHitsOffersNothingMore)
{
    addTracks();
    start();
    search.setText(u"*zzz"_s);
    EXPECT_FALSE(grid.note.title.isEmpty());
    EXPECT_TRUE(grid.note.button.isEmpty());
}

TEST_F(Mp3dbTest, NoTextBreaksTheSearch)
{
    addTracks();
    start();
    for (const QString& text : {u"'"_s, u"[L"_s, u"Licht'; drop table db_all"_s, u"?"_s, u"#"_s,
                                QString(10'000, u'L'), u"a\nb"_s, u"\""_s}) {
        search.setText(text);
        EXPECT_EQ(view.Data1().RecordSource().isEmpty(), false);
    }
    search.setText(u"Lichtsp"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbTest, AFailingStatementLeavesTheOldRows)
{
    addTracks();
    start();
    search.setText(u"Lichtsp"_s);
    const QString before = view.Data1().RecordSource();
    library.settings->SetSuchAlbum(1);
    library.execute(u"alter table db_all drop column Album"_s);
    search.setText(u"Brand"_s);
    EXPECT_EQ(view.Data1().rowCount(), 1);
    EXPECT_EQ(view.Data1().RecordSource(), before);
    EXPECT_EQ(pointer.depth, 0);
}

TEST_F(Mp3dbTest, AHeaderClickSortsAndASecondOneTurnsTheOrderRound)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    view.headerClicked(columnOf(u"Interpret"_s));
    EXPECT_EQ(titles(), (QStringList{u"Licht aus"_s, u"Brandung"_s, u"Lichtspiel"_s, u"Äpfel"_s}));
    EXPECT_EQ(grid.arrowColumn, columnOf(u"Interpret"_s));
    EXPECT_EQ(grid.sortArrow, SortArrow::Ascending);
    view.headerClicked(columnOf(u"Interpret"_s));
    EXPECT_EQ(titles(), (QStringList{u"Äpfel"_s, u"Lichtspiel"_s, u"Brandung"_s, u"Licht aus"_s}));
    EXPECT_EQ(grid.sortArrow, SortArrow::Descending);
    view.headerClicked(columnOf(u"Titel"_s));
    EXPECT_EQ(view.SortRichtung(), u"ASC"_s);
}

TEST_F(Mp3dbTest, AThirdClickOnAHeadingSortsAsTheFirstOne)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    view.headerClicked(columnOf(u"Interpret"_s));
    const QStringList first = titles();
    view.headerClicked(columnOf(u"Interpret"_s));
    view.headerClicked(columnOf(u"Interpret"_s));
    EXPECT_EQ(view.SortRichtung(), u"ASC"_s);
    EXPECT_EQ(grid.sortArrow, SortArrow::Ascending);
    EXPECT_EQ(titles(), first);
}

TEST_F(Mp3dbTest, EqualValuesAreOrderedByTrackArtistAndTitle)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    view.headerClicked(columnOf(u"Genre"_s));
    EXPECT_TRUE(view.Data1().RecordSource().endsWith(
        u"order by [Genre] ASC , [Track] ASC   , [Interpret] ASC   , [Titel] ASC  "_s));
}

TEST_F(Mp3dbTest, SortingKeepsTheCurrentTrackAtItsPlaceOnTheScreen)
{
    library.addMany(500);
    start();
    search.setText(u"Titel"_s);
    grid.goToRow(100, 90);
    const QString fid = view.GetFID();
    ASSERT_FALSE(fid.isEmpty());
    view.headerClicked(columnOf(u"Titel"_s));
    EXPECT_EQ(grid.current, 399);
    EXPECT_EQ(grid.top, 389);
    EXPECT_EQ(view.GetFID(), fid);
    EXPECT_EQ(view.Data1().Recordset()->AbsolutePosition(), 399);
}

TEST_F(Mp3dbTest, AClickOnNoColumnChangesNothing)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    const QString before = view.Data1().RecordSource();
    view.headerClicked(999);
    EXPECT_EQ(view.Data1().RecordSource(), before);
}

TEST_F(Mp3dbTest, RefreshStaysOnTheSameTrack)
{
    addTracks();
    start();
    search.setText(u"L"_s);
    grid.goToRow(2, 0);
    const QString fid = view.GetFID();
    library.add({{u"Anfang"_s, u"Licht"_s, {}, {}, 0}});
    view.Refresh();
    EXPECT_EQ(view.Data1().rowCount(), 5);
    EXPECT_EQ(view.GetFID(), fid);
    EXPECT_EQ(grid.current, 3);
}

TEST_F(Mp3dbTest, TheFirstTracksOfTheImporterAreShownWhereNothingIsAskedFor)
{
    start();
    QSignalSpy count(&view, &ctl_MP3DB::countChanged);
    addTracks();
    view.lookForChanges();
    EXPECT_EQ(view.librarySize(), 5);
    EXPECT_EQ(view.Data1().rowCount(), 4) << "without the deleted one";
    EXPECT_EQ(search.text(), QString());
    EXPECT_EQ(grid.note, EmptyNote());
    ASSERT_GE(count.count(), 1);
    EXPECT_EQ(count.last().at(0).toLongLong(), 4);
}

TEST_F(Mp3dbTest, TracksThatComeToOthersAreNotShownUnasked)
{
    addTracks();
    start();
    library.add({{u"Anfang"_s, u"Licht"_s, {}, {}, 0}});
    view.lookForChanges();
    EXPECT_EQ(view.librarySize(), 6);
    EXPECT_EQ(view.Data1().rowCount(), 0);
    EXPECT_EQ(grid.note.title, u"6 Titel in der Bibliothek"_s);
}

TEST_F(Mp3dbTest, ASearchThatWasWaitingForTracksFindsThem)
{
    start();
    search.setText(u"Brand"_s);
    EXPECT_EQ(titles(), QStringList());
    addTracks();
    view.lookForChanges();
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
    EXPECT_EQ(view.matchCount(), 1);
    EXPECT_EQ(grid.note, EmptyNote());
}

TEST_F(Mp3dbTest, AChangedTitleIsShownAnew)
{
    addTracks();
    start();
    search.setText(u"Brand"_s);
    ASSERT_EQ(titles(), QStringList{u"Brandung"_s});
    library.execute(u"update db_all set Titel='Brandneu' where Titel='Brandung'"_s);
    QSignalSpy cells(&view.Data1(), &DataControl::cellsChanged);
    view.lookForChanges();
    EXPECT_EQ(cells.count(), 1);
    EXPECT_EQ(titles(), QStringList{u"Brandneu"_s});
    view.lookForChanges();
    EXPECT_EQ(cells.count(), 1);
}

TEST_F(Mp3dbTest, TheLastSearchAndSortingComeBackAtTheNextStart)
{
    addTracks();
    start();
    search.setText(u" Licht "_s);
    view.headerClicked(columnOf(u"Interpret"_s));
    view.headerClicked(columnOf(u"Interpret"_s));
    view.end();
    EXPECT_EQ(library.settings->GetKeyValue(u"Default"_s, u"LastDbSearch"_s, {}), u"Licht"_s);

    test::PlainGrid nextGrid;
    test::PlainSearchBox nextSearch;
    ctl_MP3DB next(parts(), {nextGrid, nextSearch, pointer, clipboard}, {});
    nextSearch.changed = [&next](const QString& text) { next.searchTextChanged(text); };
    next.start();
    EXPECT_EQ(nextSearch.text(), u"Licht"_s);
    EXPECT_EQ(next.SortColName(), u"Interpret"_s);
    EXPECT_EQ(next.SortRichtung(), u"DESC"_s);
    EXPECT_EQ(nextGrid.sortArrow, SortArrow::Descending);
    EXPECT_EQ(next.Data1().rowCount(), 4);
    EXPECT_EQ(next.matchCount(), 4);
}

TEST_F(Mp3dbTest, WithLiveSearchOffTheLastSearchIsShownAtTheStartAllTheSame)
{
    addTracks();
    library.settings->SetLiveSuche(0);
    library.settings->WriteKeyValue(u"Default"_s, u"LastDbSearch"_s, u"Brand"_s);
    start();
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
}

TEST_F(Mp3dbTest, WithLiveSearchOffARestoredShortFormIsReadAsOne)
{
    addTracks();
    library.settings->SetLiveSuche(0);
    library.settings->WriteKeyValue(u"Default"_s, u"LastDbSearch"_s, u"Note=1"_s);
    start();
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
}

TEST_F(Mp3dbTest, ASortingThatNobodyKnowsFallsBackToTheTitle)
{
    addTracks();
    library.settings->WriteKeyValue(u"Default"_s, u"SortColName"_s, u"x] desc; drop"_s);
    library.settings->WriteKeyValue(u"Default"_s, u"SortRichtung"_s, u"sideways"_s);
    start();
    EXPECT_EQ(view.SortColName(), u"Titel"_s);
    EXPECT_EQ(view.SortRichtung(), u"ASC"_s);
    search.setText(u"L"_s);
    EXPECT_EQ(titles().first(), u"Äpfel"_s);
}

TEST_F(Mp3dbTest, AllRowsAreReadAtOnceWhenTheSettingAsksForIt)
{
    library.addMany(50);
    start();
    library.settings->SetDBGridLoadAllRows(1);
    search.setText(u"Titel"_s);
    EXPECT_EQ(view.Data1().Recordset()->RecordCount(), 50);
    EXPECT_EQ(view.Data1().Recordset()->AbsolutePosition(), 0);
}

TEST_F(Mp3dbTest, AMissingDatabaseIsToldToWhoStartsTheView)
{
    library.settings->SetDbName(library.folders.configFile(u"gone.mdb"_s));
    EXPECT_THROW(view.start(), DbError);
}

TEST(GroupedNumber, HasANarrowSpaceBetweenThousands)
{
    EXPECT_EQ(groupedNumber(999), u"999"_s);
    EXPECT_EQ(groupedNumber(1'234'567), u"1\u202F234\u202F567"_s);
}

} // namespace
} // namespace melovane
