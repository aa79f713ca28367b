// The list tree and the playlist view beside each other in the running console.
#include "platform/controls/status_line.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/mp3_maker.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// A console with the lists "Hauptset" (playing) and "Tanz" of one track each, in one group.
class ListsOnTheScreen : public test::ApplicationTest
{
protected:
    ListsOnTheScreen()
    {
        group = suite.library.addGroup(u"Freitag"_s);
        light = suite.library.add({.Titel = u"Licht"_s});
        surf = suite.library.add({.FID = u"800000000777"_s, .Titel = u"Brandung"_s});
        main = suite.library.addPlaylist(
            {.Name = u"Hauptset"_s, .GRID = group, .tracks = {light}, .IsPlay = true});
        dance = suite.library.addPlaylist({.Name = u"Tanz"_s, .GRID = group, .tracks = {surf}});
    }

    static QTableView& tree(QMainWindow& window)
    {
        return *window.findChild<QTableView*>(u"PlaylistTree"_s);
    }

    static QTableView& entries(QMainWindow& window)
    {
        return *window.findChild<QTableView*>(u"PlaylistGrid1"_s);
    }

    static QString marked(QMainWindow& window)
    {
        return tree(window).currentIndex().data().toString();
    }

    /// The name of the list on the screen.
    static QString shown(QMainWindow& window)
    {
        return window.findChild<QLabel*>(u"ListName"_s)->text();
    }

    static QString status(QMainWindow& window)
    {
        QStringList texts;
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            texts.append(label->text());
        }
        return texts.join(u'|');
    }

    static QModelIndex rowOf(QMainWindow& window, const QString& text)
    {
        const QAbstractItemModel* rows = tree(window).model();
        const QModelIndexList found = rows->match(rows->index(0, 0), Qt::DisplayRole, text, 1,
                                                  Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }

    static QPoint placeOf(QMainWindow& window, const QString& text)
    {
        return tree(window).visualRect(rowOf(window, text)).center();
    }

    static void click(QMainWindow& window, const QString& text)
    {
        QTest::mouseClick(tree(window).viewport(), Qt::LeftButton, {}, placeOf(window, text));
    }

    int group = 0;
    QString light;
    QString surf;
    int main = 0;
    int dance = 0;
};

TEST_F(ListsOnTheScreen, AnImportWithTheJinglesCurrentMakesAnOrdinaryListThatIsOpenAndMarked)
{
    const test::TempFolder folder;
    const QString file = folder.write(u"Neues.m3u"_s, "#MLV:FID=800000000777\nb.mp3\n");
    QTimer user; // the watcher waits for the entries of the menu
    QObject::connect(&user, &QTimer::timeout, qApp, [&] { answered(); });
    user.start(10ms);
    run([&](QMainWindow& window) {
        tree(window).setCurrentIndex(tree(window).model()->index(0, 0));
        chosenFile = file;
        window.findChild<QAction*>(u"mnuImpPlaylistBas"_s)->trigger();
        EXPECT_EQ(marked(window), u"Neues"_s);
        EXPECT_EQ(shown(window), u"Neues"_s);
        // What the tree locks is what is on the screen.
        tree(window).window()->findChild<QToolButton*>(u"all.lock"_s)->click();
    });
    EXPECT_GT(suite.value(u"select grid from pl_name where name='Neues'"_s).toLong(), 0);
    EXPECT_EQ(suite.value(u"select aktion from pl_all where pnid>%1"_s.arg(dance)).toLong(), 0);
    EXPECT_EQ(suite.column(u"select name from pl_name where lock=true"_s), QStringList{u"Neues"_s});
}

TEST_F(ListsOnTheScreen, TracksThatAnImportedListBringsStandInTheLibraryAtOnce)
{
    const test::TempFolder folder;
    folder.write(u"neu.mp3"_s, test::simpleMp3(u"Brandungszone"_s, u"Ostwind"_s));
    chosenFile = folder.write(u"Neues.m3u"_s, "neu.mp3\n");
    QTimer user; // the watcher waits for the entries of the menu
    QObject::connect(&user, &QTimer::timeout, qApp, [&] { answered(); });
    user.start(10ms);
    int before = -1;
    int after = -1;
    run([&](QMainWindow& window) {
        auto* line = window.findChild<QComboBox*>(u"Text1"_s)->lineEdit();
        line->selectAll();
        QTest::keyClicks(line, u"brand"_s);
        const auto* rows = window.findChild<QTableView*>(u"TDBGrid1"_s)->model();
        before = rows->rowCount();
        window.findChild<QAction*>(u"mnuImpPlaylistBas"_s)->trigger();
        after = rows->rowCount();
    });
    EXPECT_EQ(before, 1);
    EXPECT_EQ(after, 2);
}

