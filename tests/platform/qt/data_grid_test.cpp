#include "platform/qt/counting_engine.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/data_grid_model.h"
#include "platform/qt/figures.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class PlainLook : public GridLook
{
public:
    [[nodiscard]] QString text(const QString&, const Value& value) const override
    {
        return value.toText();
    }

    [[nodiscard]] CellStyle style(const QString&, const RowValues&) const override
    {
        return cellStyle;
    }

    CellStyle cellStyle;
};

/// A grid over made-up rows, 400 units high.
struct GridTest : public testing::Test
{
    GridTest()
    {
        grid.resize(500, 400);
        GridColumn stretched{u"titel"_s, u"Titel"_s, 20, CellAlignment::Left, true, true};
        GridColumn hidden{u"FID"_s, u"Nummer"_s, 12, CellAlignment::Right, false, false};
        GridColumn missing{u"Album"_s, u"Album"_s, 9, CellAlignment::Left, true, false};
        grid.setSource(rows, look, {stretched, hidden, missing});
    }

    void show(qint64 count)
    {
        engine.counter.rows = count;
        rows.SetRecordSource(u"select"_s);
        rows.Refresh();
        grid.show();
        QTest::qWait(0);
    }

    test::CountingEngine engine;
    DataControl rows{engine};
    PlainLook look;
    Skin skin{*qApp};
    IconSet icons{skin};
    DataGrid grid{skin, icons};
};

TEST_F(GridTest, AHundredThousandRowsFetchOnlyTheCellsOnTheScreen)
{
    show(100'000);
    EXPECT_EQ(grid.model()->rowCount(), 100'000);
    grid.grab();
    const int onScreen = grid.viewport()->height() / grid.rowHeight(0) + 2;
    EXPECT_GT(engine.counter.reads, 0);
    EXPECT_LT(engine.counter.reads, onScreen * 4 * 2);
    engine.counter.reads = 0;
    grid.scrollToBottom();
    grid.grab();
    EXPECT_LT(engine.counter.reads, onScreen * 4 * 2);
}

TEST_F(GridTest, SelectingAllAndTypingReadNothing)
{
    show(100'000);
    grid.grab();
    engine.counter.reads = 0;
    grid.selectAll();
    grid.setFocus();
    QTest::keyClicks(&grid, u"Titel 99"_s);
    EXPECT_EQ(engine.counter.reads, 0);
}

TEST_F(GridTest, ColumnsFindTheirFieldsWhateverTheLetterCase)
{
    show(3);
    EXPECT_EQ(grid.model()->index(1, 0).data().toString(), u"Titel 1"_s);
    EXPECT_EQ(grid.model()->index(1, 1).data().toString(), u"1"_s);
    EXPECT_EQ(grid.model()->index(1, 2).data().toString(), QString());
    EXPECT_EQ(grid.columnOf(u"TITEL"_s), 0);
    EXPECT_EQ(grid.columnOf(u"none"_s), -1);
    EXPECT_EQ(grid.dataField(2), u"Album"_s);
    EXPECT_EQ(grid.dataField(7), QString());
}

TEST_F(GridTest, RowsAreOneLineOfTextPlusEightUnits)
{
    show(3);
    EXPECT_EQ(grid.rowHeight(2), grid.fontMetrics().height() + 8);
}

TEST_F(GridTest, TheStretchedColumnTakesTheFreeWidth)
{
    show(3);
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2), grid.viewport()->width());
    grid.resize(800, 400);
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2), grid.viewport()->width());
}

TEST_F(GridTest, AWidthGivenByTheUserStays)
{
    show(3);
    grid.setColumnWidth(0, 333);
    grid.resize(800, 400);
    EXPECT_EQ(grid.columnWidth(0), 333);
}

TEST_F(GridTest, AHiddenColumnCanBeShownFromTheMenuAndTheLastOneCannotBeHidden)
{
    show(3);
    QMenu menu;
    grid.fillColumnMenu(menu);
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_FALSE(menu.actions().at(1)->isChecked());
    menu.actions().at(1)->trigger();
    EXPECT_FALSE(grid.isColumnHidden(1));
    menu.actions().at(1)->trigger();
    menu.actions().at(0)->trigger();
    QMenu last;
    grid.fillColumnMenu(last);
    EXPECT_FALSE(last.actions().at(2)->isEnabled());
}

