#include "platform/qt/outline_texts.h"

#include <QChar>

#include <algorithm>
#include <cstring>

namespace melovane {

namespace {

/// Letters that are folded in one go when all of them are plain.
constexpr qsizetype kBlock = 8;

/// Most bytes that a unit becomes; the two units of a pair become four.
constexpr qsizetype kLongest = 3;

/// Rows that memory is asked for before their turn comes.
constexpr std::size_t kAhead = 8;

constexpr char foldedPlain(char16_t unit)
{
    const bool isCapital = unit >= u'A' && unit <= u'Z';
    return char(isCapital ? unit + 32 : unit == 0 ? u' ' : unit); // zero ends a text
}

/// \return behind what was written
char* writeUtf8(char* to, char32_t code)
{
    const auto part = [](char32_t bits) { return char(0x80 | (bits & 0x3F)); };
    if (code < 0x80) {
        *to++ = char(code);
    } else if (code < 0x800) {
        *to++ = char(0xC0 | (code >> 6));
        *to++ = part(code);
    } else if (code < 0x10000) {
        *to++ = char(0xE0 | (code >> 12));
        *to++ = part(code >> 6);
        *to++ = part(code);
    } else {
        *to++ = char(0xF0 | (code >> 18));
        *to++ = part(code >> 12);
        *to++ = part(code >> 6);
        *to++ = part(code);
    }
    return to;
}

bool isPlain(const char16_t* units)
{
    char16_t all = 0;
    for (qsizetype at = 0; at < kBlock; ++at) {
        all |= units[at];
    }
    return all < 0x80;
}

/// \return the letter in the other case when it is a capital of Latin-1
constexpr char32_t foldedLatin(char16_t unit)
{
    const bool isCapital = unit >= 0xC0 && unit <= 0xDE && unit != 0xD7;
    return isCapital ? unit + 32U : unit;
}

/// \param to room for kLongest bytes a unit
/// \return behind what was written
char* writeLetters(char* to, QStringView text)
{
    const char16_t* const end = text.utf16() + text.size();
    for (const char16_t* at = text.utf16(); at < end;) {
        const char16_t unit = *at++;
        if (unit < 0x80) {
            *to++ = foldedPlain(unit);
        } else if (unit >= 0xC0 && unit <= 0xFF) {
            to = writeUtf8(to, foldedLatin(unit));
        } else if (QChar::isHighSurrogate(unit) && at < end && QChar::isLowSurrogate(*at)) {
            to = writeUtf8(to, QChar::toCaseFolded(QChar::surrogateToUcs4(unit, *at++)));
        } else {
            to = writeUtf8(to, QChar::toCaseFolded(char32_t(unit)));
        }
    }
    return to;
}

/// The same, in blocks.
char* writeFolded(char* to, QStringView text)
{
    while (text.size() >= kBlock) {
        const char16_t* const units = text.utf16();
        // A pair that a block would part goes into the block.
        const bool isParted = QChar::isHighSurrogate(units[kBlock - 1]);
        const qsizetype size = std::min(kBlock + (isParted ? 1 : 0), text.size());
        if (isPlain(units)) {
            for (qsizetype letter = 0; letter < kBlock; ++letter) {
                to[letter] = foldedPlain(units[letter]);
            }
            to += kBlock;
        } else {
            to = writeLetters(to, text.first(size));
        }
        text = text.sliced(size);
    }
    return writeLetters(to, text);
}

QStringView nameOf(const TreeRow& row)
{
    const QStringView text(row.text);
    return text.first(std::clamp<qsizetype>(text.size() - row.countLetters, 0, text.size()));
}

/// \param room kept from row to row, so that it is made once
void appendRow(std::string& to, const TreeRow& row, std::vector<char>& room)
{
    const QStringView name = nameOf(row);
    room.resize(std::max(room.size(), std::size_t(name.size() * kLongest + 1)));
    char* const end = writeFolded(room.data(), name);
    *end = '\0';
    to.append(room.data(), end + 1);
}

/// About as many bytes as the names of all rows have.
std::size_t bytesOf(const std::vector<TreeRow>& rows)
{
    constexpr std::size_t kEvery = 64; // row is looked at
    std::size_t sum = 0;
    for (std::size_t row = 0; row < rows.size(); row += kEvery) {
        sum += std::size_t(rows[row].text.size()) + 4;
    }
    return sum * kEvery;
}

} // namespace

std::string OutlineTexts::folded(const QString& text)
{
    std::string result(std::size_t(text.size() * kLongest), '\0');
    result.resize(std::size_t(writeFolded(result.data(), text) - result.data()));
    return result;
}

void OutlineTexts::make(const std::vector<TreeRow>& rows)
{
    clear();
    m_starts.reserve(rows.size() + 1);
    m_letters.reserve(bytesOf(rows));
    std::vector<char> room;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        // The texts lie all over memory; waiting for them would be most of the time.
        __builtin_prefetch(rows[std::min(row + kAhead, rows.size() - 1)].text.constData());
        m_starts.push_back(std::uint32_t(m_letters.size()));
        appendRow(m_letters, rows[row], room);
    }
    m_starts.push_back(std::uint32_t(m_letters.size()));
}

