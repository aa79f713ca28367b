#include "platform/sqlite/index/index_texts_builder.h"

#include "platform/db/latin_text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace melovane::sqlite {

namespace {

/// Bytes asked for at once; a text that is longer has a block of its own.
constexpr std::size_t kBlock = 256 * std::size_t{1024};

constexpr std::size_t kTextsAtOnce = 4096;
constexpr std::size_t kPackedAtOnce = 32'768;
constexpr std::size_t kBlocksAtOnce = 16;

/// Bytes of all texts of one column; larger columns are left to SQLite.
constexpr std::size_t kMostLetters = 2'000'000'000;

QString decodedOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte >= 2 && byte < 0x80;
    });
}

/// Bytes of one unit, at most.
constexpr std::size_t kMostOfUnit = 3;

/// A unit in as many bytes as UTF-8 takes for a letter of that number, pairs not joined: such bytes
/// compare as the units do. Returns the place behind it.
char* putUnit(char* at, QChar unit)
{
    const unsigned code = unit.unicode();
    if (code < 0x80) {
        *at++ = char(code);
    } else if (code < 0x800) {
        *at++ = char(0xC0 | (code >> 6));
        *at++ = char(0x80 | (code & 0x3F));
    } else {
        *at++ = char(0xE0 | (code >> 12));
        *at++ = char(0x80 | ((code >> 6) & 0x3F));
        *at++ = char(0x80 | (code & 0x3F));
    }
    return at;
}

char* putUnits(char* at, QStringView units)
{
    for (const QChar unit : units) {
        at = putUnit(at, unit);
    }
    return at;
}

void setUnits(std::vector<char>& bytes, QStringView units)
{
    bytes.resize(kMostOfUnit * std::size_t(units.size()));
    bytes.resize(std::size_t(putUnits(bytes.data(), units) - bytes.data()));
}

/// The sort key of a folded text: the way of textcompare::sortKey(), without its copies for most
/// letters of the west.
void setKey(std::vector<char>& key, std::string_view text)
{
    constexpr std::size_t kRoom = 512;
    std::array<char16_t, kRoom> units{};
    const auto count =
        text.size() < kRoom
            ? textcompare::latin::foldUtf8(text.data(), qsizetype(text.size()), units.data(), kRoom)
            : std::nullopt;
    if (!count) {
        setUnits(key, textcompare::sortKey(decodedOf(text)));
        return;
    }
    const QStringView folded(units.data(), *count);
    const auto& letters = textcompare::latin::letters();
    std::size_t most = 1 + std::size_t(folded.size());
    for (const QChar unit : folded) {
        most += std::size_t(letters[unit.unicode()].baseCount);
    }
    // Room for all at once: a text of forty letters has eighty pieces.
    key.resize(kMostOfUnit * most);
    char* at = key.data();
    for (const QChar unit : folded) {
        const auto& letter = letters[unit.unicode()];
        at = putUnits(at, QStringView(letter.base.data(), letter.baseCount));
    }
    *at++ = '\0';
    key.resize(std::size_t(putUnits(at, folded) - key.data()));
}

quint32 hashOf(std::string_view text)
{
    quint64 hash = 0x9E3779B97F4A7C15ULL ^ text.size();
    while (text.size() >= 8) {
        quint64 part = 0;
        std::memcpy(&part, text.data(), 8);
        hash = (hash ^ part) * 0xFF51AFD7ED558CCDULL;
        hash ^= hash >> 32;
        text.remove_prefix(8);
    }
    quint64 rest = 0;
    std::memcpy(&rest, text.data(), text.size());
    hash = (hash ^ rest) * 0xFF51AFD7ED558CCDULL;
    return quint32(hash ^ (hash >> 32));
}

quint64 firstBytes(std::string_view key)
{
    quint64 result = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        result = result << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    }
    return result;
}

/// Folds a text, eight letters at a time; false when it holds others than those of ASCII.
bool foldPlain(std::string_view text, char* folded)
{
    constexpr quint64 kEach = 0x0101010101010101ULL;
    constexpr quint64 kHigh = 0x80 * kEach;
    const auto folding = [&](quint64 letters) {
        // A high bit where a letter is at least "A", and where it is behind "Z".
        const quint64 capital = (letters + (0x80 - 'A') * kEach) ^ (letters + (0x7F - 'Z') * kEach);
        return letters | (capital & kHigh) >> 2;
    };
    quint64 letters = 0;
    for (; text.size() >= sizeof letters; text.remove_prefix(sizeof letters)) {
        std::memcpy(&letters, text.data(), sizeof letters);
        if ((letters & kHigh) != 0) {
            return false;
        }
        letters = folding(letters);
        std::memcpy(folded, &letters, sizeof letters);
        folded += sizeof letters;
    }
    letters = 0;
    std::memcpy(&letters, text.data(), text.size());
    const quint64 last = folding(letters);
    std::memcpy(folded, &last, text.size());
    return (letters & kHigh) == 0;
}

} // namespace

