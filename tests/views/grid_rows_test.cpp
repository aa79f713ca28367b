#include "platform/db/db_error.h"
#include "support/suite_fixture.h"
#include "views/grid_rows.h"
#include "views/plain_grid.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Stays = GridRows::Stays;

const QString kRising = u"select * from db_all order by FID"_s;
const QString kFalling = u"select * from db_all order by FID desc"_s;

/// Ten tracks "T0" to "T9" with BPM 100 to 109, shown in rising order.
class GridRowsTest : public test::SuiteFixture
{
protected:
    GridRowsTest()
    {
        for (int i = 0; i < 10; ++i) {
            suite.execute(u"insert into db_all (fid, titel, dlen) values ('80000000000%1', 'T%1', "
                          "%2)"_s.arg(i)
                              .arg(100 + i));
        }
        show(rows);
        show(keyed);
    }

    void show(GridRows& which)
    {
        which.changeDatabase(suite.dbName());
        which.show(kRising);
    }

    /// Stands on a row with others selected, as the user leaves them.
    void stand(qint64 row, qint64 top, const std::vector<RowRange>& selected = {})
    {
        grid.goToRow(row, top);
        grid.selected = selected;
    }

    [[nodiscard]] QString title(qint64 row) const { return rows.cell(row, u"Titel").toText(); }

    test::PlainGrid grid;
    GridRows rows{*suite.engine, grid};
    GridRows keyed{*suite.engine, grid, {.key = u"DLen"_s}};
};

TEST_F(GridRowsTest, AStatementThatFailsLeavesTheRowsAndTheirStatement)
{
    EXPECT_THROW(rows.show(u"select * from nowhere"_s), DbError);
    EXPECT_EQ(rows.data().RecordSource(), kRising);
    EXPECT_EQ(rows.count(), 10);
    EXPECT_EQ(title(9), u"T9"_s);
}

TEST_F(GridRowsTest, CellsOutsideTheRowsAreNull)
{
    EXPECT_TRUE(rows.cell(-1, u"Titel").isNull());
    EXPECT_TRUE(rows.cell(10, u"Titel").isNull());
    EXPECT_TRUE(rows.cell(0, u"nothing").isNull());
    grid.current = 3;
    EXPECT_EQ(rows.current(u"titel").toText(), u"T3"_s);
    grid.current = -1;
    EXPECT_TRUE(rows.current(u"Titel").isNull());
}

TEST_F(GridRowsTest, ARowIsFoundByANumber)
{
    EXPECT_EQ(rows.rowOf(u"DLen", 107), 7);
    EXPECT_EQ(rows.rowOf(u"DLen", 99), -1);
    EXPECT_EQ(rows.rowOf(u"nothing", 107), -1);
    EXPECT_EQ(rows.texts(u"Titel").join(u' '), u"T0 T1 T2 T3 T4 T5 T6 T7 T8 T9"_s);
    EXPECT_TRUE(rows.texts(u"nothing").isEmpty());
}

TEST_F(GridRowsTest, TheTrackKeepsItsPlaceOnTheScreenInANewOrder)
{
    stand(2, 1);
    const GridRows::Place place = rows.place();
    rows.show(kFalling);
    rows.restore(place, Stays::Track);
    EXPECT_EQ(grid.current, 7);
    EXPECT_EQ(grid.top, 6);
    EXPECT_EQ(rows.data().Recordset()->AbsolutePosition(), 7);
}

TEST_F(GridRowsTest, ATrackThatIsGoneLeavesTheGridOrPassesOnToTheNextOne)
{
    stand(9, 5);
    const GridRows::Place place = rows.place();
    suite.execute(u"delete from db_all where Titel='T9'"_s);
    rows.read();
    grid.goToRow(-1, 0);
    rows.restore(place, Stays::Track);
    EXPECT_EQ(grid.current, -1);
    rows.restore(place, Stays::Screen);
    EXPECT_EQ(grid.current, 8);
    EXPECT_EQ(grid.top, 5);
}

TEST_F(GridRowsTest, SelectedTracksAreSelectedAgain)
{
    stand(1, 0, {{1, 2}, {5, 5}});
    const GridRows::Place place = rows.place();
    rows.show(kFalling);
    rows.restoreSelection(place);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{8, 8}, {7, 7}, {4, 4}}));
}

TEST_F(GridRowsTest, OneSelectedTrackIsTheCurrentOneAndTooManyAreNotLookedFor)
{
    stand(1, 0, {{1, 1}});
    const GridRows::Place one = rows.place();
    stand(1, 0, {{0, qint64(GridRows::kMaxKeptSelected)}});
    const GridRows::Place many = rows.place();
    rows.show(kFalling);
    grid.selected = {{3, 3}};
    rows.restoreSelection(one);
    rows.restoreSelection(many);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{3, 3}}));
}

TEST_F(GridRowsTest, AFileThatIsAwayHasNoRowsAndComesBackToThePlace)
{
    stand(6, 4);
    rows.disconnect();
    EXPECT_FALSE(rows.isRead());
    EXPECT_FALSE(rows.isConnected());
    EXPECT_EQ(rows.count(), 0);
    EXPECT_EQ(rows.database(), nullptr);
    EXPECT_EQ(rows.rowOf(u"DLen", 107), -1);
    stand(-1, 0);
    suite.execute(u"delete from db_all where Titel='T0'"_s);
    rows.reconnect(suite.dbName());
    EXPECT_TRUE(rows.isConnected());
    EXPECT_EQ(grid.current, 6) << "without a key the place counts";
    EXPECT_EQ(grid.top, 4);
}

TEST_F(GridRowsTest, WithAKeyTheSameRecordIsTheCurrentOneAgain)
{
    stand(6, 4);
    keyed.disconnect();
    stand(-1, 0);
    suite.execute(u"delete from db_all where Titel='T0'"_s);
    keyed.reconnect(suite.dbName());
    EXPECT_EQ(grid.current, 5);
    EXPECT_EQ(grid.top, 4);
}

TEST_F(GridRowsTest, AFileThatCannotBeReadYetIsTakenBackByALaterCall)
{
    rows.disconnect();
    EXPECT_THROW(rows.reconnect(suite.file(u"gone.mdb"_s)), DbError);
    EXPECT_FALSE(rows.isConnected());
    rows.reconnect(suite.dbName());
    EXPECT_TRUE(rows.isConnected());
    EXPECT_EQ(rows.count(), 10);
}

TEST_F(GridRowsTest, ClearedRowsHaveNoStatementAndNoFile)
{
    const int before = rows.reading();
    rows.read();
    EXPECT_EQ(rows.reading(), before + 1);
    rows.clear();
    EXPECT_FALSE(rows.isRead());
    EXPECT_TRUE(rows.data().RecordSource().isEmpty());
    EXPECT_EQ(rows.database(), nullptr);
}

} // namespace
} // namespace melovane
