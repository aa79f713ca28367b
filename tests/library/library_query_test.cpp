#include "library/library_query.h"
#include "store/track_fields.h"
#include "support/suite_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class LibraryQueryTest : public test::SuiteFixture
{
protected:
    LibraryQueryTest()
    {
        fid = suite.library.add({.Titel = u"Wilde Nacht"_s,
                                 .Interpret = u"Anna"_s,
                                 .Album = u"Eins"_s,
                                 .Genre = u"Rock"_s,
                                 .Note = u"5"_s,
                                 .BPM = u"95"_s,
                                 .PlayCountAll = 1});
        suite.library.add({.Titel = u"Bremse"_s,
                           .Interpret = u"Wilde Leute"_s,
                           .Note = u"4"_s,
                           .BPM = u"120"_s,
                           .PlayCountAll = 3});
        suite.library.add({.Titel = u"Fort"_s, .Interpret = u"Wilde"_s, .DEL = -1});
        suite.library.add({.Titel = u"Weg"_s, .Interpret = u"Wilde"_s, .DEL = 2});
        suite.library.add(
            {.Titel = u"Scheibe"_s, .Path = u"E:\\m\\"_s, .DriveTyp = 4, .DriveName = u"Disc1"_s});
        query.configure(suite.dbName());
        query.setSorting(u"Titel"_s, u"ASC"_s);
    }

    [[nodiscard]] QStringList titles(const QString& statement)
    {
        QStringList result;
        const auto database = suite.open();
        const auto set = database->OpenRecordset(statement);
        for (; !set->Eof(); set->MoveNext()) {
            result.append(set->value(u"Titel").toText());
        }
        return result;
    }

    QString fid;
    LibraryQuery query{*suite.engine};
};

// ---- the search line

TEST_F(LibraryQueryTest, ATextIsFoundInEachFieldThatTheSearchLineLooksInto)
{
    const auto settings = suite.makeSettings();
    for (const auto choose : {&GlobalSettings::SetSuchAlbum, &GlobalSettings::SetSuchKommentar,
                              &GlobalSettings::SetSuchDatei, &GlobalSettings::SetSuchPath}) {
        ((*settings).*choose)(1);
    }
    const QString statement = query.searchStatement(u"Nadel"_s, chosenSearchColumns(*settings));
    EXPECT_EQ(searchedFields().size(), 6U);
    for (const TrackField field : searchedFields()) {
        const QString column = columnOf(field).toString();
        suite.execute(
            u"insert into db_all (FID, %1) values ('826816166999', 'Nadel')"_s.arg(column));
        EXPECT_EQ(titles(statement).size(), 1) << column.toStdString();
        suite.execute(u"delete from db_all where FID='826816166999'"_s);
    }
    EXPECT_EQ(titles(statement), QStringList());
}

TEST_F(LibraryQueryTest, AStatementOverAllChoicesIsThisOneToTheLetter)
{
    const auto settings = suite.makeSettings();
    for (const auto choose : {&GlobalSettings::SetSuchAlbum, &GlobalSettings::SetSuchKommentar,
                              &GlobalSettings::SetSuchDatei, &GlobalSettings::SetSuchPath}) {
        ((*settings).*choose)(1);
    }
    const QString statement = query.searchStatement(u"x"_s, chosenSearchColumns(*settings));
    EXPECT_EQ(
        statement.sliced(statement.indexOf(u" from "_s)),
        u" from db_all\n where ( [Titel] like 'x*' or  [Interpret] like 'x*' or  [Album] like 'x*' "
        "or  [Kommentar] like 'x*' or  [Dname] like 'x*' or  [Path] like 'x*'  )  and del in "
        "(0,-1) \norder by [Titel] ASC , [Track] ASC   , [Interpret] ASC  "_s);
}

TEST_F(LibraryQueryTest, PlainTextIsFoundAtTheBeginningOfTitleAndArtist)
{
    const QString statement = query.searchStatement(u"Wilde"_s, {});
    EXPECT_TRUE(
        statement.endsWith(
            u" from db_all\n where ( [Titel] like 'Wilde*' or  [Interpret] like 'Wilde*'  )  and del in "
            "(0,-1) \norder by [Titel] ASC , [TRACK] ASC   , [INTERPRET] ASC  "_s) ||
        statement.contains(u"[Titel] like 'Wilde*'"_s));
    EXPECT_EQ(titles(statement), (QStringList{u"Bremse"_s, u"Fort"_s, u"Wilde Nacht"_s}));
}

