#include "library/view_fixture.h"

#include <QSignalSpy>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The search line, its list and the ways back.
struct Mp3dbHistoryTest : public test::LibraryViewTest
{
    Mp3dbHistoryTest()
    {
        library.add({{u"Lichtspiel"_s, u"Ostwind"_s, u"Prisma"_s, u"5"_s, 0},
                     {u"Brandung"_s, u"Lichtblick"_s, u"Meer"_s, u"4"_s, 0}});
    }

    [[nodiscard]] QByteArray historyFile()
    {
        return library.folders.folder().read(library.folders.configFile(u"suche.his"_s));
    }

    void back() { view.toolPressed(u"all.db.zur"_s); }

    void forward() { view.toolPressed(u"all.db.vor"_s); }

    QStringList status;
    MLVMessageBus::Subscription listener = library.bus.subscribe([this](const MLVMessage& message) {
        if (message.Command == u"show.statustext"_s) {
            status.append(message.Value1.toText());
        }
    });
};

TEST_F(Mp3dbHistoryTest, TheListOfTheBoxStartsWithTheExamplesAndDelSuchlistBringsThemBack)
{
    start();
    EXPECT_EQ(search.list(), (QStringList{u"Count>1"_s, u"Note=1"_s, u"BPM=130"_s}));
    view.searchEntered(u"Licht"_s);
    EXPECT_EQ(search.list().last(), u"Licht"_s);
    view.DelSuchlist();
    EXPECT_EQ(search.list().size(), 3);
}

TEST_F(Mp3dbHistoryTest, TypingAddsNothingToListOrHistory)
{
    start();
    search.setText(u"Licht"_s);
    EXPECT_EQ(search.list().size(), 3);
    back();
    EXPECT_TRUE(status.isEmpty());
}

TEST_F(Mp3dbHistoryTest, ASearchWithNoHitsOnEnterIsNeitherListedNorPushed)
{
    start();
    view.searchEntered(u"zzz"_s);
    EXPECT_EQ(search.list().size(), 3);
    back();
    EXPECT_TRUE(status.isEmpty());
}

TEST_F(Mp3dbHistoryTest, EmptyTextOnEnterSearchesNothingAndAddsNothing)
{
    start();
    const QString before = view.Data1().RecordSource();
    view.searchEntered(u"   "_s);
    EXPECT_EQ(view.Data1().RecordSource(), before);
    EXPECT_EQ(search.list().size(), 3);
}

TEST_F(Mp3dbHistoryTest, ShortFormsWorkInTheSearchLine)
{
    start();
    search.setText(u"Note=1"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    search.setText(u"N<2"_s);
    EXPECT_EQ(titles().size(), 2);
}

TEST_F(Mp3dbHistoryTest, AnUnfinishedShortFormLeavesTheGridAsItWas)
{
    start();
    search.setText(u"Licht"_s);
    const QStringList before = titles();
    view.search(u"C>"_s);
    EXPECT_EQ(titles(), before);
}

TEST_F(Mp3dbHistoryTest, BackReplaysARequestOfATreeAndNamesIt)
{
    start();
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Meer"_s}, true);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    back();
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
    EXPECT_EQ(status, QStringList{u"Album :: Meer"_s});
    EXPECT_TRUE(grid.keyboard);
    forward();
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbHistoryTest, ABackStepOverATextSearchChangesTheCursorAndTheStatusTextOnly)
{
    start();
    view.searchEntered(u"Brand"_s);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    back();
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(status, QStringList{u"TextSuche :: Brand"_s});
}

TEST_F(Mp3dbHistoryTest, WithoutAHistoryFileAStepBackToTheEmptyEntryChangesNothing)
{
    start();
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    back();
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbHistoryTest, ASecondClickOnTheSameNodeDoesNotRequeryButMovesTheEntryToTheTop)
{
    start();
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Meer"_s}, true);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Meer"_s}, true);
    QSignalSpy refreshed(&view.Data1(), &DataControl::refreshed);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Meer"_s}, true);
    EXPECT_EQ(refreshed.count(), 0);
    back();
    EXPECT_EQ(status, QStringList{u"Album :: Prisma"_s});
}

TEST_F(Mp3dbHistoryTest, AGroupShowsNoRowsAndIsNoEntry)
{
    start();
    const QString before = view.Data1().RecordSource();
    view.FindTreeValue({u"PLAYGruppe"_s, u"GRuppe"_s, u"7"_s}, true);
    EXPECT_EQ(view.Data1().RecordSource(), before);
    back();
    EXPECT_TRUE(status.isEmpty());
}

TEST_F(Mp3dbHistoryTest, TheHistoryComesBackAtTheNextStart)
{
    start();
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Me,er \"x\""_s}, true);
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    view.SaveHist();
    EXPECT_EQ(historyFile(), "\"Album\",0,\"Album\",\"Me,er \"\"x\"\"\"\n"
                             "\"Album\",0,\"Album\",\"Prisma\"\n");
    test::PlainGrid nextGrid;
    test::PlainSearchBox nextSearch;
    ctl_MP3DB next(parts(), {nextGrid, nextSearch, pointer, clipboard}, {});
    QSignalSpy ways(&next, &ctl_MP3DB::historyChanged);
    next.start();
    ASSERT_FALSE(ways.isEmpty());
    EXPECT_TRUE(ways.last()[0].toBool());
    EXPECT_FALSE(ways.last()[1].toBool());
}

TEST_F(Mp3dbHistoryTest, ABrokenHistoryFileKeepsWhatCanBeRead)
{
    library.folders.folder().write(library.folders.configFile(u"suche.his"_s),
                                   "\"Album\",0,\"Album\",\"Meer\"\n\"kaputt\n");
    start();
    view.FindTreeValue({u"Album"_s, u"Album"_s, u"Prisma"_s}, true);
    back();
    ASSERT_EQ(status.size(), 2);
    EXPECT_TRUE(status[0].contains(u"suche.his.damaged"_s)) << "kept aside, and that is told";
    EXPECT_EQ(status[1], u"Album :: Meer"_s);
}

} // namespace
} // namespace melovane
