#pragma once

#include "platform/controls/tree_control.h"

#include <cstdint>
#include <vector>

namespace melovane {

/// Finds rows by their keys in one step, made when first asked and kept while rows come and go.
/// `rows` is always all rows of the outline as they are.
class OutlineKeys
{
public:
    /// Nothing happens when it is done already.
    void make(const std::vector<TreeRow>& rows);

    /// The first row of a key, or -1.
    [[nodiscard]] int find(const std::vector<TreeRow>& rows, const QString& key);

    /// All rows, or the key of one, have become others.
    void clear() { m_slots.clear(); }

    /// Rows have come in front of that one.
    void inserted(const std::vector<TreeRow>& rows, int at, int count);
    /// Rows have gone.
    void removed(int at, int count);

private:
    struct Slot
    {
        std::uint32_t row = kFree;
        std::uint32_t hash = 0;
    };

    static constexpr std::uint32_t kFree = 0xFFFFFFFF;
    static constexpr std::uint32_t kGone = 0xFFFFFFFE;

    void add(const std::vector<TreeRow>& rows, std::uint32_t row, std::uint32_t hash);

    std::vector<Slot> m_slots; ///< a power of two of them; empty while not made
    std::size_t m_used = 0;    ///< slots that are not free
    bool m_hasTwins = false;   ///< of some keys only the first row is kept
};

} // namespace melovane