TEST_F(LibraryQueryTest, CountGreaterOneFindsRowsPlayedOnceOrMore)
{
    const QString statement = query.searchStatement(u"Count>1"_s, {});
    EXPECT_TRUE(statement.contains(u"[PlayCountAll] >=1"_s));
    EXPECT_EQ(titles(statement), (QStringList{u"Bremse"_s, u"Wilde Nacht"_s}));
}

TEST_F(LibraryQueryTest, AGreaterOrEqualSearchOnTempoComparesTexts)
{
    EXPECT_EQ(titles(query.searchStatement(u"BPM>90"_s, {})), (QStringList{u"Wilde Nacht"_s}));
    EXPECT_EQ(titles(query.searchStatement(u"B=120"_s, {})), (QStringList{u"Bremse"_s}));
}

TEST_F(LibraryQueryTest, ARatingIsFoundByTheMarkThatIsTyped)
{
    EXPECT_EQ(titles(query.searchStatement(u"Note=1"_s, {})), (QStringList{u"Wilde Nacht"_s}));
    EXPECT_EQ(titles(query.searchStatement(u"N<2"_s, {})),
              (QStringList{u"Bremse"_s, u"Wilde Nacht"_s}));
    EXPECT_TRUE(query.searchStatement(u"Note=1"_s, {}).contains(u"[Note] = '5'"_s));
}

TEST_F(LibraryQueryTest, AWordWithTheLettersOfTheShortFormsIsSearchedAsTyped)
{
    EXPECT_TRUE(query.searchStatement(u"Notebook"_s, {}).contains(u"[Titel] like 'Notebook*'"_s));
}

// ---- trees

TEST_F(LibraryQueryTest, ATreeNodeFindsEqualValues)
{
    EXPECT_EQ(titles(query.treeStatement({u"Genre"_s, u"Genre"_s, u"rock"_s}, {})),
              (QStringList{u"Wilde Nacht"_s}));
    EXPECT_EQ(titles(query.treeStatement({u"Interpret"_s, u"Interpret"_s, u"Wilde"_s}, {})),
              (QStringList{u"Fort"_s}));
}

TEST_F(LibraryQueryTest, ThePlacesOfADiscAreFoundByItsName)
{
    EXPECT_EQ(titles(query.treeStatement({u"CDDIR"_s, u"Disc1"_s, u"E:\\m\\"_s}, {})),
              (QStringList{u"Scheibe"_s}));
    EXPECT_EQ(titles(query.treeStatement({u"cddir"_s, u"Disc2"_s, u"E:\\m\\"_s}, {})),
              QStringList());
}

TEST_F(LibraryQueryTest, APlaylistIsShownInItsOrderAndTheSortingOfTheViewStays)
{
    const QString second = suite.library.add({.Titel = u"Zum Schluss"_s});
    const int list = suite.library.addPlaylist({.tracks = {second, fid}});
    const QString statement =
        query.treeStatement({u"Playlist"_s, u"PNID"_s, QString::number(list)}, {});
    EXPECT_EQ(query.view(), LibraryView::PLGrid);
    EXPECT_EQ(titles(statement), (QStringList{u"Zum Schluss"_s, u"Wilde Nacht"_s}));
    EXPECT_EQ(query.SortColName(), u"Titel"_s);
    EXPECT_EQ(titles(query.searchStatement(u"Bre"_s, {})), (QStringList{u"Bremse"_s}));
    EXPECT_EQ(query.view(), LibraryView::DBGrid);
}

TEST_F(LibraryQueryTest, ASortInAPlaylistAddsNoSecondaryOrderForColumnsThatItLacks)
{
    const auto orderBy = [this] {
        (void)query.treeStatement({u"playlist"_s, u"PNID"_s, u"1"_s}, {});
        const QString statement = query.sortedBy(u"Titel"_s, u"DESC"_s);
        EXPECT_EQ(titles(statement), QStringList());
        return statement.sliced(statement.indexOf(u"order by"_s)).simplified();
    };
    EXPECT_EQ(orderBy(), u"order by [Titel] DESC , [Track] ASC , [Interpret] ASC"_s);

    const auto database = suite.open();
    database->queryDefs().Delete(u"VDBPL_ALL"_s);
    (void)database->CreateQueryDef(u"VDBPL_ALL"_s,
                                   u"select pl_all.PNID, pl_all.SID, pl_all.PLID, db_all.FID, "
                                   "db_all.Titel, db_all.Interpret, db_all.DEL "
                                   "from pl_all inner join db_all on pl_all.FID = db_all.FID"_s);
    query.configure(suite.dbName());
    EXPECT_EQ(orderBy(), u"order by [Titel] DESC , [Interpret] ASC"_s);
}

