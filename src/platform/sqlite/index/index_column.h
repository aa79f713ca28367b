#pragma once

#include "platform/sqlite/index/index_bits.h"
#include "platform/sqlite/index/index_test.h"
#include "platform/sqlite/index/index_texts.h"

namespace melovane::sqlite {

/// What a column consists of, for keeping it elsewhere. Of texts and numbers one is empty.
struct IndexColumnParts
{
    bool isText = true;
    bool fits = true;
    IndexArray<char> letters;
    IndexArray<quint32> textEnds;
    IndexArray<double> numbers;
    IndexArray<quint32> values;
    IndexArray<quint32> ends;
    IndexArray<quint32> rows;
};

/// One column of the searched table: its distinct values in their order, and which row holds which.
/// Rows are numbered from 0 in the order of their row ids. Never changes once made.
class IndexColumn
{
public:
    /// A value's number: 0 is null, the others count from 1 in their order.
    [[nodiscard]] quint32 valueOf(quint32 row) const { return m_values[row]; }

    /// False when a cell is none that a column of this type holds: comparisons and order are then
    /// SQLite's alone.
    [[nodiscard]] bool fits() const { return m_fits; }

    /// Adds the rows that pass the test.
    void mark(const IndexTest& test, IndexBits& rows) const;

    /// For putting rows in the order of this column: of each value the place of its first row.
    [[nodiscard]] std::vector<quint32> firstPlaces(bool descending) const;

    /// Where a cell stands among the values: twice the number of its value, or one less than twice
    /// the number of the next value when no row has it.
    [[nodiscard]] quint32 placeOf(const IndexCell& cell) const;

    /// The order of two cells.
    [[nodiscard]] static int compare(const IndexCell& left, const IndexCell& right);

    /// Roughly the memory that it takes.
    [[nodiscard]] qint64 bytes() const;

    [[nodiscard]] IndexColumnParts parts() const;

    /// The column of these parts; null when they would lead outside themselves, do not agree with
    /// each other or do not belong to so many rows.
    [[nodiscard]] static std::shared_ptr<const IndexColumn> fromParts(IndexColumnParts parts,
                                                                      std::size_t rows);

private:
    friend class IndexColumnMaker;

    void addTexts(const IndexTest& test, IndexBits& values) const;
    void addNumbers(const IndexTest& test, IndexBits& values) const;

    bool m_isText = true;
    bool m_fits = true;
    IndexTexts m_texts;           ///< value n is text n - 1
    IndexArray<double> m_numbers; ///< value n is number n - 1
    IndexArray<quint32> m_values; ///< of each row
    IndexArray<quint32> m_ends;   ///< of each value the place behind its last row in m_rows
    IndexArray<quint32> m_rows;   ///< by value, within a value ascending
};

} // namespace melovane::sqlite
