#include "support/suite_folders.h"
#include "views/edit_grid.h"
#include "views/layout_files.h"
#include "views/plain_grid.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class EditGridTest : public testing::Test
{
protected:
    [[nodiscard]] QStringList shown() const
    {
        QStringList fields;
        for (const GridColumn& column : grid.layout) {
            if (column.shown) {
                fields.append(column.field);
            }
        }
        return fields;
    }

    [[nodiscard]] frmEditGrid make()
    {
        return {layouts, kLibraryLayout.toString(), grid, libraryColumns()};
    }

    test::SuiteFolders suite;
    LayoutFiles layouts{suite.paths(), suite.files()};
    test::PlainGrid grid;
};

TEST_F(EditGridTest, AddedColumnsComeBehindTheCurrentOne)
{
    frmEditGrid edit = make();
    grid.currentCell = grid.columnOf(u"Interpret"_s);
    edit.addColumn(u"Jahr"_s);
    const QStringList fields = shown();
    EXPECT_EQ(fields.indexOf(u"Jahr"_s), fields.indexOf(u"Interpret"_s) + 1);
}

TEST_F(EditGridTest, WithoutACurrentColumnTheyComeLast)
{
    frmEditGrid edit = make();
    edit.addColumn(u"jahr"_s);
    EXPECT_EQ(shown().last(), u"Jahr"_s);
    const QStringList before = shown();
    edit.addColumn(u"Jahr"_s);
    edit.addColumn(u"Nirgends"_s);
    EXPECT_EQ(shown(), before);
}

TEST_F(EditGridTest, TheRatingKeepsItsNarrowWidth)
{
    frmEditGrid edit = make();
    grid.layout[0].width = 90;
    edit.removeColumn(u"Note"_s);
    EXPECT_FALSE(shown().contains(u"Note"_s));
    edit.addColumn(u"Note"_s);
    EXPECT_DOUBLE_EQ(grid.layout[size_t(grid.columnOf(u"Note"_s))].width, 4);
}

TEST_F(EditGridTest, TheListHoldsAllColumnsAndMarksThoseShown)
{
    frmEditGrid edit = make();
    const auto choices = edit.choices();
    EXPECT_EQ(choices.size(), libraryColumns().size());
    for (const ColumnChoice& choice : choices) {
        EXPECT_EQ(choice.chosen, shown().contains(choice.field)) << choice.field.toStdString();
    }
}

TEST_F(EditGridTest, ItStartsWithTheStoredLayoutAndSavesTheNewOne)
{
    layouts.write(kLibraryLayout.toString(), {{u"FID"_s, u""_s, 13}, {u"Titel"_s, u""_s, 30}});
    frmEditGrid edit = make();
    EXPECT_EQ(shown(), (QStringList{u"FID"_s, u"Titel"_s}));
    edit.removeColumn(u"FID"_s);
    ASSERT_TRUE(edit.save());
    test::PlainGrid other;
    layouts.load(kLibraryLayout.toString(), other);
    EXPECT_FALSE(other.layout[0].shown);
}

} // namespace
} // namespace melovane
