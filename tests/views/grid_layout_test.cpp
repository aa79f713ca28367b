#include "support/suite_folders.h"
#include "views/grid_layout.h"
#include "views/layout_files.h"
#include "views/plain_grid.h"

#include <QFile>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(GridLayout, ColumnsComeBackAsTheyWere)
{
    GridColumn title{u"Titel"_s, u"Ein | Titel äöü"_s, 40.5};
    title.stretched = true;
    title.renamed = true;
    GridColumn hidden{u"FID"_s, u"FID"_s, 13};
    hidden.shown = false;
    const auto read = readLayout(layoutText({title, hidden}));
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].field, u"Titel"_s);
    EXPECT_EQ(read[0].heading, u"Ein | Titel äöü"_s);
    EXPECT_EQ(read[1].heading, QString()) << "only headings of the user's own are kept";
    EXPECT_DOUBLE_EQ(read[0].width, 40.5);
    EXPECT_TRUE(read[0].stretched);
    EXPECT_TRUE(read[0].shown);
    EXPECT_FALSE(read[1].shown);
}

TEST(GridLayout, ABrokenFileKeepsWhatCanBeRead)
{
    const auto read = readLayout("\xff\xfe?\r\n|1|5|0|x\nTitel|1|7|0|Titel\nAlbum|1|nan|0|Album\n"
                                 "Album|2|7|0|Album\nTITEL|1|9|0|zwei\nBPM|1|1e9|0|\nkurz|1\n");
    ASSERT_EQ(read.size(), 0U) << "bytes of another encoding";
    const auto plain = readLayout("x\r\n|1|5|0|x\nTitel|1|7|0|Titel\nAlbum|1|nan|0|Album\n"
                                  "Album|2|7|0|Album\nTITEL|1|9|0|zwei\nBPM|1|1e9|0|\nkurz|1\n");
    ASSERT_EQ(plain.size(), 2U);
    EXPECT_EQ(plain[0].heading, u"Titel"_s);
    EXPECT_EQ(plain[1].field, u"BPM"_s);
    EXPECT_LE(plain[1].width, 500);
}

TEST(GridLayout, AnyBytesAreReadWithoutFailing)
{
    quint32 state = 1;
    for (int run = 0; run < 200; ++run) {
        QByteArray bytes;
        for (int i = 0; i < 300; ++i) {
            state = state * 1664525U + 1013904223U;
            bytes.append(char("|01\nAZ.9\0\xfc"[(state >> 16) % 10]));
        }
        EXPECT_LE(readLayout(bytes).size(), 500U);
    }
}

TEST(GridLayout, TheShippedModelHoldsTheBuiltInColumns)
{
    QFile file(QStringLiteral(MLV_RESOURCES "/layout/default.grx"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), layoutText(libraryColumns()));
}

class LayoutFilesTest : public testing::Test
{
protected:
    void write(const QString& file, const QByteArray& bytes)
    {
        suite.folder().write(suite.configFile(u"Layout/"_s + file), bytes);
    }

    [[nodiscard]] QByteArray read(const QString& file)
    {
        return suite.folder().read(suite.configFile(u"Layout/"_s + file));
    }

    [[nodiscard]] QString version(const QString& layout)
    {
        return suite.paths().GetUserRegistryValue(layout, {});
    }

    test::SuiteFolders suite;
    LayoutFiles layouts{suite.paths(), suite.files()};
    test::PlainGrid grid;
    QString name = kLibraryLayout.toString();
    const QByteArray twoColumns = "x\nFID|1|13|0|FID\nTitel|1|20|0|Titel\n";
};

TEST_F(LayoutFilesTest, AMissingLayoutFileGivesTheBuiltInColumnsAndNoError)
{
    layouts.load(name, grid);
    EXPECT_EQ(grid.layout.size(), libraryColumns().size());
    EXPECT_EQ(version(name), u"3.4"_s);
}

