#pragma once

#include "player/stereo.h"

#include <QtGlobal>

#include <array>

namespace melovane {

/// Keeps the sum of what plays below what a card takes.
///
/// Looks ahead, so that it is down before the peak comes; below its threshold each sample passes
/// unchanged, kDelay frames late.
class Limiter
{
public:
    /// Frames from in to out: 1.5 ms.
    static constexpr int kDelay = 64;
    /// The loudest that comes out.
    static constexpr double kThreshold = 0.977;

    Limiter();

    [[nodiscard]] Stereo process(Stereo in);

private:
    /// A gain that is wanted as long as its frame is to come.
    struct Wish
    {
        qint64 frame = 0;
        double gain = 1;
    };

    [[nodiscard]] double leastAhead(double wanted);

    std::array<Stereo, kDelay> m_delayed;
    /// Gains are summed as whole numbers: a sum of rounded ones would never be 1 again.
    std::array<qint64, kDelay> m_gains = {};
    qint64 m_sum = 0;
    double m_released = 1;
    /// Rising gains of the frames ahead: the first is the least.
    std::array<Wish, kDelay + 1> m_wishes;
    size_t m_firstWish = 0;
    size_t m_wishCount = 0;
    qint64 m_frame = 0;
};

} // namespace melovane
