#include "platform/sqlite/index/index_scan.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace melovane::sqlite {

namespace {

constexpr std::size_t kBlock = PackedTexts::kBlock;

/// A pass over the letters: where it is, and what it takes from one block to the next.
struct Pass
{
    const PackedTexts& texts;
    const ScanPiece& piece;
    qint64 first;
    IndexBits& found;
    std::size_t block = 0;
    quint64 carry = 0; ///< 1 when the text that goes on in the next block holds the piece

    [[nodiscard]] const char* letters() const { return texts.letters().data() + block * kBlock; }

    /// Blocks from the first on in which a probe never leads behind the letters.
    [[nodiscard]] std::size_t wholeBlocks() const
    {
        const std::size_t size = texts.letters().size();
        const std::size_t needed = kBlock + piece.text().size();
        return size < needed ? 0 : (size - needed) / kBlock + 1;
    }

    /// Number in `found` of the first text that ends in this block.
    [[nodiscard]] qint64 number() const { return first + texts.textsBefore(block); }
};

/// Of places where the probes stand right those where all of the piece does.
quint64 confirmed(quint64 hits, const Pass& pass)
{
    const std::string_view text = pass.piece.text();
    quint64 result = hits;
    for (; hits != 0; hits &= hits - 1) {
        const char* const at = pass.letters() + std::countr_zero(hits);
        if (std::memcmp(at, text.data(), text.size()) != 0) {
            result &= ~(hits & (0 - hits));
        }
    }
    return result;
}

/// The ends of the texts that have a hit: as in an addition by hand each hit is carried through the
/// letters of its text, which are ones, to its end, which is a zero.
quint64 endsOfHit(quint64 hits, quint64 ends, quint64& carry)
{
    const quint64 inside = ~ends;
    const quint64 sum = inside + hits;
    const quint64 whole = sum + carry;
    carry = quint64(sum < inside) | quint64(whole < sum);
    return whole & ends;
}

/// Adds the texts that end at `hit`, some of the ends of this block.
void addEnding(quint64 hit, quint64 ends, Pass& pass)
{
    for (; hit != 0; hit &= hit - 1) {
        const quint64 before = ends & ((hit & (0 - hit)) - 1);
        pass.found.set(pass.number() + std::popcount(before));
    }
}

// ---- one letter at a time

quint64 equalTo(const char* letters, std::size_t count, char wanted)
{
    quint64 bits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        bits |= quint64(letters[i] == wanted) << i;
    }
    return bits;
}

void passPlain(Pass& pass)
{
    const std::string_view letters = pass.texts.letters();
    const std::string_view text = pass.piece.text();
    for (; pass.block < pass.texts.blocks(); ++pass.block) {
        const std::size_t begin = pass.block * kBlock;
        const std::size_t count = std::min(kBlock, letters.size() - begin);
        quint64 hits = equalTo(pass.letters(), count, text.front());
        for (quint64 left = hits; left != 0; left &= left - 1) {
            const std::size_t place = begin + std::size_t(std::countr_zero(left));
            if (letters.compare(place, text.size(), text) != 0) {
                hits &= ~(left & (0 - left));
            }
        }
        const quint64 ends = equalTo(pass.letters(), count, kTextEnd);
        addEnding(endsOfHit(hits, ends, pass.carry), ends, pass);
    }
}

void readPlain(const char* letters, std::span<const char> bytes, quint64* masks)
{
    for (const char byte : bytes) {
        *masks++ = equalTo(letters, kBlock, byte);
    }
    *masks = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        *masks |= quint64((letters[i] & '\xC0') == '\x80') << i;
    }
}

#ifdef __x86_64__

// ---- sixteen letters at a time

quint64 equalSse2(const char* at, __m128i wanted)
{
    quint64 bits = 0;
    for (int part = 0; part < 4; ++part) {
        const __m128i letters =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + ptrdiff_t{16} * part));
        const auto equal = unsigned(_mm_movemask_epi8(_mm_cmpeq_epi8(letters, wanted)));
        bits |= quint64(equal) << (part * 16);
    }
    return bits;
}

