#include "platform/linux/linux_messages.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"
#include "shell/application_fixture.h"
#include "support/wait_for.h"

#include <QMenu>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using test::ApplicationTest;

/// The whole console with another process that plays the player's role.
class PlayerBesideTest : public ApplicationTest
{
protected:
    PlayerBesideTest()
    {
        for (const QString& title : {u"Anfang"_s, u"Mitte"_s, u"Ende"_s}) {
            tracks.append(suite.library.add({.Titel = title}));
        }
        const int group = suite.library.addGroup(u"Freitag"_s);
        suite.library.addPlaylist({.Name = u"Warm-up"_s, .GRID = group, .IsPlay = true});
        list = suite.library.addPlaylist({.Name = u"Hauptset"_s, .GRID = group, .tracks = tracks});
    }

    /// Starts the player with its steps; the caller goes on when it is ready.
    void startPlayer(const QStringList& steps)
    {
        const auto settings = suite.folders.makeSettings();
        player.start(QString::fromUtf8(MLV_SUITE_SENDER),
                     QStringList{suite.folders.environment().runtimeFolder(),
                                 QString::number(settings->MessageHandleDB()), u"player"_s,
                                 suite.dbName(), suite.file(u"melovane.ini"_s)} +
                         steps);
        ASSERT_TRUE(test::waitFor([this] { return player.canReadLine(); }));
        EXPECT_EQ(player.readLine(), "ready\n");
    }

    /// Waits for the end of the player; the lines that it printed.
    QStringList waitForPlayer()
    {
        EXPECT_TRUE(test::waitFor([this] { return player.state() == QProcess::NotRunning; }));
        EXPECT_EQ(player.exitCode(), 0);
        return QString::fromUtf8(player.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }

    QStringList play(const QStringList& steps)
    {
        startPlayer(steps);
        return waitForPlayer();
    }

    static TreeRow rowOf(QMainWindow& window, const QString& name)
    {
        const auto* tree = window.findChild<OutlineTree*>(u"PlaylistTree"_s);
        for (int row = 0; row < tree->rowCount(); ++row) {
            if (tree->row(row).text.startsWith(name)) {
                return tree->row(row);
            }
        }
        return {};
    }

    static DataGrid& gridOf(QMainWindow& window)
    {
        return *window.findChild<DataGrid*>(u"PlaylistGrid1"_s);
    }

    static QStringList titles(QMainWindow& window)
    {
        DataGrid& grid = gridOf(window);
        QStringList result;
        for (int row = 0; row < grid.model()->rowCount(); ++row) {
            result.append(grid.model()->index(row, grid.columnOf(u"Titel"_s)).data().toString());
        }
        return result;
    }

    /// The ground of the cell with the number of a row.
    static QRgb groundOf(QMainWindow& window, int row)
    {
        DataGrid& grid = gridOf(window);
        const QRect cell = grid.visualRect(grid.model()->index(row, grid.columnOf(u"Nr"_s)));
        return grid.viewport()->grab().toImage().pixel(cell.topLeft() + QPoint(3, 3));
    }

    /// Opens the list in the tree, as a click does.
    void openList(QMainWindow& window)
    {
        auto* tree = window.findChild<OutlineTree*>(u"PlaylistTree"_s);
        const int row = tree->find(rowOf(window, u"Hauptset"_s).key);
        tree->setCurrentRow(row);
        emit tree->rowClicked(row);
        ASSERT_EQ(titles(window), (QStringList{u"Anfang"_s, u"Mitte"_s, u"Ende"_s}));
    }

    QString entry(int sid)
    {
        return suite.value(u"select PLID from pl_all where pnid=%1 and sid=%2"_s.arg(list).arg(sid))
            .toText();
    }

    QStringList tracks;
    int list = 0;
    QProcess player;
};

TEST_F(PlayerBesideTest, AnotherPlayingListIsShownWhenThePlayerHasToldIt)
{
    run([&](QMainWindow& window) {
        ASSERT_EQ(rowOf(window, u"Warm-up"_s).picture, u"all.audio"_s);
        const QStringList said = play({u"update pl_name set isplay=false where isplay=true"_s,
                                       u"update pl_name set isplay=true where nid=%1"_s.arg(list),
                                       u"number 1079 0 0"_s});
        EXPECT_EQ(rowOf(window, u"Hauptset"_s).picture, u"all.audio"_s);
        EXPECT_EQ(rowOf(window, u"Warm-up"_s).picture, u"tree.playlist"_s);
        ASSERT_EQ(said.size(), 1);
        RecordProperty("told", said[0].toStdString());
    });
}

TEST_F(PlayerBesideTest, TheEntriesThatPlayAndComeNextAreMarkedWhenThePlayerHasToldThem)
{
    const QString first = entry(1);
    const QString second = entry(2);
    run([&](QMainWindow& window) {
        openList(window);
        gridOf(window).goToRow(2, 0);
        const QRgb plain = groundOf(window, 1);
        const QRgb other = groundOf(window, 0);
        const QStringList said = play({u"number 1045 %1 %2"_s.arg(second, first)});
        EXPECT_NE(groundOf(window, 0), other);
        EXPECT_NE(groundOf(window, 1), plain);
        EXPECT_NE(groundOf(window, 0), groundOf(window, 1));
        ASSERT_EQ(said.size(), 1);
        RecordProperty("told", said[0].toStdString());
    });
}

TEST_F(PlayerBesideTest, EntriesThatThePlayerTookOutAreGoneWhenItHasToldSo)
{
    const QString first = entry(1);
    run([&](QMainWindow& window) {
        openList(window);
        const QStringList said =
            play({u"delete from pl_all where plid=%1"_s.arg(first), u"number 1042 0 0"_s});
        EXPECT_EQ(titles(window), (QStringList{u"Mitte"_s, u"Ende"_s}));
        ASSERT_EQ(said.size(), 1);
        RecordProperty("told", said[0].toStdString());
    });
}

TEST_F(PlayerBesideTest, ATrackToPlayAtOnceLiesInTheMailboxWhenThePlayerHearsOfIt)
{
    run([&](QMainWindow& window) {
        openList(window);
        startPlayer({u"await 1047"_s});
        QTimer chooser;
        QObject::connect(&chooser, &QTimer::timeout, qApp, [] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QAction* action : menu != nullptr ? menu->actions() : QList<QAction*>()) {
                if (action->text().remove(u'&') == "Sofort spielen"_L1) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            }
        });
        chooser.start(std::chrono::milliseconds(20));
        DataGrid& grid = gridOf(window);
        grid.goToRow(1, 0);
        emit grid.rowMenuWanted(1, grid.mapToGlobal(QPoint(20, 20)));
        EXPECT_EQ(waitForPlayer(), QStringList{tracks[1]});
    });
}

} // namespace
} // namespace melovane
