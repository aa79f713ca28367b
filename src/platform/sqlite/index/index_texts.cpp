#include "platform/sqlite/index/index_texts.h"

#include "platform/db/latin_text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

namespace melovane::sqlite {

using Kind = textcompare::LikePattern::Outline::Kind;

namespace {

/// Bytes of all texts of one column; larger columns are left to SQLite.
constexpr std::size_t kMostLetters = 2'000'000'000;

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

QString decodedOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// The base letters that stand in front of a sort key.
QString baseOf(const QString& key)
{
    return key.section(QChar(0), 0, 0);
}

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte >= 2 && byte < 0x80;
    });
}

/// Units in as many bytes as UTF-8 takes for letters of that number, pairs not joined: such bytes
/// compare as the units do.
void appendUnits(std::vector<char>& bytes, QStringView units)
{
    for (const QChar unit : units) {
        const unsigned code = unit.unicode();
        if (code < 0x80) {
            bytes.push_back(char(code));
        } else if (code < 0x800) {
            bytes.push_back(char(0xC0 | (code >> 6)));
            bytes.push_back(char(0x80 | (code & 0x3F)));
        } else {
            bytes.push_back(char(0xE0 | (code >> 12)));
            bytes.push_back(char(0x80 | ((code >> 6) & 0x3F)));
            bytes.push_back(char(0x80 | (code & 0x3F)));
        }
    }
}

/// The sort key of a folded text: the way of textcompare::sortKey(), without its copies for most
/// letters of the west.
void appendKey(std::vector<char>& keys, std::string_view text)
{
    constexpr std::size_t kRoom = 512;
    std::array<char16_t, kRoom> units{};
    const auto count =
        text.size() < kRoom
            ? textcompare::latin::foldUtf8(text.data(), qsizetype(text.size()), units.data(), kRoom)
            : std::nullopt;
    if (!count) {
        appendUnits(keys, textcompare::sortKey(decodedOf(text)));
        return;
    }
    const QStringView folded(units.data(), *count);
    for (const QChar unit : folded) {
        const auto& letter = textcompare::latin::letters()[unit.unicode()];
        appendUnits(keys, QStringView(letter.base.data(), letter.baseCount));
    }
    keys.push_back('\0');
    appendUnits(keys, folded);
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

/// Texts found are looked into one by one when they are at most one in so many: another pass over
/// all letters takes less time than more of them, which lie all over the memory.
constexpr quint32 kFewOf = 200;

/// A text to be sorted: the first bytes of its key, for most comparisons enough.
struct Sortable
{
    quint64 begin = 0;
    quint32 number = 0;
};

quint64 firstBytes(std::string_view key)
{
    quint64 result = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        result = result << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    }
    return result;
}

} // namespace

IndexTexts::IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends)
    : m_letters(std::move(letters))
    , m_ends(std::move(ends))
    , m_packed({m_letters.data(), m_letters.size()})
{}

bool IndexTexts::isWhole() const
{
    return m_packed.count() == m_ends.size() &&
           std::adjacent_find(m_ends.begin(), m_ends.end(), std::greater_equal<>()) ==
               m_ends.end() &&
           std::all_of(
               m_ends.begin(), m_ends.end(),
               [&](quint32 end) { return end < m_letters.size() && m_letters[end] == kTextEnd; }) &&
           (m_letters.size() == 0 || m_letters[m_letters.size() - 1] == kTextEnd);
}

QString IndexTexts::decoded(quint32 number) const
{
    return decodedOf(text(number));
}

quint32 IndexTexts::lowerBound(QStringView folded) const
{
    return lowerBoundOfKey(textcompare::sortKey(folded));
}

