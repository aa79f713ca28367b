#pragma once

#include <QtGlobal>

#include <bit>
#include <span>
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

    /// Sets all from `first` to before `end`.
    void setRange(qint64 first, qint64 end);

    /// Adds `at` + each bit of a word; all of them lie below the size, and so does `at`.
    void add(qint64 at, quint64 word)
    {
        const auto index = std::size_t(at >> 6);
        const int shift = int(at & 63);
        m_words[index] |= word << shift;
        if (const quint64 rest = word >> 1 >> (63 - shift); rest != 0) {
            m_words[index + 1] |= rest;
        }
    }

    /// Adds each place of `numbers` at which a member of `chosen` stands. Looks at all numbers,
    /// which is faster than going to the places of the members when they are many.
    /// \param numbers as many as this set has room for, below the size of `chosen`
    void addPlacesOf(std::span<const quint32> numbers, const IndexBits& chosen);

    /// Keeps what is in both. The sizes are equal.
    void intersect(const IndexBits& other);

    /// Takes out what is in the other. The sizes are equal.
    void subtract(const IndexBits& other);

    [[nodiscard]] qint64 count() const;

    /// 64 members at a time, lowest first.
    [[nodiscard]] const std::vector<quint64>& words() const { return m_words; }

    /// Calls `work` with each member, ascending.
    template <typename Work> void forEach(const Work& work) const
    {
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            for (quint64 word = m_words[i]; word != 0; word &= word - 1) {
                work(i * 64 + std::size_t(std::countr_zero(word)));
            }
        }
    }

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
