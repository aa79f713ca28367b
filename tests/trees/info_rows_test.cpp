#include "trees/extended_rows.h"
#include "trees/info_rows.h"
#include "trees/library_tree_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::LibraryTreeTest;

TEST(SearchPatternTest, EverySignThatIsNeitherLetterNorDigitBecomesAStar)
{
    EXPECT_EQ(searchPattern(u"Foo/Bar"_s), u"Foo*Bar"_s);
    EXPECT_EQ(searchPattern(u"Foo Bar - Live"_s), u"Foo*Bar***Live"_s);
    EXPECT_EQ(searchPattern(u"  Ärger 99 ß"_s), u"Ärger*99**"_s)
        << "a letter without a capital is none to this rule";
}

TEST_F(LibraryTreeTest, TheInformationTreeShowsAllThatIsKnownAndLeavesOutWhatIsEmpty)
{
    const QString fid = lists.library.add({.Titel = u"Hafen"_s,
                                           .Interpret = u"Foo/Bar"_s,
                                           .Genre = u"Rock"_s,
                                           .Jahr = u"1999"_s,
                                           .BPM = u"120"_s,
                                           .Path = u"/m/"_s,
                                           .Stimmung = u"ruhig"_s,
                                           .PlayCountAll = 3});
    lists.library.addPlayback(fid, QDateTime(QDate(2026, 3, 1), QTime(22, 0)));
    const int list =
        lists.library.addPlaylist({.Name = u"Abend"_s, .GRID = lists.friday, .tracks = {fid, fid}});
    auto& page = show(TreeKind::Info, u"tree.info"_s);
    EXPECT_EQ(page.note.title, u"Kein Titel gewählt"_s);
    send(u"info.from.fid"_s, fid);
    EXPECT_EQ(page.note, EmptyNote());
    const QStringList texts = page.texts();
    EXPECT_EQ(texts.mid(0, 7),
              (QStringList{u"Informationen"_s, u"  /m/"_s, u"  Rock"_s, u"  Foo/Bar "_s,
                           u"  Hafen "_s, u"  ID3v2 erweitert"_s, u"    Stimmung: ruhig "_s}));
    EXPECT_TRUE(texts.contains(u"  Zuletzt Importiert am: 14.03.2026"_s));
    EXPECT_TRUE(texts.contains(u"  Jahr 1999"_s));
    EXPECT_TRUE(texts.contains(u"  Gesamt 3"_s));
    EXPECT_TRUE(texts.contains(u"  Gespielt am: 01.03.2026"_s));
    EXPECT_EQ(texts.filter(u"Freitag / Abend"_s).size(), 1);
    const QStringList all = keys(page);
    EXPECT_TRUE(all.contains(u"INFO?Interpret??Foo*Bar"_s));
    EXPECT_TRUE(all.contains(u"INFO?DTSImport:date??14/03/2026"_s));
    EXPECT_TRUE(all.contains(u"INFO?FID??"_s + fid.chopped(4) + u'*'));
    EXPECT_TRUE(all.contains(u"PLAY?Playlist??%1"_s.arg(list)));
    EXPECT_TRUE(all.contains(u"INFO?PlayCountall:long??3"_s));
}

TEST_F(LibraryTreeTest, ATempoHasARowForEachTempoNearItButItself)
{
    const QString fid = lists.library.add({.BPM = u"120"_s});
    auto& page = show(TreeKind::Info, u"tree.info"_s);
    send(u"db.refresh.by.fid"_s, fid);
    EXPECT_EQ(page.texts().filter(u"BPM"_s),
              (QStringList{u"  BPM 120"_s, u"    BPM 117"_s, u"    BPM 118"_s, u"    BPM 119"_s,
                           u"    BPM 121"_s, u"    BPM 122"_s, u"    BPM 123"_s}));
    const QString slow = lists.library.add({.BPM = u"2"_s});
    send(u"info.from.fid"_s, slow);
    EXPECT_EQ(page.texts().filter(u"BPM"_s),
              (QStringList{u"  BPM 2"_s, u"    BPM 1"_s, u"    BPM 3"_s, u"    BPM 4"_s,
                           u"    BPM 5"_s}));
}

TEST_F(LibraryTreeTest, ATrackWithoutPlaysHasNoRowsOfDays)
{
    const QString fid = lists.library.add();
    auto& page = show(TreeKind::Info, u"tree.info"_s);
    send(u"info.from.fid"_s, fid);
    EXPECT_TRUE(page.texts().filter(u"Gespielt am"_s).isEmpty());
    EXPECT_TRUE(page.texts().filter(u"Heute"_s).isEmpty());
}

