#pragma once

#include "platform/sqlite/index/index_bits.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

/// Finds a piece in the texts of a column, which lie one behind the other: all letters are passed
/// over once, many at a time, whatever is looked for.
namespace melovane::sqlite {

/// Stands behind each text; UTF-8 has no such byte.
inline constexpr char kTextEnd = '\xFF';

/// How many letters are compared at once: 1, 16 or 32.
enum class VectorWidth
{
    Plain,
    Sse2,
    Avx2
};

/// All that this machine can do, narrowest first.
[[nodiscard]] std::vector<VectorWidth> vectorWidths();

/// What searches use: the widest, or less when the environment variable MLV_VECTOR says "plain" or
/// "sse2". Asked for once in a run.
[[nodiscard]] VectorWidth vectorWidth();

/// Looks at PackedTexts::kBlock letters, a bit for each.
/// \param bytes what is looked for
/// \param masks for each of the bytes where it stands, and behind them where a letter goes on that
/// began before
using BlockReader = void (*)(const char* letters, std::span<const char> bytes, quint64* masks);

[[nodiscard]] BlockReader blockReader(VectorWidth width);

/// How often each byte occurs, or any numbers in that proportion.
using LetterCounts = std::array<quint32, 256>;

/// A text in UTF-8, made ready to be looked for.
class ScanPiece
{
public:
    /// \param text not empty, and without kTextEnd; lives as long as the piece
    ScanPiece(std::string_view text, const LetterCounts& counts);

    [[nodiscard]] std::string_view text() const { return m_text; }

    /// Places in the text of the rarest bytes, at most three.
    [[nodiscard]] const std::array<std::size_t, 3>& probes() const { return m_probes; }

    [[nodiscard]] std::size_t probeCount() const { return m_probeCount; }

    /// True when nothing but the probes has to be compared.
    [[nodiscard]] bool isProbed() const { return m_text.size() == m_probeCount; }

private:
    std::string_view m_text;
    std::array<std::size_t, 3> m_probes{};
    std::size_t m_probeCount = 0;
};

/// Texts, each followed by kTextEnd, with a directory of them.
class PackedTexts
{
public:
    PackedTexts() = default;

    /// \param letters live as long as it does
    explicit PackedTexts(std::string_view letters);

    /// The same, to be read() before it is used.
    [[nodiscard]] static PackedTexts unread(std::string_view letters);

    /// Blocks that are still to be read, and reads some of them.
    [[nodiscard]] std::size_t unreadBlocks() const { return blocksOf(m_letters) - blocks(); }

    void read(std::size_t blocks);

    [[nodiscard]] std::string_view letters() const { return m_letters; }

    /// Number of texts.
    [[nodiscard]] std::size_t count() const { return m_count; }

    [[nodiscard]] const LetterCounts& letterCounts() const { return m_counts; }

    /// Number of texts that end before block number `block`, of kBlock letters each.
    [[nodiscard]] quint32 textsBefore(std::size_t block) const { return m_before[block]; }

    [[nodiscard]] std::size_t blocks() const { return m_before.size(); }

    static constexpr std::size_t kBlock = 64;

    /// Memory that the directory takes.
    [[nodiscard]] std::size_t bytes() const { return m_before.size() * sizeof(quint32); }

private:
    [[nodiscard]] static std::size_t blocksOf(std::string_view letters)
    {
        return (letters.size() + kBlock - 1) / kBlock;
    }

    std::string_view m_letters;
    std::vector<quint32> m_before;
    std::size_t m_count = 0;
    LetterCounts m_counts{}; ///< of a sample
};

/// Adds `first` + the number of each text that holds the piece.
/// \param found with room for `first` + all texts
void addHolding(const PackedTexts& texts,
                const ScanPiece& piece,
                qint64 first,
                IndexBits& found,
                VectorWidth width = vectorWidth());

} // namespace melovane::sqlite
