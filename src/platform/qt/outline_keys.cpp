#include "platform/qt/outline_keys.h"

#include <QHash>

#include <algorithm>

namespace melovane {

namespace {

std::uint32_t hashOf(const QString& key)
{
    return std::uint32_t(qHash(key) * 0x9E3779B97F4A7C15ULL >> 32);
}

/// Rows that memory is asked for before their turn comes.
constexpr std::size_t kAhead = 16;

} // namespace

int OutlineKeys::find(const std::vector<TreeRow>& rows, const QString& key)
{
    make(rows);
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

void OutlineKeys::make(const std::vector<TreeRow>& rows)
{
    if (!m_slots.empty()) {
        return;
    }
    std::size_t size = 64;
    while (size * 2 < rows.size() * 3) {
        size *= 2;
    }
    m_slots.assign(size, {});
    m_used = 0;
    m_hasTwins = false;
    // The keys and their slots lie all over memory: without asking ahead, waiting for them would be
    // nearly all of the time.
    std::vector<std::uint32_t> hashes(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        __builtin_prefetch(rows[std::min(row + kAhead, rows.size() - 1)].key.constData());
        hashes[row] = hashOf(rows[row].key);
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::uint32_t next = hashes[std::min(row + kAhead, rows.size() - 1)];
        __builtin_prefetch(&m_slots[next & (size - 1)], 1);
        add(rows, std::uint32_t(row), hashes[row]);
    }
}

void OutlineKeys::add(const std::vector<TreeRow>& rows, std::uint32_t row, std::uint32_t hash)
{
    const QString& key = rows[row].key;
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
    if ((m_used + std::size_t(count)) * 5 > m_slots.size() * 4) {
        clear(); // too full
        return;
    }
    for (Slot& slot : m_slots) {
        if (slot.row < kGone && slot.row >= std::uint32_t(at)) {
            slot.row += std::uint32_t(count);
        }
    }
    for (int row = at; row < at + count; ++row) {
        add(rows, std::uint32_t(row), hashOf(rows[std::size_t(row)].key));
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
