#include "player/air_rig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

constexpr double kLoudness = 0.4;
constexpr int kFrameSamples = 1152;

/// One entry of a transition, as the test knows it.
struct Part
{
    double hertz = 440;
    int frameStart = 0;
    int frameStop = 0;
    int volume = kUnchangedVolume;
    int pitch = 0;
    std::array<int, 5> style = {}; ///< lengths and level, from the silent end on
};

struct Transition
{
    Part a;
    Part b;
    int mixMs = 0;
    int begin = 0; ///< frame of the card of A
};

/// From 0 to 1, at either end without a corner or a bend.
double rise(double part)
{
    return 6 * std::pow(part, 5) - 15 * std::pow(part, 4) + 10 * std::pow(part, 3);
}

double leg(double distance, double length)
{
    const double part = distance / length;
    return length < 4410 ? rise(part) : part;
}

/// Gain at a distance from the silent end of a mix, in frames.
double curve(const std::array<int, 5>& style, double length, double distance)
{
    const double unit = length / (style[0] + style[1] + style[2] + style[3]);
    const double level = style[4] / 10000.0;
    const double rise = style[0] * unit;
    const double hold = style[1] * unit;
    const double full = style[2] * unit;
    if (distance < rise) {
        return level * leg(distance, rise);
    }
    if (distance < rise + hold) {
        return level;
    }
    return distance < rise + hold + full ? level + (1 - level) * leg(distance - rise - hold, full)
                                         : 1;
}

double placeOf(const Part& part, int n)
{
    return double(part.frameStart) * kFrameSamples + n * (1 + part.pitch / 10000.0);
}

double toEnd(const Part& part, int n)
{
    const double end = double(part.frameStop) * kFrameSamples;
    return (end - placeOf(part, n)) / (1 + part.pitch / 10000.0);
}

double toneAt(const Part& part, int n)
{
    return kLoudness * part.volume / 10000.0 *
           std::sin(2 * std::numbers::pi * part.hertz * placeOf(part, n) / kAirRate);
}

/// Until both are over.
int frames(const Transition& t)
{
    return t.begin + int(toEnd(t.a, 0) + toEnd(t.b, 0) - t.mixMs * 44.1) + 1000;
}

/// The mix as it is meant, in double.
std::vector<double> reference(const Transition& t, size_t frames)
{
    std::vector<double> out(frames, 0);
    const double mix = t.mixMs * 44.1;
    int bBegin = t.begin;
    while (toEnd(t.a, bBegin - t.begin) > std::floor(mix)) {
        ++bBegin;
    }
    for (int i = t.begin; i < int(frames); ++i) {
        if (toEnd(t.a, i - t.begin) > 0) {
            const double fadeIn = rise(std::min(1.0, (i - t.begin) / double(kEdge)));
            out[size_t(i)] +=
                toneAt(t.a, i - t.begin) * fadeIn * curve(t.a.style, mix, toEnd(t.a, i - t.begin));
        }
        const int n = i - bBegin;
        if (n >= 0 && toEnd(t.b, n) > 0) {
            const double fadeOut = rise(std::min(1.0, toEnd(t.b, n) / double(kEdge)));
            out[size_t(i)] += toneAt(t.b, n) * fadeOut * curve(t.b.style, mix, n);
        }
    }
    return out;
}

MLVMixStyle styled(const std::array<int, 5>& values)
{
    MLVMixStyle style;
    style.MixValue1 = values[0];
    style.MixValue2 = values[1];
    style.MixValue3 = values[2];
    style.MixValue4 = values[3];
    style.MixValue5 = values[4];
    style.IsSet = true;
    return style;
}

EntrySound soundOf(const Part& part, const QString& file)
{
    EntrySound sound;
    sound.file = file;
    sound.frameStart = part.frameStart;
    sound.frameStop = part.frameStop;
    sound.volume = part.volume;
    sound.pitch = part.pitch;
    return sound;
}

class Transitions : public testing::Test
{
protected:
    int number(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(m_random);
    }

    Part part()
    {
        Part out;
        out.hertz = number(60, 12'000);
        out.frameStart = number(0, 40);
        out.frameStop = out.frameStart + number(25, 45);
        out.volume = number(1000, kUnchangedVolume);
        out.pitch = number(0, 1) == 0 ? 0 : number(-2000, 2000);
        out.style = {number(300, 5000), number(0, 3000), number(300, 5000), number(0, 3000),
                     number(500, 10000)};
        return out;
    }

    Transition transition()
    {
        Transition out;
        out.a = part();
        out.b = part();
        // Shorter than either entry is at its fastest.
        out.mixMs = number(150, 450);
        out.begin = number(1000, 3000);
        return out;
    }

    /// \param blocks size of a block, 0 for a new one each time
    std::vector<double> played(const Transition& t, int frames, int blocks)
    {
        AirRig rig;
        rig.files.addTone(u"a"_s, t.a.hertz, 2.3, kLoudness);
        rig.files.addTone(u"b"_s, t.b.hertz, 2.3, kLoudness);
        EntrySound a = soundOf(t.a, u"a"_s);
        // The text of a fade out has its silent end behind.
        const auto& s = t.a.style;
        a.fadeOut = {styled({s[3], s[2], s[1], s[0], s[4]}), t.mixMs};
        EntrySound b = soundOf(t.b, u"b"_s);
        b.fadeIn = {styled(t.b.style), t.mixMs};
        rig.engine.load(AirDeck::A, a);
        rig.engine.load(AirDeck::B, b);
        rig.engine.startAt(AirDeck::A, t.begin);
        rig.engine.startBeforeEnd(AirDeck::B, AirDeck::A, t.mixMs);
        for (int left = frames; left > 0;) {
            const int block = std::min(left, blocks > 0 ? blocks : number(1, 4096));
            rig.run(block, block);
            left -= block;
        }
        return rig.left();
    }

    std::mt19937 m_random{20};
};

TEST_F(Transitions, TwoHundredSoundAsTheyWerePreparedWithin90Decibels)
{
    for (int run = 0; run < 200; ++run) {
        const Transition t = transition();
        const std::vector<double> heard = played(t, frames(t), 1024);
        const std::vector<double> wanted = reference(t, heard.size());
        double power = 0;
        double loud = 0;
        for (size_t i = 0; i < heard.size(); ++i) {
            power += (heard[i] - wanted[i]) * (heard[i] - wanted[i]);
            loud += wanted[i] * wanted[i];
        }
        ASSERT_LT(10 * std::log10(power / double(heard.size())), -90) << run;
        ASSERT_GT(10 * std::log10(loud / double(heard.size())), -40) << run;
    }
}

TEST_F(Transitions, BlocksOfAnySizeGiveTheSameSamples)
{
    for (int run = 0; run < 5; ++run) {
        const Transition t = transition();
        const std::vector<double> even = played(t, frames(t), 1024);
        EXPECT_EQ(even, played(t, frames(t), 0)) << run;
        EXPECT_EQ(even, played(t, frames(t), 4096)) << run;
    }
}

} // namespace
