#include "trees/spellings.h"

#include "platform/db/kept_text.h"
#include "trees/text_ranks.h"
#include "trees/track_block.h"

#include <algorithm>
#include <cstring>
#include <functional>

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

/// Begins to bring the place into the cache.
void fetch(const void* place)
{
    __builtin_prefetch(place);
}

} // namespace

void PairTally::add(std::uint64_t key)
{
    if (isFull(m_used, m_slots.size())) {
        grow();
    }
    Entry& entry = entryOf(key);
    if (entry.count == 0) {
        entry.key = key;
        entry.met = m_used++;
    }
    ++entry.count;
}

void PairTally::fetch(std::uint64_t key) const
{
    if (!m_slots.empty()) {
        melovane::fetch(&m_slots[mixed(key) & (m_slots.size() - 1)]);
    }
}

/// The place of the key, or the one that it is to take.
PairTally::Entry& PairTally::entryOf(std::uint64_t key)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = mixed(key) & mask;
    while (m_slots[at].count != 0 && m_slots[at].key != key) {
        at = (at + 1) & mask;
    }
    return m_slots[at];
}

void PairTally::grow()
{
    std::vector<Entry> former(std::max(kFirstSlots, m_slots.size() * 2));
    former.swap(m_slots);
    for (const Entry& entry : former) {
        if (entry.count != 0) {
            entryOf(entry.key) = entry;
        }
    }
}

std::vector<PairTally::Entry> PairTally::entries() const
{
    std::vector<Entry> entries;
    entries.reserve(m_used);
    std::copy_if(m_slots.begin(), m_slots.end(), std::back_inserter(entries),
                 [](const Entry& entry) { return entry.count != 0; });
    return entries;
}

Spellings::Spellings()
    : m_texts{QString()}
{}

std::string_view Spellings::bytesOf(const Slot& slot) const
{
    std::uint32_t size = 0;
    std::memcpy(&size, m_bytes.data() + slot.begin, sizeof size);
    return {m_bytes.data() + slot.begin + sizeof size, size};
}

/// First all places are told that are looked at in the end, so that they come while others are
/// looked at.
void Spellings::read(const TrackBlock& block, std::size_t column)
{
    m_areEmpty = block.isEmpty(column);
    m_numbers.assign(block.size(), 0);
    if (m_areEmpty) {
        return;
    }
    makeRoom(block.size());
    const std::size_t mask = m_slots.size() - 1;
    m_hashes.resize(block.size());
    for (std::size_t row = 0; row < block.size(); ++row) {
        m_hashes[row] = std::uint32_t(std::hash<std::string_view>()(block.text(column, row)));
        fetch(&m_slots[m_hashes[row] & mask]);
    }
    for (const std::uint32_t hash : m_hashes) {
        fetch(m_bytes.data() + m_slots[hash & mask].begin);
    }
    for (std::size_t row = 0; row < block.size(); ++row) {
        if (block.isRepeated(column, row)) {
            m_numbers[row] = m_numbers[row - 1];
        } else if (const std::string_view text = block.text(column, row); !text.empty()) {
            m_numbers[row] = numberOf(text, m_hashes[row]);
        }
    }
}

std::uint32_t Spellings::numberOf(std::string_view text, std::uint32_t hash)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    for (; m_slots[at].number != 0; at = (at + 1) & mask) {
        if (m_slots[at].hash == hash && bytesOf(m_slots[at]) == text) {
            return m_slots[at].number;
        }
    }
    const auto number = std::uint32_t(m_texts.size());
    m_slots[at] = {m_bytes.size(), hash, number};
    const auto size = std::uint32_t(text.size());
    const auto* const sizeBytes = reinterpret_cast<const char*>(&size);
    m_bytes.insert(m_bytes.end(), sizeBytes, sizeBytes + sizeof size);
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
    m_texts.push_back(keptText(text));
    return number;
}

/// For so many further texts.
void Spellings::makeRoom(std::size_t texts)
{
    std::size_t places = std::max(kFirstSlots, m_slots.size());
    while (isFull(m_texts.size() + texts, places)) {
        places *= 2;
    }
    if (places == m_slots.size()) {
        return;
    }
    std::vector<Slot> former(places);
    former.swap(m_slots);
    for (const Slot& slot : former) {
        if (slot.number != 0) {
            std::size_t at = slot.hash & (places - 1);
            while (m_slots[at].number != 0) {
                at = (at + 1) & (places - 1);
            }
            m_slots[at] = slot;
        }
    }
}

const std::vector<std::uint32_t>& Spellings::ranks() const
{
    if (m_ranks.size() != m_texts.size()) {
        m_ranks = textRanks(m_texts);
    }
    return m_ranks;
}

} // namespace melovane
