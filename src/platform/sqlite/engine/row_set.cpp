#include "platform/sqlite/engine/row_set.h"

#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/read_scope.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <algorithm>
#include <optional>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// The row ids in the present row of a statement.
void appendKeys(const Statement& statement, KeyList& keys)
{
    for (int table = 0; table < keys.width(); ++table) {
        keys.append(statement.isNull(table) ? kNoRow : statement.number(table));
    }
}

void readCells(const Statement& statement,
               int firstColumn,
               const std::vector<ResultColumn>& columns,
               Row& row)
{
    row.state = Row::State::Present;
    row.cells.clear();
    row.cells.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        row.cells.push_back(statement.value(firstColumn + int(i), columns[i].field.Type));
    }
}

} // namespace

RowSet::RowSet(Session& session,
               std::shared_ptr<const Prepared> statement,
               std::vector<Value> parameters)
    : m_statement(std::move(statement))
    , m_parameters(std::move(parameters))
{
    m_epoch = session.epoch();
    if (!isKeyed()) {
        if (const auto count = session.indexedCount(*m_statement)) {
            m_rows.push_back({Row::State::Present, {Value(*count)}});
        } else {
            readRows(session);
        }
        return;
    }
    if ((m_keys = session.indexedKeys(*m_statement))) {
        return;
    }
    const int width = int(m_statement->translation.tables.size());
    auto keys = std::make_shared<KeyList>(width);
    readKeys(session, *keys);
    keys->shrink();
    m_keys = std::move(keys);
    m_added = KeyList(width);
}

qint64 RowSet::size() const
{
    return isKeyed() ? m_keys->count() + m_added.count() : qint64(m_rows.size());
}

bool RowSet::isDeleted(qint64 index) const
{
    return std::binary_search(m_deleted.begin(), m_deleted.end(), index);
}

qint64 RowSet::rowsBefore(qint64 index) const
{
    const auto deleted = std::lower_bound(m_deleted.begin(), m_deleted.end(), index);
    return index - (deleted - m_deleted.begin());
}

qint64 RowSet::indexAt(qint64 position) const
{
    // Deleted row number i stands before all positions above m_deleted[i] - i.
    std::size_t low = 0;
    std::size_t high = m_deleted.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (m_deleted[middle] - qint64(middle) <= position) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return position + qint64(low);
}

qint64 RowSet::positionOf(qint64 index) const
{
    return index < 0 || index >= size() || isDeleted(index) ? -1 : rowsBefore(index);
}

qint64 RowSet::keyAt(qint64 index, int table) const
{
    const qint64 first = m_keys->count();
    return index < first ? m_keys->keyAt(index, table) : m_added.keyAt(index - first, table);
}

qint64 RowSet::positionOfSame(const RowSet& other, qint64 index) const
{
    if (!isKeyed() || !other.isKeyed()) {
        return -1;
    }
    const BaseTable& mine = m_statement->translation.tables.front();
    const BaseTable& theirs = other.m_statement->translation.tables.front();
    if (mine.schema != theirs.schema || mine.table != theirs.table) {
        return -1;
    }
    const qint64 key = other.keyAt(index, 0);
    if (key == kNoRow) {
        return -1;
    }
    const qint64 found = m_keys->rowOf(key, 0);
    const qint64 added = found < 0 ? m_added.rowOf(key, 0) : -1;
    return positionOf(added < 0 ? found : m_keys->count() + added);
}

const Row& RowSet::row(Session& session, qint64 index)
{
    if (!isKeyed()) {
        return m_rows[std::size_t(index)];
    }
    if (m_epoch != session.epoch()) {
        forgetAll();
        m_epoch = session.epoch();
    }
    if (Row* row = m_pages.find(index); row && row->state != Row::State::Unknown) {
        return *row;
    }
    fetch(session, index);
    return *m_pages.find(index);
}

