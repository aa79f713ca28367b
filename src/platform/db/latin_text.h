#pragma once

#include <QStringView>

#include <array>
#include <optional>
#include <string_view>

/// The short way of textcompare for letters below U+0300: none of them joins with a neighbour, so
/// each folds by itself and a table does it. Everything else is foreign here and takes the exact
/// way.
namespace melovane::textcompare::latin {

/// The first letter that may join the one in front of it.
inline constexpr char16_t kEnd = 0x300;

/// One letter, folded, and its base letters ("ß": two).
struct Letter
{
    char16_t folded = 0;
    std::array<char16_t, 2> base{};
    int baseCount = 0;
};

/// The table of all letters below kEnd.
[[nodiscard]] const std::array<Letter, kEnd>& letters();

/// Folds UTF-8 into `out`, at most `room` letters. The number of letters written, or nothing when a
/// foreign letter or a damaged byte was met within them or right behind.
[[nodiscard]] std::optional<qsizetype>
foldUtf8(const char* text, qsizetype size, char16_t* out, qsizetype room);

/// The order of two texts, or nothing when a foreign letter could matter.
[[nodiscard]] std::optional<int> compareUtf8(std::string_view left, std::string_view right);
[[nodiscard]] std::optional<int> compareUtf16(QStringView left, QStringView right);

} // namespace melovane::textcompare::latin
