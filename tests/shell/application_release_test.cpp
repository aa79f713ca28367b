#include "platform/controls/status_line.h"
#include "platform/linux/library_loan.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/outline_tree.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/open_files.h"
#include "support/wait_for.h"

#include <QAction>
#include <QFile>
#include <QProcess>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The whole console while another process has the library to itself.
class ReleasedLibraryTest : public test::ApplicationTest
{
protected:
    ReleasedLibraryTest()
    {
        track = suite.library.add({.Titel = u"Licht"_s});
        const int group = suite.library.addGroup(u"Freitag"_s);
        list = suite.library.addPlaylist(
            {.Name = u"Hauptset"_s, .GRID = group, .tracks = {track, track}, .IsPlay = true});
    }

    /// Starts the other process; false when the console did not let go.
    bool takeLibrary()
    {
        const auto settings = suite.folders.makeSettings();
        other.start(QString::fromUtf8(MLV_SUITE_SENDER),
                    {suite.folders.environment().runtimeFolder(),
                     QString::number(settings->MessageHandleDB()), u"hold"_s});
        return test::waitFor([this] { return other.canReadLine(); }) &&
               other.readLine() == "released\n";
    }

    /// What the status line says behind something that the user does, as the program's own
    /// event loop runs it.
    QString after(QMainWindow& window, const std::function<void()>& work)
    {
        StatusLine& status = static_cast<MlvdbWindow&>(window).status();
        status.setPanel(StatusPanel::Message, {});
        running->guarded(work);
        return status.panel(StatusPanel::Message);
    }

    QString afterTool(QMainWindow& window, const QString& panel, const QString& key)
    {
        auto* tool = window.findChild<QWidget*>(panel)->findChild<QToolButton*>(key);
        return after(window, [&] { tool->click(); });
    }

    static QStringList rowsOf(QMainWindow& window)
    {
        const auto* tree = window.findChild<OutlineTree*>(u"PlaylistTree"_s);
        QStringList rows;
        for (int row = 0; row < tree->rowCount(); ++row) {
            rows.append(tree->row(row).text);
        }
        return rows;
    }

    static int titles(QMainWindow& window)
    {
        return window.findChild<DataGrid*>(u"PlaylistGrid1"_s)->model()->rowCount();
    }

    /// Shows the first track of the list in the tag panel; its field for the title.
    QLineEdit* openPanel(QMainWindow& window)
    {
        window.findChild<DataGrid*>(u"PlaylistGrid1"_s)->selectRow(0);
        afterTool(window, u"ctl_Playlist1"_s, u"all.book"_s);
        auto* const title = window.findChild<QLineEdit*>(u"txtTitel"_s);
        EXPECT_TRUE(title->isVisible());
        EXPECT_EQ(title->text(), u"Licht"_s);
        title->setFocus();
        title->selectAll();
        return title;
    }

    [[nodiscard]] QString stored(const QString& column) const
    {
        return suite.value(u"select %1 from db_all where fid='%2'"_s.arg(column, track)).toText();
    }

    QByteArray bytes() { return suite.read(u"melovane.mdb"_s); }

    const QString kLent = u"Ein anderes Programm benutzt die Bibliothek"_s;
    QString track;
    int list = 0;
    QProcess other;
};

TEST_F(ReleasedLibraryTest, NothingIsWrittenUntilItIsGivenBackAndTheUserIsToldWhy)
{
    run([&](QMainWindow& window) {
        auto* grid = window.findChild<DataGrid*>(u"PlaylistGrid1"_s);
        grid->selectRow(0);
        QTest::keyClick(grid, Qt::Key_Delete);
        ASSERT_EQ(titles(window), 1);
        const QStringList rows = rowsOf(window);
        ASSERT_TRUE(takeLibrary());
        const QByteArray before = bytes();
        EXPECT_FALSE(QFile::exists(suite.dbName() + u"-wal"_s));
        for (const QString& key :
             {u"all.newdir"_s, u"all.newdoc"_s, u"all.lock"_s, u"all.activate"_s}) {
            const auto* tool =
                window.findChild<QWidget*>(u"PlaylistFavorit1"_s)->findChild<QToolButton*>(key);
            EXPECT_FALSE(tool->isEnabled()) << qPrintable(key);
            EXPECT_TRUE(tool->toolTip().endsWith(kLent)) << qPrintable(key);
            EXPECT_EQ(afterTool(window, u"PlaylistFavorit1"_s, key), QString());
        }
        // Its rows are away, so the list takes no step back.
        afterTool(window, u"ctl_Playlist1"_s, u"all.undo"_s);
        auto* tree = window.findChild<OutlineTree*>(u"PlaylistTree"_s);
        EXPECT_TRUE(after(window, [&] {
                        emit tree->rowEdited(tree->currentRow(), u"Anders"_s);
                    }).startsWith(kLent));
        EXPECT_EQ(rowsOf(window), rows);
        EXPECT_EQ(bytes(), before);
        EXPECT_FALSE(QFile::exists(suite.dbName() + u"-wal"_s)) << "somebody has opened it";
        other.write("\n");
        ASSERT_TRUE(test::waitFor([this] { return other.state() == QProcess::NotRunning; }));
        EXPECT_EQ(other.exitCode(), 0);
        EXPECT_EQ(titles(window), 1);
        afterTool(window, u"PlaylistFavorit1"_s, u"all.newdir"_s);
    });
    EXPECT_EQ(suite.value(u"select count(*) as anz from pl_group"_s).toLong(), 2);
}

