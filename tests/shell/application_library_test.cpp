#include "platform/controls/status_line.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/search_line.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/open_files.h"
#include "support/wait_for.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The whole console over one of two libraries, whose lists have the same numbers.
class ChangeOfLibraryTest : public test::ApplicationTest
{
protected:
    ChangeOfLibraryTest()
    {
        const QString track = suite.library.add({.Titel = u"Licht"_s});
        const int group = suite.library.addGroup(u"Freitag"_s);
        suite.library.addPlaylist(
            {.Name = u"Erste"_s, .GRID = group, .tracks = {track, track, track}, .IsPlay = true});
        other = suite.file(u"andere.mdb"_s);
        suite.engine->BackupDatabase(suite.dbName(), other);
        const auto database = suite.engine->OpenDatabase(other);
        database->Execute(u"update pl_name set name='Zweite'"_s);
        database->Execute(u"update db_all set titel='Schatten'"_s);
    }

    /// The settings file names that library from now on.
    void nameLibrary(const QString& name) { suite.folders.makeSettings()->SetDbName(name); }

    /// Sends a message as another program does.
    void tell(const QString& id)
    {
        const int console = suite.folders.makeSettings()->MessageHandleDB();
        QProcess process;
        process.start(QString::fromUtf8(MLV_SUITE_SENDER),
                      {suite.folders.environment().runtimeFolder(), QString::number(console),
                       u"number"_s, id, u"0"_s, u"0"_s});
        ASSERT_TRUE(test::waitFor([&] { return process.state() == QProcess::NotRunning; }));
        ASSERT_EQ(process.exitCode(), 0);
    }

    static DataGrid& list(QMainWindow& window)
    {
        return *window.findChild<DataGrid*>(u"PlaylistGrid1"_s);
    }

    static OutlineTree& tree(QMainWindow& window)
    {
        return *window.findChild<OutlineTree*>(u"PlaylistTree"_s);
    }

    static void deleteFirstEntry(QMainWindow& window)
    {
        list(window).selectRow(0);
        QTest::keyClick(&list(window), Qt::Key_Delete);
    }

    static void undo(QMainWindow& window)
    {
        window.findChild<QWidget*>(u"ctl_Playlist1"_s)
            ->findChild<QToolButton*>(u"all.undo"_s)
            ->click();
    }

    static QString status(QMainWindow& window)
    {
        return static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    }

    int entries(const QString& library)
    {
        return suite.engine->OpenDatabase(library)
            ->OpenRecordset(u"select count(*) from pl_all"_s)
            ->value(0)
            .toLong();
    }

    QString other;
};

TEST_F(ChangeOfLibraryTest, EditsGoToTheLibraryOnTheScreenAlsoWhenItsFileIsAwayForAMoment)
{
    nameLibrary(other);
    run([&](QMainWindow& window) {
        ASSERT_TRUE(QFile::rename(other, other + u".away"_s));
        tell(u"1039"_s);
        EXPECT_TRUE(status(window).contains(other)) << qPrintable(status(window));
        ASSERT_TRUE(QFile::rename(other + u".away"_s, other));
        EXPECT_EQ(list(window).model()->rowCount(), 3);
        deleteFirstEntry(window);
        EXPECT_EQ(list(window).model()->rowCount(), 2);
    });
    EXPECT_EQ(entries(other), 2);
    EXPECT_EQ(entries(suite.dbName()), 3);
}

TEST_F(ChangeOfLibraryTest, EveryViewFollowsTheSettingsToAnotherLibraryAndWorksThere)
{
    run([&](QMainWindow& window) {
        deleteFirstEntry(window);
        nameLibrary(other);
        tell(u"1039"_s);
        EXPECT_TRUE(status(window).endsWith(other)) << qPrintable(status(window));
        EXPECT_TRUE(tree(window).row(tree(window).rowCount() - 1).text.startsWith(u"Zweite"_s));
        EXPECT_EQ(list(window).model()->rowCount(), 3) << "its active list is shown";
        auto* line = window.findChild<SearchLine*>(u"Text1"_s);
        line->setText({});
        QTest::keyClicks(line, u"Schat"_s);
        EXPECT_EQ(window.findChild<DataGrid*>(u"TDBGrid1"_s)->model()->rowCount(), 1);

        undo(window);
        EXPECT_EQ(list(window).model()->rowCount(), 3) << "there is nothing to undo here";
        deleteFirstEntry(window);
        deleteFirstEntry(window);
        EXPECT_EQ(list(window).model()->rowCount(), 1);
        EXPECT_EQ(entries(suite.dbName()), 2);
        EXPECT_EQ(entries(other), 1);

        nameLibrary(suite.dbName());
        tell(u"1048"_s);
        EXPECT_EQ(list(window).model()->rowCount(), 2);
        undo(window);
        EXPECT_EQ(list(window).model()->rowCount(), 3) << "its own step";
        EXPECT_EQ(entries(other), 1);
    });
    EXPECT_EQ(entries(suite.dbName()), 3);
    EXPECT_EQ(entries(other), 1);
}

TEST_F(ChangeOfLibraryTest, ACopiedFolderNeverOpensAFileOfTheFolderThatItWasCopiedFrom)
{
    run([](QMainWindow& window) { deleteFirstEntry(window); });
    const test::TempFolder copy;
    for (const QString& name : QDir(suite.dataFolder()).entryList(QDir::Files)) {
        ASSERT_TRUE(QFile::copy(suite.file(name), copy.file(name)));
    }
    ASSERT_TRUE(QFile::exists(copy.file(u"melovane.undo.mdb"_s)));
    suite.engine->Release(suite.dbName());
    suite.engine->Release(other);
    copyOfFolder = copy.path();
    test::OpenWatch watch(suite.dataFolder());
    run([&](QMainWindow& window) {
        EXPECT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
        undo(window);
        EXPECT_EQ(list(window).model()->rowCount(), 3);
        deleteFirstEntry(window);
    });
    EXPECT_EQ(watch.opened(), "");
}

TEST_F(ChangeOfLibraryTest, TheMediumOfTheFormerLibraryCanBeTakenOut)
{
    const test::TempFolder medium;
    suite.engine->Release(other);
    const QString library = medium.file(u"andere.mdb"_s);
    ASSERT_TRUE(QFile::rename(other, library));
    nameLibrary(library);
    run([&](QMainWindow& window) {
        deleteFirstEntry(window);
        ASSERT_TRUE(QFile::exists(medium.file(u"andere.undo.mdb"_s)));
        nameLibrary(suite.dbName());
        tell(u"1048"_s);
        EXPECT_EQ(list(window).model()->rowCount(), 3);
        EXPECT_EQ(test::openDatabasesIn(medium.path()), "");
    });
}

TEST_F(ChangeOfLibraryTest, ALibraryThatWasLentAndMovedIsTakenBackWhereTheSettingsNameItNow)
{
    run([&](QMainWindow& window) {
        tell(u"1037"_s);
        EXPECT_EQ(list(window).model()->rowCount(), 0);
        ASSERT_TRUE(QFile::remove(suite.dbName()));
        nameLibrary(other);
        tell(u"1038"_s);
        EXPECT_TRUE(tree(window).row(tree(window).rowCount() - 1).text.startsWith(u"Zweite"_s));
        deleteFirstEntry(window);
        EXPECT_EQ(list(window).model()->rowCount(), 2);
    });
    EXPECT_EQ(warnings, QStringList());
    EXPECT_EQ(entries(other), 2);
}

} // namespace
} // namespace melovane