void passSse2(Pass& pass)
{
    const ScanPiece& piece = pass.piece;
    __m128i wanted[3] = {};
    for (std::size_t probe = 0; probe < piece.probeCount(); ++probe) {
        wanted[probe] = _mm_set1_epi8(piece.text()[piece.probes()[probe]]);
    }
    const __m128i textEnd = _mm_set1_epi8(kTextEnd);
    for (const std::size_t end = pass.wholeBlocks(); pass.block < end; ++pass.block) {
        const char* const at = pass.letters();
        quint64 hits = equalSse2(at + piece.probes()[0], wanted[0]);
        for (std::size_t probe = 1; probe < piece.probeCount() && hits != 0; ++probe) {
            hits &= equalSse2(at + piece.probes()[probe], wanted[probe]);
        }
        if ((hits | pass.carry) == 0) {
            continue;
        }
        if (!piece.isProbed()) {
            hits = confirmed(hits, pass);
        }
        const quint64 ends = equalSse2(at, textEnd);
        addEnding(endsOfHit(hits, ends, pass.carry), ends, pass);
    }
}

/// Bytes inside a letter are less than any other, as numbers with a sign.
constexpr char kInnerEnd = '\xC0';

void readSse2(const char* letters, std::span<const char> bytes, quint64* masks)
{
    for (const char byte : bytes) {
        *masks++ = equalSse2(letters, _mm_set1_epi8(byte));
    }
    *masks = 0;
    for (int part = 0; part < 4; ++part) {
        const auto* const at = reinterpret_cast<const __m128i*>(letters + ptrdiff_t{16} * part);
        const __m128i inner = _mm_cmplt_epi8(_mm_loadu_si128(at), _mm_set1_epi8(kInnerEnd));
        *masks |= quint64(unsigned(_mm_movemask_epi8(inner))) << (part * 16);
    }
}

// ---- thirty-two letters at a time

#define MLV_AVX2 __attribute__((target("avx2,bmi,bmi2,popcnt")))

MLV_AVX2 inline __m256i loadAvx2(const char* at)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
}

MLV_AVX2 inline quint64 maskAvx2(__m256i low, __m256i high)
{
    return quint64(unsigned(_mm256_movemask_epi8(low))) |
           quint64(unsigned(_mm256_movemask_epi8(high))) << 32;
}

/// 32 bytes of ones where all probes stand right.
template <std::size_t Probes>
MLV_AVX2 inline __m256i
hitsAvx2(const char* const (&at)[3], std::size_t offset, const __m256i (&wanted)[3])
{
    __m256i hits = _mm256_cmpeq_epi8(loadAvx2(at[0] + offset), wanted[0]);
    for (std::size_t probe = 1; probe < Probes; ++probe) {
        hits =
            _mm256_and_si256(hits, _mm256_cmpeq_epi8(loadAvx2(at[probe] + offset), wanted[probe]));
    }
    return hits;
}

template <std::size_t Probes> MLV_AVX2 void passAvx2(Pass& pass)
{
    const ScanPiece& piece = pass.piece;
    __m256i wanted[3] = {};
    const char* at[3] = {};
    for (std::size_t probe = 0; probe < Probes; ++probe) {
        wanted[probe] = _mm256_set1_epi8(piece.text()[piece.probes()[probe]]);
        at[probe] = pass.texts.letters().data() + piece.probes()[probe];
    }
    const bool isProbed = piece.isProbed();
    const __m256i textEnd = _mm256_set1_epi8(kTextEnd);
    for (const std::size_t end = pass.wholeBlocks(); pass.block < end; ++pass.block) {
        const std::size_t offset = pass.block * kBlock;
        const __m256i low = hitsAvx2<Probes>(at, offset, wanted);
        const __m256i high = hitsAvx2<Probes>(at, offset + kBlock / 2, wanted);
        const __m256i any = _mm256_or_si256(low, high);
        if (pass.carry == 0 && _mm256_testz_si256(any, any) != 0) {
            continue;
        }
        quint64 hits = maskAvx2(low, high);
        if (!isProbed) {
            hits = confirmed(hits, pass);
        }
        const char* const letters = pass.letters();
        const quint64 ends = maskAvx2(_mm256_cmpeq_epi8(loadAvx2(letters), textEnd),
                                      _mm256_cmpeq_epi8(loadAvx2(letters + 32), textEnd));
        pass.found.add(pass.number(), _pext_u64(endsOfHit(hits, ends, pass.carry), ends));
    }
}

