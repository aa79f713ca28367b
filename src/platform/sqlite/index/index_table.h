#pragma once

#include "platform/sqlite/index/index_column.h"
#include "platform/sqlite/index/index_order_maker.h"

#include <QStringList>

#include <list>

namespace melovane::sqlite {

/// The searched table in memory: rows as they stood when it was loaded, column by column, and the
/// few rows that changed since, cell by cell. Knows nothing of SQLite.
class IndexTable
{
public:
    /// \param keys row ids, ascending
    explicit IndexTable(IndexArray<qint64> keys);

    [[nodiscard]] const IndexArray<qint64>& keys() const { return m_keys; }

    /// Columns in the order of their arrival; the cells of a row stand in the same order.
    [[nodiscard]] QStringList columns() const;

    /// Null when there is none of this name.
    [[nodiscard]] std::shared_ptr<const IndexColumn> column(const QString& name) const;

    /// The orders made so far, the one used last first.
    [[nodiscard]] std::vector<
        std::pair<std::vector<SearchOrder>, std::shared_ptr<const IndexOrder>>>
    orders() const;

    /// Has an order at hand, for a search to come. Only with all its columns.
    void makeReady(const std::vector<SearchOrder>& terms) { order(keysOf(terms)); }

    /// The same bit by bit: what makes the order, for addOrder(). Null when a column is missing.
    [[nodiscard]] std::unique_ptr<IndexOrderMaker>
    orderMaker(const std::vector<SearchOrder>& terms) const;

    /// Takes over an order of the rows as they were loaded, if it has all its columns.
    void addOrder(const std::vector<SearchOrder>& terms, std::shared_ptr<const IndexOrder> made);

    /// Adds a column over all rows. Changed rows have to be set anew.
    void addColumn(const QString& name, std::shared_ptr<const IndexColumn> column);

    /// Says what a row holds now, a new one too.
    void setRow(qint64 key, std::vector<IndexCell> cells);
    /// The row is gone.
    void removeRow(qint64 key);

    [[nodiscard]] qint64 changedCount() const { return qint64(m_changed.size()); }

    /// Row ids of the rows that differ from the load, and are not gone.
    [[nodiscard]] std::vector<qint64> changedRows() const;

    /// Columns that have to be added before the statement can be answered.
    [[nodiscard]] QStringList missing(const SearchStatement& statement) const;

    /// False when a column of the statement holds cells that only SQLite compares.
    [[nodiscard]] bool answers(const SearchStatement& statement) const;

    /// Only with all columns, and when it answers.
    [[nodiscard]] std::shared_ptr<const KeySource> search(const SearchStatement& statement);
    [[nodiscard]] qint64 count(const SearchCondition& where);

    /// Roughly the memory that it takes.
    [[nodiscard]] qint64 bytes() const;

private:
    struct Column
    {
        QString name;
        std::shared_ptr<const IndexColumn> data;
    };

    struct ChangedRow
    {
        qint64 key = 0;
        std::vector<IndexCell> cells;
        /// Of the cells among the values of their columns; found when first asked for, as most are
        /// never.
        mutable std::vector<quint32> places;
    };

    struct Key
    {
        std::size_t column = 0;
        bool descending = false;

        bool operator==(const Key&) const = default;
    };

    /// A condition's answer: rows by number, changed rows by their place in m_changed.
    struct Matches
    {
        SearchCondition where;
        IndexBits rows;
        std::vector<std::size_t> changed;
    };

    struct Filter
    {
        std::vector<SearchTest> group;
        IndexBits rows;
    };

    struct KeptOrder
    {
        std::vector<Key> keys;
        std::shared_ptr<const IndexOrder> order;
    };

    [[nodiscard]] std::size_t find(const QString& column) const;
    [[nodiscard]] bool hasAll(const std::vector<SearchOrder>& terms) const;
    [[nodiscard]] std::vector<Key> keysOf(const std::vector<SearchOrder>& order) const;
    [[nodiscard]] std::vector<ChangedRow>::iterator place(qint64 key);
    void hide(qint64 key);
    [[nodiscard]] quint32 placeOf(const ChangedRow& row, std::size_t column) const;
    void keepOrder(std::vector<Key> keys, std::shared_ptr<const IndexOrder> made);
    [[nodiscard]] const Matches& matches(const SearchCondition& where);
    [[nodiscard]] IndexBits marked(const std::vector<SearchTest>& group);
    [[nodiscard]] std::vector<std::size_t> passing(const SearchCondition& where) const;
    std::shared_ptr<const IndexOrder> order(const std::vector<Key>& keys);
    [[nodiscard]] std::unique_ptr<IndexOrderMaker> makerOf(const std::vector<Key>& keys) const;
    [[nodiscard]] std::vector<IndexedKeys::Extra> extras(const std::vector<std::size_t>& changed,
                                                         const std::vector<Key>& keys,
                                                         const IndexOrder* order) const;
    [[nodiscard]] bool standsBefore(const ChangedRow& left,
                                    const ChangedRow& right,
                                    const std::vector<Key>& keys) const;
    [[nodiscard]] bool
    standsBefore(quint32 row, const ChangedRow& changed, const std::vector<Key>& keys) const;

    IndexArray<qint64> m_keys;
    std::vector<Column> m_columns;
    IndexBits m_hidden;                ///< rows that changed or are gone
    std::vector<ChangedRow> m_changed; ///< by key
    std::optional<Matches> m_last;     ///< a count follows its search
    std::list<Filter> m_filters;       ///< used last stands first
    std::list<KeptOrder> m_orders;     ///< used last stands first
};

} // namespace melovane::sqlite