TEST_F(LibraryQueryTest, TheStatisticsSortByTimeOfPlayUntilAHeaderIsClicked)
{
    suite.library.addPlayback(fid, QDateTime(QDate(2026, 5, 4), QTime(21, 30)));
    const QString statement =
        query.treeStatement({u"Statistik"_s, u"tday:long"_s, u"20260504"_s}, {});
    EXPECT_EQ(query.view(), LibraryView::DBState);
    EXPECT_EQ(titles(statement), (QStringList{u"Wilde Nacht"_s}));
    EXPECT_EQ(query.SortColName(), u"Play"_s);
    EXPECT_EQ(query.SortRichtung(), u"ASC"_s);
    EXPECT_TRUE(query.searchStatement(u"x"_s, {}).contains(u"order by [Play] ASC"_s));
    (void)query.treeStatement({u"Statistik"_s, u"tday:long"_s, u"20260504"_s}, {});
    EXPECT_TRUE(query.sortedBy(u"Play"_s, u"DESC"_s).endsWith(u"order by [Play] DESC"_s));
    (void)query.sortedBy(u"Titel"_s, u"ASC"_s);
    EXPECT_EQ(query.SortColName(), u"Titel"_s);
}

TEST_F(LibraryQueryTest, AllFindSearchesTitleArtistAndTheChosenColumns)
{
    const QString statement = query.treeStatement({u"allfind"_s, {}, u"*Eins*"_s}, {u"Album"_s});
    EXPECT_EQ(titles(statement), (QStringList{u"Wilde Nacht"_s}));
}

TEST_F(LibraryQueryTest, ByNumberComparesNumbers)
{
    const QString statement = query.treeStatement({u"Info"_s, u"PlayCountAll"_s, u"3"_s, 1}, {});
    EXPECT_EQ(titles(statement), (QStringList{u"Bremse"_s}));
}

TEST_F(LibraryQueryTest, NoValueBreaksAStatement)
{
    for (const QString& value : {u"O'Neil"_s, u"[x]"_s, u"'; delete * from db_all"_s, u"\""_s}) {
        EXPECT_EQ(titles(query.treeStatement({u"Album"_s, u"Album"_s, value}, {})), QStringList());
        EXPECT_EQ(titles(query.treeStatement({u"cddir"_s, value, value}, {})), QStringList());
        EXPECT_EQ(titles(query.searchStatement(value, {u"Album"_s})), QStringList());
    }
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 5);
}

// ---- whole views

TEST_F(LibraryQueryTest, DeletedAndMissingTracksAreShownWhole)
{
    const QString deleted = query.wholeView(LibraryView::DBGridDel);
    EXPECT_FALSE(deleted.contains(u"where"_s));
    EXPECT_EQ(titles(deleted), (QStringList{u"Fort"_s}));
    EXPECT_EQ(titles(query.wholeView(LibraryView::DBGridNoExist)), (QStringList{u"Weg"_s}));
}

TEST_F(LibraryQueryTest, TheSameRequestMakesTheSameTextTwice)
{
    const TreeRequest request{u"Genre"_s, u"Genre"_s, u"Rock"_s};
    EXPECT_EQ(query.treeStatement(request, {}), query.treeStatement(request, {}));
}

TEST_F(LibraryQueryTest, TheChosenColumnsComeInTheirOrder)
{
    const auto settings = suite.makeSettings();
    settings->SetSuchPath(1);
    settings->SetSuchAlbum(1);
    settings->SetSuchDatei(0);
    settings->SetSuchKommentar(1);
    EXPECT_EQ(chosenSearchColumns(*settings), (QStringList{u"Album"_s, u"Kommentar"_s, u"Path"_s}));
}

} // namespace
} // namespace melovane
