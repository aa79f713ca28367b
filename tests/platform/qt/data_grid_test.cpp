#include "platform/qt/data_grid_model.h"
#include "platform/qt/figures.h"
#include "platform/qt/grid_fixture.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QHeaderView>
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

using DataGridTest = test::GridTest;

TEST_F(DataGridTest, AHundredThousandRowsFetchOnlyTheCellsOnTheScreen)
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

TEST_F(DataGridTest, FieldsOfTheRowsThatNoColumnWasMadeForCanBeShown)
{
    DataGrid plain(skin, icons);
    plain.setSource(rows, look, {{u"Titel"_s, u"Titel"_s}});
    rows.SetRecordSource(u"select"_s);
    engine.counter.rows = 1;
    rows.Refresh();
    ASSERT_EQ(plain.columnOf(u"fid"_s), 1);
    EXPECT_TRUE(plain.isColumnHidden(1));
    EXPECT_EQ(plain.columns()[1].heading, u"FID"_s);
    auto columns = plain.columns();
    columns[1].shown = true;
    plain.arrange(columns);
    EXPECT_FALSE(plain.isColumnHidden(1));
    EXPECT_EQ(plain.model()->index(0, 1).data().toString(), u"0"_s);
}

TEST_F(DataGridTest, ALayoutFromBeforeTheRowsFindsTheirColumnsWhenTheyCome)
{
    DataGrid plain(skin, icons);
    plain.setSource(rows, look, {{u"Titel"_s, u"Titel"_s}});
    plain.arrange({{u"FID"_s, u"FID"_s, 7}, {u"Titel"_s, u"Titel"_s, 30}});
    rows.SetRecordSource(u"select"_s);
    rows.Refresh();
    EXPECT_EQ(plain.columns()[0].field, u"FID"_s);
    EXPECT_TRUE(plain.columns()[0].shown);
    EXPECT_DOUBLE_EQ(plain.columns()[0].width, 7);
}

TEST_F(DataGridTest, AColumnOfAFixedWidthIsNeitherDraggedNorStretchedByALayout)
{
    DataGrid plain(skin, icons);
    plain.setSource(rows, look,
                    {{.field = u"Note"_s, .heading = u"Note"_s, .width = 4, .fixed = true},
                     {u"Titel"_s, u""_s}});
    plain.arrange({{u"Note"_s, u"Note"_s, 40}, {u"Titel"_s, u"Titel"_s, 30}});
    EXPECT_DOUBLE_EQ(plain.columns()[0].width, 4);
    EXPECT_EQ(plain.horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    EXPECT_EQ(plain.horizontalHeader()->sectionResizeMode(1), QHeaderView::Interactive);
}

TEST_F(DataGridTest, SelectingAllAndTypingReadNothing)
{
    show(100'000);
    grid.grab();
    engine.counter.reads = 0;
    grid.selectAll();
    grid.setFocus();
    QTest::keyClicks(&grid, u"Titel 99"_s);
    EXPECT_EQ(engine.counter.reads, 0);
}

TEST_F(DataGridTest, ColumnsFindTheirFieldsWhateverTheLetterCase)
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

TEST_F(DataGridTest, RowsAreOneLineOfTextPlusEightUnits)
{
    show(3);
    EXPECT_EQ(grid.rowHeight(2), grid.fontMetrics().height() + 8);
}

TEST_F(DataGridTest, TheStretchedColumnTakesTheFreeWidth)
{
    show(3);
    const auto room = [this] {
        return grid.width() - grid.verticalScrollBar()->sizeHint().width();
    };
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2), room());
    grid.resize(800, 400);
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2), room());
}

TEST_F(DataGridTest, SeveralStretchedColumnsShareTheFreeWidthByTheirOwn)
{
    show(3);
    auto columns = grid.columns();
    columns[1].stretched = true;
    columns[0].width = 20;
    columns[1].width = 10;
    grid.resize(300, 400);
    grid.arrange(columns);
    const int first = grid.columnWidth(0);
    const int second = grid.columnWidth(2);
    grid.resize(900, 400);
    EXPECT_NEAR((grid.columnWidth(0) - first) / 2, grid.columnWidth(2) - second, 2);
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2),
              grid.width() - grid.verticalScrollBar()->sizeHint().width());
    // What is kept does not depend on the window.
    EXPECT_EQ(grid.columns()[0].width, 20);
    EXPECT_EQ(grid.columns()[1].width, 10);
    grid.resize(50, 400);
    EXPECT_GT(grid.columnWidth(2), second / 2) << "below their own width the view scrolls";
}

