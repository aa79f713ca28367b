#include "player/entry_sound.h"
#include "player/equaliser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using namespace melovane;

double sine(double hertz, double place)
{
    return std::sin(2 * std::numbers::pi * hertz * place / kAirRate);
}

MlvEQStyle bands(int deep, int low, int middle, int high)
{
    MlvEQStyle style;
    style.EQValue1 = deep;
    style.EQValue2 = low;
    style.EQValue3 = middle;
    style.EQValue4 = high;
    style.IsSet = true;
    return style;
}

/// Loudness of a tone behind the equaliser, 1 as it went in.
double heardThrough(const BandGains& gains, double hertz)
{
    Equaliser equaliser;
    equaliser.reset(gains);
    double loudest = 0;
    for (int i = 0; i < kAirRate; ++i) {
        const Stereo out = equaliser.process({sine(hertz, i), 0});
        loudest = i > kAirRate / 2 ? std::max(loudest, std::abs(out.left)) : 0;
    }
    return loudest;
}

TEST(Equaliser, NeutralChangesNoBit)
{
    Equaliser equaliser;
    equaliser.reset(bandGains(bands(100, 100, 100, 100)));
    std::mt19937 random(1);
    std::uniform_real_distribution<double> value(-1, 1);
    for (int i = 0; i < 100'000; ++i) {
        const Stereo in = {value(random), value(random)};
        const Stereo out = equaliser.process(in);
        ASSERT_EQ(in.left, out.left);
        ASSERT_EQ(in.right, out.right);
    }
}

TEST(Equaliser, EachBandChangesItsOwnPlace)
{
    EXPECT_NEAR(0.5, heardThrough(bandGains(bands(50, 100, 100, 100)), 20), 0.02);
    EXPECT_NEAR(1.0, heardThrough(bandGains(bands(50, 100, 100, 100)), 5000), 0.02);
    EXPECT_NEAR(2.0, heardThrough(bandGains(bands(100, 200, 100, 100)), 400), 0.02);
    EXPECT_NEAR(0.05, heardThrough(bandGains(bands(100, 100, 0, 100)), 2500), 0.01);
    EXPECT_NEAR(1.5, heardThrough(bandGains(bands(100, 100, 100, 150)), 20'000), 0.03);
}

TEST(Equaliser, ABandThatIsTakenBackChangesNoBitAgain)
{
    Equaliser equaliser;
    equaliser.reset(bandGains(bands(200, 5, 200, 5)));
    for (int i = 0; i < 1000; ++i) {
        (void)equaliser.process({sine(300, i), sine(700, i)});
    }
    equaliser.setTarget({1, 1, 1, 1});
    for (int i = 0; i < kAirRate; ++i) {
        (void)equaliser.process({sine(300, i), sine(700, i)});
    }
    EXPECT_EQ(0.123, equaliser.process({0.123, 0}).left);
}

} // namespace
