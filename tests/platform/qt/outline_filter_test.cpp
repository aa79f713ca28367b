#include "platform/qt/outline_fixture.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct OutlineFilterTest : public test::OutlineFixture
{
    void rename(int row, const QString& text)
    {
        TreeRow changed = tree.row(row);
        changed.text = text;
        tree.setRow(row, changed);
    }

    /// What stands in place of the rows; empty while they are to be seen.
    [[nodiscard]] QString note() const
    {
        const auto* title = tree.findChild<QLabel*>(u"EmptyTitle"_s);
        return title->isVisibleTo(&tree) ? title->text() : QString();
    }
};

TEST_F(OutlineFilterTest, OnlyRowsWithTheTextStayAndThoseAboveThem)
{
    tree.setFilter(u"TEXT B1"_s);
    EXPECT_EQ(lines(), u"b b1 b11"_s);
    EXPECT_EQ(tree.filterHits(), 2);
    tree.setFilter(u"b11"_s);
    EXPECT_EQ(lines(), u"b b1 b11"_s);
    EXPECT_EQ(tree.filterHits(), 1);
    EXPECT_EQ(tree.rowCount(), 7) << "rows keep their numbers";
    tree.setFilter({});
    EXPECT_EQ(lines(), u"a a1 a2 b b1 b11 c"_s);
    EXPECT_EQ(tree.filterHits(), -1);
}

TEST_F(OutlineFilterTest, ItsEndFoldsAgainWhatWasFoldedAndKeepsTheCurrentRow)
{
    tree.setFolded({u"a"_s, u"b1"_s});
    tree.setCurrentRow(6);
    tree.setFilter(u"a2"_s);
    EXPECT_EQ(lines(), u"a a2"_s);
    EXPECT_EQ(tree.currentRow(), -1) << "no key may act on a row that nobody sees";
    EXPECT_EQ(tree.folded(), (QStringList{u"a"_s, u"b1"_s}));
    tree.setFilter({});
    EXPECT_EQ(lines(), u"a b b1 c"_s);
    EXPECT_EQ(tree.currentRow(), 6);
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{6});
}

TEST_F(OutlineFilterTest, ARowChosenInItIsStillTheCurrentOneAfterIt)
{
    tree.setFolded({u"a"_s, u"b"_s});
    tree.setCurrentRow(6);
    const QSignalSpy entered(&tree, &OutlineTree::rowEntered);
    tree.setFilter(u"a2"_s);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.placeOf(2).center());
    tree.setFilter({});
    EXPECT_EQ(tree.currentRow(), 2);
    EXPECT_EQ(lines(), u"a a1 a2 b c"_s) << "what is above it opens, all else is as it was";
    EXPECT_EQ(entered.size(), 0);
}

TEST_F(OutlineFilterTest, ItsEndBringsThePlaceOnTheScreenBack)
{
    std::vector<TreeRow> rows;
    for (int row = 0; row < 400; ++row) {
        rows.push_back(test::outlineRow(QString::number(row), 0));
    }
    tree.setRows(rows);
    tree.setCurrentRow(205);
    tree.setFirstVisibleRow(200);
    tree.setFilter(u"33"_s);
    EXPECT_EQ(tree.firstVisibleRow(), 33);
    tree.setFilter({});
    EXPECT_EQ(tree.firstVisibleRow(), 200);
    EXPECT_EQ(tree.currentRow(), 205);
}

TEST_F(OutlineFilterTest, NoHitIsSaidInPlaceOfTheRows)
{
    tree.setFilterNote(u"Nichts gefunden"_s);
    EXPECT_EQ(note(), QString());
    tree.setFilter(u"xyz"_s);
    EXPECT_EQ(tree.filterHits(), 0);
    EXPECT_EQ(note(), u"Nichts gefunden"_s);
    tree.setFilter(u"a"_s);
    EXPECT_EQ(note(), QString());
    tree.setNote({u"Leer"_s, {}, {}});
    tree.setFilter(u"xyz"_s);
    EXPECT_EQ(note(), u"Leer"_s) << "what the logic says goes first";
}

TEST_F(OutlineFilterTest, RowsThatComeAndGoUnderItAreFilteredToo)
{
    tree.setFilter(u"b1"_s);
    tree.insertRows(7, {test::outlineRow(u"c1"_s, 1), test::outlineRow(u"cb1"_s, 1)});
    EXPECT_EQ(lines(), u"b b1 b11 c cb1"_s);
    EXPECT_EQ(tree.filterHits(), 3);
    tree.removeRow(5);
    EXPECT_EQ(lines(), u"b b1 c cb1"_s);
    rename(4, u"anders"_s);
    EXPECT_EQ(lines(), u"c cb1"_s);
    rename(1, u"Text b1"_s);
    EXPECT_EQ(lines(), u"a a1 c cb1"_s);
    tree.setFilter({});
    EXPECT_EQ(lines(), u"a a1 a2 b b1 c"_s) << "a row that had none below it stays closed";
}

TEST_F(OutlineFilterTest, WhatIsSelectedStaysSoWhileRowsComeUnderIt)
{
    tree.setFilter(u"b1"_s);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.placeOf(5).center());
    tree.insertRow(0, test::outlineRow(u"0b1"_s, 0));
    EXPECT_EQ(tree.currentRow(), 6);
    EXPECT_EQ(tree.selectedRows(), std::vector<int>{6});
}

TEST_F(OutlineFilterTest, NewRowsAreFilteredAtOnce)
{
    tree.setFilter(u"b1"_s);
    tree.setRows({test::outlineRow(u"x"_s, 0), test::outlineRow(u"xb1"_s, 1)});
    EXPECT_EQ(lines(), u"x xb1"_s);
    EXPECT_EQ(tree.filterHits(), 1);
    EXPECT_EQ(tree.currentRow(), -1);
}

TEST_F(OutlineFilterTest, ARowThatIsGoneToIsShownWhetherItFitsOrNot)
{
    tree.setFilter(u"a1"_s);
    tree.setCurrentRow(5);
    EXPECT_EQ(lines(), u"a a1 b b1 b11"_s);
    EXPECT_EQ(tree.currentRow(), 5);
    tree.setFilter({});
    EXPECT_EQ(tree.currentRow(), 5);
}

TEST_F(OutlineFilterTest, RowsFoldInItAndItsEndForgetsThat)
{
    tree.setFilter(u"b1"_s);
    tree.setCurrentRow(3);
    QTest::keyClick(&tree, Qt::Key_Minus);
    EXPECT_EQ(lines(), u"b"_s);
    QTest::keyClick(&tree, Qt::Key_Plus);
    EXPECT_EQ(lines(), u"b b1 b11"_s);
}

TEST_F(OutlineFilterTest, CountsAreNotSearched)
{
    TreeRow counted = tree.row(1);
    counted.text = u"Rock [120]"_s;
    counted.countLetters = 5;
    tree.setRow(1, counted);
    tree.setFilter(u"120"_s);
    EXPECT_EQ(tree.filterHits(), 0);
    tree.setFilter(u"rock"_s);
    EXPECT_EQ(lines(), u"a a1"_s);
}

} // namespace
} // namespace melovane
