#include "player/fade_curve.h"

#include <algorithm>
#include <numeric>

namespace melovane {

namespace {

/// Scale of the values of a style.
constexpr int kWhole = 10000;

/// A straight rise shorter than this is heard as a click at its corners; it is rounded.
constexpr double kStraightFrom = 0.1 * kAirRate;

/// Longest curve, in milliseconds: what is longer is no mix.
constexpr int kLongestMs = 600'000;

double risen(double distance, double length)
{
    const double part = std::clamp(distance / length, 0.0, 1.0);
    return length < kStraightFrom ? smoothRise(part) : part;
}

MLVMixStyle orDefault(const MLVMixStyle& style, QStringView fallback)
{
    const bool empty = style.MixValue1 <= 0 && style.MixValue2 <= 0 && style.MixValue3 <= 0 &&
                       style.MixValue4 <= 0;
    return empty ? MixStyleSplit(fallback) : style;
}

double framesOf(const FadeStyle& style)
{
    return std::clamp(style.ms, 0, kLongestMs) * (kAirRate / 1000.0);
}

bool isCurve(const FadeStyle& style)
{
    return style.style.IsSet && style.ms > 0;
}

} // namespace

FadeCurve FadeCurve::in(const FadeStyle& style, bool exactEdge)
{
    if (isCurve(style)) {
        const MLVMixStyle s = orDefault(style.style, kDefaultMixStyleIn);
        return {{s.MixValue1, s.MixValue2, s.MixValue3, s.MixValue4}, s.MixValue5, framesOf(style)};
    }
    return exactEdge ? FadeCurve() : FadeCurve({kWhole, 0, 0, 0}, kWhole, kEdge);
}

FadeCurve FadeCurve::out(const FadeStyle& style, bool exactEdge)
{
    if (isCurve(style)) {
        const MLVMixStyle s = orDefault(style.style, kDefaultMixStyleOut);
        return {{s.MixValue4, s.MixValue3, s.MixValue2, s.MixValue1}, s.MixValue5, framesOf(style)};
    }
    return exactEdge ? FadeCurve() : FadeCurve({kWhole, 0, 0, 0}, kWhole, kEdge);
}

FadeCurve::FadeCurve(const std::array<int, 4>& shares, int level, double length)
    : m_level(std::clamp(level, 0, kWhole) / double(kWhole))
{
    std::array<double, 4> legs = {};
    std::ranges::transform(shares, legs.begin(), [](int v) { return std::clamp(v, 0, kWhole); });
    const double sum = std::accumulate(legs.begin(), legs.end(), 0.0);
    // A leg over which the gain changes has its shortest time; the others share what remains.
    const std::array<double, 4> least = {m_level > 0 ? double(kEdge) : 0, 0,
                                         m_level < 1 ? double(kEdge) : 0, 0};
    m_length = std::max(length, least[0] + least[2]);
    double weights = 0;
    for (size_t i = 0; i < legs.size(); ++i) {
        legs[i] = std::max(0.0, legs[i] * m_length / sum - least[i]);
        weights += legs[i];
    }
    const double free = m_length - least[0] - least[2];
    for (size_t i = 0; i < legs.size(); ++i) {
        legs[i] = least[i] + (weights > 0 ? legs[i] * free / weights : 0);
    }
    m_risen = legs[0];
    m_held = m_risen + legs[1];
    m_full = m_held + legs[2];
}

double FadeCurve::gain(double distance) const
{
    if (distance >= m_full) {
        return 1;
    }
    if (distance < m_risen) {
        return m_level * risen(distance, m_risen);
    }
    return distance < m_held ? m_level
                             : m_level + (1 - m_level) * risen(distance - m_held, m_full - m_held);
}

} // namespace melovane
