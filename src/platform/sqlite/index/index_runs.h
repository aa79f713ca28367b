#pragma once

#include "platform/sqlite/index/sliced_work.h"

#include <QtGlobal>

#include <algorithm>
#include <memory>
#include <vector>

namespace melovane::sqlite {

/// Numbers the distinct values of rows by their order, without ever sorting or moving all of them
/// at once: some thousand rows make a run of values in ascending order, and runs are merged, two by
/// two.
///
/// \tparam Entry a value, with `compare()` to another and `bytes()`, what it takes in the end
template <typename Entry> class IndexRuns
{
public:
    /// Rows of a run: sorting their values takes two milliseconds, and what is needed for it stays
    /// in the processor's cache.
    static constexpr std::size_t kMostRows = 16'384;

    IndexRuns()
        : m_table(kTableSize)
    {}

    void addNull()
    {
        m_values.push_back(0);
        closeWhenFull();
    }

    /// Adds a row.
    /// \param isSame whether an entry with the same hash, or one that is alike, is the value
    /// \param make the entry, for a value that the run has not met
    template <typename IsSame, typename Make>
    void add(quint32 hash, const IsSame& isSame, const Make& make)
    {
        const quint32 tag = hash & ~kNumberMask;
        std::size_t place = (hash ^ hash >> 16) & (kTableSize - 1);
        quint32 number = 0;
        for (; m_table[place] != 0 && number == 0; place = (place + 1) & (kTableSize - 1)) {
            const quint32 known = m_table[place] & kNumberMask;
            if (((m_table[place] ^ tag) & ~kNumberMask) == 0 && isSame(m_fresh[known - 1].entry)) {
                number = known;
            }
        }
        if (number == 0) {
            number = quint32(m_fresh.size() + 1);
            m_fresh.push_back({make(), number});
            m_table[place] = tag | number;
        }
        m_values.push_back(number);
        closeWhenFull();
    }

    /// Rows that no run holds yet.
    [[nodiscard]] std::size_t openRows() const { return m_values.size(); }

    /// Makes a run of them: two milliseconds for kMostRows.
    void close()
    {
        if (m_values.empty()) {
            return;
        }
        std::sort(m_fresh.begin(), m_fresh.end(), [](const Fresh& left, const Fresh& right) {
            return left.entry.compare(right.entry) < 0;
        });
        std::vector<quint32> places(m_fresh.size() + 1);
        std::vector<Entry> entries;
        entries.reserve(m_fresh.size());
        for (const Fresh& fresh : m_fresh) {
            entries.push_back(fresh.entry);
            places[fresh.number] = quint32(entries.size());
            m_bytes += fresh.entry.bytes();
        }
        renumber(m_values, places);
        m_runs.push_back(std::move(entries));
        m_chunks.push_back(std::move(m_values));
        m_values = {};
        m_values.reserve(kMostRows);
        m_fresh.clear();
        std::fill(m_table.begin(), m_table.end(), 0U);
    }

    /// Adds the work behind which entries() and chunks() tell of all rows. Until it is done, the
    /// runs stay where they are in memory.
    void merge(SlicedWork& work)
    {
        close();
        m_table = {};
        m_fresh = {};
        mergeRuns(work, 0, m_runs.size());
    }

    /// All distinct values, ascending. Behind the merge only.
    [[nodiscard]] const std::vector<Entry>& entries() const
    {
        static const std::vector<Entry> kNone;
        return m_runs.empty() ? kNone : m_runs.front();
    }

    /// Of each row the place of its value, counted from 1, or 0 for null; some thousand rows each.
    [[nodiscard]] const std::vector<std::vector<quint32>>& chunks() const { return m_chunks; }

    /// What all entries take.
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }

private:
    struct Fresh
    {
        Entry entry;
        quint32 number; ///< in the run, by first sight, from 1
    };

    static constexpr std::size_t kTableSize = 2 * kMostRows;
    /// A place of the table: the number in its low bits, bits of the hash above.
    static constexpr quint32 kNumberMask = kTableSize - 1;
    static constexpr std::size_t kMergedAtOnce = 8192;
    static constexpr std::size_t kChunksAtOnce = 16;

    static void renumber(std::vector<quint32>& values, const std::vector<quint32>& places)
    {
        for (quint32& value : values) {
            value = places[value];
        }
    }

    void closeWhenFull()
    {
        if (m_values.size() == kMostRows) {
            close();
        }
    }

    void mergeRuns(SlicedWork& work, std::size_t first, std::size_t end)
    {
        if (end - first < 2) {
            return;
        }
        const std::size_t middle = first + (end - first) / 2;
        mergeRuns(work, first, middle);
        mergeRuns(work, middle, end);
        work.add([this, first, middle] { return beginMerge(first, middle); }, kMergedAtOnce,
                 [this, first, middle](std::size_t, std::size_t stop) {
                     mergeUntil(m_runs[first], m_runs[middle], stop);
                 });
        work.add([this, first, middle, end] { return endMerge(first, middle, end); }, kChunksAtOnce,
                 [this, first, middle](std::size_t from, std::size_t stop) {
                     for (std::size_t chunk = first + from; chunk < first + stop; ++chunk) {
                         renumber(m_chunks[chunk], chunk < middle ? m_leftPlaces : m_rightPlaces);
                     }
                 });
    }

    std::size_t beginMerge(std::size_t first, std::size_t middle)
    {
        const std::size_t left = m_runs[first].size();
        const std::size_t right = m_runs[middle].size();
        m_merged.reserve(left + right);
        m_leftPlaces.reserve(left + 1);
        m_leftPlaces.assign(1, 0);
        m_rightPlaces.reserve(right + 1);
        m_rightPlaces.assign(1, 0);
        return left + right;
    }

    /// Until that many entries of both are in their place.
    void
    mergeUntil(const std::vector<Entry>& left, const std::vector<Entry>& right, std::size_t stop)
    {
        std::size_t fromLeft = m_leftPlaces.size() - 1;
        std::size_t fromRight = m_rightPlaces.size() - 1;
        while (fromLeft + fromRight < stop) {
            const bool noRight = fromRight == right.size();
            const int order = fromLeft == left.size() ? 1
                              : noRight               ? -1
                                                      : left[fromLeft].compare(right[fromRight]);
            m_merged.push_back(order > 0 ? right[fromRight] : left[fromLeft]);
            if (order <= 0) {
                m_leftPlaces.push_back(quint32(m_merged.size()));
                ++fromLeft;
            }
            if (order >= 0) {
                m_rightPlaces.push_back(quint32(m_merged.size()));
                m_bytes -= order == 0 ? right[fromRight].bytes() : 0;
                ++fromRight;
            }
        }
    }

    std::size_t endMerge(std::size_t first, std::size_t middle, std::size_t end)
    {
        m_runs[first] = std::move(m_merged);
        m_runs[middle] = {};
        m_merged = {};
        return end - first;
    }

    std::vector<Fresh> m_fresh;    ///< of the open rows
    std::vector<quint32> m_table;  ///< places of m_fresh by hash; 0 for none
    std::vector<quint32> m_values; ///< of the open rows
    std::vector<std::vector<Entry>> m_runs;
    std::vector<std::vector<quint32>> m_chunks; ///< the rows of each run at the beginning
    std::size_t m_bytes = 0;
    std::vector<Entry> m_merged;
    std::vector<quint32> m_leftPlaces; ///< of the entries of the two runs in the merged one, from 1
    std::vector<quint32> m_rightPlaces;
};

} // namespace melovane::sqlite
