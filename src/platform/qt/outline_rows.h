#pragma once

#include "platform/controls/tree_control.h"

#include <cstdint>
#include <vector>

namespace melovane {

/// All rows of an outline, what is folded, and the lines: the rows that are neither folded away nor
/// left out by the filter, from top to bottom. Packed arrays, so that 300,000 rows are folded or
/// filtered in milliseconds.
///
/// Rows and lines are counted from 0. What takes a row number expects one that `has` knows.
class OutlineRows
{
public:
    /// Lines that are to be put in front of another one.
    struct NewLines
    {
        int at = 0;
        std::vector<std::uint32_t> rows;
    };

    /// A run of lines; empty when `count` is 0.
    struct Run
    {
        int at = 0;
        int count = 0;
    };

    /// These rows and no others, all open, without a filter.
    /// \return those that there were
    std::vector<TreeRow> setAll(std::vector<TreeRow> rows);

    [[nodiscard]] int count() const { return int(m_rows.size()); }

    [[nodiscard]] bool has(int row) const { return row >= 0 && row < count(); }

    [[nodiscard]] const TreeRow& row(int row) const { return m_rows[std::size_t(row)]; }

    [[nodiscard]] const std::vector<TreeRow>& all() const { return m_rows; }

    /// The row keeps its level.
    void setRow(int row, const TreeRow& value);

    /// The first row behind those below a row.
    [[nodiscard]] int end(int row) const { return int(m_ends[std::size_t(row)]); }

    /// The row that it stands below, or -1.
    [[nodiscard]] int parent(int row) const { return m_parents[std::size_t(row)]; }

    /// Whether there are rows below it that the filter lets through.
    [[nodiscard]] bool isParent(int row) const;
    [[nodiscard]] bool isOpen(int row) const;

    [[nodiscard]] int lineCount() const { return int(m_lines.size()); }

    [[nodiscard]] int rowOfLine(int line) const { return int(m_lines[std::size_t(line)]); }

    /// -1 for a row that is no line.
    [[nodiscard]] int lineOf(int row) const;
    /// Of the row, or of the nearest one above it that has one; -1 when none has.
    [[nodiscard]] int nearestLine(int row) const;

    /// Puts rows in front of another; the lines are numbered anew but have none of them yet.
    [[nodiscard]] NewLines insert(int row, std::vector<TreeRow> rows);
    void show(const NewLines& lines);

    /// The lines of a row and of those below it.
    [[nodiscard]] Run linesOf(int row) const;
    /// The lines below a row.
    [[nodiscard]] Run linesBelow(int row) const;
    void hide(const Run& lines);
    /// Takes a row and those below it away; their lines are hidden before.
    void remove(int row);

    /// Only says so; the lines are put right by hide() or show(). A row without any below it stays
    /// closed.
    void setOpen(int row, bool open);
    /// The lines that an open row has below it and does not show yet.
    [[nodiscard]] NewLines linesToOpen(int row) const;
    /// Opens or folds a row and all below it; collect() then.
    void setBranchOpen(int row, bool open);
    /// Folds the rows of a level and of deeper ones, opens all others; collect() then.
    void foldTo(int level);
    /// Folds these rows and opens all others; collect() then.
    void foldOnly(const std::vector<int>& rows);
    /// The rows that are folded, whatever the filter opens.
    [[nodiscard]] std::vector<int> folded() const;

    [[nodiscard]] bool isFiltered() const { return m_isFiltered; }

    /// Leaves only these rows (rising) and those above them; what is folded is remembered.
    /// collect() then. \param keepFolds with a filter already there: what the user folded in it
    /// stays
    void filter(const std::vector<std::uint32_t>& hits, bool keepFolds = false);
    /// Lets a row and those above it through the filter as well; collect() then.
    void letThrough(int row);
    void endFilter();

    /// The rows that are to be lines now.
    [[nodiscard]] std::vector<std::uint32_t> wantedLines() const;

    [[nodiscard]] const std::vector<std::uint32_t>& lines() const { return m_lines; }

    /// Makes the lines anew.
    void collect() { m_lines = wantedLines(); }

private:
    void number();
    void collect(std::uint32_t from, std::uint32_t to, std::vector<std::uint32_t>& lines) const;

    [[nodiscard]] bool isShown(std::size_t row) const { return !m_isFiltered || m_kept[row] != 0; }

    [[nodiscard]] bool canShowBelow(int row) const;

    std::vector<TreeRow> m_rows;
    std::vector<std::uint32_t> m_ends;
    std::vector<std::int32_t> m_parents;
    std::vector<std::uint8_t> m_open;
    std::vector<std::uint8_t> m_openBefore; ///< without the filter
    std::vector<std::uint8_t> m_kept;       ///< what the filter lets through
    std::vector<std::uint32_t> m_lines;     ///< rows
    bool m_isFiltered = false;
};

} // namespace melovane
