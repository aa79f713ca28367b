#include "player/equaliser.h"

#include "player/entry_sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace melovane {

namespace {

/// Middle of the bands in Hz.
constexpr std::array kPlaces = {100.0, 400.0, 2500.0, 9000.0};

/// Width of the bells, and of the shelves without a hump.
constexpr double kBellQ = 0.5;
constexpr double kShelfQ = std::numbers::sqrt2 / 2;

/// Below that the formulas divide by nothing.
constexpr double kLeastGain = 0.05;
constexpr double kMostGain = 2;

/// Frames between two steps of a band on its way, and the part of the way that one goes: what is
/// faster is heard as a scratch.
constexpr int kGlideFrames = 16;
constexpr double kGlidePart = 0.02;
constexpr double kArrived = 1e-4;

struct Shape
{
    std::array<double, 3> b;
    std::array<double, 3> a;
};

Shape bell(double sine, double cosine, double gain)
{
    const double root = std::sqrt(gain);
    const double alpha = sine / (2 * kBellQ);
    return {{1 + alpha * root, -2 * cosine, 1 - alpha * root},
            {1 + alpha / root, -2 * cosine, 1 - alpha / root}};
}

/// \param side 1 for the shelf of the deep band, -1 for the one of the high
Shape shelf(double sine, double cosine, double gain, double side)
{
    const double root = std::sqrt(gain);
    const double width = 2 * std::sqrt(root) * sine / (2 * kShelfQ);
    const double turned = side * cosine;
    const double up = root + 1;
    const double down = root - 1;
    return {
        {root * (up - down * turned + width), side * 2 * root * (down - up * turned),
         root * (up - down * turned - width)},
        {up + down * turned + width, side * -2 * (down + up * turned), up + down * turned - width}};
}

double pass(double in,
            const std::array<double, 3>& b,
            const std::array<double, 2>& a,
            double& z1,
            double& z2)
{
    const double out = b[0] * in + z1;
    z1 = b[1] * in - a[0] * out + z2;
    z2 = b[2] * in - a[1] * out;
    return out;
}

} // namespace

BandGains bandGains(const MlvEQStyle& style)
{
    if (!style.IsSet) {
        return {1, 1, 1, 1};
    }
    const auto gain = [](int percent) {
        return std::clamp(percent / 100.0, kLeastGain, kMostGain);
    };
    return {gain(style.EQValue1), gain(style.EQValue2), gain(style.EQValue3), gain(style.EQValue4)};
}

Equaliser::Equaliser()
{
    for (size_t i = 0; i < m_bands.size(); ++i) {
        const double angle = 2 * std::numbers::pi * kPlaces[i] / kAirRate;
        m_bands[i].sine = std::sin(angle);
        m_bands[i].cosine = std::cos(angle);
    }
}

void Equaliser::reset(const BandGains& gains)
{
    m_target = gains;
    m_untilGlide = 0;
    m_passesBy = true;
    for (size_t i = 0; i < m_bands.size(); ++i) {
        m_bands[i].gain = gains[i];
        m_bands[i].kept = {};
        shapeBand(i);
    }
}

bool Equaliser::isNeutral() const
{
    return m_target == BandGains{1, 1, 1, 1} &&
           std::ranges::all_of(m_bands, [](const Band& band) { return band.gain == 1; });
}

void Equaliser::shapeBand(size_t i)
{
    Band& band = m_bands[i];
    const bool isShelf = i == 0 || i + 1 == m_bands.size();
    const Shape shape = isShelf ? shelf(band.sine, band.cosine, band.gain, i == 0 ? 1 : -1)
                                : bell(band.sine, band.cosine, band.gain);
    for (size_t k = 0; k < shape.b.size(); ++k) {
        band.b[k] = shape.b[k] / shape.a[0];
    }
    band.a = {shape.a[1] / shape.a[0], shape.a[2] / shape.a[0]};
}

void Equaliser::glide()
{
    bool moved = false;
    for (size_t i = 0; i < m_bands.size(); ++i) {
        Band& band = m_bands[i];
        if (band.gain == m_target[i]) {
            continue;
        }
        const double way = m_target[i] - band.gain;
        band.gain = std::abs(way) < kArrived ? m_target[i] : band.gain + way * kGlidePart;
        shapeBand(i);
        moved = true;
    }
    // One round later the filters of neutral bands have forgotten everything.
    m_passesBy = !moved && isNeutral();
}

Stereo Equaliser::process(Stereo in)
{
    if (--m_untilGlide < 0) {
        m_untilGlide = kGlideFrames - 1;
        glide();
    }
    if (m_passesBy) {
        return in;
    }
    for (Band& band : m_bands) {
        in.left = pass(in.left, band.b, band.a, band.kept[0].left, band.kept[1].left);
        in.right = pass(in.right, band.b, band.a, band.kept[0].right, band.kept[1].right);
    }
    return in;
}

} // namespace melovane
