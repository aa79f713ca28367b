#pragma once

#include <QtGlobal>

#include <vector>

namespace melovane::sqlite {

/// A set of the numbers below a size, one bit each.
class IndexBits
{
public:
    explicit IndexBits(qint64 size = 0);

    [[nodiscard]] qint64 size() const { return m_size; }

    [[nodiscard]] bool test(qint64 at) const
    {
        return (m_words[std::size_t(at >> 6)] >> (at & 63) & 1U) != 0;
    }

    void set(qint64 at) { m_words[std::size_t(at >> 6)] |= quint64(1) << (at & 63); }

    void clear(qint64 at) { m_words[std::size_t(at >> 6)] &= ~(quint64(1) << (at & 63)); }

    void setAll();

    /// Keeps what is in both. The sizes are equal.
    void intersect(const IndexBits& other);

    /// Takes out what is in the other. The sizes are equal.
    void subtract(const IndexBits& other);

    [[nodiscard]] qint64 count() const;

    /// 64 members at a time, lowest first.
    [[nodiscard]] const std::vector<quint64>& words() const { return m_words; }

private:
    qint64 m_size;
    std::vector<quint64> m_words;
};

/// A set of numbers that also tells how many of them lie below a number, and which is the n-th.
class RankedBits
{
public:
    explicit RankedBits(IndexBits bits);

    [[nodiscard]] qint64 count() const { return m_before.back(); }

    [[nodiscard]] bool test(qint64 at) const { return m_bits.test(at); }

    /// Members below `at`, which may be the size of the set.
    [[nodiscard]] qint64 rank(qint64 at) const;

    /// Member number `index`, counted from 0; below count().
    [[nodiscard]] qint64 select(qint64 index) const;

private:
    IndexBits m_bits;
    std::vector<quint32> m_before; ///< members in front of each block, and of all at the end
};

} // namespace melovane::sqlite