TEST_F(GridTest, AClickOnAHeadingNamesItsColumn)
{
    show(3);
    QSignalSpy clicked(&grid, &DataGrid::headerClicked);
    QHeaderView* header = grid.horizontalHeader();
    const QPoint place(header->sectionViewportPosition(2) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.first().first().toInt(), 2);
}

TEST_F(GridTest, TheSortArrowStandsOnOneColumn)
{
    show(3);
    grid.setSortArrow(0, SortArrow::Ascending);
    grid.setSortArrow(2, SortArrow::Descending);
    EXPECT_EQ(grid.sortArrow(0), SortArrow::None);
    EXPECT_EQ(grid.sortArrow(2), SortArrow::Descending);
}

TEST_F(GridTest, GoingToARowMakesItCurrentAndKeepsItsPlaceOnTheScreen)
{
    show(10'000);
    grid.goToRow(5000, 4995);
    EXPECT_EQ(grid.currentRow(), 5000);
    EXPECT_EQ(grid.firstVisibleRow(), 4995);
    EXPECT_EQ(grid.selectionModel()->selection().size(), 1);
    grid.goToRow(20'000, 0);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(GridTest, HomeAndEndGoToTheFirstAndTheLastRow)
{
    show(10'000);
    grid.goToRow(10, 0);
    QTest::keyClick(&grid, Qt::Key_End);
    EXPECT_EQ(grid.currentRow(), 9999);
    QTest::keyClick(&grid, Qt::Key_Home);
    EXPECT_EQ(grid.currentRow(), 0);
}

TEST_F(GridTest, EscapeIsReported)
{
    show(3);
    QSignalSpy escape(&grid, &DataGrid::escapePressed);
    QTest::keyClick(&grid, Qt::Key_Escape);
    EXPECT_EQ(escape.count(), 1);
}

TEST_F(GridTest, AnEmptyGridShowsItsNoteAndRowsHideIt)
{
    grid.setEmptyNote({u"Leer"_s, u"Nichts da"_s, u"Holen"_s});
    show(0);
    auto* button = grid.findChild<QPushButton*>(u"EmptyButton"_s);
    ASSERT_TRUE(button->isVisible());
    EXPECT_EQ(grid.findChild<QLabel*>(u"EmptyTitle"_s)->text(), u"Leer"_s);
    QSignalSpy clicked(&grid, &DataGrid::emptyButtonClicked);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    show(3);
    EXPECT_FALSE(button->isVisible());
}

TEST_F(GridTest, AClosedDatabaseLeavesAnEmptyGridWithItsColumns)
{
    show(3);
    grid.setColumnWidth(2, 123);
    rows.closeDatabase();
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_EQ(grid.columnWidth(2), 123);
    show(5);
    EXPECT_EQ(grid.model()->rowCount(), 5);
    EXPECT_EQ(grid.columnWidth(2), 123);
}

TEST_F(GridTest, AColouredTextIsMadeReadableOnEveryGround)
{
    show(1);
    ASSERT_TRUE(skin.load(u"GridColor=#1a1d23\nText=#dde1e7"_s));
    look.cellStyle.text = Colour{0x20, 0x20, 0x30};
    const QImage image = grid.grab().toImage();
    double best = 1;
    const QRect cell = grid.visualRect(grid.model()->index(0, 0));
    const QPoint origin = grid.viewport()->mapTo(&grid, cell.topLeft());
    for (int x = origin.x(); x < origin.x() + 60; ++x) {
        for (int y = origin.y(); y < origin.y() + cell.height(); ++y) {
            best = std::max(best,
                            contrast(fromQColor(image.pixelColor(x, y)), Colour{0x1A, 0x1D, 0x23}));
        }
    }
    EXPECT_GE(best, 3.5);
    skin.clear();
    qApp->setStyleSheet({});
}

TEST(Figures, AllFiguresTakeTheSameWidth)
{
    const QFontMetrics metrics{QFont()};
    EXPECT_EQ(figureTextWidth(metrics, u"1111"_s), figureTextWidth(metrics, u"8888"_s));
    EXPECT_EQ(figureTextWidth(metrics, u"0123"_s), 4 * figureWidth(metrics));
}

} // namespace
} // namespace melovane
