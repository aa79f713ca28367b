#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "trees/favorit_lists.h"
#include "trees/tree_key.h"
#include "trees/ui/playlist_favorit_widget.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
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

    void drop(int from, int to, QPoint offset = {})
    {
        const auto cargo = tree.cargo(from);
        QDropEvent event(pointOf(to) + offset, Qt::MoveAction, cargo.get(), Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &event);
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

} // namespace
} // namespace melovane