void OutlineTexts::clear()
{
    m_letters.clear();
    m_starts.clear();
}

void OutlineTexts::inserted(const std::vector<TreeRow>& rows, int at, int count)
{
    if (!isMade()) {
        return;
    }
    std::string fresh;
    std::vector<char> room;
    std::vector<std::uint32_t> starts;
    const std::uint32_t start = m_starts[std::size_t(at)];
    for (int row = at; row < at + count; ++row) {
        starts.push_back(start + std::uint32_t(fresh.size()));
        appendRow(fresh, rows[std::size_t(row)], room);
    }
    m_letters.insert(start, fresh);
    for (std::size_t later = std::size_t(at); later < m_starts.size(); ++later) {
        m_starts[later] += std::uint32_t(fresh.size());
    }
    m_starts.insert(m_starts.begin() + at, starts.begin(), starts.end());
}

void OutlineTexts::removed(int at, int count)
{
    if (!isMade()) {
        return;
    }
    const std::uint32_t start = m_starts[std::size_t(at)];
    const std::uint32_t gone = m_starts[std::size_t(at + count)] - start;
    m_letters.erase(start, gone);
    m_starts.erase(m_starts.begin() + at, m_starts.begin() + at + count);
    for (std::size_t later = std::size_t(at); later < m_starts.size(); ++later) {
        m_starts[later] -= gone;
    }
}

void OutlineTexts::changed(const std::vector<TreeRow>& rows, int row)
{
    removed(row, 1);
    inserted(rows, row, 1);
}

std::vector<std::uint32_t> OutlineTexts::rowsWith(const std::string& piece) const
{
    std::vector<std::uint32_t> hits;
    if (piece.empty() || !isMade()) {
        return hits; // an empty piece would be found at every letter
    }
    const char* const begin = m_letters.data();
    const char* const end = begin + m_letters.size();
    std::uint32_t row = 0;
    for (const char* at = begin; at < end;) {
        const auto* found =
            static_cast<const char*>(memmem(at, std::size_t(end - at), piece.data(), piece.size()));
        if (found == nullptr) {
            break;
        }
        while (m_starts[row + 1] <= std::uint32_t(found - begin)) {
            ++row;
        }
        hits.push_back(row);
        at = begin + m_starts[row + 1];
    }
    return hits;
}

std::string_view OutlineTexts::textOf(int row) const
{
    const std::uint32_t start = m_starts[std::size_t(row)];
    return std::string_view(m_letters).substr(start, m_starts[std::size_t(row) + 1] - start - 1);
}

bool OutlineTexts::startsWith(int row, const std::string& piece) const
{
    return textOf(row).starts_with(piece);
}

bool OutlineTexts::contains(int row, const std::string& piece) const
{
    return textOf(row).find(piece) != std::string_view::npos;
}

} // namespace melovane
