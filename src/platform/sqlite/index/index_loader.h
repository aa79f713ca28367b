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
    explicit IndexLoader(std::vector<IndexField> fields);

    [[nodiscard]] const std::vector<IndexField>& fields() const { return m_fields; }

    /// Goes on for some milliseconds (longer while a large column is sorted). False at the end.
    [[nodiscard]] bool step(IndexedFile& file);

    /// Only at the end.
    [[nodiscard]] std::unique_ptr<IndexTable> take() { return std::move(m_table); }

private:
    std::vector<IndexField> m_fields;
    std::vector<IndexColumnBuilder> m_builders;
    std::vector<qint64> m_keys;
    std::unique_ptr<IndexTable> m_table; ///< once all rows are read
};

} // namespace melovane::sqlite