TEST_F(LibraryTreeTest, TheInformationTreeIsOpenedAgainThoughTheRowThatWasCurrentIsGone)
{
    const QString fid = lists.library.add({.Titel = u"Hafen"_s, .Stimmung = u"ruhig"_s});
    const int list =
        lists.library.addPlaylist({.Name = u"Abend"_s, .GRID = lists.friday, .tracks = {fid}});
    auto& page = show(TreeKind::Info, u"tree.info"_s);
    send(u"info.from.fid"_s, fid);
    page.setCurrentRow(page.find(u"PLAY?Playlist??%1"_s.arg(list)));
    ASSERT_GE(page.current, 0);
    show(TreeKind::Dir, u"tree.dir"_s);
    lists.execute(u"delete from pl_all where PNID=%1"_s.arg(list));
    EXPECT_EQ(show(TreeKind::Info, u"tree.info"_s).find(u"PLAY?Playlist??%1"_s.arg(list)), -1);
    EXPECT_TRUE(page.texts().contains(u"  Hafen "_s));
    EXPECT_LT(page.current, page.rowCount());
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LibraryTreeTest, AnInformationMessageIsIgnoredWhileAnotherKindIsSeenAndTheTrackIsKept)
{
    const QString fid = lists.library.add({.Titel = u"Hafen"_s});
    show(TreeKind::Dir, u"tree.dir"_s);
    send(u"info.from.fid"_s, fid);
    EXPECT_EQ(form.pages[size_t(TreeKind::Info)].rowCount(), 0);
    EXPECT_TRUE(show(TreeKind::Info, u"tree.info"_s).texts().contains(u"  Hafen "_s));
}

TEST_F(LibraryTreeTest, EnteringTheCoverRunsTheViewerAndAClickOnItSearchesNothing)
{
    const QString fid = lists.library.add();
    lists.execute(u"update db_all set image='bild 1'"_s);
    cover = u"/data/Image/bild 1.jpg"_s;
    auto& page = show(TreeKind::Info, u"tree.info"_s);
    send(u"info.from.fid"_s, fid);
    const int last = page.rowCount() - 1;
    EXPECT_EQ(page.row(last).image, cover);
    lists.messages.clear();
    tree.rowClicked(last);
    EXPECT_EQ(lists.messages, QStringList{u"Run.Proc|Sleeve.Viewer|bild 1"_s});
}

// ---- the tree that a table describes

class ExtendedTreeTest : public LibraryTreeTest
{
protected:
    ExtendedTreeTest() { lists.execute(u"delete from TreeErweitertConfig"_s); }

    void add(int id,
             int parent,
             const QString& kind,
             const QString& name,
             const QString& sql = {},
             bool open = true)
    {
        QString quoted = sql;
        quoted.replace(u'\'', u"''"_s);
        lists.execute(
            u"insert into TreeErweitertConfig (id,parentid,sid,aktiv,ItemTyp,ItemName,ItemImage,"
            u"ItemField,itemsql,RowLevel,RowLevelItem,RowExpand) values (%1,%2,%1,true,'%3','%4',"
            u"'tree.info','Genre','%5',%6,%7,%8)"_s.arg(id)
                .arg(parent)
                .arg(kind, name, quoted)
                .arg(parent == 0 ? 0 : 1)
                .arg(parent == 0 ? 1 : 2)
                .arg(open ? -1 : 0));
    }
};

const QString kGenres =
    u"select Genre as Name, count(*) as anzahl, 'genre' as imgkey from db_all where Genre <> '' "
    u"group by Genre order by Genre"_s;

TEST_F(ExtendedTreeTest, HeadingsAndTheRowsOfTheirStatementsStandInTheOrderOfTheTable)
{
    lists.library.add({.Genre = u"Rock"_s});
    lists.library.add({.Genre = u"Rock"_s});
    lists.library.add({.Genre = u"Jazz"_s});
    add(1, 0, u"heading"_s, u"Felder"_s);
    add(2, 1, u"data"_s, u"Genre"_s, kGenres);
    add(3, 1, u"heading"_s, u"Leer"_s);
    add(4, 0, u"data"_s, u"Alle"_s, kGenres, false);
    auto& page = show(TreeKind::Erweitert, u"tree.erweitert"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Felder"_s, u"  Genre"_s, u"    Jazz (1)"_s,
                                         u"    Rock (2)"_s, u"  Leer"_s, u"Alle"_s}));
    EXPECT_EQ(keys(page).mid(0, 5),
              (QStringList{u"Info?Info??1"_s, u"Info?Info??2"_s, u"Info?Genre??Jazz"_s,
                           u"Info?Genre??Rock"_s, u"Info?Genre??Leer"_s}));
    EXPECT_EQ(page.row(2).picture, u"tree.genre"_s);
    // A folded heading runs its statement when it is opened.
    ASSERT_TRUE(page.row(5).fillable);
    tree.rowOpening(5);
    EXPECT_EQ(page.texts().mid(5), (QStringList{u"Alle"_s, u"  Jazz (1)"_s, u"  Rock (2)"_s}));
    EXPECT_TRUE(page.isOpen(5));
    EXPECT_EQ(lists.column(u"select RowExpand from TreeErweitertConfig where id=4"_s),
              QStringList{u"-1"_s});
}

