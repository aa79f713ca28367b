#include "trackedit/panel_texts.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace paneltexts;

TEST(PanelTexts, ARatingIsTheOptionTheOtherWayRoundAndAllElseIsNone)
{
    EXPECT_EQ(optionOfNote(u"5"_s), 1);
    EXPECT_EQ(optionOfNote(u" 1 "_s), 5);
    for (const QString& other : {QString(), u"0"_s, u"6"_s, u"12"_s, u"x"_s, u"-1"_s}) {
        EXPECT_EQ(optionOfNote(other), 0) << other.toStdString();
    }
    EXPECT_EQ(optionOfNote(Value()), 0);
}

TEST(PanelTexts, APositionIsCutToWholeMilliseconds)
{
    EXPECT_EQ(startText(0), u"00:00:00"_s);
    EXPECT_EQ(startText(-5), u"00:00:00"_s);
    EXPECT_EQ(startText(38), u"00:00:99"_s); // 992.65 ms
    EXPECT_EQ(startText(14979), u"06:31:29"_s);
    EXPECT_EQ(startText(2'147'483'647).size(), 8);
}

TEST(PanelTexts, AStopOfZeroOrLessIsTheLengthOfTheTrack)
{
    EXPECT_EQ(stopText(0, u"06:41"_s), u"06:41"_s);
    EXPECT_EQ(stopText(-1, u"06:41"_s), u"06:41"_s);
    EXPECT_EQ(stopText(38, u"06:41"_s), u"00:00:99"_s);
}

TEST(PanelTexts, ALevelIsCutDownwardsToTwoDecimals)
{
    EXPECT_EQ(levelText(0), u"??"_s);
    EXPECT_EQ(levelText(0.99), u"??"_s);
    EXPECT_EQ(levelText(-20), u"??"_s);
    EXPECT_EQ(levelText(32767), u"0.00 db"_s);
    EXPECT_EQ(levelText(1e9), u"0.00 db"_s);
    EXPECT_EQ(levelText(25670), u"-2.13 db"_s); // -2.1201
    EXPECT_EQ(levelText(1), u"-90.31 db"_s);    // -90.3087
    EXPECT_EQ(levelText(std::numeric_limits<double>::quiet_NaN()), u"??"_s);
}

} // namespace
} // namespace melovane