MLV_AVX2 void readAvx2(const char* letters, std::span<const char> bytes, quint64* masks)
{
    const __m256i low = loadAvx2(letters);
    const __m256i high = loadAvx2(letters + 32);
    const char* const wanted = bytes.data();
    const std::size_t count = bytes.size();
    for (std::size_t i = 0; i < count; ++i) {
        const __m256i byte = _mm256_set1_epi8(wanted[i]);
        masks[i] = maskAvx2(_mm256_cmpeq_epi8(low, byte), _mm256_cmpeq_epi8(high, byte));
    }
    const __m256i end = _mm256_set1_epi8(kInnerEnd);
    masks[count] = maskAvx2(_mm256_cmpgt_epi8(end, low), _mm256_cmpgt_epi8(end, high));
}

#undef MLV_AVX2

#endif

/// \param block at most kBlock letters
quint64 endsIn(std::string_view block)
{
#ifdef __x86_64__
    if (block.size() == kBlock) {
        return equalSse2(block.data(), _mm_set1_epi8(kTextEnd));
    }
#endif
    return equalTo(block.data(), block.size(), kTextEnd);
}

} // namespace

BlockReader blockReader([[maybe_unused]] VectorWidth width)
{
#ifdef __x86_64__
    if (width != VectorWidth::Plain) {
        return width == VectorWidth::Avx2 ? readAvx2 : readSse2;
    }
#endif
    return readPlain;
}

ScanPiece::ScanPiece(std::string_view text, const LetterCounts& counts)
    : m_text(text)
    , m_probeCount(std::min(text.size(), m_probes.size()))
{
    std::vector<std::size_t> places(text.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = i;
    }
    const auto count = [&](std::size_t place) {
        return counts[static_cast<unsigned char>(text[place])];
    };
    std::partial_sort_copy(
        places.begin(), places.end(), m_probes.begin(),
        m_probes.begin() + std::ptrdiff_t(m_probeCount),
        [&](std::size_t left, std::size_t right) { return count(left) < count(right); });
}

PackedTexts::PackedTexts(std::string_view letters)
    : PackedTexts(unread(letters))
{
    read(unreadBlocks());
}

PackedTexts PackedTexts::unread(std::string_view letters)
{
    PackedTexts result;
    result.m_letters = letters;
    result.m_before.reserve(blocksOf(letters));
    return result;
}

void PackedTexts::read(std::size_t blocks)
{
    for (std::size_t left = std::min(blocks, unreadBlocks()); left > 0; --left) {
        const std::size_t begin = m_before.size() * kBlock;
        m_before.push_back(quint32(m_count));
        m_count += std::size_t(std::popcount(endsIn(m_letters.substr(begin, kBlock))));
        ++m_counts[static_cast<unsigned char>(m_letters[begin])];
    }
}

void addHolding(const PackedTexts& texts,
                const ScanPiece& piece,
                qint64 first,
                IndexBits& found,
                VectorWidth width)
{
    Pass pass{texts, piece, first, found};
#ifdef __x86_64__
    if (width == VectorWidth::Sse2) {
        passSse2(pass);
    } else if (width == VectorWidth::Avx2) {
        constexpr std::array kPasses{&passAvx2<1>, &passAvx2<2>, &passAvx2<3>};
        kPasses[piece.probeCount() - 1](pass);
    }
#endif
    passPlain(pass); // what a wider one leaves at the end
}

} // namespace melovane::sqlite
