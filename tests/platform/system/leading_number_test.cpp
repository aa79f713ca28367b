#include "platform/system/leading_number.h"

#include <QString>

#include <gtest/gtest.h>

#include <cmath>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct NumberCase
{
    QString text;
    double number;
};

class LeadingNumber : public testing::TestWithParam<NumberCase>
{};

TEST_P(LeadingNumber, ReadsTheNumberAtTheBeginning)
{
    EXPECT_DOUBLE_EQ(leadingNumber(GetParam().text), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Texts,
                         LeadingNumber,
                         testing::Values(NumberCase{u""_s, 0},
                                         NumberCase{u"12abc"_s, 12},
                                         NumberCase{u"  -7"_s, -7},
                                         NumberCase{u"+3.5.2"_s, 3.5},
                                         NumberCase{u"1e5"_s, 1},
                                         NumberCase{u"0x10"_s, 0},
                                         NumberCase{u"abc"_s, 0},
                                         NumberCase{u".5"_s, 0.5},
                                         NumberCase{u"-"_s, 0},
                                         NumberCase{u"\t4"_s, 0},
                                         NumberCase{u"5."_s, 5}));

TEST(LeadingLong, WholeNumbersRoundHalfToEvenAndClamp)
{
    EXPECT_EQ(leadingLong(u"2.5"), 2);
    EXPECT_EQ(leadingLong(u"3.5"), 4);
    EXPECT_EQ(leadingLong(u"-2.5"), -2);
    EXPECT_EQ(leadingLong(u"99999999999"), 2147483647);
    EXPECT_EQ(leadingLong(u"-99999999999"), -2147483647 - 1);
    EXPECT_EQ(toLongHalfEven(std::nan("")), 0);
}

} // namespace
} // namespace melovane
