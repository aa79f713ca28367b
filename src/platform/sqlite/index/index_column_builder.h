#pragma once

#include "platform/sqlite/index/index_column.h"
#include "platform/sqlite/index/index_texts_builder.h"

namespace melovane::sqlite {

/// A number with what is asked of it to be sorted.
struct IndexNumberEntry
{
    double number = 0;

    [[nodiscard]] int compare(const IndexNumberEntry& other) const
    {
        return number < other.number ? -1 : (number > other.number ? 1 : 0);
    }

    [[nodiscard]] static std::size_t bytes() { return sizeof(double); }
};

/// Collects the cells of a column, row by row.
class IndexColumnBuilder
{
public:
    explicit IndexColumnBuilder(bool isText)
        : m_isText(isText)
    {}

    void addNull();

    void addText(std::string_view utf8) { m_texts.add(utf8); }

    void addNumber(double number);

    /// A cell that does not fit the column.
    void addForeign()
    {
        m_fits = false;
        addNull();
    }

    [[nodiscard]] bool isText() const { return m_isText; }

    /// Does now what a later row would wait for, if `coming` more rows could make one wait. False
    /// when there was nothing to do.
    [[nodiscard]] bool settle(std::size_t coming);

    /// To be called once, at the end: all that IndexColumnMaker does, at once.
    [[nodiscard]] std::shared_ptr<const IndexColumn> make();

private:
    friend class IndexColumnMaker;

    bool m_isText;
    bool m_fits = true;
    IndexTextsBuilder m_texts;
    IndexRuns<IndexNumberEntry> m_numbers;
};

/// Makes a column of the cells that were collected, bit by bit, other work in between.
class IndexColumnMaker
{
public:
    explicit IndexColumnMaker(IndexColumnBuilder builder);
    ~IndexColumnMaker() = default;
    IndexColumnMaker(const IndexColumnMaker&) = delete;
    IndexColumnMaker& operator=(const IndexColumnMaker&) = delete;

    /// Goes on for about a millisecond. False when the column is made.
    [[nodiscard]] bool step() { return m_work.step(); }

    /// The column. Only then, once.
    [[nodiscard]] std::shared_ptr<const IndexColumn> take();

private:
    void addNumbers();
    void addValues();
    void addRows();
    [[nodiscard]] const std::vector<std::vector<quint32>>& chunks();
    [[nodiscard]] std::size_t distinct();

    IndexColumnBuilder m_builder;
    SlicedWork m_work;
    std::vector<double> m_numbers;
    std::vector<quint32> m_values;
    std::vector<quint32> m_ends;
    std::vector<quint32> m_rows;
};

} // namespace melovane::sqlite
