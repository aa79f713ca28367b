#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "support/wait_for.h"
#include "trees/favorit_lists.h"
#include "trees/tree_key.h"
#include "trees/ui/playlist_favorit_widget.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The playlist panel in a window, over a real file.
class PlaylistFavoritWindow : public testing::Test
{
protected:
    PlaylistFavoritWindow()
    {
        form.attach(panel, lists.texts);
        form.resize(320, 420);
        form.show();
        send(u"create.toolbars"_s);
        send(u"refresh.all"_s, u"start"_s);
        tree.setFocus();
        lists.messages.clear();
    }

    void send(const QString& name, const Value& value = {})
    {
        BusSender(lists.bus, u"MLVDB"_s).SendMessage(name, value);
    }

    QString keyOf(int list) { return treekey::playlist(list); }

    int rowOf(int list) { return tree.find(keyOf(list)); }

    QPoint pointOf(int row) { return tree.placeOf(row).center(); }

    void click(int row) { QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, pointOf(row)); }

    void press(const QString& tool)
    {
        QTest::mouseClick(form.findChild<QToolButton*>(tool), Qt::LeftButton);
    }

    QLineEdit* editor() { return tree.viewport()->findChild<QLineEdit*>(); }

    /// Drags what `cargo` carries to a place and lets it go there; false when it is refused.
    bool drop(const QMimeData& cargo, const QPoint& place)
    {
        QDragEnterEvent enter(place, Qt::MoveAction, &cargo, Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &enter);
        QDragMoveEvent move(place, Qt::MoveAction, &cargo, Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &move);
        QDropEvent event(place, Qt::MoveAction, &cargo, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(tree.viewport(), &event);
        return event.isAccepted();
    }

    bool drop(int from, int to, const QPoint& offset = {})
    {
        return drop(*tree.cargo(from), pointOf(to) + offset);
    }

    test::FavoritLists lists;
    QtMessageLoop loop;
    Skin skin{*qApp};
    IconSet icons{skin};
    PlaylistFavoritWidget form{skin, icons};
    OutlineTree& tree = *form.findChild<OutlineTree*>(u"PlaylistTree"_s);
    PlaylistFavorit panel{lists.parts(loop), form.tree()};
};

TEST_F(PlaylistFavoritWindow, AClickOpensAListAndADoubleClickPlaysIt)
{
    click(rowOf(lists.dance));
    EXPECT_EQ(lists.messages, QStringList{u"playlist.aktivieren|%1|0"_s.arg(lists.dance)});
    lists.messages.clear();
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, pointOf(rowOf(lists.warmUp)));
    EXPECT_TRUE(lists.messages.contains(u"playlist.play|%1"_s.arg(lists.warmUp)));
    EXPECT_EQ(lists.of(lists.warmUp, u"isplay"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritWindow, ArrowKeysWalkFoldAndOpenAndEnterPlays)
{
    click(rowOf(lists.main));
    lists.messages.clear();
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(tree.currentRow(), rowOf(lists.warmUp));
    EXPECT_TRUE(test::waitFor(
        [&] { return lists.messages.contains(u"playlist.aktivieren|%1|0"_s.arg(lists.warmUp)); }));
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_TRUE(lists.messages.contains(u"playlist.play|%1"_s.arg(lists.warmUp)));
    QTest::keyClick(&tree, Qt::Key_Left);
    QTest::keyClick(&tree, Qt::Key_Left);
    EXPECT_EQ(tree.folded(), QStringList{treekey::group(lists.friday)});
    QTest::keyClick(&tree, Qt::Key_Right);
    EXPECT_TRUE(tree.folded().isEmpty());
    QTest::keyClicks(&tree, u"Tan"_s);
    EXPECT_EQ(tree.currentRow(), rowOf(lists.dance));
}

TEST_F(PlaylistFavoritWindow, F2RenamesInPlaceAndEscapeKeepsTheName)
{
    click(rowOf(lists.dance));
    QTest::keyClick(&tree, Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), u"Tanz"_s);
    QTest::keyClicks(editor(), u"Tanzen & mehr"_s);
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(test::waitFor([&] { return !tree.isEditing(); }));
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), u"Tanzen & mehr"_s);
    QTest::keyClick(&tree, Qt::Key_F2);
    QTest::keyClicks(editor(), u"Nein"_s);
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_TRUE(test::waitFor([&] { return !tree.isEditing(); }));
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Tanzen & mehr"_s);
}

TEST_F(PlaylistFavoritWindow, DeleteInANameDeletesALetterAndNotTheList)
{
    click(rowOf(lists.dance));
    QTest::keyClick(&tree, Qt::Key_F2);
    QTest::keyClick(editor(), Qt::Key_Home);
    QTest::keyClick(editor(), Qt::Key_Delete);
    QTest::keyClick(editor(), Qt::Key_F2);
    EXPECT_EQ(editor()->text(), u"anz"_s);
    QTest::keyClick(editor(), Qt::Key_Escape);
    lists.answers.expectMessage(u"''Tanz''"_s, WarningAnswer::Yes);
    QTest::keyClick(&tree, Qt::Key_Delete);
    EXPECT_EQ(rowOf(lists.dance), -1);
}

