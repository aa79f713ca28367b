#pragma once

#include <QtGlobal>

#include <limits>
#include <vector>

namespace melovane::sqlite {

/// Row id of a table that has no row in a result row (the null side of an outer join).
inline constexpr qint64 kNoRow = std::numeric_limits<qint64>::min();

/// The rows of a set in their order, as row ids of its base tables. Never changes once it stands.
class KeySource
{
public:
    virtual ~KeySource() = default;

    /// Number of rows.
    [[nodiscard]] virtual qint64 count() const = 0;

    /// Row id of base table number `table` in a row, or kNoRow.
    [[nodiscard]] virtual qint64 keyAt(qint64 row, int table) const = 0;

    /// The first row that has this row id in that base table, or -1.
    [[nodiscard]] virtual qint64 rowOf(qint64 key, int table) const = 0;
};

/// Row ids in memory, eight bytes each.
class KeyList : public KeySource
{
public:
    /// \param width number of base tables
    explicit KeyList(int width)
        : m_width(width)
    {}

    /// Appends the next row id; `width` of them make a row.
    void append(qint64 key) { m_keys.push_back(key); }

    /// To be called behind the last append: gives back what was kept for more.
    void shrink() { m_keys.shrink_to_fit(); }

    [[nodiscard]] int width() const { return m_width; }

    [[nodiscard]] qint64 count() const override { return qint64(m_keys.size()) / m_width; }

    [[nodiscard]] qint64 keyAt(qint64 row, int table) const override
    {
        return m_keys[std::size_t(row * m_width + table)];
    }

    [[nodiscard]] qint64 rowOf(qint64 key, int table) const override
    {
        for (qint64 row = 0; row < count(); ++row) {
            if (keyAt(row, table) == key) {
                return row;
            }
        }
        return -1;
    }

private:
    int m_width;
    std::vector<qint64> m_keys;
};

} // namespace melovane::sqlite
