#include "bus/view_number.h"
#include "shell/console.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The window with a real second program at the other end.
struct WindowSuiteTest : public testing::Test
{
    WindowSuiteTest()
    {
        library.add(
            {{u"Lichtspiel"_s, u"Ostwind"_s, {}, {}, 0}, {u"Brandung"_s, u"Trio"_s, {}, {}, 0}});
        console.window.show();
    }

    /// Runs an errand of the second program while the window goes on; its exit code.
    int run(const QStringList& errand)
    {
        QProcess process;
        process.start(QString::fromUtf8(MLV_SUITE_SENDER),
                      QStringList{library.folders.environment().runtimeFolder(),
                                  QString::number(console.message->handle())} +
                          errand);
        EXPECT_TRUE(test::waitFor([&] { return process.state() == QProcess::NotRunning; }));
        return process.exitCode();
    }

    QStringList titles()
    {
        QStringList result;
        const QAbstractItemModel* model = console.grid().model();
        for (int row = 0; row < model->rowCount(); ++row) {
            result.append(model->index(row, console.grid().columnOf(u"Titel"_s)).data().toString());
        }
        return result;
    }

    test::TestLibrary library;
    test::Console console{library};
};

TEST_F(WindowSuiteTest, AnImportElsewhereIsShownAtOnce)
{
    QTest::keyClicks(&console.searchLine(), u"Neu"_s);
    ASSERT_EQ(titles(), QStringList());
    ASSERT_EQ(run({u"import"_s, library.databaseName(),
                   u"insert into db_all (FID,Titel,DEL) values ('900000000001','Neuland',0)"_s}),
              0);
    EXPECT_EQ(titles(), QStringList{u"Neuland"_s});
}

TEST_F(WindowSuiteTest, AnotherProgramCanReplaceTheDatabaseAndTheWindowTakesItBack)
{
    QTest::keyClicks(&console.searchLine(), u"B"_s);
    ASSERT_EQ(titles(), QStringList{u"Brandung"_s});
    const QString other = library.folders.configFile(u"other.mdb"_s);
    library.engine->BackupDatabase(library.databaseName(), other);
    library.engine->OpenDatabase(other)->Execute(
        u"update db_all set Titel='Beifall' where Titel='Brandung'"_s);
    library.engine->Release(other);
    ASSERT_EQ(run({u"replace"_s, library.databaseName(), other}), 0);
    EXPECT_EQ(titles(), QStringList{u"Beifall"_s});
}

TEST_F(WindowSuiteTest, ADatabaseThatIsMissingWhenTakenBackIsAskedForAndComesBackLater)
{
    QTest::keyClicks(&console.searchLine(), u"B"_s);
    const QString aside = library.folders.configFile(u"aside.mdb"_s);
    console.log.clear();
    ASSERT_EQ(run({u"take"_s, library.databaseName(), aside}), 0);
    ASSERT_TRUE(test::waitFor([&] { return !console.log.isEmpty(); }));
    EXPECT_TRUE(console.log[0].contains(u"Die Datenbankdatei ist nicht vorhanden"_s));
    EXPECT_EQ(titles(), QStringList());
    // Whatever arrives now finds no database, and no program ends over it.
    ASSERT_EQ(run({u"number"_s, u"1048"_s, u"0"_s, u"0"_s, u"1050"_s, u"0"_s, u"0"_s, u"1042"_s,
                   u"1"_s, u"0"_s, u"1039"_s, u"0"_s, u"0"_s}),
              0);
    QTest::keyClicks(&console.searchLine(), u"r"_s);
    QTest::keyClick(&console.window, Qt::Key_F5);
    console.control<QAction>(u"mnuViewDel"_s).trigger();
    console.control<QAction>(u"mnuExpPlaylistBas"_s).trigger();
    EXPECT_TRUE(console.window.isVisible());
    ASSERT_EQ(run({u"give"_s, library.databaseName(), aside}), 0);
    QTest::keyClicks(&console.searchLine(), u"a"_s);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
}

