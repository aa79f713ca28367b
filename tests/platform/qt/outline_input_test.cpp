#include "platform/qt/outline_fixture.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What the user does in a tree by keys and by mouse.
struct OutlineInputTest : public test::OutlineFixture
{
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&tree, Qt::Key(key), modifiers);
    }

    void type(const QString& text) { QTest::keyClicks(&tree, text); }

    void click(const QPoint& place, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, modifiers, place);
    }

    /// The toolkit's helper sends the second press alone.
    void doubleClick(const QPoint& place)
    {
        click(place);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, place);
    }

    [[nodiscard]] QPoint middleOf(int row) const { return tree.placeOf(row).center(); }

    [[nodiscard]] QPoint markOf(int row) const
    {
        const QRect place = tree.placeOf(row);
        return {place.left() - 8, place.center().y()};
    }

    /// Gives a row a box, or makes it one that is filled when it opens.
    void change(int row, RowTick tick, bool fillable = false)
    {
        TreeRow changed = tree.row(row);
        changed.tick = tick;
        changed.fillable = fillable;
        tree.setRow(row, changed);
    }

    QSignalSpy opening{&tree, &OutlineTree::rowOpening};
    QSignalSpy toggled{&tree, &OutlineTree::rowToggled};
    QSignalSpy ticked{&tree, &OutlineTree::rowTicked};
    QSignalSpy clicked{&tree, &OutlineTree::rowClicked};
    QSignalSpy entered{&tree, &OutlineTree::rowEntered};
    QSignalSpy activated{&tree, &OutlineTree::rowActivated};
};

TEST_F(OutlineInputTest, LeftFoldsARowOrGoesToTheOneAboveIt)
{
    tree.setCurrentRow(5);
    press(Qt::Key_Left);
    EXPECT_EQ(tree.currentRow(), 4);
    press(Qt::Key_Left);
    EXPECT_EQ(tree.currentRow(), 4);
    EXPECT_FALSE(tree.isOpen(4));
    EXPECT_EQ(lines(), u"a a1 a2 b b1 c"_s);
    ASSERT_EQ(toggled.size(), 1);
    EXPECT_EQ(toggled[0], (QVariantList{4, false}));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(lines(), u"a a1 a2 b c"_s);
    press(Qt::Key_Left);
    EXPECT_EQ(tree.currentRow(), 3) << "a root has none above it";
}

TEST_F(OutlineInputTest, RightOpensARowOrGoesToTheFirstBelowIt)
{
    tree.setFolded({u"b"_s});
    tree.setCurrentRow(3);
    press(Qt::Key_Right);
    EXPECT_TRUE(tree.isOpen(3));
    EXPECT_EQ(tree.currentRow(), 3);
    press(Qt::Key_Right);
    EXPECT_EQ(tree.currentRow(), 4);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(tree.currentRow(), 5) << "a row without any below it does nothing";
    EXPECT_EQ(toggled.size(), 1);
}

TEST_F(OutlineInputTest, PlusAndMinusOpenAndFoldAndTheAsteriskOpensAllBelow)
{
    tree.setFolded({u"b"_s, u"b1"_s});
    tree.setCurrentRow(3);
    press(Qt::Key_Plus);
    EXPECT_EQ(lines(), u"a a1 a2 b b1 c"_s);
    press(Qt::Key_Minus);
    EXPECT_EQ(lines(), u"a a1 a2 b c"_s);
    press(Qt::Key_Asterisk);
    EXPECT_EQ(lines(), u"a a1 a2 b b1 b11 c"_s);
    EXPECT_EQ(tree.currentRow(), 3);
    ASSERT_EQ(toggled.size(), 3);
    EXPECT_EQ(toggled[2], (QVariantList{3, true}));
    EXPECT_EQ(entered.size(), 0);
}

TEST_F(OutlineInputTest, HomeAndEndGoToTheFirstAndLastLine)
{
    tree.setFolded({u"b"_s});
    tree.setCurrentRow(1);
    press(Qt::Key_End);
    EXPECT_EQ(tree.currentRow(), 6);
    press(Qt::Key_Up);
    EXPECT_EQ(tree.currentRow(), 3) << "what is folded away is no line";
    press(Qt::Key_Home);
    EXPECT_EQ(tree.currentRow(), 0);
    EXPECT_EQ(entered.size(), 3);
}

TEST_F(OutlineInputTest, APageIsAsManyLinesAsThereAreOnTheScreen)
{
    std::vector<TreeRow> rows;
    for (int row = 0; row < 200; ++row) {
        rows.push_back(test::outlineRow(QString::number(row), 0));
    }
    tree.setRows(rows);
    tree.setCurrentRow(0);
    press(Qt::Key_PageDown);
    const int page = tree.currentRow();
    EXPECT_GT(page, 5);
    EXPECT_LT(page, 20);
    press(Qt::Key_PageUp);
    EXPECT_EQ(tree.currentRow(), 0);
}

