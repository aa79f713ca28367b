#include "platform/qt/data_grid_model.h"
#include "platform/qt/grid_fixture.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class RecordedEditing : public GridEditing
{
public:
    [[nodiscard]] bool canEdit(qint64, const QString& field) const override
    {
        return field == "titel"_L1 && allowed;
    }

    [[nodiscard]] QStringList choices(const QString&) const override { return offered; }

    bool commit(qint64 row, const QString& field, const QString& text) override
    {
        commits.append(u"%1 %2 %3"_s.arg(row).arg(field, text));
        return takes;
    }

    bool allowed = true;
    bool takes = true;
    QStringList offered;
    QStringList commits;
};

struct GridInputTest : public test::GridTest
{
    [[nodiscard]] QPoint middleOf(int row) const
    {
        return grid.visualRect(grid.model()->index(row, 0)).center();
    }

    void doubleClick(int row)
    {
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, middleOf(row));
    }

    void rightClick(int row)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(row),
                                grid.viewport()->mapToGlobal(middleOf(row)));
        QApplication::sendEvent(grid.viewport(), &event);
    }

    RecordedEditing editing;
};

// ---- selection

TEST_F(GridInputTest, SelectionComesAsRisingRunsThatDontTouch)
{
    show(100);
    grid.select({{50, 59}, {10, 12}, {13, 20}});
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{10, 20}, {50, 59}}));
}

TEST_F(GridInputTest, TheKeyboardThatComesLeavesWhatIsSelectedAndElseChoosesTheFirstRow)
{
    show(10);
    QFocusEvent comes(QEvent::FocusIn);
    grid.setCurrentIndex({});
    grid.selectAll();
    ASSERT_EQ(grid.currentRow(), -1);
    QApplication::sendEvent(&grid, &comes);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 9}}));
    grid.clearSelection();
    grid.setCurrentIndex({});
    QApplication::sendEvent(&grid, &comes);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 0}}));
}

TEST_F(GridInputTest, HomeSelectsTheFirstRowAloneAlsoWhereItIsTheCurrentOne)
{
    show(10);
    grid.goToRow(0, 0);
    grid.selectAll();
    QTest::keyClick(&grid, Qt::Key_Home);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 0}}));
}

TEST_F(GridInputTest, RowsOutsideTheSetAreNotSelected)
{
    show(10);
    grid.select({{-5, 1}, {8, 300}, {40, 50}});
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 1}, {8, 9}}));
    grid.select({});
    EXPECT_TRUE(grid.selection().empty());
}

