#pragma once

#include <QString>

#include <cstdint>
#include <string_view>
#include <vector>

namespace melovane {

class WalkedRow;

/// Place of a key of two numbers; asked once for every track, so it keeps keys and places side by
/// side and makes no node for each.
class PlaceMap
{
public:
    /// The place of the key; `next` when it is new, and that from now on.
    std::uint32_t placeOf(std::uint64_t key, std::uint32_t next);

private:
    struct Slot
    {
        std::uint64_t key = 0;
        std::uint32_t place = 0; ///< counted from 1; 0 where there is no key
    };

    void grow();

    std::vector<Slot> m_slots; ///< a power of two of them
    std::size_t m_used = 0;
};

/// The texts of one column in the order in which they were met, each spelling once. Number 0 is the
/// empty text, which null is, too.
class Spellings
{
public:
    Spellings();

    /// Looks at the text in that column.
    void read(const WalkedRow& row, int column);

    /// Number of the text that was read last.
    [[nodiscard]] std::uint32_t present() const { return m_last.number; }

    [[nodiscard]] const std::vector<QString>& texts() const { return m_texts; }

    /// Of each text, the number by which it is ordered; equal texts share theirs.
    [[nodiscard]] const std::vector<std::uint32_t>& ranks() const;

private:
    /// All that is asked to find a text, in one place and small: waiting for memory is most of the
    /// time.
    struct Slot
    {
        std::size_t begin = 0; ///< in m_bytes
        std::uint32_t size = 0;
        std::uint32_t number = 0; ///< 0 where there is no text
    };

    [[nodiscard]] std::string_view bytesOf(const Slot& slot) const;
    void grow();

    std::vector<Slot> m_slots; ///< a power of two of them
    std::vector<char> m_bytes; ///< all texts as the file keeps them
    std::vector<QString> m_texts;
    Slot m_last;                                ///< of the text that was read last
    mutable std::vector<std::uint32_t> m_ranks; ///< of as many texts as were known when asked
};

} // namespace melovane