TEST_F(LayoutFilesTest, ALayoutOfAnotherVersionIsLoadedAndThenHasTheVersionOfThisRelease)
{
    write(name, twoColumns);
    suite.paths().SetUserRegistryValue(name, u"3.2"_s);
    layouts.load(name, grid);
    ASSERT_EQ(grid.layout.size(), 2U);
    EXPECT_EQ(grid.layout[0].field, u"FID"_s);
    EXPECT_EQ(version(name), u"3.4"_s);
}

TEST_F(LayoutFilesTest, WhatWasSavedIsLoaded)
{
    grid.layout = {{u"BPM"_s, u"Takt"_s, 6}};
    grid.layout[0].renamed = true;
    layouts.save(name, grid);
    test::PlainGrid other;
    layouts.load(name, other);
    ASSERT_EQ(other.layout.size(), 1U);
    EXPECT_EQ(other.layout[0].heading, u"Takt"_s);
}

TEST_F(LayoutFilesTest, AFileWithoutOneReadableLineLeavesTheGrid)
{
    write(name, "Unsinn\n");
    layouts.load(name, grid);
    EXPECT_EQ(grid.layout.size(), libraryColumns().size());
}

TEST_F(LayoutFilesTest, ALayoutMarkedForRepairIsTheModelAtTheNextStartAndTheFormerOneIsKept)
{
    write(u"default.grx"_s, layoutText(libraryColumns()));
    write(name, twoColumns);
    layouts.markForRepair();
    EXPECT_EQ(version(name), u"repair"_s);
    EXPECT_EQ(read(name), twoColumns) << "nothing changes before the next start";
    layouts.repair();
    EXPECT_EQ(read(name), layoutText(libraryColumns()));
    EXPECT_EQ(read(name + u".bak"_s), twoColumns);
    layouts.load(name, grid);
    EXPECT_EQ(version(name), u"3.4"_s);
}

TEST_F(LayoutFilesTest, ARepairedPlaylistLayoutHasTheColumnsOfPlaylistsAgain)
{
    name = kPlaylistLayout.toString();
    write(u"default.grx"_s, layoutText(libraryColumns()));
    write(name, twoColumns);
    layouts.markForRepair();
    layouts.repair();
    EXPECT_EQ(read(name + u".bak"_s), twoColumns);
    grid.layout = {{u"Aktion"_s, u"Aktion"_s, 6}, {u"Nr"_s, u"Nr"_s, 4}};
    layouts.load(name, grid);
    ASSERT_EQ(grid.layout.size(), 2U) << "the grid keeps the columns that it was made with";
    EXPECT_EQ(grid.layout[0].field, u"Aktion"_s);
    EXPECT_EQ(version(name), u"3.4"_s);
}

TEST_F(LayoutFilesTest, ALayoutOfThisReleaseOrWithoutAVersionIsNotRepaired)
{
    write(u"default.grx"_s, layoutText(libraryColumns()));
    write(name, twoColumns);
    layouts.repair();
    EXPECT_EQ(read(name), twoColumns);
    suite.paths().SetUserRegistryValue(name, u"3.4"_s);
    layouts.repair();
    EXPECT_EQ(read(name), twoColumns);
}

TEST_F(LayoutFilesTest, AtTheStartALayoutOfAnotherVersionStaysTheUsersOwn)
{
    write(u"default.grx"_s, layoutText(libraryColumns()));
    write(name, twoColumns);
    suite.paths().SetUserRegistryValue(name, u"3.3"_s);
    layouts.repair();
    EXPECT_EQ(read(name), twoColumns);
    layouts.load(name, grid);
    EXPECT_EQ(grid.layout.size(), 2U);
    EXPECT_EQ(version(name), u"3.4"_s);
}

TEST_F(LayoutFilesTest, WithoutTheModelARepairLeavesTheLayout)
{
    write(name, twoColumns);
    layouts.markForRepair();
    layouts.repair();
    EXPECT_EQ(read(name), twoColumns);
    EXPECT_EQ(version(name), u"repair"_s);
}

} // namespace
} // namespace melovane
