#pragma once

#include <QString>

namespace melovane {

/// A byte of a file name that is no valid UTF-8 is kept as the letter of this number plus the byte,
/// 0x80 to 0xFF. Keep: libraries, settings and lists hold such names.
inline constexpr char16_t kByteLetters = 0xEF00;

[[nodiscard]] constexpr bool standsForByte(QChar sign)
{
    return sign.unicode() >= kByteLetters + 0x80 && sign.unicode() <= kByteLetters + 0xFF;
}

/// A file name for a person: letters that stand for bytes are read as Windows-1252, which is how
/// such names were mostly meant. Leads to no file any more.
[[nodiscard]] QString readableName(QString name);

/// A text that may be of any length, cut in its middle to at most `max` letters. \pre max > 20
[[nodiscard]] QString shortened(const QString& text, qsizetype max);

} // namespace melovane
