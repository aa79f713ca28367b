#include "platform/sqlite/index/index_table.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace melovane::sqlite {

namespace {

/// Orders kept: of a million rows each takes eight megabytes.
constexpr std::size_t kMostOrders = 6;
/// Answers of conditions kept, as the filter of deleted tracks and the letters that a user passes
/// on his way forth and back: of a million rows each takes an eighth of a megabyte.
constexpr std::size_t kMostFilters = 48;

/// Rows found are put to their places one by one when they are at most one in so many.
constexpr qint64 kFewOf = 3;

/// Of a changed cell whose place nobody has asked for.
constexpr quint32 kUnknownPlace = std::numeric_limits<quint32>::max();

} // namespace

IndexTable::IndexTable(IndexArray<qint64> keys)
    : m_keys(std::move(keys))
    , m_hidden(qint64(m_keys.size()))
{}

QStringList IndexTable::columns() const
{
    QStringList names;
    for (const Column& column : m_columns) {
        names.append(column.name);
    }
    return names;
}

void IndexTable::addColumn(const QString& name, std::shared_ptr<const IndexColumn> column)
{
    m_columns.push_back({name, std::move(column)});
    m_last.reset();
}

std::vector<IndexTable::ChangedRow>::iterator IndexTable::place(qint64 key)
{
    return std::lower_bound(m_changed.begin(), m_changed.end(), key,
                            [](const ChangedRow& row, qint64 wanted) { return row.key < wanted; });
}

void IndexTable::hide(qint64 key)
{
    const qint64* found = std::lower_bound(m_keys.begin(), m_keys.end(), key);
    if (found != m_keys.end() && *found == key) {
        m_hidden.set(found - m_keys.begin());
    }
    m_last.reset();
}

void IndexTable::setRow(qint64 key, std::vector<IndexCell> cells)
{
    hide(key);
    ChangedRow row{key, std::move(cells), std::vector<quint32>(m_columns.size(), kUnknownPlace)};
    const auto at = place(key);
    if (at != m_changed.end() && at->key == key) {
        *at = std::move(row);
    } else {
        m_changed.insert(at, std::move(row));
    }
}

void IndexTable::removeRow(qint64 key)
{
    hide(key);
    const auto at = place(key);
    if (at != m_changed.end() && at->key == key) {
        m_changed.erase(at);
    }
}

std::shared_ptr<const IndexColumn> IndexTable::column(const QString& name) const
{
    const std::size_t at = find(name);
    return at < m_columns.size() ? m_columns[at].data : nullptr;
}

std::vector<qint64> IndexTable::changedRows() const
{
    std::vector<qint64> keys;
    for (const ChangedRow& row : m_changed) {
        keys.push_back(row.key);
    }
    return keys;
}

std::size_t IndexTable::find(const QString& column) const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
                                    [&](const Column& known) { return known.name == column; });
    return std::size_t(found - m_columns.begin());
}

QStringList IndexTable::missing(const SearchStatement& statement) const
{
    QStringList names;
    const auto ask = [&](const QString& column) {
        if (find(column) == m_columns.size() && !names.contains(column)) {
            names.append(column);
        }
    };
    for (const std::vector<SearchTest>& group : statement.where) {
        for (const SearchTest& test : group) {
            ask(test.column);
        }
    }
    for (const SearchOrder& term : statement.order) {
        ask(term.column);
    }
    return names;
}

bool IndexTable::answers(const SearchStatement& statement) const
{
    const auto fits = [&](const QString& name) {
        const std::size_t column = find(name);
        return m_columns[column].data->fits() &&
               std::none_of(m_changed.begin(), m_changed.end(), [&](const ChangedRow& row) {
                   return row.cells[column].kind == IndexCell::Kind::Foreign;
               });
    };
    for (const std::vector<SearchTest>& group : statement.where) {
        for (const SearchTest& test : group) {
            if (!fits(test.column)) {
                return false;
            }
        }
    }
    return std::all_of(statement.order.begin(), statement.order.end(),
                       [&](const SearchOrder& term) { return fits(term.column); });
}

