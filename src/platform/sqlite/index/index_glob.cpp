#include "platform/sqlite/index/index_glob.h"

#include "platform/db/text_compare.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace melovane::sqlite {

namespace {

constexpr std::size_t kBlock = PackedTexts::kBlock;

/// Different bytes of a pattern: each is compared with all letters.
constexpr std::size_t kMostBytes = 16;
constexpr std::size_t kMostSteps = 64;

/// What a block of 64 letters is, a bit per letter.
struct Block
{
    const std::vector<quint64>& masks; ///< where each of the pattern's bytes stands
    quint64 ends = 0;                  ///< where a text has ended
    quint64 inner = 0;                 ///< where a letter goes on that began before
};

/// Moves places behind the byte that stands at them; drops those where it does not.
quint64 behindByte(quint64 places, quint64 mask, quint64& carry)
{
    const quint64 hits = places & mask;
    const quint64 result = hits << 1 | carry;
    carry = hits >> 63;
    return result;
}

/// Moves places behind the letter that begins at them; drops those at the end of their text. As in
/// an addition by hand each place is carried through the bytes of its letter.
quint64 behindLetter(quint64 places, const Block& block, quint64& carry)
{
    const quint64 inside = places & ~block.ends;
    const quint64 next = inside << 1 | carry;
    const quint64 sum = block.inner + next;
    carry = quint64(sum < next) | inside >> 63;
    return sum & ~block.inner;
}

/// Adds all later places of the same text, its end included.
quint64 behindAny(quint64 places, const Block& block, quint64& carry)
{
    const quint64 from = places | carry;
    const quint64 letters = ~block.ends;
    const quint64 sum = (from & letters) + letters;
    carry = quint64(sum < letters);
    return ((sum ^ letters) | from) & ~block.inner;
}

class Pass
{
public:
    Pass(const IndexGlob& glob, VectorWidth width)
        : m_glob(glob)
        , m_read(blockReader(width))
        , m_masks(glob.bytes().size() + 1)
        , m_carries(glob.steps().size())
    {}

    /// The ends of the texts that match, among `ends` of this block.
    quint64 hits(const char* letters, quint64& ends)
    {
        m_read(letters, m_glob.bytes(), m_masks.data());
        const Block block{m_masks, m_masks[m_masks.size() - 2], m_masks.back()};
        ends = block.ends;
        quint64 places = ends << 1 | m_begin;
        m_begin = ends >> 63;
        for (std::size_t i = 0; i < m_carries.size(); ++i) {
            places = behindStep(m_glob.steps()[i], places, block, m_carries[i]);
        }
        return places & ends;
    }

private:
    static quint64
    behindStep(const IndexGlob::Step& step, quint64 places, const Block& block, quint64& carry)
    {
        switch (step.kind) {
        case IndexGlob::Step::Kind::Byte:
            return behindByte(places, block.masks[step.byte], carry);
        case IndexGlob::Step::Kind::AnyLetter:
            return behindLetter(places, block, carry);
        case IndexGlob::Step::Kind::AnyRun:
            break;
        }
        return behindAny(places, block, carry);
    }

    const IndexGlob& m_glob;
    BlockReader m_read;
    std::vector<quint64> m_masks;
    std::vector<quint64> m_carries; ///< of each step, into the next block
    quint64 m_begin = 1;            ///< 1 when a text begins with the next block
};

void addEnding(quint64 hits, quint64 ends, qint64 number, IndexBits& found)
{
    for (; hits != 0; hits &= hits - 1) {
        const quint64 before = ends & ((hits & (0 - hits)) - 1);
        found.set(number + std::popcount(before));
    }
}

} // namespace

std::size_t IndexGlob::indexOf(char byte)
{
    const auto found = std::find(m_bytes.begin(), m_bytes.end(), byte);
    if (found != m_bytes.end()) {
        return std::size_t(found - m_bytes.begin());
    }
    m_bytes.push_back(byte);
    return m_bytes.size() - 1;
}

std::optional<IndexGlob> IndexGlob::of(QStringView pattern)
{
    const QString folded = textcompare::fold(pattern);
    if (folded.contains(u'[') || folded.contains(u'#') || !folded.isValidUtf16()) {
        return {};
    }
    IndexGlob glob;
    for (const char byte : folded.toUtf8()) {
        if (byte == '*') {
            const bool again =
                !glob.m_steps.empty() && glob.m_steps.back().kind == Step::Kind::AnyRun;
            if (!again) {
                glob.m_steps.push_back({Step::Kind::AnyRun, 0});
            }
        } else if (byte == '?') {
            glob.m_steps.push_back({Step::Kind::AnyLetter, 0});
        } else {
            glob.m_steps.push_back({Step::Kind::Byte, glob.indexOf(byte)});
        }
    }
    if (glob.m_bytes.size() > kMostBytes || glob.m_steps.size() > kMostSteps) {
        return {};
    }
    glob.m_bytes.push_back(kTextEnd);
    return glob;
}

void addMatching(const PackedTexts& texts,
                 const IndexGlob& glob,
                 qint64 first,
                 IndexBits& found,
                 VectorWidth width)
{
    Pass pass(glob, width);
    quint64 ends = 0;
    const std::string_view letters = texts.letters();
    const std::size_t whole = letters.size() / kBlock;
    for (std::size_t block = 0; block < whole; ++block) {
        const quint64 hits = pass.hits(letters.data() + block * kBlock, ends);
        addEnding(hits, ends, first + texts.textsBefore(block), found);
    }
    if (whole < texts.blocks()) {
        std::array<char, kBlock> last{}; // a zero ends no text
        const std::string_view rest = letters.substr(whole * kBlock);
        std::copy(rest.begin(), rest.end(), last.begin());
        const quint64 hits = pass.hits(last.data(), ends);
        addEnding(hits, ends, first + texts.textsBefore(whole), found);
    }
}

} // namespace melovane::sqlite
