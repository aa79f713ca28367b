#include "support/suite_fixture.h"
#include "views/drag_data.h"
#include "views/plain_grid.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class DragDataTest : public test::SuiteFixture
{
protected:
    DragDataTest()
    {
        suite.library.add({.FID = u"800000000003"_s, .Titel = u"A"_s, .DName = u"a.mp3"_s});
        suite.library.add({.FID = u"800000000001"_s, .Titel = u"B"_s, .DName = u"b.mp3"_s});
        suite.library.add(
            {.FID = u"800000000002"_s, .Titel = u"C"_s, .DName = u"c.mp3"_s, .DEL = -1});
        suite.library.add({.FID = u"800000000004"_s, .Titel = u"D"_s, .DName = u"d.mp3"_s});
    }

    [[nodiscard]] DragContent drag(DragOrder order, const QString& cached = {})
    {
        return GetDragData(DragKind::FidMp3db, grid, *rows, order, cached,
                           [this](const QString& file) {
                               ++located;
                               return file;
                           });
    }

    std::unique_ptr<Database> database = suite.open();
    std::unique_ptr<Recordset> rows;
    test::PlainGrid grid;
    int located = 0;

    void SetUp() override
    {
        rows = database->OpenRecordset(u"select * from db_all order by Titel"_s);
    }
};

TEST_F(DragDataTest, IdsAreJoinedByCommasInTheOrderOfTheGrid)
{
    grid.selected = {{0, 1}, {3, 3}};
    const DragContent content = drag(DragOrder::ByPosition);
    EXPECT_EQ(content.text, u"DRAG_TYP_FID_MP3DB:800000000003,800000000001,800000000004"_s);
    EXPECT_EQ(located, 0) << "the disk is asked when another program takes the files";
    EXPECT_EQ(content.files(),
              (QStringList{u"/music/a.mp3"_s, u"/music/b.mp3"_s, u"/music/d.mp3"_s}));
}

TEST_F(DragDataTest, SortedByIdTheyAreComparedAsNumbersAndTheFilesFollow)
{
    grid.selected = {{0, 3}};
    const DragContent content = drag(DragOrder::ById);
    EXPECT_EQ(content.text, u"DRAG_TYP_FID_MP3DB:800000000001,800000000003,800000000004"_s);
    EXPECT_EQ(content.files().first(), u"/music/b.mp3"_s);
}

TEST_F(DragDataTest, AFlaggedRowIsNeverDraggedASingleOneNeither)
{
    grid.selected = {{2, 2}};
    EXPECT_EQ(drag(DragOrder::ByPosition).text, QString());
}

TEST_F(DragDataTest, WithoutASelectionTheCurrentRowIsSelectedAndDragged)
{
    grid.current = 1;
    EXPECT_EQ(drag(DragOrder::ByPosition).text, u"DRAG_TYP_FID_MP3DB:800000000001"_s);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}}));
}

TEST_F(DragDataTest, CachedIdsStandForTheSelection)
{
    grid.selected = {{0, 0}};
    EXPECT_EQ(drag(DragOrder::ByPosition, u"1,2"_s).text, u"DRAG_TYP_FID_MP3DB:1,2"_s);
}

TEST_F(DragDataTest, ARowDeletedMeanwhileIsLeftOut)
{
    suite.execute(u"delete * from db_all where Titel='B'"_s);
    grid.selected = {{0, 1}};
    EXPECT_EQ(drag(DragOrder::ByPosition).text, u"DRAG_TYP_FID_MP3DB:800000000003"_s);
}

TEST_F(DragDataTest, NothingSelectedInAnEmptyGridIsNoDrag)
{
    EXPECT_EQ(drag(DragOrder::ByPosition).text, QString());
    EXPECT_EQ(dragText(DragKind::Plid, {}), QString());
    EXPECT_EQ(dragText(DragKind::Plid, {u"7"_s}), u"DRAG_TYP_PLID:7"_s);
}

} // namespace
} // namespace melovane
