#include "platform/sqlite/index/index_checksum.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace melovane::sqlite {

namespace {

constexpr std::size_t kBlock = 32;

/// Odd, so that multiplying loses nothing.
constexpr quint64 kFactor = 0xD6E8FEB86659FD93ULL;

quint64 mixed(quint64 sum, quint64 word)
{
    return std::rotl((sum ^ word) * kFactor, 29);
}

} // namespace

void IndexChecksum::addBlock(const char* block)
{
    std::array<quint64, 4> words{};
    std::memcpy(words.data(), block, kBlock);
    for (std::size_t lane = 0; lane < words.size(); ++lane) {
        m_lanes[lane] = mixed(m_lanes[lane], words[lane]);
    }
}

void IndexChecksum::add(const char* bytes, std::size_t size)
{
    m_size += size;
    for (; size >= kBlock; size -= kBlock, bytes += kBlock) {
        addBlock(bytes);
    }
    if (size > 0) {
        std::array<char, kBlock> rest{};
        std::memcpy(rest.data(), bytes, size);
        addBlock(rest.data());
    }
}

quint64 IndexChecksum::result() const
{
    quint64 sum = m_size;
    for (const quint64 lane : m_lanes) {
        sum = mixed(sum, lane);
    }
    return sum;
}

} // namespace melovane::sqlite
