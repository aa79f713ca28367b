#include "platform/sqlite/engine/row_writer.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Statements kept for updates of one set; more kinds of them are no loop.
constexpr std::size_t kMostUpdates = 16;

QString tableName(const BaseTable& table)
{
    return table.schema + u'.' + quotedName(table.table);
}

QString insertSql(const BaseTable& table, const QStringList& columns)
{
    if (columns.empty()) {
        return u"INSERT INTO %1 DEFAULT VALUES"_s.arg(tableName(table));
    }
    QStringList names;
    QStringList marks;
    for (const QString& column : columns) {
        names.append(quotedName(column));
        marks.append(u"?%1"_s.arg(names.size()));
    }
    return u"INSERT INTO %1(%2) VALUES(%3)"_s.arg(tableName(table), names.join(u", "_s),
                                                  marks.join(u", "_s));
}

void requireChange(Session& session)
{
    if (sqlite3_changes(session.connection().handle()) == 0) {
        throw dbError(DbFault::RecordDeleted);
    }
}

} // namespace

RowWriter::RowWriter(const RowSet& set)
    : m_set(set)
    , m_values(set.columns().size())
    , m_isGiven(set.columns().size())
    , m_defaults(set.statement().translation.tables.size())
    , m_inserts(m_defaults.size())
{
    const std::vector<ResultColumn>& columns = set.columns();
    for (const ResultColumn& each : columns) {
        const auto first =
            std::find_if(columns.begin(), columns.end(), [&](const ResultColumn& other) {
                return other.table == each.table && other.column == each.column;
            });
        m_slots.push_back(int(first - columns.begin()));
    }
}

const ResultColumn& RowWriter::column(int slot) const
{
    return m_set.columns()[std::size_t(slot)];
}

const BaseTable& RowWriter::tableOf(int table) const
{
    return m_set.statement().translation.tables[std::size_t(table)];
}

void RowWriter::start(Session& session, Kind kind)
{
    cancel();
    m_kind = kind;
    if (kind == Kind::NewRow) {
        computeDefaults(session);
    }
}

void RowWriter::cancel()
{
    for (const int slot : m_given) {
        m_isGiven[std::size_t(slot)] = false;
    }
    m_given.clear();
    m_kind.reset();
}

void RowWriter::computeDefaults(Session& session)
{
    for (std::size_t table = 0; table < m_defaults.size(); ++table) {
        Defaults& defaults = m_defaults[table];
        if (!defaults.known) {
            const std::optional<Source> source = session.catalogue().find(tableOf(int(table)).name);
            defaults.computed =
                source ? computedDefaults(source->fields) : std::vector<ComputedDefault>();
            defaults.known = true;
        }
        defaults.values.clear();
        for (const ComputedDefault& each : defaults.computed) {
            const auto statement = session.connection().statements().take(u"SELECT "_s + each.sql);
            defaults.values.push_back(statement->step() ? statement->value(0, each.type) : Value());
        }
    }
}

void RowWriter::set(int number, const Value& value)
{
    const int slot = m_slots[std::size_t(number)];
    const ResultColumn& target = column(slot);
    const bool fixedNumber = (target.field.Attributes & kFieldAutoNumber) != 0 && !isNewRow();
    if (target.table < 0 || fixedNumber) {
        throw dbError(DbFault::FieldReadOnly, column(number).field.Name);
    }
    m_values[std::size_t(slot)] = storable(target.field, value);
    if (!m_isGiven[std::size_t(slot)]) {
        m_isGiven[std::size_t(slot)] = true;
        m_given.push_back(slot);
    }
}

std::optional<Value> RowWriter::value(int number) const
{
    const auto slot = std::size_t(m_slots[std::size_t(number)]);
    if (m_isGiven[slot]) {
        return m_values[slot];
    }
    if (!isNewRow()) {
        return std::nullopt;
    }
    const ResultColumn& source = m_set.columns()[slot];
    if (source.table < 0 || (source.field.Attributes & kFieldAutoNumber) != 0) {
        return Value();
    }
    const Defaults& defaults = m_defaults[std::size_t(source.table)];
    for (std::size_t i = 0; i < defaults.computed.size(); ++i) {
        if (defaults.computed[i].column == source.column) {
            return defaults.values[i];
        }
    }
    return storable(source.field, constantDefault(source.field).value_or(Value()));
}

