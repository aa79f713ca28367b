#include "library/view_fixture.h"
#include "platform/db/db_error.h"

#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The library view on the bus, over a real file.
struct Mp3dbMessagesTest : public test::LibraryViewTest
{
    Mp3dbMessagesTest()
    {
        library.add({{u"Lichtspiel"_s, u"Ostwind"_s, u"Prisma"_s, u"4"_s, 0},
                     {u"Licht aus"_s, u"Kanalratten"_s, u"Unter Tage"_s, {}, -1},
                     {u"Brandung"_s, u"Lichtblick"_s, u"Meer"_s, u"5"_s, 0},
                     {u"Licht weg"_s, u"Fort"_s, {}, {}, 2}});
        start();
    }

    void type(const QString& text) { search.setText(text); }

    BusSender others{library.bus, u"MLVDB"_s};
};

TEST_F(Mp3dbMessagesTest, AfterDbDisconnectNothingIsReadUntilDbReconnect)
{
    type(u"Licht"_s);
    ASSERT_EQ(view.Data1().rowCount(), 3);
    others.SendMessage(u"db.disconnect"_s);
    EXPECT_EQ(view.Data1().Database(), nullptr);
    type(u"Brand"_s);
    view.Refresh();
    view.FindTreeValue({u"Titel"_s, u"Titel"_s, u"Brandung"_s}, true);
    view.headerClicked(grid.columnOf(u"Interpret"_s));
    EXPECT_EQ(view.Data1().Database(), nullptr);
    others.SendMessage(u"DB.Reconnect"_s);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s}) << "what was typed meanwhile";
}

TEST_F(Mp3dbMessagesTest, WhileTheLibraryIsLentTheGridAndEveryCommandSayWhy)
{
    const QString note = u"Ein anderes Programm benutzt die Bibliothek"_s;
    QStringList told;
    const auto listener = library.bus.subscribe([&](const MLVMessage& message) {
        if (message.Command == u"show.statustext"_s) {
            told.append(message.Value1.toText());
        }
    });
    QSignalSpy counts(&view, &ctl_MP3DB::countChanged);
    type(u"Licht"_s);
    counts.clear();
    others.SendMessage(u"db.disconnect"_s);
    ASSERT_EQ(counts.size(), 1);
    EXPECT_EQ(counts.takeFirst().at(0).toLongLong(), -1);
    EXPECT_EQ(grid.note.title, note);
    type(u"zz"_s);
    EXPECT_EQ(grid.note.title, note) << "no word of hits";
    EXPECT_EQ(counts.size(), 0);
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"reload", [this] { view.Refresh(); }},
        {"deleted", [this] { view.DB_ALL_DEL(); }},
        {"missing", [this] { view.DB_ALL_NOEXIST(); }},
        {"sort", [this] { view.headerClicked(0); }},
        {"delete", [this] { view.deletePressed(); }},
        {"favourite", [this] { view.toggleFavorit(); }},
        {"rate", [this] { view.digitPressed(4); }},
        {"tree", [this] {
             view.FindTreeValue({u"Titel"_s, u"Titel"_s, u"Brandung"_s}, true);
         }}};
    for (const auto& [name, work] : commands) {
        told.clear();
        work();
        EXPECT_EQ(told, QStringList{note}) << name;
    }
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_TRUE(grid.note.title.contains(u"zz"_s)) << qPrintable(grid.note.title);
}

TEST_F(Mp3dbMessagesTest, AnotherLibraryIsShownAsAtTheStart)
{
    type(u"Licht"_s);
    const QString other = library.folders.configFile(u"other.mdb"_s);
    library.engine->BackupDatabase(library.databaseName(), other);
    library.engine->OpenDatabase(other)->Execute(u"delete from db_all where Titel='Licht aus'"_s);
    view.DB_ALL_DEL();
    others.SendMessage(u"db.disconnect"_s);
    library.settings->SetDbName(other);
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(view.Data1().DatabaseName(), other);
    EXPECT_EQ(view.librarySize(), 3);
    type(u"Licht"_s);
    EXPECT_EQ(titles(), (QStringList{u"Brandung"_s, u"Lichtspiel"_s}));
    grid.current = 0;
    view.digitPressed(1);
    EXPECT_EQ(library.engine->OpenDatabase(library.databaseName())
                  ->OpenRecordset(u"select Note from db_all where Titel='Brandung'"_s)
                  ->value(0)
                  .toText(),
              u"5"_s)
        << "nothing is written into the former library";
}

