#pragma once

#include "platform/sqlite/index/index_array.h"
#include "platform/sqlite/index/index_bits.h"
#include "platform/sqlite/index/key_source.h"

namespace melovane::sqlite {

/// All rows of an index in one order; shared by all searches that show it.
struct IndexOrder
{
    IndexArray<quint32> rowAt;   ///< of each place
    IndexArray<quint32> placeOf; ///< of each row
};

/// What a search found, in order: a bit per place, and the rows that changed since the order was
/// made, each with its position in the result.
class IndexedKeys : public KeySource
{
public:
    struct Extra
    {
        qint64 place = 0; ///< rows of the order that stand in front of it; later its position
        qint64 key = 0;
    };

    /// \param order null for the order of the rows themselves
    /// \param extras as they follow each other
    IndexedKeys(IndexArray<qint64> keys,
                std::shared_ptr<const IndexOrder> order,
                IndexBits places,
                std::vector<Extra> extras);

    [[nodiscard]] qint64 count() const override;
    [[nodiscard]] qint64 keyAt(qint64 row, int table) const override;
    [[nodiscard]] qint64 rowOf(qint64 key, int table) const override;

private:
    IndexArray<qint64> m_keys; ///< row ids, ascending
    std::shared_ptr<const IndexOrder> m_order;
    RankedBits m_places;
    std::vector<Extra> m_extras; ///< place: position in the result
};

} // namespace melovane::sqlite