TEST(GuardedEvents, AFailureThatNoHandlerHasStoppedEndsNeitherTheEventLoopNorTheProgram)
{
    QProcess process;
    process.start(QString::fromUtf8(MLV_GUARDED_EVENTS), {});
    ASSERT_TRUE(process.waitForFinished(20'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    // A posted event, one that was sent from a timer, and the slot behind it.
    EXPECT_EQ(process.exitCode(), 3);
}

TEST_F(WindowSuiteTest, TracksAreNotedForEditingByTheViewWhoseMenuItWas)
{
    // As the shipped database has them, in small.
    const auto database = library.engine->OpenDatabase(library.databaseName());
    database->Execute(u"drop table TEMP_MP3Edit"_s);
    database->Execute(u"create table TEMP_MP3Edit (FID text(12), PLID long)"_s);
    database->CreateQueryDef(u"QU_IntersTempMp3Edit"_s,
                             u"parameters INFID text, INPLID long; insert into TEMP_MP3Edit "
                             "(FID,PLID) values (INFID,INPLID)"_s);
    const auto noted = [&database] {
        const auto set = database->OpenRecordset(u"select count(*) as anz from TEMP_MP3Edit"_s);
        return set->value(u"anz").toLong();
    };
    QTest::keyClicks(&console.searchLine(), u"B"_s);
    console.grid().goToRow(0, 0);
    BusSender(library.bus, u"MLVDB"_s).SendMessage(u"fill.temp.edit.table"_s, kViewIsPlaylist);
    EXPECT_EQ(noted(), 0);
    BusSender(library.bus, u"MLVDB"_s).SendMessage(u"fill.temp.edit.table"_s, kViewIsLibrary);
    EXPECT_EQ(noted(), 1);
}

TEST_F(WindowSuiteTest, TheMonitorFallsSilentForAnotherProgram)
{
    console.log.clear();
    ASSERT_EQ(run({u"number"_s, u"1078"_s, u"0"_s, u"0"_s}), 0);
    EXPECT_EQ(console.log, QStringList{u"monitor stop"_s});
}

TEST_F(WindowSuiteTest, ThePlayerDocksTheWindowAndLetsItGo)
{
    console.window.setGeometry(30, 40, 700, 500);
    ASSERT_EQ(run({u"number"_s, u"1049"_s, u"0"_s, u"0"_s}), 0);
    const QRect area = console.window.screenArea();
    EXPECT_EQ(console.window.frameGeometry(), area.adjusted(0, area.height() / 2, 0, 0));
    ASSERT_EQ(run({u"number"_s, u"1051"_s, u"0"_s, u"0"_s}), 0);
    EXPECT_EQ(console.window.geometry(), QRect(30, 40, 700, 500));
}

TEST_F(WindowSuiteTest, ADockedWindowIsNotKeptAtItsPlace)
{
    console.window.setGeometry(30, 40, 700, 500);
    ASSERT_EQ(run({u"number"_s, u"1049"_s, u"0"_s, u"0"_s}), 0);
    console.window.close();
    EXPECT_EQ(library.folders.makeSettings()->Position(u"DBPosition"_s).Left, -1);
}

TEST_F(WindowSuiteTest, NumbersThatTheWindowDoesNotKnowLeaveItAlone)
{
    const QRect before = console.window.geometry();
    console.log.clear();
    ASSERT_EQ(run({u"number"_s, u"1080"_s, u"100"_s, u"1"_s, u"1035"_s, u"100"_s, u"1"_s, u"1056"_s,
                   u"150"_s, u"1"_s, u"2147483647"_s, u"-1"_s, u"-1"_s}),
              0);
    EXPECT_EQ(console.log, QStringList());
    EXPECT_EQ(console.window.geometry(), before);
}

TEST_F(WindowSuiteTest, ABurstOfPlaylistChangesReachesThePlayerOnce)
{
    const auto player = console.messages.makeControl();
    QList<qint32> received;
    player->setMessageNumber([&](qint32 id, qint32, qint32) {
        received.append(id);
        return 0;
    });
    library.settings->SetMessageHandleDJ(player->handle());
    BusSender playlist(library.bus, u"ctl_Playlist"_s);
    for (int i = 0; i < 20; ++i) {
        playlist.SendMessage(u"playlist.change"_s, 1);
    }
    playlist.SendMessage(u"favorit.refresh"_s);
    EXPECT_EQ(received, QList<qint32>{1079});
    ASSERT_TRUE(test::waitFor([&] { return received.size() == 2; }));
    EXPECT_EQ(received, (QList<qint32>{1079, 1042}));
}

TEST_F(WindowSuiteTest, TheHandleInTheSettingsIsThatOfALiveControlUntilTheWindowGoes)
{
    const MessageHandle handle = library.folders.makeSettings()->MessageHandleDB();
    EXPECT_EQ(handle, console.message->handle());
    EXPECT_TRUE(console.messages.IsMsgWindow(handle));
    console.window.close();
    EXPECT_EQ(library.folders.makeSettings()->MessageHandleDB(), 0);
}

} // namespace
} // namespace melovane