TEST_F(Mp3dbMessagesTest, BetweenDisconnectAndReconnectTheFileCanBeReplaced)
{
    type(u"Licht"_s);
    grid.current = 1;
    others.SendMessage(u"db.disconnect"_s);
    library.engine->Release(library.databaseName());
    const QString copy = library.folders.configFile(u"copy.mdb"_s);
    library.engine->BackupDatabase(library.databaseName(), copy);
    library.engine->OpenDatabase(copy)->Execute(u"delete from db_all where Titel='Licht aus'"_s);
    library.engine->Release(copy);
    library.engine->Release(library.databaseName());
    ASSERT_TRUE(QFile::remove(library.databaseName()));
    ASSERT_TRUE(QFile::rename(copy, library.databaseName()));
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(titles(), (QStringList{u"Brandung"_s, u"Lichtspiel"_s}));
    EXPECT_EQ(grid.current, 1);
}

TEST_F(Mp3dbMessagesTest, AFileThatIsMissingAtDbReconnectIsTakenBackByALaterOne)
{
    type(u"Licht"_s);
    others.SendMessage(u"db.disconnect"_s);
    library.engine->Release(library.databaseName());
    const QString aside = library.folders.configFile(u"aside.mdb"_s);
    ASSERT_TRUE(QFile::rename(library.databaseName(), aside));
    others.SendMessage(u"db.reconnect"_s);
    others.SendMessage(u"db.change"_s);
    EXPECT_EQ(titles(), QStringList());
    ASSERT_TRUE(QFile::rename(aside, library.databaseName()));
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(titles().size(), 3);
}

TEST_F(Mp3dbMessagesTest, AFileThatWasMissingAtTheStartIsTakenAtDbReconnect)
{
    library.engine->Release(library.databaseName());
    const QString aside = library.folders.configFile(u"aside.mdb"_s);
    ASSERT_TRUE(QFile::rename(library.databaseName(), aside));
    test::PlainGrid late;
    ctl_MP3DB second{parts(), {late, search, pointer, clipboard}, {}};
    EXPECT_THROW(second.start(), DbError);
    others.SendMessage(u"db.disconnect"_s);
    others.SendMessage(u"db.reconnect"_s); // still missing
    ASSERT_TRUE(QFile::rename(aside, library.databaseName()));
    others.SendMessage(u"db.disconnect"_s);
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(second.librarySize(), 4);
    second.search(u"Licht"_s);
    EXPECT_EQ(second.matchCount(), 3);
}

TEST_F(Mp3dbMessagesTest, AfterDbReconnectTheGridStandsWhereItStood)
{
    type(u"Licht"_s);
    grid.current = 2;
    grid.top = 1;
    others.SendMessage(u"db.disconnect"_s);
    grid.current = -1;
    grid.top = 0;
    others.SendMessage(u"db.reconnect"_s);
    EXPECT_EQ(grid.current, 2);
    EXPECT_EQ(grid.top, 1);
    EXPECT_EQ(view.Data1().Recordset()->AbsolutePosition(), 2);
}

TEST_F(Mp3dbMessagesTest, EveryColumnCanBeClickedForSorting)
{
    EXPECT_TRUE(grid.sortButtons);
}

TEST_F(Mp3dbMessagesTest, ToolTipsAreRenewedWhenTextsHaveChanged)
{
    const QSignalSpy wanted(&view, &ctl_MP3DB::toolTipsWanted);
    others.SendMessage(u"update.tolltip.text"_s);
    EXPECT_EQ(wanted.size(), 1);
}

/// What the status line is told from now on.
class StatusTexts
{
public:
    explicit StatusTexts(MLVMessageBus& bus)
        : m_heard(bus.subscribe([this](const MLVMessage& message) {
            if (message.Command == "show.statustext"_L1) {
                texts.append(message.Value1.toText());
            }
        }))
    {}

    QStringList texts;

private:
    MLVMessageBus::Subscription m_heard;
};

TEST_F(Mp3dbMessagesTest, ADatabaseTakenAwayInMidSearchLeavesTheOldRowsAndTellsWhy)
{
    type(u"Licht"_s);
    ASSERT_EQ(titles().size(), 3);
    const QString before = view.Data1().RecordSource();
    const StatusTexts told(library.bus);
    library.execute(u"drop table db_all"_s);
    type(u"Brand"_s);
    EXPECT_EQ(view.Data1().rowCount(), 3);
    EXPECT_EQ(view.Data1().RecordSource(), before);
    ASSERT_EQ(told.texts.size(), 1);
    EXPECT_FALSE(told.texts[0].isEmpty());
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(logged[0].startsWith("ctl_MP3DB.show: "_L1)) << logged[0].toStdString();
    EXPECT_EQ(pointer.depth, 0);
}

