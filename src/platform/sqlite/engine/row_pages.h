#pragma once

#include "platform/db/value.h"

#include <list>
#include <vector>

namespace melovane::sqlite {

/// One row as it was when it was fetched.
struct Row
{
    enum class State
    {
        Unknown, ///< to be fetched
        Present,
        Gone ///< deleted by now
    };

    State state = State::Unknown;
    std::vector<Value> cells;
};

/// Fetched rows, a few pages of neighbours; the page used longest ago makes room.
class RowPages
{
public:
    /// Rows of a page: few, because a look that begins or ends inside one reads it all.
    static constexpr qint64 kPageRows = 8;

    /// The row's place in a kept page, or null.
    [[nodiscard]] Row* find(qint64 row);

    /// The kept page that holds the row, or null.
    [[nodiscard]] std::vector<Row>* page(qint64 row);

    /// Makes a page for the rows [first, first + count), all Unknown, and returns them. `first` is
    /// a multiple of kPageRows.
    std::vector<Row>& add(qint64 first, qint64 count);

    void clear() { m_pages.clear(); }

private:
    static constexpr std::size_t kMostPages = 64;

    struct Page
    {
        qint64 first = 0;
        std::vector<Row> rows;
    };

    std::list<Page> m_pages; ///< used last stands first
};

} // namespace melovane::sqlite