IndexBits IndexTable::marked(const std::vector<SearchTest>& group)
{
    const auto kept = std::find_if(m_filters.begin(), m_filters.end(),
                                   [&](const Filter& known) { return known.group == group; });
    if (kept != m_filters.end()) {
        m_filters.splice(m_filters.begin(), m_filters, kept);
        return kept->rows;
    }
    IndexBits rows(qint64(m_keys.size()));
    for (const SearchTest& test : group) {
        m_columns[find(test.column)].data->mark(IndexTest(test), rows);
    }
    m_filters.push_front({group, rows});
    if (m_filters.size() > kMostFilters) {
        m_filters.pop_back();
    }
    return rows;
}

/// The changed rows that meet a condition.
std::vector<std::size_t> IndexTable::passing(const SearchCondition& where) const
{
    std::vector<std::size_t> rows(m_changed.size());
    std::iota(rows.begin(), rows.end(), 0U);
    for (const std::vector<SearchTest>& group : where) {
        std::vector<std::pair<IndexTest, std::size_t>> tests;
        tests.reserve(group.size());
        for (const SearchTest& test : group) {
            tests.emplace_back(IndexTest(test), find(test.column));
        }
        std::erase_if(rows, [&](std::size_t row) {
            return std::none_of(tests.begin(), tests.end(), [&](const auto& test) {
                return test.first.matches(m_changed[row].cells[test.second]);
            });
        });
    }
    return rows;
}

const IndexTable::Matches& IndexTable::matches(const SearchCondition& where)
{
    if (m_last && m_last->where == where) {
        return *m_last;
    }
    Matches result{where, IndexBits(qint64(m_keys.size())), passing(where)};
    if (where.empty()) {
        result.rows.setAll();
    }
    for (std::size_t i = 0; i < where.size(); ++i) {
        if (i == 0) {
            result.rows = marked(where[i]);
        } else {
            result.rows.intersect(marked(where[i]));
        }
    }
    result.rows.subtract(m_hidden);
    m_last = std::move(result);
    return *m_last;
}

qint64 IndexTable::count(const SearchCondition& where)
{
    const Matches& found = matches(where);
    return found.rows.count() + qint64(found.changed.size());
}

std::vector<IndexTable::Key> IndexTable::keysOf(const std::vector<SearchOrder>& order) const
{
    std::vector<Key> keys;
    keys.reserve(order.size());
    for (const SearchOrder& term : order) {
        keys.push_back({find(term.column), term.descending});
    }
    return keys;
}

std::unique_ptr<IndexOrderMaker> IndexTable::makerOf(const std::vector<Key>& keys) const
{
    std::vector<IndexOrderMaker::Key> columns;
    columns.reserve(keys.size());
    for (const auto& [column, descending] : keys) {
        columns.push_back({m_columns[column].data, descending});
    }
    return std::make_unique<IndexOrderMaker>(std::move(columns), m_keys.size());
}

std::unique_ptr<IndexOrderMaker> IndexTable::orderMaker(const std::vector<SearchOrder>& terms) const
{
    return hasAll(terms) ? makerOf(keysOf(terms)) : nullptr;
}

bool IndexTable::hasAll(const std::vector<SearchOrder>& terms) const
{
    return !terms.empty() && std::all_of(terms.begin(), terms.end(), [&](const SearchOrder& term) {
        return find(term.column) < m_columns.size();
    });
}

std::shared_ptr<const IndexOrder> IndexTable::order(const std::vector<Key>& keys)
{
    if (keys.empty()) {
        return nullptr;
    }
    const auto kept = std::find_if(m_orders.begin(), m_orders.end(),
                                   [&](const KeptOrder& known) { return known.keys == keys; });
    if (kept != m_orders.end()) {
        m_orders.splice(m_orders.begin(), m_orders, kept);
        return kept->order;
    }
    const auto maker = makerOf(keys);
    while (maker->step()) {
    }
    keepOrder(keys, maker->take());
    return m_orders.front().order;
}

void IndexTable::keepOrder(std::vector<Key> keys, std::shared_ptr<const IndexOrder> made)
{
    m_orders.push_front({std::move(keys), std::move(made)});
    m_orders.resize(std::min(m_orders.size(), kMostOrders));
}

