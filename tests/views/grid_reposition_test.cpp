#include "platform/db/data_control.h"
#include "platform/db/recordset.h"
#include "support/suite_fixture.h"
#include "views/grid_reposition.h"
#include "views/plain_grid.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Ten rows, of which number 6 stood current in the third line of the screen.
class GridReposition : public test::SuiteFixture
{
protected:
    GridReposition()
    {
        for (int i = 0; i < 10; ++i) {
            suite.execute(
                u"insert into db_all (fid, titel) values ('80000000000%1', 'T')"_s.arg(i));
        }
        rows.SetDatabaseName(suite.dbName());
        rows.SetRecordSource(u"select * from db_all order by FID"_s);
        rows.Refresh();
        grid.current = 6;
        grid.top = 4;
        place.StartPosition();
        grid.current = 0;
        grid.top = 0;
    }

    test::PlainGrid grid;
    DataControl rows{*suite.engine};
    TDBGIDReposition place{grid, rows};
};

TEST_F(GridReposition, TheRowComesBackToItsPlaceOnTheScreen)
{
    rows.Refresh();
    place.Reposition();
    EXPECT_EQ(grid.current, 6);
    EXPECT_EQ(grid.top, 4);
    EXPECT_EQ(rows.Recordset()->AbsolutePosition(), 6);
}

TEST_F(GridReposition, AnOffsetMovesTheRowAndNotItsPlaceOnTheScreen)
{
    place.Reposition(false, 2);
    EXPECT_EQ(grid.current, 8);
    EXPECT_EQ(grid.top, 6);
}

TEST_F(GridReposition, AResultBelowZeroDoesNothing)
{
    place.Reposition(false, -7);
    EXPECT_EQ(grid.current, 0);
    EXPECT_EQ(grid.top, 0);
    EXPECT_EQ(rows.Recordset()->AbsolutePosition(), 0);
}

TEST_F(GridReposition, LastGoesToTheLastRowWhateverTheOffset)
{
    place.Reposition(true, -3);
    EXPECT_EQ(grid.current, 9);
    EXPECT_EQ(rows.Recordset()->AbsolutePosition(), 9);
}

TEST_F(GridReposition, ARowThatIsNoLongerThereLeavesTheGrid)
{
    suite.execute(u"delete from db_all where fid>'800000000003'"_s);
    rows.Refresh();
    place.Reposition();
    EXPECT_EQ(grid.current, 0);
}

TEST_F(GridReposition, WithoutRowsOrANotedRowNothingHappens)
{
    grid.current = -1;
    place.StartPosition();
    place.Reposition(false, 5);
    EXPECT_EQ(grid.current, -1);
    rows.closeDatabase();
    place.Reposition(true);
    EXPECT_EQ(grid.current, -1);
}

TEST_F(GridReposition, AllColumnsCanBeClicked)
{
    place.SetAllSortButton();
    EXPECT_TRUE(grid.sortButtons);
}

} // namespace
} // namespace melovane
