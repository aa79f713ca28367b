#include "player/entry_sound.h"
#include "player/frame_ring.h"
#include "player/sinc_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace {

using namespace melovane;

double sine(double hertz, double place)
{
    return std::sin(2 * std::numbers::pi * hertz * place / kAirRate);
}

TEST(FrameRing, GivesEachFrameUnderItsPlaceInTheFile)
{
    FrameRing ring;
    ring.reset(1000);
    const std::vector<StereoFrame> frames = {{1, 2}, {3, 4}};
    ring.write(frames);
    EXPECT_EQ(1002, ring.end());
    EXPECT_EQ((StereoFrame{3, 4}), ring.at(1001));
    EXPECT_EQ((StereoFrame{0, 0}), ring.at(999));
}

TEST(FrameRing, HasRoomAgainForWhatWasReleased)
{
    FrameRing ring;
    ring.reset(5);
    ring.write(std::vector<StereoFrame>(FrameRing::kCapacity));
    EXPECT_EQ(0, ring.space());
    ring.release(105);
    EXPECT_EQ(100, ring.space());
}

struct Pitched
{
    double step;
    double hertz;
};

class SincTableAt : public testing::TestWithParam<Pitched>
{};

TEST_P(SincTableAt, AToneStaysAToneWithin90Decibels)
{
    const auto [step, hertz] = GetParam();
    std::vector<StereoFrame> tone(40'000);
    for (size_t i = 0; i < tone.size(); ++i) {
        // As loud as 16 bits take, so that their rounding lies 98 dB below.
        const auto value = static_cast<qint16>(std::lround(32000 * sine(hertz, double(i))));
        tone[i] = {value, static_cast<qint16>(-value)};
    }
    FrameRing ring;
    ring.reset(0);
    ring.write(tone);
    const SincTables tables;
    double worst = 0;
    for (int i = 0; 100 + i * step < 39'900; ++i) {
        const double place = 100 + i * step;
        const Stereo out = tables.forStep(step).at(ring, place);
        const double wanted = 32000 / kSampleScale * sine(hertz, place);
        worst +=
            (out.left - wanted) * (out.left - wanted) + (out.right + wanted) * (out.right + wanted);
    }
    const double power = worst / (2 * 39'800 / step);
    EXPECT_LT(10 * std::log10(power), -90);
}

INSTANTIATE_TEST_SUITE_P(Speeds,
                         SincTableAt,
                         testing::Values(Pitched{0.8, 1000},
                                         Pitched{0.919, 5000},
                                         Pitched{1.0123, 10000},
                                         Pitched{1.0884, 440},
                                         Pitched{1.2, 10000},
                                         Pitched{1.3, 5000}));

TEST(SincTables, WhatWouldComeBackMirroredIsGone)
{
    std::vector<StereoFrame> tone(20'000);
    for (size_t i = 0; i < tone.size(); ++i) {
        tone[i].left = static_cast<qint16>(std::lround(32000 * sine(21'000, double(i))));
    }
    FrameRing ring;
    ring.reset(0);
    ring.write(tone);
    const SincTables tables;
    double loudest = 0;
    for (int i = 0; i < 15'000; ++i) {
        loudest = std::max(loudest, std::abs(tables.forStep(1.2).at(ring, 100 + i * 1.2).left));
    }
    EXPECT_LT(20 * std::log10(loudest), -80);
}

} // namespace
