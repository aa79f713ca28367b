#include "playlists/command_map.h"
#include "playlists/entry_records.h"
#include "store/mix_style.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(MixStyle, TheEmptyTextIsUnsetAndAllZero)
{
    EXPECT_EQ(MixStyleSplit(u""), MLVMixStyle());
}

TEST(MixStyle, FourValuesAreUnsetOfSixTheSixthIsExtraAndFiveAreWrittenBack)
{
    EXPECT_FALSE(MixStyleSplit(u"1,2,3,4").IsSet);
    const MLVMixStyle style = MixStyleSplit(u"1,2,3,4,5,6");
    EXPECT_EQ(style.MixExtra, 6);
    EXPECT_EQ(MixStyleToString(style), u"1,2,3,4,5"_s);
    EXPECT_EQ(MixStyleSplit(u"1,2,3,4,5,6,7").MixExtra, 0);
}

TEST(EqStyle, FourOrSixValuesAreUnset)
{
    EXPECT_FALSE(EQStyleSplit(u"1,2,3,4").IsSet);
    EXPECT_FALSE(EQStyleSplit(u"1,2,3,4,5,6").IsSet);
}

TEST(EqStyle, ATextComesBackWithTheFirstValueFirst)
{
    const MlvEQStyle style = EQStyleSplit(u"9,1,2,3,4");
    EXPECT_EQ(style.EQValue5, 9);
    EXPECT_EQ(style.EQValue1, 1);
    EXPECT_EQ(EQStyleToString(style), u"9,1,2,3,4"_s);
}

TEST(MixStyle, ADefaultOfNullWithAnUnsetStyleGivesTheUnsetStyle)
{
    EXPECT_FALSE(styleOrDefault(MixStyleSplit(u"1,2"), u"null"_s).IsSet);
    EXPECT_EQ(styleOrDefault(MixStyleSplit(u"1,2"), u"5,4,3,2,1"_s).MixValue1, 5);
    EXPECT_EQ(styleOrDefault(MixStyleSplit(u"7,2,3,4,5"), u"5,4,3,2,1"_s).MixValue1, 7);
    EXPECT_EQ(EQStyleToString(styleOrDefault(EQStyleSplit(u"1"))), u"0,100,100,100,100"_s);
}

TEST(MixStyle, ATimeIsComputedFromTheFirstValueFourTimesAndRoundedDown)
{
    const MLVMixStyle style = MixStyleComputeTime(3333, MixStyleSplit(u"5000,1,2,3,4"));
    EXPECT_EQ(MixStyleToString(style), u"1666,1666,1666,1666,0"_s);
    EXPECT_FALSE(style.IsSet);
}

TEST(CommandMapText, OnlyTheGoodPairOfATextIsTaken)
{
    const std::optional<CommandMap> map = CommandToMap(u"oak=2&nothing&a=b=c&");
    ASSERT_TRUE(map);
    EXPECT_EQ(map->pairs().size(), 1U);
    EXPECT_EQ(map->value(u"oak"), u"2"_s);
}

TEST(CommandMapText, AnEmptyMapGivesTheEmptyText)
{
    EXPECT_EQ(MapToCommand(CommandMap()), QString());
    EXPECT_TRUE(CommandToMap(u"")->pairs().empty());
}

TEST(CommandMapText, ARepeatedKeyFailsTheParseCapitalsTellKeysApart)
{
    EXPECT_FALSE(CommandToMap(u"oak=2&oak=3"));
    EXPECT_EQ(CommandToMap(u"oak=2&Oak=3")->pairs().size(), 2U);
}

TEST(CommandMapText, PairsAreAddedReplacedRemovedAndWrittenWithTheirSeparator)
{
    CommandMap map;
    CommandMapAdd(CommandMapAdd(map, u"oak"_s, u" 11 "_s), u"b"_s, u"1"_s);
    CommandMapAdd(map, u"oak"_s, u" 12 "_s);
    EXPECT_EQ(MapToCommand(map), u"oak=12&b=1&"_s);
    map.remove(u"oak");
    EXPECT_EQ(MapToCommand(map), u"b=1&"_s);
    EXPECT_FALSE(map.value(u"oak"));
}

} // namespace
} // namespace melovane
