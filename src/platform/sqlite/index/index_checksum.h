#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace melovane::sqlite {

/// A checksum against damage, not against malice, as fast as memory is read. A single changed word
/// always changes it.
class IndexChecksum
{
public:
    /// Parts are multiples of 32 bytes, but for the last.
    void add(const char* bytes, std::size_t size);

    [[nodiscard]] quint64 result() const;

    [[nodiscard]] static quint64 of(const char* bytes, std::size_t size)
    {
        IndexChecksum sum;
        sum.add(bytes, size);
        return sum.result();
    }

private:
    void addBlock(const char* block);

    std::array<quint64, 4> m_lanes{1, 2, 3, 4};
    quint64 m_size = 0;
};

} // namespace melovane::sqlite
