#include "platform/sqlite/engine/row_pages.h"

#include <algorithm>

namespace melovane::sqlite {

std::vector<Row>* RowPages::page(qint64 row)
{
    const qint64 first = row - row % kPageRows;
    const auto page = std::find_if(m_pages.begin(), m_pages.end(),
                                   [&](const Page& candidate) { return candidate.first == first; });
    if (page == m_pages.end() || row - first >= qint64(page->rows.size())) {
        return nullptr;
    }
    m_pages.splice(m_pages.begin(), m_pages, page);
    return &page->rows;
}

Row* RowPages::find(qint64 row)
{
    std::vector<Row>* rows = page(row);
    return rows ? &(*rows)[std::size_t(row % kPageRows)] : nullptr;
}

std::vector<Row>& RowPages::add(qint64 first, qint64 count)
{
    m_pages.remove_if([&](const Page& page) { return page.first == first; });
    if (m_pages.size() >= kMostPages) {
        m_pages.pop_back();
    }
    m_pages.push_front({first, std::vector<Row>(std::size_t(count))});
    return m_pages.front().rows;
}

} // namespace melovane::sqlite
