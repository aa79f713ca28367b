#include "player/fade_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using namespace melovane;

constexpr int kSecond = kAirRate;

FadeStyle style(QStringView text, int ms)
{
    return {MixStyleSplit(text), ms};
}

TEST(FadeCurve, TheDefaultInRisesToFullInTheFirstHalf)
{
    const FadeCurve curve = FadeCurve::in(style(kDefaultMixStyleIn, 10'000), false);
    EXPECT_DOUBLE_EQ(10.0 * kSecond, curve.length());
    EXPECT_DOUBLE_EQ(0, curve.gain(0));
    EXPECT_NEAR(0.5, curve.gain(2.5 * kSecond), 1e-9);
    EXPECT_DOUBLE_EQ(1, curve.gain(5.0 * kSecond));
    EXPECT_DOUBLE_EQ(1, curve.gain(9.0 * kSecond));
}

TEST(FadeCurve, TheDefaultOutIsTheDefaultInFromBehind)
{
    const FadeCurve out = FadeCurve::out(style(kDefaultMixStyleOut, 10'000), false);
    const FadeCurve in = FadeCurve::in(style(kDefaultMixStyleIn, 10'000), false);
    for (int i = 0; i < 100; ++i) {
        EXPECT_DOUBLE_EQ(in.gain(i * 4410.0), out.gain(i * 4410.0)) << i;
    }
}

TEST(FadeCurve, TheFifthValueIsTheLevelBetweenTheTwoRises)
{
    const FadeCurve curve = FadeCurve::in(style(u"2000,3000,4000,1000,2500", 10'000), false);
    EXPECT_NEAR(0.125, curve.gain(1.0 * kSecond), 1e-9);
    EXPECT_NEAR(0.25, curve.gain(2.0 * kSecond), 1e-9);
    EXPECT_NEAR(0.25, curve.gain(4.9 * kSecond), 1e-9);
    EXPECT_NEAR(0.625, curve.gain(7.0 * kSecond), 1e-9);
    EXPECT_DOUBLE_EQ(1, curve.gain(9.5 * kSecond));
}

TEST(FadeCurve, WithoutACurveAnEntryComesWithinFiveMilliseconds)
{
    const FadeCurve curve = FadeCurve::in({}, false);
    EXPECT_DOUBLE_EQ(kEdge, curve.length());
    EXPECT_DOUBLE_EQ(0, curve.gain(0));
    EXPECT_NEAR(0.5, curve.gain(kEdge / 2.0), 1e-9);
    EXPECT_DOUBLE_EQ(1, curve.gain(kEdge));
}

TEST(FadeCurve, AnExactEdgeIsFullFromTheFirstSampleOn)
{
    EXPECT_DOUBLE_EQ(1, FadeCurve::in({}, true).gain(0));
    EXPECT_DOUBLE_EQ(0, FadeCurve::out({}, true).length());
}

TEST(FadeCurve, LengthsWhoseSumIsNotTheWholeAreScaledToTheMixTime)
{
    const FadeCurve curve = FadeCurve::in(style(u"500,200,300,0,10000", 10'000), false);
    EXPECT_NEAR(0.5, curve.gain(2.5 * kSecond), 1e-9);
}

TEST(FadeCurve, LengthsThatAreAllZeroAreTheDefault)
{
    const FadeCurve curve = FadeCurve::in(style(u"0,0,0,0,0", 10'000), false);
    EXPECT_NEAR(0.5, curve.gain(2.5 * kSecond), 1e-9);
}

TEST(FadeCurve, NoGarbageJumpsOrLeavesTheScale)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> value(-3000, 13000);
    for (int run = 0; run < 300; ++run) {
        FadeStyle garbage;
        for (int* part :
             {&garbage.style.MixValue1, &garbage.style.MixValue2, &garbage.style.MixValue3,
              &garbage.style.MixValue4, &garbage.style.MixValue5}) {
            *part = value(random);
        }
        garbage.style.IsSet = true;
        garbage.ms = std::uniform_int_distribution<int>(-10, 300)(random);
        const FadeCurve curve =
            run % 2 == 0 ? FadeCurve::in(garbage, false) : FadeCurve::out(garbage, false);
        double before = curve.gain(0);
        ASSERT_DOUBLE_EQ(0, before);
        for (int i = 1; i <= curve.length() + 2; ++i) {
            const double gain = curve.gain(i);
            ASSERT_TRUE(gain >= before && gain <= 1) << run << ' ' << i;
            ASSERT_LE(gain - before, 0.0072) << run << ' ' << i;
            before = gain;
        }
        ASSERT_DOUBLE_EQ(1, before) << run;
    }
}

} // namespace