TEST_F(DataGridTest, NoColumnMovesWhenTheScrollBarComesOrGoes)
{
    show(3);
    ASSERT_FALSE(grid.verticalScrollBar()->isVisible());
    const int first = grid.columnWidth(0);
    const int place = grid.columnViewportPosition(2);
    show(1000);
    ASSERT_TRUE(test::waitFor([this] { return grid.verticalScrollBar()->isVisible(); }));
    EXPECT_EQ(grid.columnWidth(0), first);
    EXPECT_EQ(grid.columnViewportPosition(2), place);
    EXPECT_FALSE(grid.horizontalScrollBar()->isVisible());
}

TEST_F(DataGridTest, AWidthGivenByTheUserStays)
{
    show(3);
    grid.setColumnWidth(0, 333);
    grid.resize(800, 400);
    EXPECT_EQ(grid.columnWidth(0), 333);
}

TEST_F(DataGridTest, AHiddenColumnCanBeShownFromTheMenuAndTheLastOneCannotBeHidden)
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

TEST_F(DataGridTest, AClickOnAHeadingNamesItsColumn)
{
    show(3);
    QSignalSpy clicked(&grid, &DataGrid::headerClicked);
    QHeaderView* header = grid.horizontalHeader();
    const QPoint place(header->sectionViewportPosition(2) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.first().first().toInt(), 2);
}

