#include "player/limiter.h"

#include "player/entry_sound.h"

#include <algorithm>
#include <cmath>

namespace melovane {

namespace {

constexpr qint64 kOne = qint64{1} << 30;

/// 80 ms until two thirds of the way back are gone.
const double kReleasePart = 1 - std::exp(-1 / (0.08 * kAirRate));

/// Rounding would keep it from ever coming back to 1.
constexpr double kReleased = 0.9999;

} // namespace

Limiter::Limiter()
    : m_sum(kOne * kDelay)
{
    m_gains.fill(kOne);
}

/// The least gain that the frames from here to kDelay back want.
double Limiter::leastAhead(double wanted)
{
    const auto slot = [this](size_t i) -> Wish& {
        return m_wishes[(m_firstWish + i) % m_wishes.size()];
    };
    while (m_wishCount > 0 && slot(0).frame < m_frame - kDelay) {
        m_firstWish = (m_firstWish + 1) % m_wishes.size();
        --m_wishCount;
    }
    while (m_wishCount > 0 && slot(m_wishCount - 1).gain >= wanted) {
        --m_wishCount;
    }
    slot(m_wishCount++) = {m_frame, wanted};
    return slot(0).gain;
}

Stereo Limiter::process(Stereo in)
{
    const double peak = std::max(std::abs(in.left), std::abs(in.right));
    const double least = leastAhead(peak > kThreshold ? kThreshold / peak : 1);
    m_released += (1 - m_released) * kReleasePart;
    m_released = std::min(m_released > kReleased ? 1 : m_released, least);

    const auto place = static_cast<size_t>(m_frame % kDelay);
    const auto gain = static_cast<qint64>(m_released * kOne);
    m_sum += gain - m_gains[place];
    m_gains[place] = gain;
    const double mean = static_cast<double>(m_sum) / static_cast<double>(kOne * kDelay);
    const Stereo out = {m_delayed[place].left * mean, m_delayed[place].right * mean};
    m_delayed[place] = in;
    ++m_frame;
    return out;
}

} // namespace melovane
