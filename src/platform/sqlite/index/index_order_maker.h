#pragma once

#include "platform/sqlite/index/index_column.h"
#include "platform/sqlite/index/index_keys.h"
#include "platform/sqlite/index/sliced_work.h"

namespace melovane::sqlite {

/// Puts all rows of an index in an order, bit by bit, other work in between.
class IndexOrderMaker
{
public:
    struct Key
    {
        std::shared_ptr<const IndexColumn> column;
        bool descending = false;
    };

    /// \param keys the first decides first; rows that are equal in all keep the order of their ids
    IndexOrderMaker(std::vector<Key> keys, std::size_t rows);
    ~IndexOrderMaker() = default;
    IndexOrderMaker(const IndexOrderMaker&) = delete;
    IndexOrderMaker& operator=(const IndexOrderMaker&) = delete;

    /// Goes on for about a millisecond. False when the order is made.
    [[nodiscard]] bool step() { return m_work.step(); }

    /// The order. Only then, once.
    [[nodiscard]] std::shared_ptr<const IndexOrder> take();

private:
    void addSort(const Key& key);
    void addRoom();
    void addPlaces();

    std::size_t m_count;
    std::vector<Key> m_keys;
    SlicedWork m_work;
    std::vector<quint32> m_rows; ///< by the keys done so far
    std::vector<quint32> m_next; ///< the same with one key more, on its way; the places in the end
    std::vector<quint32> m_free; ///< of each value the place of its next row
};

} // namespace melovane::sqlite