TEST_F(DataGridTest, EachOfTwoQuickClicksOnAHeadingCounts)
{
    show(3);
    QSignalSpy clicked(&grid, &DataGrid::headerClicked);
    QHeaderView* header = grid.horizontalHeader();
    const QPoint place(header->sectionViewportPosition(2) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(clicked.count(), 2);
}

TEST_F(DataGridTest, WithoutSortButtonsAClickOnAHeadingIsNone)
{
    show(3);
    grid.setSortButtons(false);
    QSignalSpy clicked(&grid, &DataGrid::headerClicked);
    QHeaderView* header = grid.horizontalHeader();
    const QPoint place(header->sectionViewportPosition(2) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(DataGridTest, TheSortArrowStandsOnOneColumn)
{
    show(3);
    grid.setSortArrow(0, SortArrow::Ascending);
    grid.setSortArrow(2, SortArrow::Descending);
    EXPECT_EQ(grid.sortArrow(0), SortArrow::None);
    EXPECT_EQ(grid.sortArrow(2), SortArrow::Descending);
}

TEST_F(DataGridTest, GoingToARowMakesItCurrentAndKeepsItsPlaceOnTheScreen)
{
    show(10'000);
    grid.goToRow(5000, 4995);
    EXPECT_EQ(grid.currentRow(), 5000);
    EXPECT_EQ(grid.firstVisibleRow(), 4995);
    EXPECT_EQ(grid.selectionModel()->selection().size(), 1);
    grid.goToRow(20'000, 0);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(DataGridTest, HomeAndEndGoToTheFirstAndTheLastRow)
{
    show(10'000);
    grid.goToRow(10, 0);
    QTest::keyClick(&grid, Qt::Key_End);
    EXPECT_EQ(grid.currentRow(), 9999);
    QTest::keyClick(&grid, Qt::Key_Home);
    EXPECT_EQ(grid.currentRow(), 0);
}

TEST_F(DataGridTest, EscapeIsReported)
{
    show(3);
    QSignalSpy escape(&grid, &DataGrid::escapePressed);
    QTest::keyClick(&grid, Qt::Key_Escape);
    EXPECT_EQ(escape.count(), 1);
}

TEST_F(DataGridTest, AnEmptyGridShowsItsNoteAndRowsHideIt)
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

TEST_F(DataGridTest, ALowEmptyGridShowsItsTitleWholeAndKeepsTheSentenceInTheToolTip)
{
    grid.setEmptyNote(
        {u"Leer"_s, u"Ein Satz, der hier über mehrere Zeilen geht und keinen Platz hat."_s, {}});
    show(0);
    auto* title = grid.findChild<QLabel*>(u"EmptyTitle"_s);
    auto* text = grid.findChild<QLabel*>(u"EmptyText"_s);
    const auto isWhole = [&](const QLabel& label) {
        return label.height() >= label.heightForWidth(label.width()) &&
               grid.viewport()->rect().contains(
                   QRect(label.mapTo(grid.viewport(), QPoint()), label.size()));
    };
    const int line = grid.fontMetrics().height();
    int withSentence = 0;
    for (int height = 5 * line; height < 20 * line; height += line / 2) {
        grid.resize(200, height);
        QCoreApplication::processEvents();
        ASSERT_TRUE(isWhole(*title)) << height;
        if (text->isVisible()) {
            ++withSentence;
            ASSERT_TRUE(isWhole(*text)) << height;
        } else {
            ASSERT_TRUE(title->parentWidget()->toolTip().startsWith(u"Ein Satz"_s)) << height;
        }
    }
    EXPECT_GT(withSentence, 10);
    EXPECT_LT(withSentence, 30);
}

TEST_F(DataGridTest, AClosedDatabaseLeavesAnEmptyGridWithItsColumns)
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

TEST_F(DataGridTest, AColouredTextIsMadeReadableOnEveryGround)
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

TEST_F(DataGridTest, ANumberStaysWholeBesideAPictureThatTakesTheRoomThatIsLeft)
{
    show(1000);
    constexpr int kNumber = 1;
    grid.setColumnHidden(kNumber, false);
    grid.showRow(201);
    const int text = figureTextWidth(grid.fontMetrics(), u"201"_s);
    const auto shown = [&](const QString& picture, int room) {
        look.cellStyle.icon = picture;
        grid.setColumnWidth(kNumber, room);
        const QRect cell = grid.visualRect(grid.model()->index(201, kNumber));
        return grid.viewport()->grab(cell).toImage();
    };
    for (const int free : {12, 18, 30, 100}) {
        const int room = text + free;
        const QImage plain = shown({}, room);
        const QImage marked = shown(u"volume"_s, room);
        const QRect number(room - 8 - text, 0, text + 8, plain.height());
        EXPECT_EQ(marked.copy(number), plain.copy(number)) << "free units: " << free;
        EXPECT_EQ(marked != plain, free > 12) << "free units: " << free;
    }
}

TEST_F(DataGridTest, AFavouriteHasAGroundOfItsOwnUntilItIsSelected)
{
    show(3);
    ASSERT_TRUE(skin.load(u"GridColorFavorit=#302010\nGridColorSelLostFocus=#203040\n"
                          "GridColorSelGotFocus=#203040"_s));
    look.cellStyle.ground = CellGround::Favourite;
    const auto ground = [this](int row) {
        const QPoint corner = grid.visualRect(grid.model()->index(row, 0)).topLeft();
        const QImage image = grid.grab().toImage();
        return fromQColor(image.pixelColor(grid.viewport()->mapTo(&grid, corner + QPoint(2, 2))));
    };
    EXPECT_EQ(ground(1), (Colour{0x30, 0x20, 0x10}));
    grid.select({{1, 1}});
    EXPECT_EQ(ground(1), (Colour{0x20, 0x30, 0x40}));
    skin.clear();
    qApp->setStyleSheet({});
}

TEST(Figures, AllFiguresTakeTheSameWidth)
{
    const QFontMetrics metrics{QFont()};
    EXPECT_EQ(figureTextWidth(metrics, u"1111"_s), figureTextWidth(metrics, u"8888"_s));
    EXPECT_EQ(figureTextWidth(metrics, u"0123"_s), figureTextWidth(metrics, u"7474"_s));
    EXPECT_NEAR(figureTextWidth(metrics, u"0123"_s), 4 * figureWidth(metrics), 4);
}

} // namespace
} // namespace melovane
