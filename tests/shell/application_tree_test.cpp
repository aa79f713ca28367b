// The library tree beside the library in the running console.
#include "platform/qt/outline_tree.h"
#include "shell/application_fixture.h"
#include "support/mp3_maker.h"
#include "support/wait_for.h"
#include "trees/ui/tree_widget.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

#include <utility>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A console over a library of three tracks whose tree tables are filled.
class TreeInWindow : public test::ApplicationTest
{
protected:
    TreeInWindow()
    {
        suite.library.add({.Titel = u"Licht"_s, .Interpret = u"Kaja"_s, .Album = u"Hafen"_s});
        suite.library.add({.Titel = u"Brandung"_s, .Interpret = u"Kaja"_s, .Album = u"Hafen"_s});
        suite.library.add({.Titel = u"Ebbe"_s,
                           .Interpret = u"Mara"_s,
                           .Album = u"Like it's"_s,
                           .Path = u"/music/tief/"_s});
        const auto database = suite.open();
        for (const auto& album : {u"'Hafen',2"_s, u"'Like it''s',2"_s}) {
            database->Execute(
                u"insert into tree_album (Name,anzahl,imgkey) values (%1,'album')"_s.arg(album));
        }
        database->Execute(u"insert into tree_interpret (Name,anzahl,imgkey) values "
                          u"('Mara',1,'interpret')"_s);
        for (const auto& [path, level] :
             {std::pair{u"/"_s, 0}, {u"/music/"_s, 1}, {u"/music/tief/"_s, 2}}) {
            database->Execute(u"insert into tree_dir (Path,Name,rLevel,anzahl,BAnzahl,imgkey,Drive)"
                              u" values ('%1','%1',%2,1,1,'DIR',2)"_s.arg(path)
                                  .arg(level));
        }
    }

    static TreeWidget& tree(QMainWindow& window)
    {
        return *window.findChild<TreeWidget*>(u"Tree1"_s);
    }

    static void press(QMainWindow& window, const QString& tool)
    {
        // In a small window it may stand in the menu of the row.
        tree(window).findChild<QToolButton*>(tool)->click();
    }

    static void click(QMainWindow& window, const QString& key, Qt::KeyboardModifiers modifiers = {})
    {
        OutlineTree& outline = tree(window).outline();
        const int row = outline.find(key);
        ASSERT_GE(row, 0) << qPrintable(key);
        QTest::mouseClick(outline.viewport(), Qt::LeftButton, modifiers,
                          outline.placeOf(row).center());
    }

    static int shown(QMainWindow& window)
    {
        return window.findChild<QTableView*>(u"TDBGrid1"_s)->model()->rowCount();
    }
};

TEST_F(TreeInWindow, AClickInATreeShowsItsTracksInTheLibrary)
{
    run([](QMainWindow& window) {
        press(window, u"tree.album"_s);
        click(window, u"ABM?Album??Hafen"_s);
        EXPECT_EQ(shown(window), 2);
        press(window, u"tree.dir"_s);
        click(window, u"DIR?Path?\?/music/tief/*"_s);
        EXPECT_EQ(shown(window), 1);
        press(window, u"tree.interpret"_s);
        click(window, u"INP?RootInterpret?\?like '[M]*'"_s);
        EXPECT_EQ(shown(window), 1) << "a letter leaves the rows as they are";
        press(window, u"tree.erweitert"_s);
        click(window, tree(window).outline().row(0).key);
        EXPECT_EQ(shown(window), 1) << "a heading neither";
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            EXPECT_FALSE(label->text().contains(u"keine Spalte"_s)) << "and says nothing";
        }
    });
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(TreeInWindow, SeveralRowsOfATreeShowTheTracksOfAll)
{
    run([](QMainWindow& window) {
        press(window, u"tree.album"_s);
        click(window, u"ABM?Album??Hafen"_s);
        EXPECT_EQ(shown(window), 2);
        click(window, u"ABM?Album??Like it's"_s, Qt::ControlModifier);
        EXPECT_EQ(shown(window), 3);
    });
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(TreeInWindow, TicksAreThereAfterARestart)
{
    run([](QMainWindow& window) {
        press(window, u"tree.album"_s);
        OutlineTree& outline = tree(window).outline();
        const int row = outline.find(u"ABM?Album??Hafen"_s);
        QTest::mouseClick(outline.viewport(), Qt::LeftButton, {},
                          outline.tickPlaceOf(row).center());
    });
    run([](QMainWindow& window) {
        EXPECT_EQ(tree(window).outline().objectName(), u"TreeAlbum"_s) << "seen last";
        EXPECT_GE(tree(window).outline().find(u"AFAV?Album??Hafen"_s), 0);
    });
}

TEST_F(TreeInWindow, TheInformationTreeFollowsTheTrackThatIsChosenInTheLibrary)
{
    run([](QMainWindow& window) {
        click(window, u"DIR?Path?\?/*"_s);
        press(window, u"tree.info"_s);
        auto* grid = window.findChild<QTableView*>(u"TDBGrid1"_s);
        grid->setFocus();
        QStringList titles;
        for (int row = 0; row < 3; ++row) {
            grid->setCurrentIndex(grid->model()->index(row, 0));
            const OutlineTree& outline = tree(window).outline();
            for (int line = 0; line < outline.rowCount(); ++line) {
                if (outline.row(line).key.startsWith(u"INFO?Titel"_s)) {
                    titles.append(outline.row(line).text);
                }
            }
        }
        titles.sort();
        EXPECT_EQ(titles, (QStringList{u"Brandung "_s, u"Ebbe "_s, u"Licht "_s}));
    });
}

/// Drops a file on the open list as a file manager does.
bool dropOnList(QMainWindow& window, const QString& file)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QWidget* list = window.findChild<QTableView*>(u"PlaylistGrid1"_s)->viewport();
    const QPoint place = list->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(list, &enter);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(list, &drop);
    return drop.isAccepted();
}

TEST_F(TreeInWindow, TheTreesOfDroppedFilesAreFilledAtOnce)
{
    const int group = suite.library.addGroup(u"Abende"_s);
    suite.library.addPlaylist({.Name = u"Freitag"_s, .GRID = group});
    suite.write(u"neu.mp3"_s, test::simpleMp3(u"Flut"_s, u"Nora"_s));
    const QString told = suite.file(u"told"_s);
    // Stands for the program that fills the trees, and tells how it was called.
    const QString program = suite.file(u"Task.RebuildTree"_s);
    suite.write(u"Task.RebuildTree"_s,
                u"#!/bin/sh\nprintf '[%s]' \"$*\" > '%1.part' && mv '%1.part' '%1'\n"_s
                    .replace(u"%1"_s, told)
                    .toUtf8());
    ASSERT_TRUE(
        QFile(program).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    bool isDropped = false;
    run([&](QMainWindow& window) {
        if (!std::exchange(isDropped, true)) {
            ASSERT_TRUE(dropOnList(window, suite.file(u"neu.mp3"_s)));
            EXPECT_TRUE(test::waitFor([&] { return QFile::exists(told); }));
        }
    });
    EXPECT_EQ(suite.read(u"told"_s), QByteArray("[]")) << "only what is noted";
    QStringList noted = suite.column(u"select TreeName from ChangeTree"_s);
    noted.sort();
    EXPECT_EQ(noted, (QStringList{u"Album"_s, u"Dir"_s, u"Genre"_s, u"Interpret"_s}));
    EXPECT_EQ(warnings, QStringList());
}

} // namespace
} // namespace melovane