TEST_F(Mp3dbMessagesTest, AFileThatIsGoneWhenAnotherKindOfViewIsWantedLeavesTheOldRows)
{
    type(u"Licht"_s);
    const StatusTexts told(library.bus);
    ASSERT_TRUE(QFile::remove(library.databaseName()));
    view.DB_ALL_DEL();
    view.FindTreeValue({u"playlist"_s, {}, u"1"_s}, true);
    view.lookForChanges();
    EXPECT_EQ(titles().size(), 3);
    const QString gone = u"Die Datenbankdatei ist nicht vorhanden: "_s + library.databaseName();
    EXPECT_EQ(told.texts, (QStringList{gone, gone}));
    EXPECT_EQ(logged.size(), 2);
    EXPECT_EQ(pointer.depth, 0);
}

TEST_F(Mp3dbMessagesTest, DbChangeShowsWhatAnotherProgramHasImported)
{
    type(u"Neu"_s);
    ASSERT_EQ(titles(), QStringList());
    library.add({{u"Neuland"_s, u"Ostwind"_s, {}, {}, 0}});
    others.SendMessage(u"db.change"_s);
    EXPECT_EQ(titles(), QStringList{u"Neuland"_s});
    EXPECT_EQ(view.librarySize(), 5);
}

TEST_F(Mp3dbMessagesTest, AClickInATreeShowsTheTracksOfThatValueAndTakesTheKeyboard)
{
    others.SendMessage(u"tree.click.row"_s, u"Ostwind"_s, u"Interpret"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(view.matchCount(), 1);
    EXPECT_TRUE(grid.keyboard);
    others.SendMessage(u"tree.click.row"_s, u"7"_s, u"gruppe"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(Mp3dbMessagesTest, AClickOnALetterOfTheArtistTreeKeepsTheRows)
{
    others.SendMessage(u"tree.click.row"_s, u"Ostwind"_s, u"Interpret"_s);
    const QString before = view.Data1().RecordSource();
    others.SendMessage(u"tree.click.row"_s, u"like '[L]*'"_s, u"RootInterpret"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(view.Data1().RecordSource(), before);
    EXPECT_EQ(view.matchCount(), 1);
}

TEST_F(Mp3dbMessagesTest, ADayOfTheStatisticsIsAskedForAsANumber)
{
    others.SendMessage(u"tree.click.row"_s, u"40575"_s, u"Statistik"_s);
    view.SaveHist();
    const QString file = library.folders.configFile(u"suche.his"_s);
    EXPECT_TRUE(library.folders.files().read(file, 1000).contains("tday:long"));
}

TEST_F(Mp3dbMessagesTest, ABoldFontOfTheSettingsIsTheFontOfTheGrid)
{
    EXPECT_FALSE(grid.font.bold);
    library.settings->WriteKeyValue(u"Color"_s, u"FontBold"_s, u"-1"_s);
    others.SendMessage(u"update.color"_s);
    EXPECT_TRUE(grid.font.bold);
}

TEST_F(Mp3dbMessagesTest, AllFindComparesAllSearchColumnsAndCountsItsOwnRows)
{
    view.FindTreeValue({u"allfind"_s, {}, u"*LICHT*"_s}, true);
    EXPECT_EQ(titles().size(), 3);
    EXPECT_EQ(view.matchCount(), 3);
    view.FindTreeValue({u"allfind"_s, {}, u"LICHT*"_s}, true);
    EXPECT_EQ(titles(), (QStringList{u"Brandung"_s, u"Licht aus"_s, u"Lichtspiel"_s}));
    view.FindTreeValue({u"allfind"_s, {}, u"LICHT"_s}, true);
    EXPECT_EQ(titles(), QStringList());
    view.FindTreeValue({u"allfind"_s, {}, u"it's ] here"_s}, true);
    EXPECT_EQ(titles(), QStringList());
}

TEST_F(Mp3dbMessagesTest, AnEmptyColumnLeavesTheRowsAsTheyWere)
{
    type(u"Brand"_s);
    view.FindTreeValue({u"TextSuche"_s, {}, u"x"_s}, true);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
}

TEST_F(Mp3dbMessagesTest, AViewThatIsNoSearchNamesItselfAndLeavesTheSearchLineEmpty)
{
    QSignalSpy counts(&view, &ctl_MP3DB::countChanged);
    type(u"Licht"_s);
    EXPECT_EQ(counts.last()[1].toString(), QString());
    view.FindTreeValue({u"Titel"_s, u"Titel"_s, u"Brandung"_s}, true);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
    EXPECT_EQ(search.text(), QString());
    EXPECT_EQ(counts.last()[1].toString(), u"„Brandung“"_s);
    type(u"Lichtsp"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(counts.last()[1].toString(), QString());
    view.FindTreeValue({u"Interpret"_s, u"Interpret"_s, u"Niemand"_s}, true);
    EXPECT_EQ(grid.note.title, u"Keine Treffer für „Niemand“"_s);
    // The next start begins with the last search all the same.
    view.end();
    EXPECT_EQ(library.settings->GetKeyValue(u"Default"_s, u"LastDbSearch"_s, {}), u"Lichtsp"_s);
}

TEST_F(Mp3dbMessagesTest, ASearchThatWaitsForEnterIsNotNamedBefore)
{
    library.settings->SetLiveSuche(0);
    search.setText(u"zz"_s);
    view.search(search.text());
    search.setText(u"Licht"_s);
    view.Refresh();
    EXPECT_EQ(grid.note.title, u"Keine Treffer für „zz“"_s);
}

TEST_F(Mp3dbMessagesTest, MarkedAndMissingTracksAreShownUntilTheNextSearch)
{
    const auto database = library.engine->OpenDatabase(library.databaseName());
    database->CreateQueryDef(u"vdb_all_del"_s, u"SELECT * FROM db_all WHERE DEL In (-1, 3)"_s);
    database->CreateQueryDef(u"vdb_all_nofile"_s, u"SELECT * FROM db_all WHERE DEL In (2, 3)"_s);
    view.DB_ALL_DEL();
    EXPECT_EQ(titles(), QStringList{u"Licht aus"_s});
    EXPECT_EQ(view.matchCount(), 1);
    view.DB_ALL_NOEXIST();
    EXPECT_EQ(titles(), QStringList{u"Licht weg"_s});
    type(u"Brand"_s);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
    database->Execute(u"update db_all set DEL=0"_s);
    view.DB_ALL_DEL();
    EXPECT_EQ(grid.note.title, u"Keine Titel als gelöscht markiert"_s);
}

TEST_F(Mp3dbMessagesTest, TheTempoOfTheCurrentTrackIsAskedForWithItsMode)
{
    type(u"Brand"_s);
    grid.current = 0;
    const QString fid = view.GetFID();
    others.SendMessage(u"db.BeatGauge.Menu.Click"_s);
    others.SendMessage(u"db.BeatGauge.Menu.Manuell.Click"_s);
    EXPECT_EQ(tempoSearches, (QStringList{u"auto "_s + fid, u"manuell "_s + fid}));
}

TEST_F(Mp3dbMessagesTest,
       TheSampleToolGetsTheCurrentTrackWhenTheMenuWasTheLibrarysOrItsButtonIsPressed)
{
    type(u"Brand"_s);
    grid.current = -1;
    view.toolPressed(u"all.sample"_s);
    EXPECT_EQ(sampled, QStringList());
    grid.current = 0;
    others.SendMessage(u"show.melovane.kiv"_s, 1);
    others.SendMessage(u"show.melovane.kiv"_s);
    EXPECT_EQ(sampled, QStringList());
    others.SendMessage(u"show.melovane.kiv"_s, 2);
    view.toolPressed(u"all.sample"_s);
    EXPECT_EQ(sampled, (QStringList{view.GetFID(), view.GetFID()}));
}

TEST_F(Mp3dbMessagesTest, TheContextMenuAndTheMonitorAreAskedForWithTheCurrentTrack)
{
    QStringList sent;
    const auto listener = library.bus.subscribe([&](const MLVMessage& message) {
        sent.append(message.Command + u' ' + message.Value1.toText());
    });
    view.contextMenuWanted();
    EXPECT_EQ(sent, QStringList());
    type(u"Brand"_s);
    grid.current = 0;
    const QString fid = view.GetFID();
    view.contextMenuWanted();
    view.toolPressed(u"play.center"_s);
    EXPECT_EQ(sent, (QStringList{u"show.context.menu.mp3db "_s + fid,
                                 u"player.monitor.play.center "_s + fid}));
}

TEST_F(Mp3dbMessagesTest, TheToolBarIsMadeWhenTheWindowAsksForIt)
{
    QSignalSpy wanted(&view, &ctl_MP3DB::toolBarWanted);
    others.SendMessage(u"create.toolbars"_s, QString());
    others.SendMessage(u"create.nothing"_s);
    EXPECT_EQ(wanted.size(), 1);
}

} // namespace
} // namespace melovane
