#include "config/global_settings.h"
#include "config/update_colors.h"
#include "support/suite_folders.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class UpdateColorsTest : public testing::Test
{
protected:
    void write(const QByteArray& bytes)
    {
        suite.folder().write(suite.configFile(u"melovane.ini"_s), bytes);
    }

    test::SuiteFolders suite;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
};

TEST_F(UpdateColorsTest, AMissingSectionColorGivesTheDefaultsOfTheTable)
{
    const UpdateColors colours(*settings);
    const std::vector<std::pair<QString, int>> expected = {
        {u"FontSize"_s, 9},          {u"FontBold"_s, 0},           {u"RowSpacing"_s, 0},
        {u"Note1Color"_s, 12632256}, {u"Note2Color"_s, 2663152},   {u"Note3Color"_s, 16776960},
        {u"Note4Color"_s, 3340850},  {u"Note5Color"_s, 65535},     {u"NoteTextColor"_s, 0},
        {u"NoteTextBold"_s, -1},     {u"PlayNowColor"_s, 3340850}, {u"RowShowDEL"_s, 255},
        {u"RowShowFID"_s, 3340850}};
    for (const auto& [name, number] : expected) {
        EXPECT_EQ(colours.GetColor(name), number) << name.toStdString();
    }
    EXPECT_EQ(colours.font(), (GridFont{u"Verdana"_s, 9, false, 0}));
    EXPECT_EQ(colours.GetColors().size(), expected.size() + 1);
}

TEST_F(UpdateColorsTest, AValueZeroInNoteTextColorIsBlackAndNotUnset)
{
    write("[Color]\nNoteTextColor=0\nRowShowDEL=0\n");
    const UpdateColors colours(*settings);
    EXPECT_EQ(colours.colour(u"NoteTextColor"_s), (Colour{0, 0, 0}));
    EXPECT_EQ(colours.colour(u"rowshowdel"_s), (Colour{0, 0, 0}));
}

TEST_F(UpdateColorsTest, ColoursHaveBlueInTheHighestByte)
{
    write("[Color]\nNote1Color=16711680\n");
    EXPECT_EQ(UpdateColors(*settings).colour(u"Note1Color"_s), (Colour{0, 0, 255}));
}

TEST_F(UpdateColorsTest, OnlyChangedValuesAreWritten)
{
    write("[Color]\nNote2Color=5\n");
    UpdateColors colours(*settings);
    colours.SetColorValue(u"note1color"_s, u"77"_s);
    colours.SetColorValue(u"nichts"_s, u"1"_s);
    write("[Color]\nNote2Color=6\n");
    colours.SaveChangedData();
    const UpdateColors again(*settings);
    EXPECT_EQ(again.GetColor(u"Note1Color"_s), 77);
    EXPECT_EQ(again.GetColor(u"Note2Color"_s), 6) << "what a sibling wrote meanwhile stays";
    EXPECT_EQ(settings->GetKeyValue(u"Color"_s, u"nichts"_s, u"-"_s), u"-"_s);
}

TEST_F(UpdateColorsTest, TheFontIsKeptBySaveIni)
{
    UpdateColors colours(*settings);
    colours.setFont({u"Fira Sans"_s, 14, true, 99});
    colours.SaveIni();
    EXPECT_EQ(UpdateColors(*settings).font(), (GridFont{u"Fira Sans"_s, 14, true, 0}))
        << "the row spacing is no part of the font dialog";
    EXPECT_EQ(settings->GetKeyValue(u"Color"_s, u"FontBold"_s, {}), u"-1"_s)
        << "a truth is -1 for the other programs";
}

TEST_F(UpdateColorsTest, DLoadIniForgetsWhatWasNotWritten)
{
    UpdateColors colours(*settings);
    colours.SetColorValue(u"Note1Color"_s, u"77"_s);
    colours.dLoadIni();
    colours.SaveChangedData();
    EXPECT_EQ(colours.GetColor(u"Note1Color"_s), 12632256);
}

TEST_F(UpdateColorsTest, TheShownTrackHasItsNamedStyle)
{
    write("[Color]\nRowShowFID=255\n");
    const UpdateColors colours(*settings);
    ASSERT_TRUE(colours.gridStyle(u"FidBold"_s));
    EXPECT_EQ(colours.gridStyle(u"FIDBOLD"_s)->text, (Colour{255, 0, 0}));
    EXPECT_FALSE(colours.gridStyle(u"nichts"_s));
}

} // namespace
} // namespace melovane
