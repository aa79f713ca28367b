#include "platform/qt/outline_fixture.h"
#include "support/wait_for.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TreeRow row(const QString& key, int level)
{
    return test::outlineRow(key, level);
}

struct OutlineTreeTest : public test::OutlineFixture
{
    /// The keys of all rows as they are indented on the screen, in brackets below their row.
    [[nodiscard]] QString shape() const
    {
        QString result;
        std::vector<int> path; // left borders of the rows that a next one may stand below
        for (int row = 0; row < tree.rowCount(); ++row) {
            const int left = tree.placeOf(row).left();
            const bool isBelow = !path.empty() && left > path.back();
            while (!path.empty() && path.back() > left) {
                path.pop_back();
                result.append(u')');
            }
            if (isBelow || path.empty()) {
                path.push_back(left);
            }
            result.append(row == 0 ? u""_s : isBelow ? u"("_s : u" "_s);
            result.append(tree.row(row).text.mid(5));
        }
        return result + QString(std::max(qsizetype(path.size()) - 1, qsizetype(0)), u')');
    }
};

TEST_F(OutlineTreeTest, LevelsMakeATreeOfRowsThatAreCountedFromTopToBottom)
{
    EXPECT_EQ(shape(), u"a(a1 a2) b(b1(b11)) c"_s);
    EXPECT_EQ(tree.rowCount(), 7);
    EXPECT_EQ(tree.find(u"b11"_s), 5);
    EXPECT_EQ(tree.row(5).key, u"b11"_s);
    EXPECT_EQ(tree.find(u"x"_s), -1);
    EXPECT_EQ(tree.row(7), TreeRow());
    EXPECT_EQ(tree.row(-1), TreeRow());
}

TEST_F(OutlineTreeTest, RowsOfTheSameKeyAreFoundOneBehindTheOther)
{
    tree.insertRow(3, row(u"a1"_s, 1));
    EXPECT_EQ(tree.findNext(u"a1"_s, -1), 1);
    EXPECT_EQ(tree.findNext(u"a1"_s, 1), 3);
    EXPECT_EQ(tree.findNext(u"a1"_s, 3), -1);
    EXPECT_EQ(tree.findNext(u"c"_s, 1), 7);
    EXPECT_EQ(tree.findNext(u"c"_s, 99), -1);
    EXPECT_EQ(tree.findNext(u"x"_s, 0), -1);
}

TEST_F(OutlineTreeTest, RowsComeBetweenOthersAndGoWithThoseBelowThem)
{
    tree.insertRow(3, row(u"a3"_s, 1));
    tree.insertRow(99, row(u"d"_s, 0));
    EXPECT_EQ(shape(), u"a(a1 a2 a3) b(b1(b11)) c d"_s);
    EXPECT_EQ(tree.find(u"b"_s), 4);
    tree.removeRow(4);
    EXPECT_EQ(shape(), u"a(a1 a2 a3) c d"_s);
    tree.removeRow(99);
    tree.insertRow(0, row(u"0"_s, 0));
    EXPECT_EQ(shape(), u"0 a(a1 a2 a3) c d"_s);
    EXPECT_EQ(tree.rowCount(), 7);
}

TEST_F(OutlineTreeTest, AChangedRowKeepsItsLevel)
{
    TreeRow changed = row(u"z"_s, 0);
    tree.setRow(5, changed);
    EXPECT_EQ(tree.row(5).level, 2);
    EXPECT_EQ(shape(), u"a(a1 a2) b(b1(z)) c"_s);
    tree.setRow(-1, changed);
    tree.setRow(7, changed);
    EXPECT_EQ(tree.rowCount(), 7);
}

TEST_F(OutlineTreeTest, AllRowsAreUnfoldedAtFirstAndOnlyTheNamedOnesAreFolded)
{
    EXPECT_TRUE(tree.folded().isEmpty());
    tree.setFolded({u"b"_s, u"x"_s, u"c"_s});
    EXPECT_EQ(tree.folded(), QStringList{u"b"_s});
    EXPECT_FALSE(tree.placeOf(5).isValid());
    tree.setCurrentRow(5); // comes on the screen
    EXPECT_TRUE(tree.folded().isEmpty());
    EXPECT_TRUE(tree.placeOf(5).isValid());
}

