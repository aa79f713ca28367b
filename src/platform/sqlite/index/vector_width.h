#pragma once

#include <vector>

namespace melovane::sqlite {

/// How many letters are compared at once: 1, 16 or 32.
enum class VectorWidth
{
    Plain,
    Sse2,
    Avx2
};

/// All that this machine can do, narrowest first.
[[nodiscard]] std::vector<VectorWidth> vectorWidths();

/// What searches use: the widest, or less when the environment variable MLV_VECTOR says "plain" or
/// "sse2". Asked for once in a run.
[[nodiscard]] VectorWidth vectorWidth();

} // namespace melovane::sqlite
