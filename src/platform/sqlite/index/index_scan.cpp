#include "platform/sqlite/index/index_scan.h"

#include <algorithm>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace melovane::sqlite {

namespace {

bool standsAt(const char* at, std::string_view piece)
{
    return std::memcmp(at, piece.data(), piece.size()) == 0;
}

#ifdef __SSE2__

__m128i load(const char* at)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

/// Sixteen places at once: where the first and the last letter of the piece stand right. The place
/// found, or null; `at` is then where the caller has to go on, too near to the readable end.
const char*
findInVectors(const char*& at, const char* end, const char* readable, std::string_view piece)
{
    constexpr std::ptrdiff_t kWidth = 16;
    const auto last = std::ptrdiff_t(piece.size()) - 1;
    const __m128i firsts = _mm_set1_epi8(piece.front());
    const __m128i lasts = _mm_set1_epi8(piece.back());
    for (; end - at > last && readable - at >= kWidth + last; at += kWidth) {
        const __m128i both =
            _mm_and_si128(_mm_cmpeq_epi8(load(at), firsts), _mm_cmpeq_epi8(load(at + last), lasts));
        for (auto places = unsigned(_mm_movemask_epi8(both)); places != 0; places &= places - 1) {
            const char* place = at + std::countr_zero(places);
            if (end - place <= last) {
                at = end;
                return nullptr;
            }
            if (standsAt(place, piece)) {
                return place;
            }
        }
    }
    return nullptr;
}

#else

const char* findInVectors(const char*&, const char*, const char*, std::string_view)
{
    return nullptr;
}

#endif

} // namespace

const char* findPiece(const char* at, const char* end, const char* readable, std::string_view piece)
{
    if (const char* found = findInVectors(at, end, readable, piece)) {
        return found;
    }
    if (end - at < std::ptrdiff_t(piece.size())) {
        return nullptr;
    }
    const char* found = std::search(at, end, piece.begin(), piece.end());
    return found == end ? nullptr : found;
}

} // namespace melovane::sqlite