TEST_F(GridInputTest, AMillionRowsAreSelectedAsOneRunWithoutReadingThem)
{
    show(1'000'000);
    grid.grab();
    engine.counter.reads = 0;
    grid.select({{0, 999'999}});
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 999'999}}));
    EXPECT_EQ(engine.counter.reads, 0);
}

// ---- keys and mouse

TEST_F(GridInputTest, EnterAndDoubleClickActivateTheRow)
{
    show(10);
    QSignalSpy activated(&grid, &DataGrid::rowActivated);
    grid.goToRow(3, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    doubleClick(5);
    ASSERT_EQ(activated.count(), 2);
    EXPECT_EQ(activated[0][0].toLongLong(), 3);
    EXPECT_EQ(activated[1][0].toLongLong(), 5);
}

TEST_F(GridInputTest, ADoubleClickBesideTheRowsActivatesNothing)
{
    show(2);
    QSignalSpy activated(&grid, &DataGrid::rowActivated);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 300));
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(GridInputTest, AHeldDeleteKeyIsToldOnceAlsoWhenARepeatDoesNotSayThatItIsOne)
{
    show(10);
    const auto hold = [this] {
        const auto send = [this](QEvent::Type type, bool isTold, quint64 time) {
            QKeyEvent event(type, Qt::Key_Delete, Qt::NoModifier, QString(), isTold);
            event.setTimestamp(time);
            QApplication::sendEvent(&grid, &event);
        };
        send(QEvent::KeyPress, false, 100);
        for (const quint64 time : {600, 640, 680, 720}) {
            send(QEvent::KeyRelease, time < 640, time);
            send(QEvent::KeyPress, time < 640, time);
        }
        send(QEvent::KeyRelease, false, 730);
    };
    QSignalSpy deleted(&grid, &DataGrid::deletePressed);
    hold();
    EXPECT_EQ(deleted.count(), 1);
    grid.setDeleteAtPress();
    hold();
    EXPECT_EQ(deleted.count(), 2);
}

TEST_F(GridInputTest, DeleteIsToldAtThePressWhereTheGridIsMadeSo)
{
    show(10);
    grid.setDeleteAtPress();
    QSignalSpy deleted(&grid, &DataGrid::deletePressed);
    QTest::keyPress(&grid, Qt::Key_Delete);
    EXPECT_EQ(deleted.count(), 1);
    QTest::keyRelease(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(deleted.count(), 1);
}

TEST_F(GridInputTest, DeleteIsToldWhenTheKeyIsLetGoAndDigitsOnlyWithCtrl)
{
    show(10);
    QSignalSpy deleted(&grid, &DataGrid::deletePressed);
    QSignalSpy digits(&grid, &DataGrid::digitPressed);
    QTest::keyPress(&grid, Qt::Key_Delete);
    EXPECT_EQ(deleted.count(), 0);
    QTest::keyRelease(&grid, Qt::Key_Delete);
    EXPECT_EQ(deleted.count(), 1);
    // Pressed elsewhere, in a question say, or with other keys.
    QTest::keyRelease(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(deleted.count(), 1);
    QTest::keyClick(&grid, Qt::Key_4, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_4);
    ASSERT_EQ(digits.count(), 1);
    EXPECT_EQ(digits[0][0].toInt(), 4);
}

TEST_F(GridInputTest, EndAndHomeSelectTheLastAndTheFirstRow)
{
    show(1000);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_End);
    EXPECT_EQ(grid.currentRow(), 999);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{999, 999}}));
    QTest::keyClick(&grid, Qt::Key_Home);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 0}}));
}

TEST_F(GridInputTest, ARightClickSelectsTheRowUnlessItIsSelected)
{
    show(10);
    QSignalSpy menu(&grid, &DataGrid::rowMenuWanted);
    grid.select({{2, 4}});
    rightClick(3);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{2, 4}}));
    rightClick(6);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{6, 6}}));
    ASSERT_EQ(menu.count(), 2);
    EXPECT_EQ(menu[1][0].toLongLong(), 6);
}

TEST_F(GridInputTest, TheMenuKeyOpensTheMenuOfTheCurrentRow)
{
    show(10);
    QSignalSpy menu(&grid, &DataGrid::rowMenuWanted);
    grid.goToRow(4, 0);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(grid.viewport(), &event);
    ASSERT_EQ(menu.count(), 1);
    EXPECT_EQ(menu[0][0].toLongLong(), 4);
}

TEST_F(GridInputTest, TheFirstRowIsSelectedWhenTheKeyboardComes)
{
    show(10);
    grid.clearFocus();
    grid.setCurrentIndex(QModelIndex());
    grid.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(grid.currentRow(), 0);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{0, 0}}));
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(grid.selection(), (std::vector<RowRange>{{1, 1}}));
}

TEST_F(GridInputTest, WidthsStayWhenAStyleSheetChangesTheFontBeforeTheGridIsTold)
{
    show(10);
    grid.setGridFont({QString(), 14, false, 0});
    const double width = grid.columns().front().width;
    QFont small = grid.font();
    small.setPointSize(7);
    grid.setFont(small);
    grid.setGridFont({QString(), 14, false, 0});
    EXPECT_NEAR(grid.columns().front().width, width, 0.2);
}

// ---- editing

TEST_F(GridInputTest, NoCellOpensWithoutEditing)
{
    show(10);
    grid.goToRow(2, 0);
    grid.editCurrentCell();
    EXPECT_EQ(grid.findChild<QLineEdit*>(), nullptr);
}

