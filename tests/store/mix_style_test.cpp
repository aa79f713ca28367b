#include "store/mix_style.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

bool isUnset(const MLVMixStyle& style)
{
    return style == MLVMixStyle();
}

bool isUnset(const MlvEQStyle& style)
{
    return style == MlvEQStyle();
}

} // namespace

TEST(MixStyle, TheEmptyTextIsUnsetAndAllZero)
{
    EXPECT_TRUE(isUnset(MixStyleSplit(u"")));
}

TEST(MixStyle, FourValuesAreUnset)
{
    EXPECT_TRUE(isUnset(MixStyleSplit(u"1,2,3,4")));
}

TEST(MixStyle, SixValuesFillMixExtraAndAreWrittenAsFive)
{
    const MLVMixStyle style = MixStyleSplit(u"1,2,3,4,5,6");
    EXPECT_TRUE(style.IsSet);
    EXPECT_EQ(style.MixExtra, 6);
    EXPECT_EQ(MixStyleToString(style), u"1,2,3,4,5"_s);
}

TEST(MixStyle, MoreThanSixValuesAreTakenAsFive)
{
    const MLVMixStyle style = MixStyleSplit(u"1,2,3,4,5,6,7");
    EXPECT_TRUE(style.IsSet);
    EXPECT_EQ(style.MixExtra, 0);
    EXPECT_EQ(style.MixValue5, 5);
}

TEST(MixStyle, ValuesAreReadByTheirLeadingNumberAndRoundedHalfToEven)
{
    const MLVMixStyle style = MixStyleSplit(u" 12x,2.5,3.5,abc,-7");
    EXPECT_EQ(MixStyleToString(style), u"12,2,4,0,-7"_s);
}

TEST(MixStyle, NumbersBeyond32BitsClamp)
{
    EXPECT_EQ(MixStyleSplit(u"99999999999,0,0,0,0").MixValue1, 2147483647);
}

TEST(MixStyle, TheDefaultsReadBackAsTheyAreWritten)
{
    for (const QStringView text : {kDefaultMixStyleIn, kDefaultMixStyleOut}) {
        EXPECT_EQ(MixStyleToString(MixStyleSplit(text)), text);
    }
    EXPECT_EQ(EQStyleToString(EQStyleSplit(kDefaultEqStyle)), kDefaultEqStyle);
}

TEST(EqStyle, FourOrSixValuesAreUnset)
{
    EXPECT_TRUE(isUnset(EQStyleSplit(u"1,2,3,4")));
    EXPECT_TRUE(isUnset(EQStyleSplit(u"1,2,3,4,5,6")));
}

TEST(EqStyle, TheFirstValueOfTheTextIsTheFifthBandAndIsWrittenFirstAgain)
{
    const MlvEQStyle style = EQStyleSplit(u"9,101,102,103,104");
    EXPECT_TRUE(style.IsSet);
    EXPECT_EQ(style.EQValue5, 9);
    EXPECT_EQ(style.EQValue1, 101);
    EXPECT_EQ(style.EQValue4, 104);
    EXPECT_EQ(EQStyleToString(style), u"9,101,102,103,104"_s);
}

TEST(MixStyleOrDefault, AnEmptyTextTakesTheDefaultAndAnUnreadableOneDoesNot)
{
    EXPECT_EQ(mixStyleOrDefault(u""_s, u"1,2,3,4,5"_s), MixStyleSplit(u"1,2,3,4,5"));
    EXPECT_EQ(mixStyleOrDefault({}, u"1,2,3,4,5"_s), MixStyleSplit(u"1,2,3,4,5"));
    EXPECT_TRUE(isUnset(mixStyleOrDefault(u"7"_s, u"1,2,3,4,5"_s)));
}

TEST(MixStyleOrDefault, TheDefaultNullMeansNoStyle)
{
    EXPECT_TRUE(isUnset(mixStyleOrDefault({}, u"null"_s)));
}

TEST(MixTimeOrDefault, OnlyZeroTakesTheDefaultAndADefaultBelowOneIsNone)
{
    EXPECT_EQ(mixTimeOrDefault(1200, 5000), 1200);
    EXPECT_EQ(mixTimeOrDefault(-1, 5000), -1);
    EXPECT_EQ(mixTimeOrDefault(0, 5000), 5000);
    EXPECT_EQ(mixTimeOrDefault(0, 0), 0);
    EXPECT_EQ(mixTimeOrDefault(0, -3), 0);
}

TEST(StyleChange, TheOwnerOfAStyleHearsOfItsChange)
{
    int heard = 0;
    MLVMixStyle mix = MixStyleSplit(kDefaultMixStyleIn);
    MlvEQStyle eq = EQStyleSplit(kDefaultEqStyle);
    mix.ChangeMix();
    eq.ChangeEQ();
    mix.Change = [&heard] { heard += 1; };
    eq.Change = [&heard] { heard += 10; };
    mix.ChangeMix();
    EXPECT_EQ(heard, 1);
    eq.ChangeEQ();
    EXPECT_EQ(heard, 11);
    mix.Change = std::function<void()>();
    mix.ChangeMix();
    EXPECT_EQ(heard, 11);
}

TEST(StyleChange, ACopyTellsNobodyAndAnAssignmentKeepsTheListener)
{
    int heard = 0;
    MLVMixStyle style = MixStyleSplit(u"1,2,3,4,5");
    style.Change = [&heard] { ++heard; };
    const MLVMixStyle copy = style;
    copy.ChangeMix();
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(copy, style);
    style = MixStyleSplit(u"5,4,3,2,1");
    style.ChangeMix();
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(style.MixValue1, 5);
}
