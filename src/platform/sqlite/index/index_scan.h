#pragma once

#include <string_view>

namespace melovane::sqlite {

/// The first place at or behind `at` where the piece stands in the letters, or null. As memmem, but
/// made for short pieces and tens of megabytes.
/// \param at not behind `end`
/// \param readable letters may be read up to here; not before `end`
/// \param piece not empty
[[nodiscard]] const char*
findPiece(const char* at, const char* end, const char* readable, std::string_view piece);

} // namespace melovane::sqlite
