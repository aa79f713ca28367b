#include "platform/sqlite/index/index_bits.h"

#include <algorithm>
#include <bit>

namespace melovane::sqlite {

namespace {

constexpr qint64 kWordBits = 64;
/// Words that share one count: a cache line.
constexpr std::size_t kBlockWords = 8;

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
    const quint64* const words = chosen.m_words.data();
    const auto bitOf = [&](std::size_t place) {
        const quint32 number = numbers[place];
        return words[number >> 6] >> (number & 63);
    };
    std::size_t place = 0;
    for (quint64& target : m_words) {
        const std::size_t end = std::min(place + std::size_t(kWordBits), numbers.size());
        quint64 word = 0;
        const auto count = int(end - place);
        for (; place < end; ++place) {
            word = word >> 1 | bitOf(place) << 63;
        }
        target |= count == kWordBits ? word : word >> (kWordBits - count);
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
