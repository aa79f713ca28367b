#include "platform/sqlite/row_writer.h"

#include "platform/sqlite/columns.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/stored_text.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

QString tableName(const BaseTable& table)
{
    return table.schema + u'.' + quotedName(table.table);
}

[[noreturn]] void throwDeleted()
{
    throw DbError(dberror::kRecordDeleted, u"The record was deleted."_s);
}

QString insertSql(const BaseTable& table, const std::map<QString, Value>& columns)
{
    if (columns.empty()) {
        return u"INSERT INTO %1 DEFAULT VALUES"_s.arg(tableName(table));
    }
    QStringList names;
    QStringList marks;
    for (const auto& [name, value] : columns) {
        names.append(quotedName(name));
        marks.append(u"?%1"_s.arg(names.size()));
    }
    return u"INSERT INTO %1(%2) VALUES(%3)"_s.arg(tableName(table), names.join(u", "_s),
                                                  marks.join(u", "_s));
}

QString updateSql(const BaseTable& table, const std::map<QString, Value>& columns)
{
    QStringList changes;
    for (const auto& [name, value] : columns) {
        changes.append(u"%1=?%2"_s.arg(quotedName(name)).arg(changes.size() + 1));
    }
    return u"UPDATE %1 SET %2 WHERE _rowid_=?%3"_s.arg(tableName(table), changes.join(u", "_s))
        .arg(changes.size() + 1);
}

std::vector<Value> valuesOf(const std::map<QString, Value>& columns)
{
    std::vector<Value> values;
    for (const auto& [name, value] : columns) {
        values.push_back(value);
    }
    return values;
}

} // namespace

void RowWriter::set(int column, const Value& value, bool isNew)
{
    const ResultColumn& target = m_set.columns()[std::size_t(column)];
    const bool fixedNumber = (target.field.Attributes & kFieldAutoNumber) != 0 && !isNew;
    if (target.table < 0 || fixedNumber) {
        throw DbError(dberror::kReadOnly,
                      u"The column %1 cannot be changed."_s.arg(target.field.Name));
    }
    m_pending[target.table][target.column] = storable(target.field, value);
}

std::optional<Value> RowWriter::pending(int column) const
{
    const ResultColumn& source = m_set.columns()[std::size_t(column)];
    const auto table = m_pending.find(source.table);
    if (table == m_pending.end()) {
        return std::nullopt;
    }
    const auto found = table->second.find(source.column);
    return found == table->second.end() ? std::nullopt : std::optional<Value>(found->second);
}

RowWriter::Added RowWriter::insert(Session& session) const
{
    if (m_pending.size() > 1) {
        throw DbError(dberror::kReadOnly,
                      u"A new row of a join can be written to one of its tables only."_s);
    }
    session.requireWritable();
    const int table = m_pending.empty() ? 0 : m_pending.begin()->first;
    const Columns columns = m_pending.empty() ? Columns() : m_pending.begin()->second;
    const BaseTable& base = m_set.statement().translation.tables[std::size_t(table)];
    const auto statement = session.connection().statements().take(insertSql(base, columns));
    statement->bindAll(valuesOf(columns));
    statement->run();
    return {table, sqlite3_last_insert_rowid(session.connection().handle())};
}

void RowWriter::update(Session& session, qint64 index) const
{
    if (m_pending.size() == 1) {
        // One statement is one change by itself and locks no more than the file it writes.
        const auto& [table, columns] = *m_pending.begin();
        updateTable(session, table, m_set.keyAt(index, table), columns);
        return;
    }
    WriteScope scope(session.transactions());
    for (const auto& [table, columns] : m_pending) {
        updateTable(session, table, m_set.keyAt(index, table), columns);
    }
    scope.commit();
}

void RowWriter::updateTable(Session& session, int table, qint64 key, const Columns& columns) const
{
    if (key == kNoRow) {
        throw DbError(dberror::kReadOnly, u"This row has no partner that could be changed."_s);
    }
    session.requireWritable();
    const BaseTable& base = m_set.statement().translation.tables[std::size_t(table)];
    const auto statement = session.connection().statements().take(updateSql(base, columns));
    statement->bindAll(valuesOf(columns));
    statement->bind(int(columns.size()) + 1, Value(key));
    statement->run();
    if (sqlite3_changes(session.connection().handle()) == 0) {
        throwDeleted();
    }
}

void RowWriter::remove(Session& session, const RowSet& set, qint64 index)
{
    session.requireWritable();
    const BaseTable& base = set.statement().translation.tables.front();
    const auto statement = session.connection().statements().take(
        u"DELETE FROM %1 WHERE _rowid_=?1"_s.arg(tableName(base)));
    statement->bind(1, Value(set.keyAt(index, 0)));
    statement->run();
    if (sqlite3_changes(session.connection().handle()) == 0) {
        throwDeleted();
    }
}

} // namespace melovane::sqlite
