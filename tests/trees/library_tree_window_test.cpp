#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"
#include "trees/library_tree_panel.h"
#include "trees/ui/tree_widget.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The library tree in a window, over a real file.
class LibraryTreeWindow : public test::LibraryTreeTest
{
protected:
    LibraryTreeWindow()
    {
        addDirectory(u"/"_s, 0, u"/"_s, 0, 9);
        addDirectory(u"/a/"_s, 1, u"a"_s, 3, 8);
        addDirectory(u"/a/x/"_s, 2, u"x"_s, 5, 5);
        addNamed(u"tree_album"_s, u"Hafen"_s, 12);
        addNamed(u"tree_album"_s, u"Nachtfahrt"_s, 8);
        addNamed(u"tree_album"_s, u"Nordlicht"_s, 8);
        addNamed(u"tree_interpret"_s, u"Kaja"_s, 4);
        widget.attach(panel, lists.texts);
        widget.resize(300, 500);
        widget.show();
        send(u"create.toolbars"_s);
        panel.start();
        lists.messages.clear();
    }

    void press(const QString& tool)
    {
        QTest::mouseClick(widget.findChild<QToolButton*>(tool), Qt::LeftButton);
        lists.messages.clear();
    }

    OutlineTree& outline() { return widget.outline(); }

    int rowOf(const QString& key) { return outline().find(key); }

    void click(const QString& key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(outline().viewport(), Qt::LeftButton, modifiers,
                          outline().placeOf(rowOf(key)).center());
    }

    QLineEdit& filter() { return *widget.findChild<QLineEdit*>(u"TreeFilter"_s); }

    /// Texts of the rows that are on the screen.
    QStringList seen()
    {
        QStringList texts;
        for (int row = 0; row < outline().rowCount(); ++row) {
            if (outline().placeOf(row).isValid()) {
                texts.append(outline().row(row).text);
            }
        }
        return texts;
    }

    Skin skin{*qApp};
    IconSet icons{skin};
    TreeWidget widget{skin, icons};
    Tree panel{parts(), widget};
};

TEST_F(LibraryTreeWindow, AllTenButtonsHaveAPictureATipAndANameAndTheKindThatIsSeenIsPressed)
{
    const QStringList keys = {u"tree.dir"_s,       u"tree.genre"_s,     u"tree.album"_s,
                              u"tree.interpret"_s, u"tree.playlist"_s,  u"tree.favorit"_s,
                              u"sleeve.viewer"_s,  u"tree.erweitert"_s, u"tree.state"_s,
                              u"tree.info"_s};
    for (const QString& key : keys) {
        auto* button = widget.findChild<QToolButton*>(key);
        ASSERT_NE(button, nullptr) << qPrintable(key);
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(key);
        EXPECT_FALSE(button->toolTip().isEmpty()) << qPrintable(key);
        EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(key);
    }
    EXPECT_TRUE(widget.findChild<QToolButton*>(u"tree.dir"_s)->isChecked());
    press(u"tree.album"_s);
    EXPECT_TRUE(widget.findChild<QToolButton*>(u"tree.album"_s)->isChecked());
    EXPECT_FALSE(widget.findChild<QToolButton*>(u"tree.dir"_s)->isChecked());
    press(u"sleeve.viewer"_s);
    EXPECT_EQ(viewers, 1);
    EXPECT_TRUE(widget.findChild<QToolButton*>(u"tree.album"_s)->isChecked());
}

TEST_F(LibraryTreeWindow, EveryPictureOfARowIsDrawn)
{
    for (const QString& name :
         {u"tree.favorit"_s, u"tree.dir"_s, u"tree.genre"_s, u"tree.album"_s, u"tree.interpret"_s,
          u"tree.playlist"_s, u"all.lock"_s, u"all.audio"_s, u"all.book"_s, u"tree.info"_s,
          u"tree.kalender"_s, u"all.sample"_s, u"tree.drive_0"_s, u"tree.drive_1"_s,
          u"tree.drive_2"_s, u"tree.drive_3"_s, u"tree.drive_4"_s, u"tree.audio"_s,
          u"tree.state"_s}) {
        EXPECT_FALSE(icons.icon(name).isNull()) << qPrintable(name);
    }
}

TEST_F(LibraryTreeWindow, AClickOnARowSearchesForIt)
{
    press(u"tree.album"_s);
    click(u"ABM?Album??Hafen"_s);
    EXPECT_EQ(lists.messages.last(), u"tree.click.row|Hafen|Album|"_s);
    EXPECT_EQ(lists.messages.filter(u"tree.click.row"_s).size(), 1);
}

