#include "platform/sqlite/engine/statement.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/system/leading_number.h"

#include <sqlite3.h>

#include <cmath>
#include <limits>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Enough for the statements of one view; each costs some ten kilobytes.
constexpr std::size_t kKeptStatements = 48;

Value longOf(double number)
{
    return Value(qint64{toLongHalfEven(number)});
}

/// A date column that holds a text: the date it tells, else the text itself.
Value dateOf(const QString& text)
{
    const QDateTime moment = Value(text).toDateTime();
    return moment.isValid() ? Value(moment) : Value(text);
}

Value textAs(FieldType type, const QString& text)
{
    switch (type) {
    case FieldType::Boolean:
        return Value(leadingNumber(text) != 0);
    case FieldType::Long:
        return longOf(leadingNumber(text));
    case FieldType::Double:
        return Value(leadingNumber(text));
    case FieldType::Date:
        return dateOf(text);
    case FieldType::Text:
    case FieldType::Memo:
        return Value(text);
    }
    return Value(text);
}

Value integerAs(FieldType type, qint64 number)
{
    switch (type) {
    case FieldType::Boolean:
        return Value(number != 0);
    case FieldType::Long:
        return Value(number);
    case FieldType::Double:
        return Value(double(number));
    case FieldType::Date:
        return Value(Value::Day{double(number)});
    case FieldType::Text:
    case FieldType::Memo:
        return Value(QString::number(number));
    }
    return Value(number);
}

Value realAs(FieldType type, double number)
{
    switch (type) {
    case FieldType::Boolean:
        return Value(number != 0);
    case FieldType::Long:
        return longOf(number);
    case FieldType::Double:
        return Value(number);
    case FieldType::Date:
        return Value(Value::Day{number});
    case FieldType::Text:
    case FieldType::Memo:
        return Value(Value(number).toText());
    }
    return Value(number);
}

} // namespace

Statement::Statement(sqlite3* connection, const QString& sql)
    : m_connection(connection)
{
    const QByteArray bytes = toBytes(sql);
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(connection, bytes.constData(), int(bytes.size()), 0,
                                        &m_statement, &tail);
    if (code != SQLITE_OK) {
        throwError(connection, sqlite3_extended_errcode(connection));
    }
    if (!m_statement || !QByteArray(tail).trimmed().isEmpty()) {
        sqlite3_finalize(m_statement);
        throw dbError(DbFault::OneStatementOnly);
    }
}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

void Statement::bind(int parameter, const Value& value)
{
    int code = SQLITE_OK;
    if (value.isNull()) {
        code = sqlite3_bind_null(m_statement, parameter);
    } else if (value.isText()) {
        bindText(parameter, value.toText());
    } else if (value.isDouble() || value.isDate()) {
        code = sqlite3_bind_double(m_statement, parameter, value.toDouble());
    } else if (value.isBool()) {
        code = sqlite3_bind_int64(m_statement, parameter, value.toBool() ? -1 : 0);
    } else {
        code = sqlite3_bind_int64(m_statement, parameter, value.toInt64());
    }
    if (code != SQLITE_OK) {
        throwError(m_connection, code);
    }
}

/// The bytes stay here while SQLite may read them, which saves it a copy of its own.
void Statement::bindText(int parameter, const QString& text)
{
    const auto place = std::size_t(parameter - 1);
    if (m_texts.size() <= place) {
        m_texts.resize(place + 1);
    }
    QByteArray bytes = toBytes(text);
    const int code = sqlite3_bind_text64(m_statement, parameter, bytes.constData(),
                                         sqlite3_uint64(bytes.size()), SQLITE_STATIC, SQLITE_UTF8);
    m_texts[place] = std::move(bytes);
    if (code != SQLITE_OK) {
        throwError(m_connection, code);
    }
}

void Statement::bindCell(int parameter, const Statement& source, int column)
{
    const int code = sqlite3_bind_value(m_statement, parameter,
                                        sqlite3_column_value(source.m_statement, column));
    if (code != SQLITE_OK) {
        throwError(m_connection, code);
    }
}

void Statement::bindAll(const std::vector<Value>& values)
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        bind(int(i) + 1, values[i]);
    }
}

bool Statement::step()
{
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code == SQLITE_DONE) {
        return false;
    }
    throwError(m_connection, sqlite3_extended_errcode(m_connection));
}

void Statement::run()
{
    while (step()) {
    }
    reset();
}

void Statement::reset()
{
    sqlite3_reset(m_statement);
}

void Statement::clearBindings()
{
    sqlite3_clear_bindings(m_statement);
    std::fill(m_texts.begin(), m_texts.end(), QByteArray());
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_statement);
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

qint64 Statement::number(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

QString Statement::text(int column) const
{
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    if (!bytes && sqlite3_errcode(m_connection) == SQLITE_NOMEM) {
        throwError(m_connection, SQLITE_NOMEM); // not an empty text that would be written back
    }
    return bytes ? fromBytes(bytes, sqlite3_column_bytes(m_statement, column)) : QString();
}

Value Statement::value(int column, FieldType type) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return integerAs(type, sqlite3_column_int64(m_statement, column));
    case SQLITE_FLOAT:
        return realAs(type, sqlite3_column_double(m_statement, column));
    }
    return textAs(type, text(column));
}

Value Statement::plainValue(int column) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return Value(qint64{sqlite3_column_int64(m_statement, column)});
    case SQLITE_FLOAT:
        return Value(sqlite3_column_double(m_statement, column));
    }
    return Value(text(column));
}

StatementPool::Lease::Lease(StatementPool& pool,
                            QString sql,
                            std::unique_ptr<Statement> statement,
                            bool keep)
    : m_pool(pool)
    , m_sql(std::move(sql))
    , m_statement(std::move(statement))
    , m_keep(keep)
{}

StatementPool::Lease::~Lease()
{
    m_statement->reset();
    if (!m_keep) {
        return;
    }
    m_statement->clearBindings();
    m_pool.m_kept.push_front({std::move(m_sql), std::move(m_statement)});
    if (m_pool.m_kept.size() > kKeptStatements) {
        m_pool.m_kept.pop_back();
    }
}

StatementPool::Lease StatementPool::take(const QString& sql, bool keep)
{
    for (auto kept = m_kept.begin(); kept != m_kept.end(); ++kept) {
        if (kept->sql == sql) {
            std::unique_ptr<Statement> statement = std::move(kept->statement);
            m_kept.erase(kept);
            return {*this, sql, std::move(statement), true};
        }
    }
    return {*this, sql, std::make_unique<Statement>(m_connection, sql), keep};
}

} // namespace melovane::sqlite
