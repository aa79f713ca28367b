#include "platform/sqlite/index/index_texts.h"

#include "platform/sqlite/index/index_glob.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

namespace melovane::sqlite {

using Kind = textcompare::LikePattern::Outline::Kind;

namespace {

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

/// Texts found are looked into one by one when they are at most one in so many: another pass over
/// all letters takes less time than more of them, which lie all over the memory.
constexpr quint32 kFewOf = 200;

/// Texts are tried one by one with a pattern when they are at most one in so many; a pass over all
/// of them takes less time than more.
constexpr qint64 kFewTriedOf = 16;

/// Letters of a piece that few texts may hold.
constexpr qsizetype kNarrowPiece = 3;

} // namespace

IndexTexts::IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends)
    : m_letters(std::move(letters))
    , m_ends(std::move(ends))
    , m_packed({m_letters.data(), m_letters.size()})
{}

IndexTexts::IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends, PackedTexts packed)
    : m_letters(std::move(letters))
    , m_ends(std::move(ends))
    , m_packed(std::move(packed))
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

/// By their longest piece when few texts hold it, else all texts in one pass.
void IndexTexts::addOther(const textcompare::LikePattern& pattern,
                          const QString& inside,
                          QStringView text,
                          IndexBits& values) const
{
    const auto glob = IndexGlob::of(text);
    const bool isNarrow = inside.size() >= kNarrowPiece;
    if (isNarrow || (!glob && !inside.isEmpty())) {
        addHolding(inside, values);
    } else if (!glob) {
        values.setRange(1, count() + 1);
    }
    if (!glob || (isNarrow && values.count() <= count() / kFewTriedOf)) {
        keep(values, [&](std::string_view each) { return pattern.matchesFoldedUtf8(each); });
        return;
    }
    values = IndexBits(values.size());
    sqlite::addMatching(m_packed, *glob, 1, values);
}

void IndexTexts::addMatching(const textcompare::LikePattern& pattern,
                             QStringView text,
                             IndexBits& values) const
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
    if (outline.begin.isEmpty()) {
        return addOther(pattern, outline.inside, text, values);
    }
    addBeginning(outline.begin, values);
    keep(values, [&](std::string_view each) { return pattern.matchesFoldedUtf8(each); });
}

} // namespace melovane::sqlite
