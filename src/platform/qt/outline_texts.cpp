#include "platform/qt/outline_texts.h"

#include <QChar>

#include <algorithm>
#include <cstring>

namespace melovane {

namespace {

void appendUtf8(std::string& to, char32_t code)
{
    const auto part = [](char32_t bits) { return char(0x80 | (bits & 0x3F)); };
    if (code < 0x80) {
        to.push_back(char(code));
    } else if (code < 0x800) {
        to.append({char(0xC0 | (code >> 6)), part(code)});
    } else if (code < 0x10000) {
        to.append({char(0xE0 | (code >> 12)), part(code >> 6), part(code)});
    } else {
        to.append({char(0xF0 | (code >> 18)), part(code >> 12), part(code >> 6), part(code)});
    }
}

void appendFolded(std::string& to, QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (unit < 0x80) {
            const bool isCapital = unit >= u'A' && unit <= u'Z';
            // Zero ends a text.
            to.push_back(isCapital ? char(unit + 32) : unit == 0 ? ' ' : char(unit));
            continue;
        }
        char32_t code = unit;
        if (QChar::isHighSurrogate(unit) && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(unit, text[++at].unicode());
        }
        appendUtf8(to, QChar::toCaseFolded(code));
    }
}

void appendRow(std::string& to, const TreeRow& row)
{
    const QStringView text(row.text);
    appendFolded(to,
                 text.first(std::clamp<qsizetype>(text.size() - row.countLetters, 0, text.size())));
    to.push_back('\0');
}

} // namespace

std::string OutlineTexts::folded(const QString& text)
{
    std::string result;
    appendFolded(result, text);
    return result;
}

void OutlineTexts::make(const std::vector<TreeRow>& rows)
{
    clear();
    m_starts.reserve(rows.size() + 1);
    m_letters.reserve(rows.size() * 24);
    for (const TreeRow& row : rows) {
        m_starts.push_back(std::uint32_t(m_letters.size()));
        appendRow(m_letters, row);
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
    std::vector<std::uint32_t> starts;
    const std::uint32_t start = m_starts[std::size_t(at)];
    for (int row = at; row < at + count; ++row) {
        starts.push_back(start + std::uint32_t(fresh.size()));
        appendRow(fresh, rows[std::size_t(row)]);
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