TEST_F(GridInputTest, AChangedTextIsCommittedAndAnUnchangedOneIsNot)
{
    show(10);
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    grid.editCurrentCell();
    auto* line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"Titel 2"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
    EXPECT_TRUE(editing.commits.isEmpty());

    grid.editCurrentCell();
    line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->setText(u"Anders"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
    EXPECT_EQ(editing.commits, (QStringList{u"2 titel Anders"_s}));
}

TEST_F(GridInputTest, ATextThatIsNotTakenStaysInTheOpenCellUntilItIsMendedOrGivenUp)
{
    show(10);
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    editing.takes = false;
    grid.editCurrentCell();
    QPointer<QLineEdit> line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->setText(u"Anders"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return editing.commits.size() == 1; }));
    QCoreApplication::processEvents();
    ASSERT_FALSE(line.isNull());
    EXPECT_EQ(line->text(), u"Anders"_s);

    editing.takes = true;
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
    EXPECT_EQ(editing.commits.size(), 2);

    editing.takes = false;
    grid.editCurrentCell();
    line = grid.findChild<QLineEdit*>();
    ASSERT_FALSE(line.isNull());
    line->setText(u"Weg"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return editing.commits.size() == 3; }));
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
}

TEST_F(GridInputTest, ADoubleClickWithCtrlKeepsTheClickedRowAmongTheSelected)
{
    show(10);
    grid.goToRow(2, 0);
    grid.select({{2, 4}});
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(3));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(3));
    ASSERT_EQ(grid.selection().size(), 1U);
    EXPECT_EQ(grid.selection()[0].first, 2);
    EXPECT_EQ(grid.selection()[0].last, 4);
}

TEST_F(GridInputTest, KeysOfAnOpenEditorAreNoKeysOfTheGrid)
{
    show(10);
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    QSignalSpy activated(&grid, &DataGrid::rowActivated);
    QSignalSpy digits(&grid, &DataGrid::digitPressed);
    QSignalSpy deletes(&grid, &DataGrid::deletePressed);
    grid.editCurrentCell();
    auto* line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClick(line, Qt::Key_3, Qt::ControlModifier);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
    EXPECT_EQ(activated.count() + digits.count() + deletes.count(), 0);

    QTest::keyClick(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(digits.count() * 10 + deletes.count(), 11);
}

TEST_F(GridInputTest, TheTextOfAnEditorStandsWhereTheCellShowedIt)
{
    QFile theme(QStringLiteral(MLV_RESOURCES "/themes/melovane-dark.skn"));
    ASSERT_TRUE(theme.open(QIODevice::ReadOnly));
    ASSERT_TRUE(skin.load(QString::fromUtf8(theme.readAll())));
    show(10);
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    grid.editCurrentCell();
    auto* line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->setCursorPosition(0);
    // The rectangle of the cursor has five units before it.
    const int start = line->inputMethodQuery(Qt::ImCursorRectangle).toRect().left() + 5;
    EXPECT_NEAR(line->mapTo(grid.viewport(), QPoint(start, 0)).x(),
                grid.columnViewportPosition(0) + 8, 1);
    skin.clear();
    qApp->setStyleSheet({});
}

TEST_F(GridInputTest, WhatIsTypedStaysWhenTheRowsAreReadAnew)
{
    show(10);
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    EXPECT_TRUE(grid.hasKeyboard());
    grid.editCurrentCell();
    auto* line = grid.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    EXPECT_FALSE(grid.hasKeyboard()); // no command goes to the rows meanwhile
    line->setText(u"Ein langer neuer Titel"_s);
    emit grid.model()->dataChanged(grid.model()->index(0, 0), grid.model()->index(9, 0));
    EXPECT_EQ(line->text(), u"Ein langer neuer Titel"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([this] { return grid.findChild<QLineEdit*>() == nullptr; }));
    EXPECT_EQ(editing.commits, (QStringList{u"2 titel Ein langer neuer Titel"_s}));
}

TEST_F(GridInputTest, AFieldWithChoicesOffersThem)
{
    show(10);
    editing.offered = QStringList{u"Rock"_s, u"Titel 2"_s, u"Pop"_s};
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    grid.editCurrentCell();
    auto* list = grid.findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->currentText(), u"Titel 2"_s);
    list->setCurrentIndex(0);
    emit list->activated(0);
    EXPECT_EQ(editing.commits, (QStringList{u"2 titel Rock"_s}));
}

