#pragma once

#include <memory>
#include <span>
#include <vector>

namespace melovane::sqlite {

/// Items that never change, in memory of their own or in a part of something larger that they keep
/// alive. Copies share the items.
template <typename Item> class IndexArray
{
public:
    IndexArray() = default;

    explicit IndexArray(std::vector<Item> items)
    {
        auto owned = std::make_shared<const std::vector<Item>>(std::move(items));
        m_items = *owned;
        m_owner = std::move(owned);
    }

    IndexArray(std::shared_ptr<const void> owner, std::span<const Item> items)
        : m_owner(std::move(owner))
        , m_items(items)
    {}

    [[nodiscard]] std::size_t size() const { return m_items.size(); }

    [[nodiscard]] const Item* data() const { return m_items.data(); }

    [[nodiscard]] const Item* begin() const { return m_items.data(); }

    [[nodiscard]] const Item* end() const { return m_items.data() + m_items.size(); }

    const Item& operator[](std::size_t index) const { return m_items[index]; }

private:
    std::shared_ptr<const void> m_owner;
    std::span<const Item> m_items;
};

} // namespace melovane::sqlite
