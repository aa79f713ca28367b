#include "player/loudness.h"

#include <algorithm>
#include <cmath>

namespace melovane {

namespace {

/// -14 LUFS, how loud a track shall be.
constexpr double kWanted = 6538;

/// 12 dB.
constexpr double kMost = 3.9810717055349722;

} // namespace

double loudnessGain(int normalize, int tuning)
{
    if (normalize < 1) {
        return 1;
    }
    const double gain = kWanted / normalize * std::pow(10.0, tuning / 2000.0);
    return std::clamp(gain, 1 / kMost, kMost);
}

} // namespace melovane
