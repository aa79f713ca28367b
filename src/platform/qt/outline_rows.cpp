#include "platform/qt/outline_rows.h"

#include <algorithm>
#include <cstring>

namespace melovane {

std::vector<TreeRow> OutlineRows::setAll(std::vector<TreeRow> rows)
{
    m_rows.swap(rows);
    m_isFiltered = false;
    m_kept.clear();
    m_openBefore.clear();
    number();
    m_open.resize(m_rows.size());
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        m_open[row] = m_ends[row] > row + 1;
    }
    collect();
    return rows;
}

/// Where the rows below each one end, and what each one stands below.
void OutlineRows::number()
{
    const std::size_t rows = m_rows.size();
    m_ends.resize(rows);
    m_parents.resize(rows);
    std::vector<std::uint32_t> path; // the rows that a next one may stand below
    for (std::size_t row = 0; row < rows; ++row) {
        while (!path.empty() && m_rows[path.back()].level >= m_rows[row].level) {
            m_ends[path.back()] = std::uint32_t(row);
            path.pop_back();
        }
        m_parents[row] = path.empty() ? -1 : std::int32_t(path.back());
        path.push_back(std::uint32_t(row));
    }
    for (const std::uint32_t open : path) {
        m_ends[open] = std::uint32_t(rows);
    }
}

void OutlineRows::setRow(int row, const TreeRow& value)
{
    TreeRow& mine = m_rows[std::size_t(row)];
    const int level = mine.level;
    mine = value;
    mine.level = level;
}

bool OutlineRows::isParent(int row) const
{
    const std::size_t below = std::size_t(row) + 1;
    const std::size_t room = std::size_t(end(row)) - below;
    if (room == 0 || !m_isFiltered) {
        return room > 0;
    }
    return std::memchr(m_kept.data() + below, 1, room) != nullptr;
}

bool OutlineRows::isOpen(int row) const
{
    return m_open[std::size_t(row)] != 0 && isParent(row);
}

int OutlineRows::lineOf(int row) const
{
    const auto found = std::lower_bound(m_lines.begin(), m_lines.end(), std::uint32_t(row));
    return found != m_lines.end() && int(*found) == row ? int(found - m_lines.begin()) : -1;
}

int OutlineRows::nearestLine(int row) const
{
    int line = lineOf(row);
    while (line < 0 && row >= 0) {
        row = parent(row);
        line = row >= 0 ? lineOf(row) : -1;
    }
    return line;
}

/// Whether rows below it would be lines.
bool OutlineRows::canShowBelow(int row) const
{
    return row < 0 || (m_open[std::size_t(row)] != 0 && lineOf(row) >= 0);
}

OutlineRows::NewLines OutlineRows::insert(int row, std::vector<TreeRow> rows)
{
    const auto at = std::size_t(row);
    const std::size_t more = rows.size();
    const bool hadNone = row > 0 && end(row - 1) == row;
    m_rows.insert(m_rows.begin() + row, std::make_move_iterator(rows.begin()),
                  std::make_move_iterator(rows.end()));
    number();
    std::vector<std::uint8_t> open(more);
    for (std::size_t fresh = 0; fresh < more; ++fresh) {
        open[fresh] = m_ends[at + fresh] > at + fresh + 1;
    }
    m_open.insert(m_open.begin() + row, open.begin(), open.end());
    if (m_isFiltered) {
        m_openBefore.insert(m_openBefore.begin() + row, open.begin(), open.end());
        m_kept.insert(m_kept.begin() + row, more, 0);
        if (hadNone && end(row - 1) > row) {
            m_open[at - 1] = true; // what the filter lets through is to be seen
        }
    }
    const auto line = std::lower_bound(m_lines.begin(), m_lines.end(), std::uint32_t(row));
    for (auto later = line; later != m_lines.end(); ++later) {
        *later += std::uint32_t(more);
    }
    NewLines result{int(line - m_lines.begin()), {}};
    if (!m_isFiltered) {
        // Row by row of the upper level: they may stand below several rows.
        for (std::size_t fresh = at; fresh < at + more; fresh = m_ends[fresh]) {
            if (canShowBelow(m_parents[fresh])) {
                collect(std::uint32_t(fresh), m_ends[fresh], result.rows);
            }
        }
    }
    return result;
}

void OutlineRows::show(const NewLines& lines)
{
    m_lines.insert(m_lines.begin() + lines.at, lines.rows.begin(), lines.rows.end());
}

