#include "platform/sqlite/index/index_order_maker.h"

namespace melovane::sqlite {

namespace {

constexpr std::size_t kItemsAtOnce = 131'072;

/// Of rows that are put to places all over the memory.
constexpr std::size_t kPlacedAtOnce = 65'536;

} // namespace

IndexOrderMaker::IndexOrderMaker(std::vector<Key> keys, std::size_t rows)
    : m_count(rows)
    , m_keys(std::move(keys))
{
    m_work.add(
        [this] {
            m_rows.reserve(m_count);
            return m_count;
        },
        kItemsAtOnce,
        [this](std::size_t first, std::size_t end) {
            for (std::size_t row = first; row < end; ++row) {
                m_rows.push_back(quint32(row));
            }
        });
    // The last key first: later sorts keep what the former ones did.
    for (auto key = m_keys.rbegin(); key != m_keys.rend(); ++key) {
        addSort(*key);
    }
    addPlaces();
}

void IndexOrderMaker::addSort(const Key& key)
{
    addRoom();
    // How many rows each value has is known, so every row goes to its place at once.
    m_work.add(
        [this, &key] {
            m_free = key.column->firstPlaces(key.descending);
            return m_count;
        },
        kPlacedAtOnce,
        [this, &key](std::size_t first, std::size_t end) {
            for (std::size_t at = first; at < end; ++at) {
                m_next[m_free[key.column->valueOf(m_rows[at])]++] = m_rows[at];
            }
            if (end == m_count) {
                std::swap(m_rows, m_next);
            }
        });
}

void IndexOrderMaker::addRoom()
{
    m_work.add(
        [this] {
            m_next.reserve(m_count);
            return m_count - m_next.size();
        },
        kItemsAtOnce,
        [this](std::size_t first, std::size_t end) { m_next.resize(m_next.size() + end - first); });
}

void IndexOrderMaker::addPlaces()
{
    addRoom();
    m_work.add([this] { return m_count; }, kPlacedAtOnce,
               [this](std::size_t first, std::size_t end) {
                   for (std::size_t place = first; place < end; ++place) {
                       m_next[m_rows[place]] = quint32(place);
                   }
               });
}

std::shared_ptr<const IndexOrder> IndexOrderMaker::take()
{
    return std::make_shared<IndexOrder>(
        IndexOrder{IndexArray(std::move(m_rows)), IndexArray(std::move(m_next))});
}

} // namespace melovane::sqlite