TEST_F(OutlineTreeTest, SettingTheCurrentRowSendsNoEventAndAKeyDoes)
{
    const QSignalSpy entered(&tree, &OutlineTree::rowEntered);
    tree.setCurrentRow(1);
    EXPECT_EQ(entered.size(), 0);
    QTest::keyClick(&tree, Qt::Key_Down);
    ASSERT_EQ(entered.size(), 1);
    EXPECT_EQ(entered[0][0].toInt(), 2);
    tree.setCurrentRow(-1);
    EXPECT_EQ(tree.currentRow(), -1);
    EXPECT_EQ(entered.size(), 1);
}

TEST_F(OutlineTreeTest, AClickOnTheMarkFoldsAndOpensNothing)
{
    const QSignalSpy clicked(&tree, &OutlineTree::rowClicked);
    const QRect place = tree.placeOf(0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, {5, place.center().y()});
    EXPECT_EQ(tree.folded(), QStringList{u"a"_s});
    EXPECT_EQ(clicked.size(), 0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(clicked.size(), 1);
}

TEST_F(OutlineTreeTest, SomeRowsFoldAndOthersOpenInOneGoAndTheRestStays)
{
    tree.foldTo(1);
    ASSERT_EQ(lines(), u"a a1 a2 b b1 c"_s);
    const QSignalSpy reset(tree.model(), &QAbstractItemModel::modelReset);
    const QSignalSpy come(tree.model(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy gone(tree.model(), &QAbstractItemModel::rowsRemoved);
    tree.setFolds({u"a"_s, u"unknown"_s}, {u"b1"_s});
    EXPECT_EQ(lines(), u"a b b1 b11 c"_s);
    EXPECT_EQ(reset.size(), 1);
    EXPECT_TRUE(come.isEmpty() && gone.isEmpty());
    tree.setFolds({u"b"_s}, {u"b"_s, u"a"_s});
    EXPECT_EQ(lines(), u"a a1 a2 b b1 b11 c"_s) << "what is both is open";
}

TEST_F(OutlineTreeTest, AnEditEndsWhenAllLinesAreMadeAnewAndWhenItsLineGoes)
{
    const QSignalSpy edited(&tree, &OutlineTree::rowEdited);
    const QSignalSpy ended(&tree, &OutlineTree::editEnded);
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"fold all", [&] { tree.foldTo(1); }},
        {"filter", [&] { tree.setFilter(u"a"_s); }},
        {"end of the filter", [&] { tree.setFilter({}); }},
        {"fold its parent", [&] { tree.setOpen(0, false); }},
        {"remove it", [&] { tree.removeRow(1); }},
    };
    for (const auto& [name, change] : changes) {
        const auto before = ended.size();
        tree.editRow(1, u"Anders"_s);
        ASSERT_TRUE(tree.isEditing()) << name;
        change();
        EXPECT_FALSE(tree.isEditing()) << name;
        EXPECT_TRUE(test::waitFor([&] { return ended.size() == before + 1; })) << name;
    }
    EXPECT_TRUE(edited.isEmpty());
}

TEST_F(OutlineTreeTest, AnEditedTextIsToldAndNotShownByItself)
{
    const QSignalSpy edited(&tree, &OutlineTree::rowEdited);
    tree.editRow(2, u"Anders"_s);
    ASSERT_TRUE(tree.isEditing());
    auto* line = tree.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, u"Neu"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([&] { return !tree.isEditing(); }));
    ASSERT_EQ(edited.size(), 1);
    EXPECT_EQ(edited[0][0].toInt(), 2);
    EXPECT_EQ(edited[0][1].toString(), u"Neu"_s);
    EXPECT_EQ(tree.row(2).text, u"Text a2"_s);
    QTest::keyClick(&tree, Qt::Key_Space);
    EXPECT_FALSE(tree.isEditing());
}

TEST_F(OutlineTreeTest, RowsFollowTheFontAndTheSpacing)
{
    const int before = tree.placeOf(1).height();
    GridFont font;
    font.size = 24;
    font.rowSpacing = 10;
    tree.setTreeFont(font);
    EXPECT_EQ(tree.font().pointSize(), 24);
    EXPECT_GT(tree.placeOf(1).height(), before + 10);
}

} // namespace
} // namespace melovane