quint32 IndexTexts::lowerBoundOfKey(const QString& key) const
{
    quint32 low = 0;
    quint32 high = count();
    while (low < high) {
        const quint32 middle = low + (high - low) / 2;
        if (textcompare::sortKey(decoded(middle)) < key) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

std::optional<quint32> IndexTexts::find(QStringView folded) const
{
    const quint32 place = lowerBound(folded);
    if (place < count() && decoded(place) == folded) {
        return place;
    }
    return {};
}

/// Texts that begin alike have base letters that begin alike, and those stand together.
/// \return the first of them and the one behind the last
std::pair<quint32, quint32> IndexTexts::beginningAlike(const QString& folded) const
{
    const QString base = baseOf(textcompare::sortKey(folded));
    if (base.isEmpty()) {
        return {0, count()}; // nothing but marks, which have no base
    }
    // The base itself, not its own sort key, in which a zero would be lifted twice.
    const quint32 first = lowerBoundOfKey(base);
    quint32 end = count();
    for (quint32 from = first; from < end;) {
        const quint32 middle = from + (end - from) / 2;
        if (baseOf(textcompare::sortKey(decoded(middle))).startsWith(base)) {
            from = middle + 1;
        } else {
            end = middle;
        }
    }
    return {first, end};
}

void IndexTexts::addBeginning(const QString& folded, IndexBits& values) const
{
    const QByteArray bytes = folded.toUtf8();
    const auto [first, end] = beginningAlike(folded);
    for (quint32 number = first; number < end; ++number) {
        if (text(number).starts_with(viewOf(bytes))) {
            values.set(number + 1);
        }
    }
}

/// Takes out the values whose texts do not pass.
template <typename Test> void IndexTexts::keep(IndexBits& values, const Test& test) const
{
    values.forEach([&](std::size_t value) {
        if (!test(text(quint32(value) - 1))) {
            values.clear(qint64(value));
        }
    });
}

void IndexTexts::addHolding(const QString& folded, IndexBits& values) const
{
    const QByteArray bytes = folded.toUtf8();
    if (m_last && bytes.contains(m_last->piece)) {
        std::erase_if(m_last->values, [&](quint32 value) {
            return text(value - 1).find(viewOf(bytes)) == std::string_view::npos;
        });
        m_last->piece = bytes;
        for (const quint32 value : m_last->values) {
            values.set(value);
        }
        return;
    }
    sqlite::addHolding(m_packed, ScanPiece(viewOf(bytes), m_packed.letterCounts()), 1, values);
    m_last.reset();
    if (values.count() <= count() / kFewOf) {
        Found& last = m_last.emplace(Found{bytes, {}});
        values.forEach([&](std::size_t value) { last.values.push_back(quint32(value)); });
    }
}

void IndexTexts::addBehind(int skipped, const QString& folded, IndexBits& values) const
{
    const QByteArray bytes = folded.toUtf8();
    const std::string_view piece = viewOf(bytes);
    const char* at = m_letters.begin();
    for (quint32 number = 0; number < count(); ++number) {
        const char* const end = m_letters.begin() + m_ends[number];
        for (int left = skipped; left > 0 && at < end; --left) {
            // Bytes that go on with a letter; the end of a text is none.
            for (++at; (*at & 0xC0) == 0x80; ++at) {
            }
        }
        if (*at == piece.front() &&
            std::string_view(at, std::size_t(end - at)).starts_with(piece)) {
            values.set(number + 1);
        }
        at = end + 1;
    }
}

void IndexTexts::addMatching(const textcompare::LikePattern& pattern, IndexBits& values) const
{
    const auto outline = pattern.outline();
    switch (outline.kind) {
    case Kind::Nothing:
        return;
    case Kind::Equal:
        if (const auto found = find(outline.begin)) {
            values.set(*found + 1);
        }
        return;
    case Kind::Begin:
        if (outline.begin.isEmpty()) {
            values.setRange(1, count() + 1);
        } else {
            addBeginning(outline.begin, values);
        }
        return;
    case Kind::Inside:
        return addHolding(outline.inside, values);
    case Kind::Behind:
        return addBehind(outline.skipped, outline.inside, values);
    case Kind::Other:
        break;
    }
    if (!outline.begin.isEmpty()) {
        addBeginning(outline.begin, values);
    } else if (!outline.inside.isEmpty()) {
        addHolding(outline.inside, values);
    } else {
        values.setRange(1, count() + 1);
    }
    keep(values, [&](std::string_view text) { return pattern.matchesFoldedUtf8(text); });
}

IndexTextsBuilder::IndexTextsBuilder()
    : m_table(1024)
{}

std::string_view IndexTextsBuilder::text(quint32 number) const
{
    const quint32 begin = number == 0 ? 0 : m_ends[number - 1];
    return {m_letters.data() + begin, m_ends[number] - begin};
}

/// textcompare::fold(), with a short way for most letters of the west.
std::string_view IndexTextsBuilder::fold(std::string_view utf8)
{
    constexpr std::size_t kRoom = 512;
    m_folded.resize(utf8.size());
    bool plain = true;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char letter = utf8[i];
        plain = plain && static_cast<unsigned char>(letter) < 0x80;
        m_folded[i] = letter >= 'A' && letter <= 'Z' ? char(letter + ('a' - 'A')) : letter;
    }
    if (plain) {
        return {m_folded.data(), m_folded.size()};
    }
    m_folded.clear();
    std::array<char16_t, kRoom> units{};
    const auto size = qsizetype(utf8.size());
    const auto count = utf8.size() < kRoom
                           ? textcompare::latin::foldUtf8(utf8.data(), size, units.data(), kRoom)
                           : std::nullopt;
    if (count) {
        appendUnits(m_folded, QStringView(units.data(), *count));
    } else {
        const QByteArray bytes = textcompare::fold(decodedOf(utf8)).toUtf8();
        m_folded.assign(bytes.begin(), bytes.end());
    }
    return {m_folded.data(), m_folded.size()};
}

quint32 IndexTextsBuilder::add(std::string_view utf8)
{
    const std::string_view folded = fold(utf8);
    // A byte order mark that is left would be lost when the text is decoded again.
    m_fits = m_fits && !folded.starts_with("\xEF\xBB\xBF");
    const quint64 hash = quint64(hashOf(folded)) << 32;
    const std::size_t mask = m_table.size() - 1;
    std::size_t place = (hash >> 32) & mask;
    for (; m_table[place] != 0; place = (place + 1) & mask) {
        const auto number = quint32(m_table[place]) - 1;
        if (((m_table[place] ^ hash) >> 32) == 0 && text(number) == folded) {
            return number;
        }
    }
    if (m_letters.size() + folded.size() > kMostLetters) {
        m_fits = false;
        return 0;
    }
    m_letters.insert(m_letters.end(), folded.begin(), folded.end());
    m_ends.push_back(quint32(m_letters.size()));
    m_table[place] = hash | m_ends.size();
    if (m_ends.size() * 2 > m_table.size()) {
        grow();
    }
    return quint32(m_ends.size() - 1);
}

void IndexTextsBuilder::grow()
{
    const std::vector<quint64> former = std::move(m_table);
    m_table.assign(former.size() * 4, 0);
    for (const quint64 entry : former) {
        std::size_t place = (entry >> 32) & (m_table.size() - 1);
        while (entry != 0 && m_table[place] != 0) {
            place = (place + 1) & (m_table.size() - 1);
        }
        if (entry != 0) {
            m_table[place] = entry;
        }
    }
}

IndexTextsBuilder::Sorted IndexTextsBuilder::sort()
{
    m_table = {};
    const auto count = quint32(m_ends.size());
    // Keys of texts that are their own key stand where the text stands.
    std::vector<char> keys;
    std::vector<std::size_t> keyEnds(count);
    for (quint32 number = 0; number < count; ++number) {
        if (!isPlain(text(number))) {
            appendKey(keys, text(number));
        }
        keyEnds[number] = keys.size();
    }
    const auto keyOf = [&](quint32 number) {
        const std::size_t begin = number == 0 ? 0 : keyEnds[number - 1];
        const std::size_t end = keyEnds[number];
        return begin == end ? text(number) : std::string_view(keys.data() + begin, end - begin);
    };
    std::vector<Sortable> order(count);
    for (quint32 number = 0; number < count; ++number) {
        order[number] = {firstBytes(keyOf(number)), number};
    }
    std::sort(order.begin(), order.end(), [&](const Sortable& left, const Sortable& right) {
        return left.begin != right.begin ? left.begin < right.begin
                                         : keyOf(left.number) < keyOf(right.number);
    });
    Sorted result;
    result.places.resize(count);
    std::vector<char> letters;
    letters.reserve(m_letters.size() + count);
    std::vector<quint32> ends;
    ends.reserve(count);
    for (const Sortable& next : order) {
        const std::string_view folded = text(next.number);
        result.places[next.number] = quint32(ends.size());
        letters.insert(letters.end(), folded.begin(), folded.end());
        ends.push_back(quint32(letters.size()));
        letters.push_back(kTextEnd);
    }
    m_letters = {};
    m_ends = {};
    result.texts = IndexTexts(IndexArray(std::move(letters)), IndexArray(std::move(ends)));
    return result;
}

} // namespace melovane::sqlite
