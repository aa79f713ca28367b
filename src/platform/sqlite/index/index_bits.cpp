#include "platform/sqlite/index/index_bits.h"

#include "platform/sqlite/index/index_scan.h"

#include <algorithm>
#include <bit>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace melovane::sqlite {

namespace {

constexpr qint64 kWordBits = 64;
/// Words that share one count: a cache line.
constexpr std::size_t kBlockWords = 8;

/// Which of some numbers, at most kWordBits, are members of a set: the first in the lowest bit.
quint64 membersPlain(const quint32* numbers, std::size_t count, const quint64* set)
{
    quint64 word = 0;
    for (std::size_t i = 0; i < count; ++i) {
        word = word >> 1 | (set[numbers[i] >> 6] >> (numbers[i] & 63)) << 63;
    }
    return count == kWordBits ? word : word >> (kWordBits - qint64(count));
}

#ifdef __x86_64__

/// The same for kWordBits numbers, eight at a time.
__attribute__((target("avx2"))) quint64 membersAvx2(const quint32* numbers, const quint64* set)
{
    const __m256i bit = _mm256_set1_epi32(31);
    quint64 word = 0;
    for (int at = 0; at < int(kWordBits); at += 8) {
        const __m256i each = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(numbers + at));
        const __m256i halves = _mm256_i32gather_epi32(reinterpret_cast<const int*>(set),
                                                      _mm256_srli_epi32(each, 5), 4);
        const __m256i signs = _mm256_sllv_epi32(halves, _mm256_andnot_si256(each, bit));
        const auto members = unsigned(_mm256_movemask_ps(_mm256_castsi256_ps(signs)));
        word |= quint64(members) << at;
    }
    return word;
}

#endif

} // namespace

IndexBits::IndexBits(qint64 size)
    : m_size(size)
    , m_words(std::size_t((size + kWordBits - 1) / kWordBits))
{}

void IndexBits::setAll()
{
    std::fill(m_words.begin(), m_words.end(), ~quint64(0));
    if (const qint64 used = m_size % kWordBits; used != 0) {
        m_words.back() = (quint64(1) << used) - 1;
    }
}

void IndexBits::setRange(qint64 first, qint64 end)
{
    for (; first < end && first % kWordBits != 0; ++first) {
        set(first);
    }
    for (; end - first >= kWordBits; first += kWordBits) {
        m_words[std::size_t(first / kWordBits)] = ~quint64(0);
    }
    for (; first < end; ++first) {
        set(first);
    }
}

void IndexBits::addPlacesOf(std::span<const quint32> numbers, const IndexBits& chosen)
{
    const quint64* const set = chosen.m_words.data();
    quint64* target = m_words.data();
    const quint32* at = numbers.data();
    std::size_t left = numbers.size();
#ifdef __x86_64__
    if (vectorWidth() == VectorWidth::Avx2) {
        for (; left >= std::size_t(kWordBits); left -= std::size_t(kWordBits), at += kWordBits) {
            *target++ |= membersAvx2(at, set);
        }
    }
#endif
    while (left > 0) {
        const std::size_t count = std::min(left, std::size_t(kWordBits));
        *target++ |= membersPlain(at, count, set);
        left -= count;
        at += count;
    }
}

void IndexBits::intersect(const IndexBits& other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        m_words[i] &= other.m_words[i];
    }
}

void IndexBits::subtract(const IndexBits& other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        m_words[i] &= ~other.m_words[i];
    }
}

qint64 IndexBits::count() const
{
    qint64 sum = 0;
    for (const quint64 word : m_words) {
        sum += std::popcount(word);
    }
    return sum;
}

RankedBits::RankedBits(IndexBits bits)
    : m_bits(std::move(bits))
{
    const std::vector<quint64>& words = m_bits.words();
    m_before.reserve(words.size() / kBlockWords + 2);
    quint32 sum = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i % kBlockWords == 0) {
            m_before.push_back(sum);
        }
        sum += quint32(std::popcount(words[i]));
    }
    m_before.push_back(sum);
}

qint64 RankedBits::rank(qint64 at) const
{
    const std::vector<quint64>& words = m_bits.words();
    const auto word = std::size_t(at / kWordBits);
    if (word >= words.size()) {
        return count();
    }
    qint64 sum = m_before[word / kBlockWords];
    for (std::size_t i = word - word % kBlockWords; i < word; ++i) {
        sum += std::popcount(words[i]);
    }
    return sum + std::popcount(words[word] & ((quint64(1) << (at % kWordBits)) - 1));
}

qint64 RankedBits::select(qint64 index) const
{
    const auto block = std::upper_bound(m_before.begin(), m_before.end() - 1, quint32(index)) - 1;
    const std::vector<quint64>& words = m_bits.words();
    auto word = std::size_t(block - m_before.begin()) * kBlockWords;
    qint64 left = index - *block;
    while (left >= std::popcount(words[word])) {
        left -= std::popcount(words[word++]);
    }
    quint64 bits = words[word];
    for (; left > 0; --left) {
        bits &= bits - 1;
    }
    return qint64(word) * kWordBits + std::countr_zero(bits);
}

} // namespace melovane::sqlite
