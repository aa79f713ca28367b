#pragma once

#include <QStringView>

namespace melovane {

/// The number at the beginning of a text, as every reader of the suite takes it.
///
/// Blanks in front are skipped, then an optional sign, digits and at most one decimal point. No
/// exponent and no hexadecimal: "12abc" is 12, "1e5" is 1, "abc" and "" are 0.
[[nodiscard]] double leadingNumber(QStringView text);

/// leadingNumber as a whole number of 32 bits: rounded half to even, clamped.
[[nodiscard]] int leadingLong(QStringView text);

/// Rounds half to even and clamps to 32 bits; not a number gives 0.
[[nodiscard]] int toLongHalfEven(double number);

} // namespace melovane
