#pragma once

namespace melovane {

/// One moment on its way through the mix; 1 is the loudest that a card takes. In double, so that
/// neither filters nor long ramps are heard in what is left of 16 bits.
struct Stereo
{
    double left = 0;
    double right = 0;
};

/// What a 16 bit sample of 1 is worth. A power of two: there and back is exact.
inline constexpr double kSampleScale = 32768;

} // namespace melovane
