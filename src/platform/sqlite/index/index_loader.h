#pragma once

#include "platform/sqlite/index/indexed_file.h"

namespace melovane::sqlite {

/// Builders for these columns, in their order.
[[nodiscard]] std::vector<IndexColumnBuilder> buildersOf(const std::vector<IndexField>& fields);

/// Reads the whole table bit by bit, other work in between. What is written meanwhile may or may
/// not be seen: the log tells of it.
class IndexLoader
{
public:
    /// \param order the order to have at hand in the end; one with other columns is not made
    IndexLoader(std::vector<IndexField> fields, std::vector<SearchOrder> order);

    [[nodiscard]] const std::vector<IndexField>& fields() const { return m_fields; }

    /// Goes on for some milliseconds. False at the end.
    [[nodiscard]] bool step(IndexedFile& file);

    /// Only at the end.
    [[nodiscard]] std::unique_ptr<IndexTable> take() { return std::move(m_table); }

private:
    [[nodiscard]] bool settle();
    void read(IndexedFile& file);
    [[nodiscard]] bool make();
    [[nodiscard]] bool makeColumn();
    [[nodiscard]] bool makeOrder();

    std::vector<IndexField> m_fields;
    std::vector<SearchOrder> m_order;
    std::vector<IndexColumnBuilder> m_builders;
    std::vector<qint64> m_keys;
    std::unique_ptr<IndexTable> m_table;        ///< once all rows are read
    std::unique_ptr<IndexColumnMaker> m_column; ///< of the next column
    bool m_isMade = false;                      ///< that column waits to be taken
    std::unique_ptr<IndexOrderMaker> m_maker;   ///< of the order, behind all columns
};

} // namespace melovane::sqlite