TEST_F(ListsOnTheScreen, AMenuThatWasBrokenOffLeavesTheOpenListMarked)
{
    run([&](QMainWindow& window) {
        QTimer::singleShot(0, &window, [] { QApplication::activePopupWidget()->close(); });
        QContextMenuEvent event(QContextMenuEvent::Mouse, placeOf(window, u"Tanz"_s), {});
        QApplication::sendEvent(tree(window).viewport(), &event);
        EXPECT_EQ(marked(window), u"Hauptset"_s);
        EXPECT_EQ(shown(window), u"Hauptset"_s);
    });
}

TEST_F(ListsOnTheScreen, UndoOfAnotherListOpensItMarksItsRowAndSaysSo)
{
    run([&](QMainWindow& window) {
        entries(window).selectRow(0);
        window.findChild<QWidget*>(u"ctl_Playlist1"_s)
            ->findChild<QToolButton*>(u"all.delete"_s)
            ->click();
        ASSERT_EQ(entries(window).model()->rowCount(), 0);
        click(window, u"Tanz"_s);
        ASSERT_EQ(shown(window), u"Tanz"_s);
        window.findChild<QAction*>(u"mnuUndo"_s)->trigger();
        EXPECT_EQ(shown(window), u"Hauptset"_s);
        EXPECT_EQ(marked(window), u"Hauptset"_s);
        EXPECT_EQ(entries(window).selectionModel()->selectedRows().size(), 1);
        EXPECT_TRUE(status(window).contains(u"1 Titel aus „Hauptset“ gelöscht"_s))
            << status(window).toStdString();
    });
}

TEST_F(ListsOnTheScreen, ATrackThatIsDeletedInTheLibraryIsStruckThroughInTheOpenListAtOnce)
{
    run([&](QMainWindow& window) {
        auto* library = window.findChild<QTableView*>(u"TDBGrid1"_s);
        const auto painted = [&] { return entries(window).viewport()->grab().toImage(); };
        QTest::keyClicks(window.findChild<QComboBox*>(u"Text1"_s)->lineEdit(), u"*"_s);
        ASSERT_GT(library->model()->rowCount(), 0);
        library->setFocus();
        library->selectAll();
        const QImage before = painted();
        window.findChild<QWidget*>(u"ctl_MP3DB1"_s)
            ->findChild<QToolButton*>(u"all.delete"_s)
            ->click();
        const QImage atOnce = painted();
        EXPECT_NE(atOnce, before);
        window.findChild<QWidget*>(u"ctl_Playlist1"_s)
            ->findChild<QToolButton*>(u"all.refresh"_s)
            ->click();
        EXPECT_EQ(painted(), atOnce) << "what a new reading shows was there before";
    });
}

TEST_F(ListsOnTheScreen, TheEmptyViewOffersANewListAlsoWhereThereIsNone)
{
    suite.execute(u"delete from pl_all"_s);
    suite.execute(u"delete from pl_name"_s);
    suite.execute(u"delete from pl_group"_s);
    run([&](QMainWindow& window) {
        for (QPushButton* button : entries(window).findChildren<QPushButton*>()) {
            if (button->isVisible()) {
                EXPECT_EQ(button->text(), u"Neue Playliste"_s);
                button->click();
            }
        }
        EXPECT_EQ(suite.column(u"select name from pl_name where grid>0"_s).size(), 1);
        EXPECT_EQ(shown(window), suite.value(u"select name from pl_name"_s).toText());
    });
}

TEST_F(ListsOnTheScreen, WithoutAnOpenListTheLibrarysInsertAndAppendSaySo)
{
    suite.execute(u"delete from pl_all"_s);
    suite.execute(u"delete from pl_name"_s);
    run([&](QMainWindow& window) {
        QTest::keyClicks(window.findChild<QComboBox*>(u"Text1"_s)->lineEdit(), u"*"_s);
        auto* library = window.findChild<QTableView*>(u"TDBGrid1"_s);
        ASSERT_GT(library->model()->rowCount(), 0);
        library->setFocus();
        library->selectRow(0);
        StatusLine& status = static_cast<MlvdbWindow&>(window).status();
        for (const QString& key : {u"all.db.insert"_s, u"all.db.append"_s}) {
            status.setPanel(StatusPanel::Message, {});
            auto* button =
                window.findChild<QWidget*>(u"ctl_MP3DB1"_s)->findChild<QToolButton*>(key);
            ASSERT_TRUE(button->isEnabled());
            button->click();
            EXPECT_EQ(status.panel(StatusPanel::Message), u"Keine Playliste geöffnet"_s)
                << key.toStdString();
        }
    });
}

} // namespace
} // namespace melovane
