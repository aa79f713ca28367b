#pragma once

#include <QString>

#include <cstdint>
#include <string_view>
#include <vector>

namespace melovane {

class TrackBlock;

/// Tracks by a key of two numbers; asked once for every track, so it keeps keys and counts side by
/// side and makes no node for each.
class PairTally
{
public:
    struct Entry
    {
        std::uint64_t key = 0;
        std::uint32_t count = 0; ///< 0 where there is no key
        std::uint32_t met = 0;   ///< how many keys were met before it
    };

    /// One track more of that key.
    void add(std::uint64_t key);
    /// Says that the key is asked for soon.
    void fetch(std::uint64_t key) const;

    /// In no order.
    [[nodiscard]] std::vector<Entry> entries() const;

private:
    [[nodiscard]] Entry& entryOf(std::uint64_t key);
    void grow();

    std::vector<Entry> m_slots; ///< a power of two of them
    std::uint32_t m_used = 0;
};

/// The texts of one column in the order in which they were met, each spelling once. Number 0 is the
/// empty text, which null is, too.
class Spellings
{
public:
    Spellings();

    /// Looks at the texts in that column of the block.
    void read(const TrackBlock& block, std::size_t column);

    /// Numbers of the texts of the block that was read last, by row.
    [[nodiscard]] const std::vector<std::uint32_t>& numbers() const { return m_numbers; }

    /// True when all of them are 0.
    [[nodiscard]] bool areEmpty() const { return m_areEmpty; }

    [[nodiscard]] const std::vector<QString>& texts() const { return m_texts; }

    /// Of each text, the number by which it is ordered; equal texts share theirs.
    [[nodiscard]] const std::vector<std::uint32_t>& ranks() const;

private:
    /// All that tells whether a text is likely the one, small: waiting for memory is most of the
    /// time.
    struct Slot
    {
        std::size_t begin = 0; ///< in m_bytes, of the size and the text
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< 0 where there is no text
    };

    [[nodiscard]] std::string_view bytesOf(const Slot& slot) const;
    [[nodiscard]] std::uint32_t numberOf(std::string_view text, std::uint32_t hash);
    void makeRoom(std::size_t texts);

    std::vector<Slot> m_slots; ///< a power of two of them
    std::vector<char> m_bytes; ///< all texts as the file keeps them, each behind its size
    std::vector<QString> m_texts;
    std::vector<std::uint32_t> m_numbers;
    std::vector<std::uint32_t> m_hashes; ///< of the texts of a block
    bool m_areEmpty = true;
    mutable std::vector<std::uint32_t> m_ranks; ///< of as many texts as were known when asked
};

} // namespace melovane