OutlineRows::Run OutlineRows::linesOf(int row) const
{
    const auto first = std::lower_bound(m_lines.begin(), m_lines.end(), std::uint32_t(row));
    const auto last = std::lower_bound(first, m_lines.end(), std::uint32_t(end(row)));
    return {int(first - m_lines.begin()), int(last - first)};
}

OutlineRows::Run OutlineRows::linesBelow(int row) const
{
    const Run all = linesOf(row);
    return all.count == 0 ? all : Run{all.at + 1, all.count - 1};
}

void OutlineRows::hide(const Run& lines)
{
    const auto first = m_lines.begin() + lines.at;
    m_lines.erase(first, first + lines.count);
}

void OutlineRows::remove(int row)
{
    const int last = end(row);
    const int above = parent(row);
    const auto cut = [&](auto& values) {
        values.erase(values.begin() + row, values.begin() + last);
    };
    cut(m_rows);
    cut(m_open);
    if (m_isFiltered) {
        cut(m_openBefore);
        cut(m_kept);
    }
    for (auto later = std::lower_bound(m_lines.begin(), m_lines.end(), std::uint32_t(row));
         later != m_lines.end(); ++later) {
        *later -= std::uint32_t(last - row);
    }
    number();
    if (above >= 0 && end(above) == above + 1) {
        setOpen(above, false);
    }
}

void OutlineRows::setOpen(int row, bool open)
{
    open = open && end(row) > row + 1;
    m_open[std::size_t(row)] = open;
    if (m_isFiltered) {
        m_openBefore[std::size_t(row)] = open;
    }
}

OutlineRows::NewLines OutlineRows::linesToOpen(int row) const
{
    const int line = lineOf(row);
    NewLines result{line + 1, {}};
    if (line >= 0) {
        collect(std::uint32_t(row) + 1, m_ends[std::size_t(row)], result.rows);
    }
    return result;
}

void OutlineRows::setBranchOpen(int row, bool open)
{
    for (int below = row; below < end(row); ++below) {
        setOpen(below, open);
    }
}

void OutlineRows::foldTo(int level)
{
    for (int row = 0; row < count(); ++row) {
        setOpen(row, m_rows[std::size_t(row)].level < level);
    }
}

void OutlineRows::foldOnly(const std::vector<int>& rows)
{
    std::vector<std::uint8_t>& open = m_isFiltered ? m_openBefore : m_open;
    for (int row = 0; row < count(); ++row) {
        open[std::size_t(row)] = end(row) > row + 1;
    }
    for (const int row : rows) {
        open[std::size_t(row)] = false;
    }
}

std::vector<int> OutlineRows::folded() const
{
    const std::vector<std::uint8_t>& open = m_isFiltered ? m_openBefore : m_open;
    std::vector<int> result;
    for (int row = 0; row < count(); ++row) {
        if (open[std::size_t(row)] == 0 && end(row) > row + 1) {
            result.push_back(row);
        }
    }
    return result;
}

void OutlineRows::filter(const std::vector<std::uint32_t>& hits, bool keepFolds)
{
    if (!m_isFiltered) {
        m_openBefore = m_open;
    }
    if (!m_isFiltered || !keepFolds) {
        for (std::size_t row = 0; row < m_open.size(); ++row) {
            m_open[row] = m_ends[row] > row + 1;
        }
    }
    m_isFiltered = true;
    m_kept.assign(m_rows.size(), 0);
    for (const std::uint32_t hit : hits) {
        letThrough(int(hit));
    }
}

void OutlineRows::letThrough(int row)
{
    for (; row >= 0 && m_kept[std::size_t(row)] == 0; row = parent(row)) {
        m_kept[std::size_t(row)] = 1;
    }
}

void OutlineRows::endFilter()
{
    if (m_isFiltered) {
        m_open = std::move(m_openBefore);
        m_openBefore.clear();
        m_kept.clear();
        m_isFiltered = false;
    }
}

std::vector<std::uint32_t> OutlineRows::wantedLines() const
{
    std::vector<std::uint32_t> lines;
    lines.reserve(m_lines.size());
    collect(0, std::uint32_t(m_rows.size()), lines);
    return lines;
}

void OutlineRows::collect(std::uint32_t from,
                          std::uint32_t to,
                          std::vector<std::uint32_t>& lines) const
{
    for (std::uint32_t row = from; row < to;) {
        const bool shown = isShown(row);
        if (shown) {
            lines.push_back(row);
        }
        row = shown && m_open[row] != 0 ? row + 1 : m_ends[row];
    }
}

} // namespace melovane
