#pragma once

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace melovane {

class WalkedRow;

/// Some hundred tracks of a walk, copied out of it. Counters are shown whole blocks: what they look
/// up for one track is then fetched from memory while they look up another's.
class TrackBlock
{
public:
    /// How a column is read.
    enum class Kind
    {
        Text,
        Whole, ///< as a whole number
        Day    ///< as a day number
    };

    /// A cell of a column that is read as days.
    struct Day
    {
        double number = 0;
        bool isNull = true;
        bool isNumber = false; ///< kept as one in the file
    };

    static constexpr std::size_t kRows = 512;

    /// \param kinds of the columns of the walk, in their order
    explicit TrackBlock(const std::vector<Kind>& kinds);

    /// \param isLive false for a deleted track
    void add(const WalkedRow& row, bool isLive);
    void clear();

    [[nodiscard]] std::size_t size() const { return m_size; }

    [[nodiscard]] bool isFull() const { return m_size == kRows; }

    [[nodiscard]] bool isLive(std::size_t row) const { return m_isLive[row]; }

    /// True when no row has a text there.
    [[nodiscard]] bool isEmpty(std::size_t column) const { return m_columns[column].isEmpty; }

    /// As the file keeps it, until the block is cleared or added to. Empty for null.
    [[nodiscard]] std::string_view text(std::size_t column, std::size_t row) const
    {
        const Place& place = m_columns[column].texts[row];
        return {m_bytes.data() + place.begin, place.size};
    }

    /// True when the row above has the same text there.
    [[nodiscard]] bool isRepeated(std::size_t column, std::size_t row) const
    {
        if (row == 0) {
            return false;
        }
        const Place& place = m_columns[column].texts[row];
        const Place& above = m_columns[column].texts[row - 1];
        return place.size != 0 && place.begin == above.begin && place.size == above.size;
    }

    [[nodiscard]] qint64 whole(std::size_t column, std::size_t row) const
    {
        return m_columns[column].wholes[row];
    }

    [[nodiscard]] const Day& day(std::size_t column, std::size_t row) const
    {
        return m_columns[column].days[row];
    }

private:
    /// Of a text in m_bytes.
    struct Place
    {
        std::uint32_t begin = 0;
        std::uint32_t size = 0;
    };

    /// Holds what its kind says, and nothing of the others.
    struct Column
    {
        Kind kind = Kind::Text;
        bool isEmpty = true;
        std::vector<Place> texts;
        std::vector<qint64> wholes;
        std::vector<Day> days;
    };

    void addText(Column& column, std::string_view text);

    std::vector<Column> m_columns;
    std::vector<char> m_bytes;
    std::array<bool, kRows> m_isLive{};
    std::size_t m_size = 0;
};

} // namespace melovane
