#include "platform/sqlite/index/index_keys.h"

#include <algorithm>

namespace melovane::sqlite {

IndexedKeys::IndexedKeys(IndexArray<qint64> keys,
                         std::shared_ptr<const IndexOrder> order,
                         IndexBits places,
                         std::vector<Extra> extras)
    : m_keys(std::move(keys))
    , m_order(std::move(order))
    , m_places(std::move(places))
    , m_extras(std::move(extras))
{
    qint64 before = 0;
    for (Extra& extra : m_extras) {
        extra.place = m_places.rank(extra.place) + before++;
    }
}

qint64 IndexedKeys::count() const
{
    return m_places.count() + qint64(m_extras.size());
}

qint64 IndexedKeys::keyAt(qint64 row, [[maybe_unused]] int table) const
{
    const auto extra =
        std::lower_bound(m_extras.begin(), m_extras.end(), row,
                         [](const Extra& left, qint64 right) { return left.place < right; });
    if (extra != m_extras.end() && extra->place == row) {
        return extra->key;
    }
    const qint64 place = m_places.select(row - (extra - m_extras.begin()));
    return m_keys[m_order ? m_order->rowAt[std::size_t(place)] : std::size_t(place)];
}

qint64 IndexedKeys::rowOf(qint64 key, [[maybe_unused]] int table) const
{
    for (const Extra& extra : m_extras) {
        if (extra.key == key) {
            return extra.place;
        }
    }
    const qint64* found = std::lower_bound(m_keys.begin(), m_keys.end(), key);
    if (found == m_keys.end() || *found != key) {
        return -1;
    }
    const auto row = std::size_t(found - m_keys.begin());
    const qint64 place = m_order ? m_order->placeOf[row] : qint64(row);
    if (!m_places.test(place)) {
        return -1;
    }
    qint64 position = m_places.rank(place);
    for (const Extra& extra : m_extras) {
        position += extra.place <= position ? 1 : 0;
    }
    return position;
}

} // namespace melovane::sqlite