/// The table of the columns that were set, the first one when there are none.
int RowWriter::firstTable() const
{
    const int table = m_given.empty() ? 0 : column(m_given.front()).table;
    for (const int slot : m_given) {
        if (column(slot).table != table) {
            throw dbError(DbFault::RowOfTwoTables, tableOf(table).name,
                          tableOf(column(slot).table).name);
        }
    }
    return table;
}

/// Rows of a loop give the same columns, so the statement of the last one mostly fits.
const RowWriter::Insert& RowWriter::insertOf(int table)
{
    Insert& insert = m_inserts[std::size_t(table)];
    if (!insert.sql.isEmpty() && insert.given == m_given) {
        return insert;
    }
    insert = {m_given, {}, {}};
    QStringList names;
    for (const int slot : m_given) {
        names.append(column(slot).column);
    }
    const std::vector<ComputedDefault>& computed = m_defaults[std::size_t(table)].computed;
    for (std::size_t i = 0; i < computed.size(); ++i) {
        if (!names.contains(computed[i].column)) {
            insert.defaults.push_back(i);
        }
    }
    for (const std::size_t i : insert.defaults) {
        names.append(computed[i].column);
    }
    insert.sql = insertSql(tableOf(table), names);
    return insert;
}

RowWriter::Added RowWriter::insert(Session& session)
{
    session.requireWritable();
    const int table = firstTable();
    const Insert& insert = insertOf(table);
    const auto statement = session.connection().statements().take(insert.sql);
    int parameter = 0;
    for (const int slot : m_given) {
        statement->bind(++parameter, m_values[std::size_t(slot)]);
    }
    for (const std::size_t i : insert.defaults) {
        statement->bind(++parameter, m_defaults[std::size_t(table)].values[i]);
    }
    statement->run();
    return {table, sqlite3_last_insert_rowid(session.connection().handle())};
}

std::map<int, RowWriter::Slots> RowWriter::slotsByTable() const
{
    std::map<int, Slots> result;
    for (const int slot : m_given) {
        result[column(slot).table].push_back(slot);
    }
    return result;
}

void RowWriter::update(Session& session, qint64 index)
{
    const std::map<int, Slots> changes = slotsByTable();
    if (changes.size() == 1) {
        // One statement is one change by itself and locks no more than the file it writes.
        const auto& [table, given] = *changes.begin();
        updateTable(session, table, m_set.keyAt(index, table), given);
        return;
    }
    WriteScope scope(session.transactions());
    for (const auto& [table, given] : changes) {
        updateTable(session, table, m_set.keyAt(index, table), given);
    }
    scope.commit();
}

const QString& RowWriter::updateOf(int table, const Slots& given)
{
    if (m_updates.size() >= kMostUpdates && !m_updates.contains(given)) {
        m_updates.clear();
    }
    QString& sql = m_updates[given];
    if (sql.isEmpty()) {
        QStringList changes;
        for (const int slot : given) {
            changes.append(
                u"%1=?%2"_s.arg(quotedName(column(slot).column)).arg(changes.size() + 1));
        }
        sql = u"UPDATE %1 SET %2 WHERE _rowid_=?%3"_s
                  .arg(tableName(tableOf(table)), changes.join(u", "_s))
                  .arg(changes.size() + 1);
    }
    return sql;
}

void RowWriter::updateTable(Session& session, int table, qint64 key, const Slots& given)
{
    if (key == kNoRow) {
        throw dbError(DbFault::RowWithoutPartner, tableOf(table).name);
    }
    session.requireWritable();
    const auto statement = session.connection().statements().take(updateOf(table, given));
    int parameter = 0;
    for (const int slot : given) {
        statement->bind(++parameter, m_values[std::size_t(slot)]);
    }
    statement->bind(++parameter, Value(key));
    statement->run();
    requireChange(session);
}

void RowWriter::remove(Session& session, const RowSet& set, qint64 index)
{
    session.requireWritable();
    const BaseTable& base = set.statement().translation.tables.front();
    const auto statement = session.connection().statements().take(
        u"DELETE FROM %1 WHERE _rowid_=?1"_s.arg(tableName(base)));
    statement->bind(1, Value(set.keyAt(index, 0)));
    statement->run();
    requireChange(session);
}

} // namespace melovane::sqlite