TEST_F(GridInputTest, ACellThatMustNotBeChangedStaysClosed)
{
    show(10);
    editing.allowed = false;
    grid.setEditing(&editing);
    grid.goToRow(2, 0);
    grid.editCurrentCell();
    EXPECT_EQ(grid.findChild<QLineEdit*>(), nullptr);
}

// ---- columns and fonts

TEST_F(GridInputTest, ColumnsAreArrangedByNameAndReadBackAsTheyStand)
{
    show(10);
    std::vector<GridColumn> layout = grid.columns();
    ASSERT_EQ(layout.size(), 3U);
    GridColumn fid = layout[2];
    ASSERT_EQ(fid.field, u"FID"_s);
    fid.shown = true;
    fid.width = 14;
    fid.heading = u"Kennung"_s;
    GridColumn unknown{u"Nirgends"_s, u"?"_s, 3};
    grid.arrange({fid, unknown, layout[0]});
    const auto after = grid.columns();
    EXPECT_EQ(after[0].field, u"FID"_s);
    EXPECT_EQ(after[0].heading, u"Kennung"_s);
    EXPECT_NEAR(after[0].width, 14, 0.2);
    EXPECT_EQ(after[1].field, u"titel"_s);
    EXPECT_TRUE(after[1].stretched);
    EXPECT_FALSE(after[2].shown) << "a column that the layout does not name";
}

TEST_F(GridInputTest, ALayoutWithoutAColumnToShowChangesNothing)
{
    show(10);
    const auto before = grid.columns();
    grid.arrange({});
    grid.arrange({{u"Nirgends"_s, u"?"_s, 3}});
    EXPECT_EQ(grid.columns().size(), before.size());
    EXPECT_TRUE(grid.columns()[0].shown);
}

TEST_F(GridInputTest, FittingMeasuresTheScreenOnlyAndSparesTheExceptions)
{
    show(1'000'000);
    grid.setColumnHidden(1, false);
    const int before = grid.columnWidth(2);
    engine.counter.reads = 0;
    grid.fitColumns({u"album"_s}, 30);
    EXPECT_EQ(grid.columnWidth(2), before);
    EXPECT_LT(grid.columnWidth(1), 100);
    EXPECT_LT(engine.counter.reads, 200);
}

TEST_F(GridInputTest, FittingBeforeTheFirstShowMeasuresTheFirstRowsOnly)
{
    engine.counter.rows = 1'000'000;
    rows.SetRecordSource(u"select"_s);
    rows.Refresh();
    engine.counter.reads = 0;
    grid.fitColumns({}, 30);
    EXPECT_LT(engine.counter.reads, 2000);
}

/// Texts whose exact widths hold parts of a unit.
struct FittedColumns : public test::GridTest
{
    struct Look : test::PlainLook
    {
        [[nodiscard]] QString text(const QString&, const Value&) const override { return shown; }

        QString shown;
    };

    FittedColumns()
    {
        QFont exact = grid.font();
        exact.setHintingPreference(QFont::PreferNoHinting);
        exact.setPointSizeF(9.3);
        grid.setFont(exact);
        grid.horizontalHeader()->setFont(exact);
        engine.counter.rows = 3;
        rows.SetRecordSource(u"select"_s);
        grid.resize(900, 400);
        grid.show();
    }

