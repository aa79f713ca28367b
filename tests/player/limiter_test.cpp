#include "player/entry_sound.h"
#include "player/limiter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace melovane;

TEST(Limiter, WhatIsBelowTheThresholdComesUnchangedAndLate)
{
    Limiter limiter;
    std::mt19937 random(2);
    std::uniform_real_distribution<double> value(-0.97, 0.97);
    std::vector<double> in(10'000);
    for (size_t i = 0; i < in.size(); ++i) {
        in[i] = value(random);
        const double out = limiter.process({in[i], 0}).left;
        ASSERT_EQ(i < Limiter::kDelay ? 0 : in[i - Limiter::kDelay], out);
    }
}

TEST(Limiter, NothingComesOutLouderThanTheThreshold)
{
    Limiter limiter;
    std::mt19937 random(3);
    std::uniform_real_distribution<double> value(-4, 4);
    for (int i = 0; i < 100'000; ++i) {
        const double loud = i / 5000 % 2 == 0 ? 1 : 0.1;
        const Stereo out = limiter.process({loud * value(random), loud * value(random)});
        ASSERT_LE(std::abs(out.left), Limiter::kThreshold + 1e-12);
        ASSERT_LE(std::abs(out.right), Limiter::kThreshold + 1e-12);
    }
}

TEST(Limiter, ASecondAfterABurstEachSampleIsUnchangedAgain)
{
    Limiter limiter;
    for (int i = 0; i < 1000; ++i) {
        (void)limiter.process({3, -3});
    }
    for (int i = 0; i < kAirRate; ++i) {
        (void)limiter.process({0.1, 0.1});
    }
    EXPECT_EQ(0.1, limiter.process({0.5, 0}).left);
}

} // namespace