char* IndexLetters::take(std::size_t size)
{
    if (size > m_left) {
        m_left = std::max(size, kBlock);
        m_blocks.emplace_back(new char[m_left]);
        m_size = m_left;
    }
    char* const at = m_blocks.back().get() + (m_size - m_left);
    m_left -= size;
    m_bytes += size;
    return at;
}

IndexTextEntry::IndexTextEntry(IndexLetters& letters, std::string_view text, std::string_view key)
    : m_begin(firstBytes(key.empty() ? text : key))
{
    const Sizes sizes{quint32(text.size()), quint32(key.size())};
    char* const at = letters.take(sizeof sizes + text.size() + key.size());
    std::memcpy(at, &sizes, sizeof sizes);
    std::copy(text.begin(), text.end(), at + sizeof sizes);
    std::copy(key.begin(), key.end(), at + sizeof sizes + text.size());
    m_at = at;
}

IndexTextEntry::Sizes IndexTextEntry::sizes() const
{
    Sizes sizes;
    std::memcpy(&sizes, m_at, sizeof sizes);
    return sizes;
}

std::string_view IndexTextEntry::text() const
{
    return {m_at + sizeof(Sizes), sizes().text};
}

std::string_view IndexTextEntry::key() const
{
    const Sizes size = sizes();
    const char* const letters = m_at + sizeof size;
    return size.key == 0 ? std::string_view(letters, size.text)
                         : std::string_view(letters + size.text, size.key);
}

/// textcompare::fold(), with a short way for most letters of the west.
std::string_view IndexTextsBuilder::fold(std::string_view utf8)
{
    constexpr std::size_t kRoom = 512;
    m_folded.resize(utf8.size());
    if (foldPlain(utf8, m_folded.data())) {
        return {m_folded.data(), m_folded.size()};
    }
    m_folded.clear();
    std::array<char16_t, kRoom> units{};
    const auto size = qsizetype(utf8.size());
    const auto count = utf8.size() < kRoom
                           ? textcompare::latin::foldUtf8(utf8.data(), size, units.data(), kRoom)
                           : std::nullopt;
    if (count) {
        setUnits(m_folded, QStringView(units.data(), *count));
    } else {
        const QByteArray bytes = textcompare::fold(decodedOf(utf8)).toUtf8();
        m_folded.assign(bytes.begin(), bytes.end());
    }
    return {m_folded.data(), m_folded.size()};
}

IndexTextEntry IndexTextsBuilder::entryOf(std::string_view folded)
{
    m_key.clear();
    if (!isPlain(folded)) {
        setKey(m_key, folded);
    }
    return {m_room, folded, {m_key.data(), m_key.size()}};
}

void IndexTextsBuilder::add(std::string_view utf8)
{
    const std::string_view folded = fold(utf8);
    // A byte order mark that is left would be lost when the text is decoded again.
    m_fits = m_fits && !folded.starts_with("\xEF\xBB\xBF") &&
             m_room.bytes() + folded.size() <= kMostLetters;
    if (!m_fits) {
        m_runs.addNull();
        return;
    }
    m_runs.add(
        hashOf(folded), [&](const IndexTextEntry& known) { return known.text() == folded; },
        [&] { return entryOf(folded); });
}

void IndexTextsBuilder::layOut(std::size_t first, std::size_t end)
{
    for (std::size_t i = first; i < end; ++i) {
        const std::string_view text = m_runs.entries()[i].text();
        m_letters.insert(m_letters.end(), text.begin(), text.end());
        m_ends.push_back(quint32(m_letters.size()));
        m_letters.push_back(kTextEnd);
    }
}

void IndexTextsBuilder::sort(SlicedWork& work)
{
    m_runs.merge(work);
    work.add(
        [this] {
            m_letters.reserve(m_runs.bytes());
            m_ends.reserve(m_runs.entries().size());
            return m_runs.entries().size();
        },
        kTextsAtOnce, [this](std::size_t first, std::size_t end) { layOut(first, end); });
    work.add([this] { return m_room.blocks(); }, kBlocksAtOnce,
             [this](std::size_t first, std::size_t end) { m_room.giveBack(end - first); });
    work.add(
        [this] {
            m_packed = PackedTexts::unread({m_letters.data(), m_letters.size()});
            return m_packed.unreadBlocks();
        },
        kPackedAtOnce, [this](std::size_t first, std::size_t end) { m_packed.read(end - first); });
}

IndexTexts IndexTextsBuilder::take()
{
    return {IndexArray(std::move(m_letters)), IndexArray(std::move(m_ends)), std::move(m_packed)};
}

} // namespace melovane::sqlite
