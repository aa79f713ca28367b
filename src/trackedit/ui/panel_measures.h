#pragma once

namespace melovane {

/// Units around the form and between its parts.
inline constexpr int kMargin = 15;
inline constexpr int kColumnGap = 22;
inline constexpr int kLabelGap = 10;
inline constexpr int kRowGap = 5;

/// The borders of a field beside its letters.
inline constexpr int kBorders = 20;

} // namespace melovane