TEST_F(ReleasedLibraryTest, WhatIsTypedInTheTagPanelWhenTheLibraryIsTakenIsNotLost)
{
    run([&](QMainWindow& window) {
        QLineEdit* const title = openPanel(window);
        QTest::keyClicks(title, u"Getippt"_s);
        ASSERT_TRUE(takeLibrary());
        EXPECT_EQ(title->text(), u"Getippt"_s);
        EXPECT_TRUE(title->isReadOnly());
        auto* const message = window.findChild<QLabel*>(u"TagMessage"_s);
        EXPECT_TRUE(message->text().startsWith(kLent)) << message->text().toStdString();
        const QByteArray before = bytes();
        QTest::keyClicks(title, u"x"_s);
        QTest::keyClick(title, Qt::Key_Return);
        EXPECT_EQ(title->text(), u"Getippt"_s);
        EXPECT_EQ(bytes(), before);

        other.write("\n");
        ASSERT_TRUE(test::waitFor([this] { return other.state() == QProcess::NotRunning; }));
        EXPECT_TRUE(test::waitFor([&] { return !title->isReadOnly(); }));
        EXPECT_EQ(title->text(), u"Getippt"_s);
        EXPECT_FALSE(message->isVisible());
        EXPECT_EQ(stored(u"Titel"_s), u"Getippt"_s);
    });
}

TEST_F(ReleasedLibraryTest, AFieldWithSomethingTypedKeepsItWhenAnotherProgramChangesTheRow)
{
    run([&](QMainWindow& window) {
        QLineEdit* const title = openPanel(window);
        QTest::keyClicks(title, u"Getippt"_s);
        suite.execute(
            u"update db_all set Titel='Fremd', Album='Anderes' where fid='%1'"_s.arg(track));
        QTest::keyClick(title, Qt::Key_Return);
        EXPECT_EQ(title->text(), u"Getippt"_s);
        EXPECT_EQ(window.findChild<QLineEdit*>(u"txtAlbum"_s)->text(), u"Anderes"_s);
        EXPECT_EQ(stored(u"Titel"_s), u"Getippt"_s);
        EXPECT_EQ(stored(u"Album"_s), u"Anderes"_s);
    });
}

TEST_F(ReleasedLibraryTest, NoFileOfItStaysOpenBehindTheAnswer)
{
    run([&](QMainWindow& window) {
        auto* grid = window.findChild<DataGrid*>(u"PlaylistGrid1"_s);
        grid->selectRow(0);
        QTest::keyClick(grid, Qt::Key_Delete);
        ASSERT_NE(test::openDatabasesIn(suite.dataFolder()), "");
        ASSERT_TRUE(takeLibrary());
        EXPECT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
        other.kill();
    });
}

TEST_F(ReleasedLibraryTest, NoSideFileThatThisRunHasMadeStaysOpenBehindTheAnswer)
{
    suite.engine->Release(suite.dbName());
    for (const QString& name : {u"melovane.temp.mdb"_s, u"melovane.tree.mdb"_s}) {
        ASSERT_TRUE(QFile::remove(suite.file(name)));
    }
    run([&](QMainWindow& window) {
        auto* grid = window.findChild<DataGrid*>(u"PlaylistGrid1"_s);
        grid->selectRow(0);
        QTest::keyClick(grid, Qt::Key_Delete);
        ASSERT_TRUE(QFile::exists(suite.file(u"melovane.tree.mdb"_s)));
        ASSERT_TRUE(QFile::exists(suite.file(u"melovane.undo.mdb"_s)));
        ASSERT_TRUE(takeLibrary());
        EXPECT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
        other.kill();
    });
}

TEST_F(ReleasedLibraryTest, AProgramThatIsStartedMeanwhileSeesThatItIsLent)
{
    const LibraryLoan loan(suite.files, {suite.folders.environment().runtimeFolder()});
    run([&](QMainWindow& window) {
        EXPECT_FALSE(loan.isLent(suite.dbName()));
        ASSERT_TRUE(takeLibrary());
        EXPECT_TRUE(loan.isLent(suite.dbName()));
        EXPECT_FALSE(loan.isLent(suite.file(u"other.mdb"_s)));
        other.kill();
        EXPECT_TRUE(test::waitFor([&] { return titles(window) == 2; }));
        EXPECT_FALSE(loan.isLent(suite.dbName()));
    });
}

TEST_F(ReleasedLibraryTest, WhatTheOtherProgramHasPutThereIsShownInTheTreeOfLists)
{
    const QString copy = suite.file(u"copy.mdb"_s);
    suite.engine->BackupDatabase(suite.dbName(), copy);
    suite.engine->OpenDatabase(copy)->Execute(u"update pl_name set name='Zurück'"_s);
    suite.engine->Release(copy);
    run([&](QMainWindow& window) {
        ASSERT_TRUE(takeLibrary());
        ASSERT_TRUE(QFile::remove(suite.dbName()));
        ASSERT_TRUE(QFile::rename(copy, suite.dbName()));
        other.write("\n");
        ASSERT_TRUE(test::waitFor([this] { return other.state() == QProcess::NotRunning; }));
        EXPECT_TRUE(rowsOf(window).last().startsWith(u"Zurück"_s));
    });
}

TEST_F(ReleasedLibraryTest, AProgramThatDiesWithoutGivingItBackGivesItBackByThat)
{
    run([&](QMainWindow& window) {
        ASSERT_TRUE(takeLibrary());
        EXPECT_EQ(titles(window), 0);
        other.kill();
        EXPECT_TRUE(test::waitFor([&] { return titles(window) == 2; }));
        EXPECT_FALSE(afterTool(window, u"PlaylistFavorit1"_s, u"all.newdir"_s).startsWith(kLent));
    });
    EXPECT_EQ(suite.value(u"select count(*) as anz from pl_group"_s).toLong(), 2);
}

} // namespace
} // namespace melovane
