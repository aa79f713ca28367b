#include "platform/controls/status_line.h"
#include "platform/qt/data_grid.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>

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

    static void deleteFirstEntry(QMainWindow& window)
    {
        list(window).selectRow(0);
        QTest::keyClick(&list(window), Qt::Key_Delete);
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

} // namespace
} // namespace melovane
