#include "trees/spellings.h"

#include "platform/db/row_walk.h"
#include "platform/db/text_compare.h"

#include <algorithm>
#include <numeric>

namespace melovane {

namespace {

constexpr std::size_t kFirstSlots = 64;

/// True when so many keys leave too few places free for short ways.
bool isFull(std::size_t used, std::size_t places)
{
    return (used + 1) * 3 > places * 2;
}

std::uint64_t mixed(std::uint64_t key)
{
    key *= 0x9E3779B97F4A7C15U;
    return key ^ (key >> 32U);
}

} // namespace

std::uint32_t PlaceMap::placeOf(std::uint64_t key, std::uint32_t next)
{
    if (isFull(m_used, m_slots.size())) {
        grow();
    }
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = mixed(key) & mask;; at = (at + 1) & mask) {
        Slot& slot = m_slots[at];
        if (slot.place == 0) {
            slot = {key, next + 1};
            ++m_used;
            return next;
        }
        if (slot.key == key) {
            return slot.place - 1;
        }
    }
}

void PlaceMap::grow()
{
    std::vector<Slot> former(std::max(kFirstSlots, m_slots.size() * 2));
    former.swap(m_slots);
    const std::size_t mask = m_slots.size() - 1;
    for (const Slot& slot : former) {
        if (slot.place != 0) {
            std::size_t at = mixed(slot.key) & mask;
            while (m_slots[at].place != 0) {
                at = (at + 1) & mask;
            }
            m_slots[at] = slot;
        }
    }
}

Spellings::Spellings()
    : m_texts{QString()}
{}

std::string_view Spellings::bytesOf(const Slot& slot) const
{
    return {m_bytes.data() + slot.begin, slot.size};
}

void Spellings::read(const WalkedRow& row, int column)
{
    const std::string_view bytes = row.bytes(column);
    if (bytes.empty()) {
        m_last = {};
        return;
    }
    // Tracks of one album or folder mostly stand together.
    if (bytes.size() == m_last.size && bytes == bytesOf(m_last)) {
        return;
    }
    if (isFull(m_texts.size(), m_slots.size())) {
        grow();
    }
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = std::hash<std::string_view>()(bytes) & mask;; at = (at + 1) & mask) {
        Slot& slot = m_slots[at];
        if (slot.number == 0) {
            slot = {m_bytes.size(), std::uint32_t(bytes.size()), std::uint32_t(m_texts.size())};
            m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
            m_texts.push_back(row.text(column));
        } else if (bytesOf(slot) != bytes) {
            continue;
        }
        m_last = slot;
        return;
    }
}

void Spellings::grow()
{
    std::vector<Slot> former(std::max(kFirstSlots, m_slots.size() * 2));
    former.swap(m_slots);
    const std::size_t mask = m_slots.size() - 1;
    for (const Slot& slot : former) {
        if (slot.number != 0) {
            std::size_t at = std::hash<std::string_view>()(bytesOf(slot)) & mask;
            while (m_slots[at].number != 0) {
                at = (at + 1) & mask;
            }
            m_slots[at] = slot;
        }
    }
}

const std::vector<std::uint32_t>& Spellings::ranks() const
{
    if (m_ranks.size() == m_texts.size()) {
        return m_ranks;
    }
    std::vector<QString> keys;
    keys.reserve(m_texts.size());
    for (const QString& text : m_texts) {
        keys.push_back(textcompare::sortKey(text));
    }
    std::vector<std::uint32_t> order(m_texts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
    m_ranks.assign(m_texts.size(), 0);
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[order[i - 1]] != keys[order[i]]) {
            ++rank;
        }
        m_ranks[order[i]] = rank;
    }
    return m_ranks;
}

} // namespace melovane