TEST_F(PlaylistFavoritWindow, ANewPlaylistTakesTheNameThatIsTypedAtOnce)
{
    click(tree.find(treekey::group(lists.saturday)));
    press(u"all.newdoc"_s);
    ASSERT_NE(editor(), nullptr);
    QTest::keyClicks(editor(), u"Mitternacht"_s);
    send(u"refresh.playlist.tree"_s); // another program; the typing goes on
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(test::waitFor([&] { return !tree.isEditing(); }));
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz,Mitternacht"_s);
    EXPECT_EQ(tree.row(tree.currentRow()).text, u"Mitternacht"_s);
}

TEST_F(PlaylistFavoritWindow, ADraggedListMovesToTheUpperOrLowerSideOfARow)
{
    lists.open = Pnid(lists.dance);
    EXPECT_TRUE(drop(rowOf(lists.dance), rowOf(lists.warmUp), {0, -5}));
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Tanz,Warm-up,Reserve"_s);
    drop(rowOf(lists.dance), rowOf(lists.warmUp), {0, 5});
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Tanz,Reserve"_s);
    drop(rowOf(lists.dance), tree.find(treekey::group(lists.saturday)));
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz"_s);
    EXPECT_EQ(tree.currentRow(), rowOf(lists.dance));
}

TEST_F(PlaylistFavoritWindow, ADragOfAnotherTreeIsRefused)
{
    OutlineTree other(skin, icons);
    TreeRow row;
    row.key = keyOf(lists.dance);
    row.movable = true;
    other.setRows({row});
    EXPECT_FALSE(drop(*other.cargo(0), pointOf(rowOf(lists.main))));
    QMimeData text;
    text.setText(row.key);
    EXPECT_FALSE(drop(text, pointOf(rowOf(lists.main))));
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz"_s);
}

TEST_F(PlaylistFavoritWindow, TracksAreDroppedOnAListAndRefusedByAGroup)
{
    QMimeData tracks;
    tracks.setText(u"DRAG_TYP_FID_MP3DB:800000000001"_s);
    EXPECT_FALSE(drop(tracks, pointOf(tree.find(treekey::group(lists.friday)))));
    EXPECT_TRUE(lists.appended.isEmpty());
    EXPECT_TRUE(drop(tracks, pointOf(rowOf(lists.dance))));
    EXPECT_EQ(lists.appended, QStringList{tracks.text() + u" to %1"_s.arg(lists.dance)});
    EXPECT_EQ(tree.currentRow(), rowOf(lists.main)) << "the open list is what it was";
}

TEST_F(PlaylistFavoritWindow, AGroupUnfoldsWhileADragRestsOnItAndItsListTakesTheDrop)
{
    const QString group = treekey::group(lists.saturday);
    tree.setFolded({group});
    QMimeData tracks;
    tracks.setText(u"DRAG_TYP_FID_MP3DB:800000000001"_s);
    const QPoint place = pointOf(tree.find(group));
    QDragEnterEvent enter(place, Qt::CopyAction, &tracks, Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &tracks, Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &move);
    EXPECT_FALSE(move.isAccepted()) << "the pointer is the forbidden one";
    EXPECT_TRUE(test::waitFor([&] { return tree.folded().isEmpty(); }));
    // On an open group nothing happens, however long it rests there.
    QDragMoveEvent aside(pointOf(rowOf(lists.main)), Qt::CopyAction, &tracks, Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &aside);
    QApplication::sendEvent(tree.viewport(), &move);
    auto* const rest = tree.findChild<QTimer*>(u"Timer_DragRest"_s);
    ASSERT_TRUE(rest->isActive());
    EXPECT_TRUE(test::waitFor([&] { return !rest->isActive(); }));
    EXPECT_TRUE(tree.folded().isEmpty());
    EXPECT_TRUE(drop(tracks, pointOf(rowOf(lists.dance))));
}

TEST_F(PlaylistFavoritWindow, ARowThatWasPressedAndNotClickedIsMarkedNoLonger)
{
    ASSERT_EQ(tree.currentRow(), rowOf(lists.main));
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, pointOf(rowOf(lists.dance)));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, pointOf(rowOf(lists.warmUp)));
    EXPECT_EQ(tree.currentRow(), rowOf(lists.main));
    EXPECT_EQ(numberOf(lists.open), lists.main);
    click(rowOf(lists.dance));
    EXPECT_EQ(tree.currentRow(), rowOf(lists.dance));
    EXPECT_EQ(numberOf(lists.open), lists.dance);
}