void IndexTable::addOrder(const std::vector<SearchOrder>& terms,
                          std::shared_ptr<const IndexOrder> made)
{
    if (hasAll(terms)) {
        keepOrder(keysOf(terms), std::move(made));
    }
}

std::vector<std::pair<std::vector<SearchOrder>, std::shared_ptr<const IndexOrder>>>
IndexTable::orders() const
{
    std::vector<std::pair<std::vector<SearchOrder>, std::shared_ptr<const IndexOrder>>> result;
    for (const KeptOrder& kept : m_orders) {
        std::vector<SearchOrder> terms;
        for (const auto& [column, descending] : kept.keys) {
            terms.push_back({m_columns[column].name, descending});
        }
        result.emplace_back(std::move(terms), kept.order);
    }
    return result;
}

quint32 IndexTable::placeOf(const ChangedRow& row, std::size_t column) const
{
    quint32& place = row.places[column];
    if (place == kUnknownPlace) {
        place = m_columns[column].data->placeOf(row.cells[column]);
    }
    return place;
}

bool IndexTable::standsBefore(const ChangedRow& left,
                              const ChangedRow& right,
                              const std::vector<Key>& keys) const
{
    for (const auto& [column, descending] : keys) {
        const int order = IndexColumn::compare(left.cells[column], right.cells[column]);
        if (order != 0) {
            return (order < 0) != descending;
        }
    }
    return left.key < right.key;
}

bool IndexTable::standsBefore(quint32 row,
                              const ChangedRow& changed,
                              const std::vector<Key>& keys) const
{
    for (const auto& [column, descending] : keys) {
        const quint32 place = 2 * m_columns[column].data->valueOf(row);
        const quint32 other = placeOf(changed, column);
        if (place != other) {
            return (place < other) != descending;
        }
    }
    return m_keys[row] < changed.key;
}

std::vector<IndexedKeys::Extra> IndexTable::extras(const std::vector<std::size_t>& changed,
                                                   const std::vector<Key>& keys,
                                                   const IndexOrder* order) const
{
    std::vector<std::size_t> sorted = changed;
    std::sort(sorted.begin(), sorted.end(), [&](std::size_t left, std::size_t right) {
        return standsBefore(m_changed[left], m_changed[right], keys);
    });
    std::vector<IndexedKeys::Extra> result;
    result.reserve(sorted.size());
    for (const std::size_t at : sorted) {
        const ChangedRow& row = m_changed[at];
        qint64 low = 0;
        qint64 high = qint64(m_keys.size());
        while (low < high) {
            const qint64 middle = low + (high - low) / 2;
            const quint32 other = order ? order->rowAt[std::size_t(middle)] : quint32(middle);
            if (standsBefore(other, row, keys)) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        result.push_back({low, row.key});
    }
    return result;
}

std::shared_ptr<const KeySource> IndexTable::search(const SearchStatement& statement)
{
    const std::vector<Key> keys = keysOf(statement.order);
    const std::shared_ptr<const IndexOrder> sorted = order(keys);
    const Matches& found = matches(statement.where);
    std::vector<IndexedKeys::Extra> changed = extras(found.changed, keys, sorted.get());
    if (!sorted) {
        return std::make_shared<IndexedKeys>(m_keys, nullptr, found.rows, std::move(changed));
    }
    IndexBits places(qint64(m_keys.size()));
    if (found.rows.count() > places.size() / kFewOf) {
        places.addPlacesOf({sorted->rowAt.data(), sorted->rowAt.size()}, found.rows);
    } else {
        found.rows.forEach([&](std::size_t row) { places.set(sorted->placeOf[row]); });
    }
    return std::make_shared<IndexedKeys>(m_keys, sorted, std::move(places), std::move(changed));
}

qint64 IndexTable::bytes() const
{
    qint64 sum = qint64(m_keys.size() * sizeof(qint64)) +
                 qint64(m_orders.size() * m_keys.size() * 2 * sizeof(quint32));
    for (const Column& column : m_columns) {
        sum += column.data->bytes();
    }
    return sum;
}

} // namespace melovane::sqlite
