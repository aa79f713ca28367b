#pragma once

namespace melovane {

/// What a track is amplified by so that all are equally loud.
///
/// \param normalize loudness of the track as 32767 * 10^(LUFS / 20); below 1 it is unknown
/// \param tuning    1/100 dB on top
/// \return a factor of at most 12 dB up or down; 1 for a track whose loudness is unknown
[[nodiscard]] double loudnessGain(int normalize, int tuning);

} // namespace melovane