TEST_F(OutlineInputTest, FoldingARowByTheMarkTakesTheCurrentOneAlong)
{
    tree.setCurrentRow(5);
    click(markOf(3));
    EXPECT_EQ(tree.currentRow(), 3);
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{3});
    EXPECT_EQ(toggled.size(), 1);
    EXPECT_EQ(clicked.size(), 0);
    EXPECT_EQ(entered.size(), 0);
}

TEST_F(OutlineInputTest, TwoQuickClicksOnTheMarkAreTwo)
{
    doubleClick(markOf(0));
    EXPECT_TRUE(tree.isOpen(0));
    EXPECT_EQ(toggled.size(), 2);
    EXPECT_EQ(activated.size(), 0);
}

TEST_F(OutlineInputTest, ADoubleClickFoldsARowWithRowsBelowItAndActivatesIt)
{
    doubleClick(middleOf(0));
    EXPECT_FALSE(tree.isOpen(0));
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated[0][0].toInt(), 0);
    EXPECT_EQ(clicked.size(), 1);
}

TEST_F(OutlineInputTest, AFillableRowAsksToBeFilledHoweverItIsOpened)
{
    change(6, RowTick::None, true);
    tree.setCurrentRow(6);
    const std::vector<int> keys{Qt::Key_Right, Qt::Key_Plus, Qt::Key_Asterisk, Qt::Key_Space};
    for (const int key : keys) {
        press(key);
    }
    EXPECT_EQ(opening.size(), 4);
    click(markOf(6));
    EXPECT_EQ(opening.size(), 5);
    doubleClick(middleOf(6));
    EXPECT_EQ(opening.size(), 6);
    press(Qt::Key_Minus);
    EXPECT_EQ(opening.size(), 6);
    EXPECT_EQ(toggled.size(), 0);
}

TEST_F(OutlineInputTest, AFillableRowIsOpenWhenItWasFilledAndAsksNoMore)
{
    change(6, RowTick::None, true);
    QObject::connect(&tree, &OutlineTree::rowOpening, &tree, [this](int row) {
        tree.insertRows(row + 1, {test::outlineRow(u"c1"_s, 1), test::outlineRow(u"c2"_s, 1)});
        EXPECT_FALSE(tree.isOpen(row)) << "as long as nobody opens it";
        tree.setOpen(row, true);
    });
    tree.setCurrentRow(6);
    press(Qt::Key_Right);
    EXPECT_EQ(lines(), u"a a1 a2 b b1 b11 c c1 c2"_s);
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    EXPECT_EQ(opening.size(), 1);
    EXPECT_EQ(toggled.size(), 2);
}

TEST_F(OutlineInputTest, AClickOnTheBoxTicksAndSelectsNothing)
{
    change(1, RowTick::Off);
    tree.setCurrentRow(3);
    click(tree.tickPlaceOf(1).center());
    ASSERT_EQ(ticked.size(), 1);
    EXPECT_EQ(ticked[0], (QVariantList{1, true}));
    EXPECT_EQ(tree.row(1).tick, RowTick::On);
    click(tree.tickPlaceOf(1).center());
    EXPECT_EQ(ticked[1], (QVariantList{1, false}));
    EXPECT_EQ(tree.currentRow(), 3);
    EXPECT_EQ(clicked.size(), 0);
    EXPECT_FALSE(tree.tickPlaceOf(2).isValid());
    const QPoint sameColumn{tree.tickPlaceOf(1).center().x(), middleOf(2).y()};
    click(sameColumn);
    EXPECT_EQ(ticked.size(), 2) << "a row without a box";
}

TEST_F(OutlineInputTest, ABoxThatIsPressedAndLeftIsNotTicked)
{
    change(1, RowTick::Off);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, tree.tickPlaceOf(1).center());
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, middleOf(4));
    EXPECT_EQ(ticked.size(), 0);
    EXPECT_EQ(clicked.size(), 0);
}

TEST_F(OutlineInputTest, SpaceTicksARowThatCannotBeOpenedAndWithCtrlAnyRow)
{
    change(0, RowTick::Off);
    change(1, RowTick::On);
    tree.setCurrentRow(1);
    press(Qt::Key_Space);
    EXPECT_EQ(tree.row(1).tick, RowTick::Off);
    tree.setCurrentRow(0);
    press(Qt::Key_Space);
    EXPECT_FALSE(tree.isOpen(0));
    EXPECT_EQ(tree.row(0).tick, RowTick::Off);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(tree.row(0).tick, RowTick::On);
    EXPECT_EQ(ticked.size(), 2);
    tree.setCurrentRow(3);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(ticked.size(), 2) << "it has no box";
}

TEST_F(OutlineInputTest, WhoeverTicksMayBeToldNo)
{
    change(1, RowTick::Off);
    QObject::connect(&tree, &OutlineTree::rowTicked, &tree,
                     [this](int row) { change(row, RowTick::Off); });
    click(tree.tickPlaceOf(1).center());
    EXPECT_EQ(tree.row(1).tick, RowTick::Off);
}