TEST_F(PlaylistFavoritWindow, ARightClickAndTheMenuKeyOpenTheMenuOfTheRow)
{
    lists.answers.expectPopup(1001);
    QContextMenuEvent event(QContextMenuEvent::Mouse, pointOf(rowOf(lists.dance)), {});
    QApplication::sendEvent(tree.viewport(), &event);
    EXPECT_EQ(lists.of(lists.dance, u"isplay"_s), u"-1"_s);
    lists.answers.expectPopup(1002);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(tree.viewport(), &key);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), u"Tanz"_s);
    // Below its row, not where the mouse happens to be.
    EXPECT_EQ(form.menuPlace(),
              tree.viewport()->mapToGlobal(tree.placeOf(tree.currentRow()).bottomLeft()));
}

TEST_F(PlaylistFavoritWindow, EveryToolHasATipAndAnAccessibleNameAndCanBeTakenAway)
{
    const QStringList keys{u"all.newdoc"_s, u"all.newdir"_s,  u"all.activate"_s, u"all.lock"_s,
                           u"all.book"_s,   u"all.refresh"_s, u"all.delete"_s};
    for (const QString& key : keys) {
        auto* tool = form.findChild<QToolButton*>(key);
        ASSERT_NE(tool, nullptr) << key.toStdString();
        EXPECT_FALSE(tool->toolTip().isEmpty());
        EXPECT_FALSE(tool->accessibleName().isEmpty());
        EXPECT_FALSE(tool->icon().isNull()) << key.toStdString();
    }
    EXPECT_GT(form.ToolBarHeight(), 0);
    form.RemoveToolbarButton(u"all.book"_s);
    EXPECT_EQ(form.findChild<QToolButton*>(u"all.book"_s), nullptr);
    press(u"all.lock"_s);
    EXPECT_EQ(lists.of(lists.main, u"lock"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritWindow, ToolsThatCannotWorkAreGreyAndSayWhy)
{
    const auto tool = [this](const QString& key) { return form.findChild<QToolButton*>(key); };
    const QStringList writing{u"all.newdoc"_s, u"all.newdir"_s, u"all.activate"_s, u"all.lock"_s,
                              u"all.delete"_s};
    lists.mayWrite = false;
    panel.judgeCommands();
    for (const QString& key : writing) {
        EXPECT_FALSE(tool(key)->isEnabled()) << key.toStdString();
        EXPECT_TRUE(tool(key)->toolTip().endsWith(lists.texts.text(u"library.readonly"_s)));
    }
    EXPECT_TRUE(tool(u"all.book"_s)->isEnabled());
    EXPECT_TRUE(tool(u"all.refresh"_s)->isEnabled());
    lists.mayWrite = true;
    send(u"db.disconnect"_s);
    for (const QString& key : writing + QStringList{u"all.book"_s, u"all.refresh"_s}) {
        EXPECT_FALSE(tool(key)->isEnabled()) << key.toStdString();
        EXPECT_TRUE(tool(key)->toolTip().endsWith(lists.texts.text(u"library.lent.title"_s)));
    }
    send(u"db.reconnect"_s);
    for (const QString& key : writing + QStringList{u"all.book"_s, u"all.refresh"_s}) {
        EXPECT_TRUE(tool(key)->isEnabled()) << key.toStdString();
        EXPECT_FALSE(tool(key)->toolTip().contains(u'\n'));
    }
}

TEST_F(PlaylistFavoritWindow, ManyListsKeepTheirPlaceOnTheScreenOverARefill)
{
    for (int list = 0; list < 60; ++list) {
        lists.add(u"Liste %1"_s.arg(list), lists.friday, 10 + list);
    }
    send(u"refresh.all"_s);
    tree.setFirstVisibleRow(30);
    ASSERT_EQ(tree.firstVisibleRow(), 30);
    send(u"refresh.playlist.tree"_s);
    EXPECT_EQ(tree.firstVisibleRow(), 30);
    EXPECT_EQ(tree.currentRow(), rowOf(lists.main));
}

TEST_F(PlaylistFavoritWindow, TheRowsArePaintedInTheColoursOfTheTheme)
{
    const auto ground = [&](int row) {
        const QRect place = tree.placeOf(row);
        return tree.viewport()->grab().toImage().pixelColor(tree.viewport()->width() - 3,
                                                            place.top() + 2);
    };
    EXPECT_EQ(ground(rowOf(lists.dance)), skin.theme().qcolor(ThemeRole::GridColor));
    const QColor chosen = ground(tree.currentRow());
    EXPECT_EQ(chosen, skin.theme().qcolor(tree.hasFocus() ? ThemeRole::GridColorSelGotFocus
                                                          : ThemeRole::GridColorSelLostFocus));
}

} // namespace
} // namespace melovane