TEST_F(ExtendedTreeTest, AnItemWithoutResultsShowsTheTextForIt)
{
    add(4, 0, u"data"_s, u"Alle"_s, kGenres);
    EXPECT_EQ(show(TreeKind::Erweitert, u"tree.erweitert"_s).texts(),
              QStringList{lists.texts.text(u"Tree.Item.No.Data"_s)});
}

TEST_F(ExtendedTreeTest, AWrongStatementLeavesItsHeadingWhichSaysWhyAndTheRestIsShown)
{
    lists.library.add({.Genre = u"Rock"_s});
    add(1, 0, u"data"_s, u"Falsch"_s, u"select Unfug from nirgends"_s);
    add(2, 0, u"data"_s, u"Spalten"_s, u"select Genre from db_all"_s);
    add(3, 0, u"data"_s, u"Alle"_s, kGenres);
    auto& page = show(TreeKind::Erweitert, u"tree.erweitert"_s);
    EXPECT_EQ(page.texts(), (QStringList{u"Falsch"_s, u"Spalten"_s, u"Alle"_s, u"  Rock (1)"_s}));
    EXPECT_TRUE(page.row(0).toolTip.contains(u"nirgends"_s)) << qPrintable(page.row(0).toolTip);
    EXPECT_TRUE(page.row(1).toolTip.contains(u"anzahl"_s));
    EXPECT_TRUE(page.row(2).toolTip.isEmpty());
    EXPECT_EQ(rebuilds, 0);
}

TEST_F(ExtendedTreeTest, WhatIsFoldedIsRememberedInTheTable)
{
    lists.library.add({.Genre = u"Rock"_s});
    add(4, 0, u"data"_s, u"Alle"_s, kGenres);
    auto& page = show(TreeKind::Erweitert, u"tree.erweitert"_s);
    tree.rowToggled(0, false);
    EXPECT_EQ(lists.column(u"select RowExpand from TreeErweitertConfig"_s), QStringList{u"0"_s});
    tree.rowToggled(1, true);
    show(TreeKind::Dir, u"tree.dir"_s);
    show(TreeKind::Erweitert, u"tree.erweitert"_s);
    EXPECT_EQ(page.texts(), QStringList{u"Alle"_s});
    tree.rowOpening(0);
    EXPECT_EQ(lists.column(u"select RowExpand from TreeErweitertConfig"_s), QStringList{u"-1"_s});
}

TEST_F(LibraryTreeTest, EveryShippedRowOfTheExtendedTreeCanBeRun)
{
    lists.library.add({.Genre = u"Rock"_s, .Jahr = u"1999"_s, .Note = u"5"_s, .BPM = u"120"_s});
    const auto database = lists.engine->OpenDatabase(lists.dbName());
    for (const TreeRow& row : extendedRows(*database, lists.texts).rows) {
        EXPECT_EQ(row.toolTip, QString()) << qPrintable(row.text);
    }
}

TEST_F(ExtendedTreeTest, NamesThatTheSystemShipsStandInTheLanguageOfTheUserAndHisOwnAsTheyAre)
{
    add(1, 0, u"heading"_s, u"Einzelne Jahre"_s);
    add(2, 1, u"data"_s, u"Tempobereiche (BPM)"_s, kGenres, false);
    add(3, 0, u"heading"_s, u"Lieblinge (neu)"_s);
    lists.texts.FindObject(u"tree.shipped.einzelnejahre")->Description = u"Single years"_s;
    lists.texts.FindObject(u"tree.shipped.tempobereichebpm")->Description = u"Tempo ranges"_s;
    QStringList shown;
    for (const TreeRow& row :
         extendedRows(*lists.engine->OpenDatabase(lists.dbName()), lists.texts).rows) {
        shown.append(row.text);
    }
    EXPECT_EQ(shown.join(u'|'), u"Single years|Tempo ranges|Lieblinge (neu)"_s);
}

} // namespace
} // namespace melovane