    /// Whether a text is painted whole in so many units beside the padding.
    bool isWhole(const QString& text, int room, const QFont& font)
    {
        const QFontMetrics metrics(font, &grid);
        return metrics.elidedText(text, Qt::ElideRight, room) == text;
    }

    static constexpr int kSides = 16; ///< padding of cells and headings, both sides

    Look fitted;
    const QStringList texts{u"Electronic"_s, u"Gespielt"_s,    u"Heute"_s,
                            u"Genre"_s,      u"Wilde Fahrt"_s, u"AVAVAV"_s,
                            u"illi"_s,       u"Tom.Tom"_s,     u"128,5"_s};
};

TEST_F(FittedColumns, ShowTheirTextsWhole)
{
    for (const CellAlignment alignment : {CellAlignment::Left, CellAlignment::Right}) {
        grid.setSource(rows, fitted, {{u"Titel"_s, u"."_s, 3, alignment}});
        for (const QString& text : texts) {
            fitted.shown = text;
            rows.Refresh();
            grid.fitColumns({}, 90);
            EXPECT_TRUE(isWhole(text, grid.columnWidth(0) - kSides, grid.font()))
                << text.toStdString();
        }
    }
}

TEST_F(FittedColumns, ShowTheirHeadingsWholeTheOneWithTheArrowToo)
{
    for (const SortArrow arrow : {SortArrow::None, SortArrow::Ascending}) {
        for (const QString& heading : texts) {
            grid.setSource(rows, fitted, {{u"Titel"_s, heading, 3}});
            rows.Refresh();
            grid.setSortArrow(0, arrow);
            grid.fitColumns({}, 90);
            const int sign = arrow == SortArrow::None
                                 ? 0
                                 : grid.horizontalHeader()->fontMetrics().ascent() * 4 / 5 + 5;
            EXPECT_TRUE(isWhole(heading, grid.columnWidth(0) - kSides - sign,
                                grid.horizontalHeader()->font()))
                << heading.toStdString() << int(arrow);
        }
    }
}

TEST_F(FittedColumns, LeaveRoomForThePictureBeforeTheText)
{
    fitted.shown = u"146."_s;
    fitted.cellStyle.icon = u"play"_s;
    grid.setSource(rows, fitted, {{u"Titel"_s, u"."_s, 3}});
    rows.Refresh();
    grid.fitColumns({}, 90);
    const int picture = grid.fontMetrics().height() + 5;
    EXPECT_TRUE(isWhole(u"146."_s, grid.columnWidth(0) - kSides - picture, grid.font()));
}

TEST_F(GridInputTest, RowsFollowTheFontAndTheSpacing)
{
    show(10);
    const int before = grid.rowHeight(0);
    GridFont font;
    font.size = 24;
    font.rowSpacing = 10;
    grid.setGridFont(font);
    EXPECT_GT(grid.rowHeight(0), before + 10);
    EXPECT_EQ(grid.font().pointSize(), 24);
}

TEST_F(GridInputTest, HeadingsHaveTheFontOfTheRowsAndABoldFontMakesEveryRowBold)
{
    show(10);
    GridFont font;
    font.size = grid.font().pointSize();
    grid.setGridFont(font);
    const QImage plain = grid.grab().toImage();
    font.bold = true;
    grid.setGridFont(font);
    EXPECT_TRUE(grid.horizontalHeader()->font().bold());
    const QRect row(0, grid.rowViewportPosition(2) + grid.viewport()->y(), grid.columnWidth(0),
                    grid.rowHeight(2));
    EXPECT_NE(grid.grab().toImage().copy(row), plain.copy(row));
}

TEST_F(GridInputTest, NothingIsDraggedWithoutAText)
{
    show(10);
    grid.goToRow(2, 0);
    int asked = 0;
    grid.setDragSource([&asked] {
        ++asked;
        return DragContent();
    });
    EXPECT_TRUE(grid.model()->flags(grid.model()->index(2, 0)).testFlag(Qt::ItemIsDragEnabled));
    EXPECT_EQ(asked, 0);
}

} // namespace
} // namespace melovane