TEST_F(OutlineInputTest, TypingGoesToARowThatBeginsWithTheLettersBeforeOneThatHoldsThem)
{
    TreeRow named = tree.row(1);
    named.text = u"Abtanz"_s;
    tree.setRow(1, named);
    named.text = u"Tanz mit mir"_s;
    tree.setRow(5, named);
    tree.setCurrentRow(0);
    type(u"tan"_s);
    EXPECT_EQ(tree.currentRow(), 5);
    type(u"z MI"_s);
    EXPECT_EQ(tree.currentRow(), 5);
    EXPECT_TRUE(tree.isOpen(4)) << "a blank in a name opens nothing";
}

TEST_F(OutlineInputTest, LettersInTheMiddleAreFoundWhenNoRowBeginsWithThem)
{
    tree.setCurrentRow(0);
    type(u"b11"_s);
    EXPECT_EQ(tree.currentRow(), 5);
}

TEST_F(OutlineInputTest, TheSameLetterAgainGoesToTheNextRow)
{
    tree.setCurrentRow(0);
    type(u"t"_s);
    EXPECT_EQ(tree.currentRow(), 1);
    type(u"t"_s);
    EXPECT_EQ(tree.currentRow(), 2);
    type(u"x"_s);
    EXPECT_EQ(tree.currentRow(), 2) << "nothing fits";
}

TEST_F(OutlineInputTest, LettersGoToWhoeverListens)
{
    const QSignalSpy typed(&tree, &OutlineTree::letterTyped);
    tree.setCurrentRow(0);
    type(u"b"_s);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_Plus);
    ASSERT_EQ(typed.size(), 1);
    EXPECT_EQ(typed[0][0].toString(), u"b"_s);
    EXPECT_EQ(tree.currentRow(), 0);
}

TEST_F(OutlineInputTest, OnlyOneRowIsSelectedUntilSeveralMayBe)
{
    tree.setCurrentRow(0);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{1});
    tree.setMultiSelection(true);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{1, 2}));
    click(middleOf(4), Qt::ControlModifier);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(clicked.size(), 1);
    click(middleOf(6));
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{6});
}

TEST_F(OutlineInputTest, SelectingAllByKeyIsTold)
{
    tree.setMultiSelection(true);
    tree.setFolded({u"a"_s});
    tree.setCurrentRow(3);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{0, 3, 4, 5, 6}));
    EXPECT_EQ(entered.size(), 1);
}

TEST_F(OutlineInputTest, WhatIsSelectedStaysSoWhenOthersFoldOpenComeAndGo)
{
    tree.setMultiSelection(true);
    tree.setCurrentRow(4);
    click(middleOf(6), Qt::ControlModifier);
    click(markOf(0));
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{4, 6}));
    tree.insertRows(0, {test::outlineRow(u"x"_s, 0), test::outlineRow(u"y"_s, 0)});
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{6, 8}));
    EXPECT_EQ(tree.currentRow(), 8);
    tree.removeRow(0);
    tree.setOpen(tree.find(u"a"_s), true);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{5, 7}));
    tree.foldTo(1);
    EXPECT_EQ(lines(), u"y a a1 a2 b b1 c"_s);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{5, 7}));
}

TEST_F(OutlineInputTest, ARightClickOnOneOfSeveralSelectedRowsKeepsThem)
{
    tree.setMultiSelection(true);
    tree.setCurrentRow(1);
    press(Qt::Key_Down, Qt::ShiftModifier);
    const QSignalSpy menu(&tree, &OutlineTree::menuWanted);
    const auto rightClick = [this](int row) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(row), {});
        QApplication::sendEvent(tree.viewport(), &event);
    };
    rightClick(1);
    EXPECT_EQ(tree.selectedRows(), (std::vector<int>{1, 2}));
    EXPECT_EQ(tree.currentRow(), 1);
    rightClick(4);
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{4});
    EXPECT_EQ(menu.size(), 2);
}

TEST_F(OutlineInputTest, ADragOfRowsThatStayAsksForWhatTheSelectedRowsCarry)
{
    std::vector<int> asked;
    tree.setMultiSelection(true);
    tree.setDragSource([&asked](const std::vector<int>& rows) {
        asked = rows;
        return DragContent();
    });
    tree.setCurrentRow(1);
    press(Qt::Key_Down, Qt::ShiftModifier);
    const QPoint start = middleOf(2);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, start);
    QTest::mouseMove(tree.viewport(), start + QPoint(0, 15));
    QTest::mouseMove(tree.viewport(), start + QPoint(0, 40));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, start + QPoint(0, 40));
    EXPECT_EQ(asked, (std::vector<int>{1, 2}));
}

} // namespace
} // namespace melovane
