#pragma once

#include <QString>

namespace melovane::Mod_MilliSecToMin {

/// One audio frame in milliseconds: 1152 samples at 44100 Hz. Siblings compute with these digits.
inline constexpr double kFrameMs = 26.12245;

/// Time text of a position.
///
/// Format 3 "mm:ss:hh" (hundredths, rounded half to even), 4 "Hh  mm:ss" or "mm:ss" below an hour,
/// 7 "mm:ss:fff", all others "mm:ss". Minutes are total minutes, cut to two digits. A position of 0
/// or less reads as zero.
[[nodiscard]] QString MilliSecToMin(int milliseconds, int format = 0);

/// The last `width` letters of "000" followed by the number.
[[nodiscard]] QString PadNumber(int number, int width);

} // namespace melovane::Mod_MilliSecToMin