TEST_F(LibraryTreeWindow, SeveralRowsAreChosenWithCtrlAndSearchedTogether)
{
    press(u"tree.album"_s);
    click(u"ABM?Album??Hafen"_s);
    click(u"ABM?Album??Nordlicht"_s, Qt::ControlModifier);
    EXPECT_EQ(lists.messages.last(),
              u"tree.click.row|[Album] = 'Hafen' or [Album] = 'Nordlicht'|FID:where|"_s);
}

TEST_F(LibraryTreeWindow, TypingInATreeNarrowsItAndEscapeShowsItWholeAgain)
{
    press(u"tree.album"_s);
    outline().setFocus();
    const QStringList all = seen();
    QTest::keyClicks(&outline(), u"n"_s);
    QTest::keyClicks(&filter(), u"ord"_s);
    EXPECT_EQ(filter().text(), u"nord"_s);
    EXPECT_EQ(seen(), (QStringList{u"Album"_s, u"Nordlicht [8]"_s}));
    QTest::keyClick(&filter(), Qt::Key_Escape);
    EXPECT_EQ(seen(), all);
    EXPECT_EQ(filter().text(), QString());
}

TEST_F(LibraryTreeWindow, TheFilterFindsArtistsWhoseLetterWasNeverOpened)
{
    press(u"tree.interpret"_s);
    filter().setText(u"kaj"_s);
    EXPECT_TRUE(seen().contains(u"Kaja [4]"_s)) << qPrintable(seen().join(u'/'));
}

TEST_F(LibraryTreeWindow, SpaceOpensALetterAndTicksAnArtist)
{
    press(u"tree.interpret"_s);
    const QString letter = u"INP?RootInterpret?\?like '[K]*'"_s;
    outline().setCurrentRow(rowOf(letter));
    outline().setFocus();
    QTest::keyClick(&outline(), Qt::Key_Space);
    ASSERT_GE(rowOf(u"IEX?Interpret??Kaja"_s), 0);
    EXPECT_TRUE(outline().isOpen(rowOf(letter)));
    outline().setCurrentRow(rowOf(u"IEX?Interpret??Kaja"_s));
    QTest::keyClick(&outline(), Qt::Key_Space);
    EXPECT_EQ(flag(u"tree_interpret"_s, u"name"_s, u"Kaja"_s), u"-1"_s);
}

TEST_F(LibraryTreeWindow, ABoxIsTickedByTheMouseWithoutASearch)
{
    const int row = rowOf(u"DIR?Path?\?/a/*"_s);
    QTest::mouseClick(outline().viewport(), Qt::LeftButton, {},
                      outline().tickPlaceOf(row).center());
    EXPECT_EQ(flag(u"tree_dir"_s, u"path"_s, u"/a/"_s), u"-1"_s);
    EXPECT_EQ(lists.messages.filter(u"tree.click.row"_s), QStringList());
    EXPECT_EQ(seen().mid(0, 2), (QStringList{u"Favorit"_s, u"a [3 - 8]"_s}))
        << "the first favourite is seen at once";
}

TEST_F(LibraryTreeWindow, TheGroupButtonsStandBesideTheFilterInTheTreeOfListsAlone)
{
    auto* group = widget.findChild<QToolButton*>(u"NEWGENRE"_s);
    auto* doomed = widget.findChild<QToolButton*>(u"DELETE"_s);
    EXPECT_FALSE(group->isVisible());
    press(u"tree.playlist"_s);
    EXPECT_TRUE(group->isVisible());
    EXPECT_TRUE(doomed->isVisible());
    press(u"tree.genre"_s);
    EXPECT_FALSE(doomed->isVisible());
}

TEST_F(LibraryTreeWindow, TheFoldButtonChangesItsPictureAndItsTip)
{
    auto* fold = widget.findChild<QToolButton*>(u"tree.collaps.close"_s);
    const QString folding = fold->toolTip();
    press(u"tree.collaps.close"_s);
    EXPECT_FALSE(seen().contains(u"x [5]"_s));
    EXPECT_NE(fold->toolTip(), folding);
    press(u"tree.collaps.close"_s);
    EXPECT_TRUE(seen().contains(u"x [5]"_s));
    EXPECT_EQ(fold->toolTip(), folding);
}

} // namespace
} // namespace melovane
