#pragma once

#include "platform/sqlite/index/index_runs.h"
#include "platform/sqlite/index/index_texts.h"

namespace melovane::sqlite {

/// Bytes that stay where they are, however many follow.
class IndexLetters
{
public:
    /// Room for a few of them.
    [[nodiscard]] char* take(std::size_t size);

    /// All that was taken.
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }

    /// Pieces of memory that they stand in. A hundred megabytes take some ten milliseconds to give
    /// back, too long for a turn.
    [[nodiscard]] std::size_t blocks() const { return m_blocks.size(); }

    /// Gives back blocks, the last ones first. What stood in them is gone.
    void giveBack(std::size_t blocks)
    {
        m_blocks.resize(m_blocks.size() - blocks);
        m_left = 0;
    }

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_size = 0; ///< of the last block
    std::size_t m_left = 0; ///< of it
    std::size_t m_bytes = 0;
};

/// A folded text with what it is sorted by, which stand in IndexLetters.
class IndexTextEntry
{
public:
    /// \param key empty when the text is its own key
    IndexTextEntry(IndexLetters& letters, std::string_view text, std::string_view key);

    [[nodiscard]] std::string_view text() const;

    [[nodiscard]] int compare(const IndexTextEntry& other) const
    {
        if (m_begin != other.m_begin) {
            return m_begin < other.m_begin ? -1 : 1;
        }
        return key().compare(other.key());
    }

    /// With the end behind it.
    [[nodiscard]] std::size_t bytes() const { return text().size() + 1; }

private:
    struct Sizes
    {
        quint32 text = 0;
        quint32 key = 0;
    };

    [[nodiscard]] Sizes sizes() const;
    [[nodiscard]] std::string_view key() const;

    quint64 m_begin; ///< the first bytes of the key, for most comparisons enough
    const char* m_at;
};

/// Collects the texts of a column, row by row, and puts the distinct ones in their order.
class IndexTextsBuilder
{
public:
    using Runs = IndexRuns<IndexTextEntry>;

    void addNull() { m_runs.addNull(); }

    /// \param utf8 as it stands in the file, damaged bytes included
    void add(std::string_view utf8);

    /// False when there is more than an index can number.
    [[nodiscard]] bool fits() const { return m_fits; }

    [[nodiscard]] Runs& runs() { return m_runs; }

    /// Adds the work behind which take() has the texts and runs() which row has which. Until it is
    /// done the builder stays where it is in memory.
    void sort(SlicedWork& work);

    /// Behind that work, once.
    [[nodiscard]] IndexTexts take();

private:
    [[nodiscard]] std::string_view fold(std::string_view utf8);
    [[nodiscard]] IndexTextEntry entryOf(std::string_view folded);
    void layOut(std::size_t first, std::size_t end);

    Runs m_runs;
    IndexLetters m_room;
    std::vector<char> m_folded;
    std::vector<char> m_key;
    bool m_fits = true;
    std::vector<char> m_letters; ///< of the texts in their order
    std::vector<quint32> m_ends;
    PackedTexts m_packed;
};

} // namespace melovane::sqlite
