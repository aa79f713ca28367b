#include "store/milli_sec_to_min.h"

#include <gtest/gtest.h>

namespace melovane::Mod_MilliSecToMin {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(MilliSecToMin, ZeroReadsAsZeroInEveryFormat)
{
    EXPECT_EQ(MilliSecToMin(0, 0), u"00:00"_s);
    EXPECT_EQ(MilliSecToMin(0, 7), u"00:00:000"_s);
    EXPECT_EQ(MilliSecToMin(0, 3), u"00:00:00"_s);
    EXPECT_EQ(MilliSecToMin(0, 4), u"00:00"_s);
    EXPECT_EQ(MilliSecToMin(-5000, 7), u"00:00:000"_s);
}

TEST(MilliSecToMin, OnlyFormat4ShowsHours)
{
    EXPECT_EQ(MilliSecToMin(3725120, 4), u"1h  02:05"_s);
    EXPECT_EQ(MilliSecToMin(3725120, 0), u"62:05"_s);
    EXPECT_EQ(MilliSecToMin(75 * 60000), u"75:00"_s);
    EXPECT_EQ(MilliSecToMin(59 * 60000 + 59999, 4), u"59:59"_s);
}

TEST(MilliSecToMin, HundredthsRoundHalfToEvenAndThousandthsStay)
{
    EXPECT_EQ(MilliSecToMin(1125, 3), u"00:01:12"_s);
    EXPECT_EQ(MilliSecToMin(1135, 3), u"00:01:14"_s);
    EXPECT_EQ(MilliSecToMin(1126, 3), u"00:01:13"_s);
    EXPECT_EQ(MilliSecToMin(1126, 7), u"00:01:126"_s);
}

TEST(MilliSecToMin, APadCutsAsWellAsFills)
{
    EXPECT_EQ(PadNumber(5, 2), u"05"_s);
    EXPECT_EQ(PadNumber(123, 2), u"23"_s);
    EXPECT_EQ(MilliSecToMin(100 * 60000, 0), u"00:00"_s);
    EXPECT_EQ(MilliSecToMin(1995, 3), u"00:01:00"_s) << "100 hundredths keep two digits";
}

} // namespace
} // namespace melovane::Mod_MilliSecToMin
