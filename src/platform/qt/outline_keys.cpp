#include "platform/qt/outline_keys.h"

#include <QHash>

namespace melovane {

namespace {

std::uint32_t hashOf(const QString& key)
{
    return std::uint32_t(qHash(key) * 0x9E3779B97F4A7C15ULL >> 32);
}

} // namespace

int OutlineKeys::find(const std::vector<TreeRow>& rows, const QString& key)
{
    if (m_slots.empty()) {
        build(rows);
    }
    const std::uint32_t hash = hashOf(key);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].row != kFree; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.row != kGone && slot.hash == hash && rows[slot.row].key == key) {
            return int(slot.row);
        }
    }
    return -1;
}

void OutlineKeys::build(const std::vector<TreeRow>& rows)
{
    std::size_t size = 64;
    while (size < rows.size() * 2) {
        size *= 2;
    }
    m_slots.assign(size, {});
    m_used = 0;
    m_hasTwins = false;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        add(rows, std::uint32_t(row));
    }
}

void OutlineKeys::add(const std::vector<TreeRow>& rows, std::uint32_t row)
{
    const QString& key = rows[row].key;
    const std::uint32_t hash = hashOf(key);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    while (m_slots[at].row != kFree) {
        Slot& slot = m_slots[at];
        if (slot.row != kGone && slot.hash == hash && rows[slot.row].key == key) {
            m_hasTwins = true;
            slot.row = std::min(slot.row, row);
            return;
        }
        at = (at + 1) & mask;
    }
    m_slots[at] = {row, hash};
    ++m_used;
}

void OutlineKeys::inserted(const std::vector<TreeRow>& rows, int at, int count)
{
    if (m_slots.empty()) {
        return;
    }
    if ((m_used + std::size_t(count)) * 3 > m_slots.size() * 2) {
        clear(); // too full
        return;
    }
    for (Slot& slot : m_slots) {
        if (slot.row < kGone && slot.row >= std::uint32_t(at)) {
            slot.row += std::uint32_t(count);
        }
    }
    for (int row = at; row < at + count; ++row) {
        add(rows, std::uint32_t(row));
    }
}

void OutlineKeys::removed(int at, int count)
{
    if (m_hasTwins) {
        clear(); // one that goes may have hidden a later one
        return;
    }
    const auto first = std::uint32_t(at);
    const auto last = std::uint32_t(at + count);
    for (Slot& slot : m_slots) {
        if (slot.row >= kGone || slot.row < first) {
            continue;
        }
        slot.row = slot.row < last ? kGone : slot.row - std::uint32_t(count);
    }
}

} // namespace melovane