void RowSet::forget(qint64 index)
{
    if (m_added.width() > 1) {
        forgetAll();
    } else if (Row* row = m_pages.find(index)) {
        row->state = Row::State::Unknown;
    }
}

void RowSet::forgetAll()
{
    m_pages.clear();
}

qint64 RowSet::append(Session& session, int table, qint64 key)
{
    if (m_added.width() == 1) {
        m_added.append(key);
        return size() - 1;
    }
    // Which rows of the other tables belong to it, only the join itself can tell. SQLite takes the
    // condition into the join, so that this is a search by key and no walk through all rows.
    QStringList names;
    for (int i = 0; i < m_added.width(); ++i) {
        names.append(u"k%1"_s.arg(i));
    }
    const auto statement = session.connection().statements().take(
        u"WITH k("_s + names.join(u',') + u") AS ("_s + m_statement->translation.keySql +
        u") SELECT * FROM k WHERE k%1=?%2 LIMIT 1"_s.arg(table).arg(m_parameters.size() + 1));
    statement->bindAll(m_parameters);
    statement->bind(int(m_parameters.size()) + 1, Value(key));
    if (!statement->step()) {
        return -1;
    }
    appendKeys(*statement, m_added);
    return size() - 1;
}

void RowSet::markDeleted(qint64 index)
{
    m_deleted.insert(std::lower_bound(m_deleted.begin(), m_deleted.end(), index), index);
    forget(index);
}

void RowSet::noteOwnWrite(Session& session)
{
    const bool upToDate = m_epoch == session.epoch();
    session.nextEpoch();
    if (upToDate) {
        m_epoch = session.epoch();
    }
}

void RowSet::readKeys(Session& session, KeyList& keys) const
{
    const auto statement = session.connection().statements().take(m_statement->translation.keySql,
                                                                  m_statement->seenAgain);
    statement->bindAll(m_parameters);
    while (statement->step()) {
        appendKeys(*statement, keys);
    }
}

void RowSet::readRows(Session& session)
{
    const auto statement = session.connection().statements().take(m_statement->translation.sql,
                                                                  m_statement->seenAgain);
    statement->bindAll(m_parameters);
    while (statement->step()) {
        readCells(*statement, 0, columns(), m_rows.emplace_back());
    }
}

/// Fetches from the row on what is not known of its page: a look mostly goes on to the next row.
void RowSet::fetch(Session& session, qint64 index)
{
    session.requireReadable(*m_statement);
    const qint64 first = index - index % RowPages::kPageRows;
    std::vector<Row>* const kept = m_pages.page(index);
    std::vector<Row>& rows =
        kept ? *kept : m_pages.add(first, std::min(RowPages::kPageRows, size() - first));
    const auto begin = rows.begin() + std::ptrdiff_t(index - first);
    // Added rows are looked at one by one, right after each was written.
    const auto end =
        index >= m_keys->count() ? begin + 1 : std::find_if(begin, rows.end(), [](const Row& row) {
            return row.state != Row::State::Unknown;
        });
    const auto statement = session.connection().statements().take(m_statement->translation.rowSql);
    std::optional<ReadScope> scope;
    if (end - begin > 1) {
        scope.emplace(session.connection());
    }
    for (auto row = begin; row != end; ++row) {
        fetchInto(*statement, index + (row - begin), *row);
    }
}

void RowSet::fetchInto(Statement& statement, qint64 index, Row& row) const
{
    const std::vector<BaseTable>& tables = m_statement->translation.tables;
    const int width = int(tables.size());
    for (int table = 0; table < width; ++table) {
        const qint64 key = keyAt(index, table);
        statement.bind(table + 1, key == kNoRow ? Value() : Value(key));
    }
    bool present = statement.step();
    for (int table = 0; present && table < width; ++table) {
        present = tables[std::size_t(table)].optional || !statement.isNull(table);
    }
    if (present) {
        readCells(statement, width, columns(), row);
    } else {
        row = {Row::State::Gone, {}};
    }
    statement.reset();
}

} // namespace melovane::sqlite
