#include "platform/sqlite/engine/query_def.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/dialect.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/engine/recordset.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <algorithm>
#include <utility>

namespace melovane::sqlite {

QueryType queryTypeOf(Session& session, const QString& sql)
{
    try {
        return session.translate(sql, true)->translation.queryType;
    } catch (const DbError& error) {
        if (error.number() == dberror::kSyntax) {
            throw;
        }
        return writtenQueryType(sql);
    }
}

Value parameterValue(const ParameterDef& parameter, const Value& value)
{
    const bool isText = parameter.Type == FieldType::Text || parameter.Type == FieldType::Memo;
    if (value.isNull() || !parameter.isDeclared || (isText && value.isText())) {
        return value;
    }
    FieldDef field;
    field.Name = parameter.Name;
    field.Type = parameter.Type;
    return storable(field, value);
}

SqliteQueryDef::SqliteQueryDef(std::weak_ptr<SessionLease> lease,
                               QString name,
                               QString sql,
                               QueryType type)
    : m_lease(std::move(lease))
    , m_name(std::move(name))
    , m_sql(std::move(sql))
    , m_type(type)
{}

std::shared_ptr<const Prepared> SqliteQueryDef::prepared() const
{
    Session& session = openSession(m_lease);
    return m_known && session.holds(*m_known) ? m_known : session.translate(m_sql, true);
}

std::vector<FieldDef> SqliteQueryDef::Fields() const
{
    std::vector<FieldDef> fields;
    const std::shared_ptr<const Prepared> statement = prepared();
    for (const ResultColumn& column : statement->translation.columns) {
        fields.push_back(column.field);
    }
    return fields;
}

std::vector<ParameterDef> SqliteQueryDef::Parameters() const
{
    return prepared()->translation.parameters;
}

void SqliteQueryDef::know(const std::shared_ptr<const Prepared>& statement)
{
    if (m_known == statement) {
        return;
    }
    // The catalogue has changed since: values keep their names, numbers may be others.
    const std::vector<Value> values = std::exchange(m_values, {});
    const std::vector<bool> isSet = std::exchange(m_isSet, {});
    for (const ParameterDef& parameter : statement->translation.parameters) {
        const int former = m_known ? m_known->parameters.find(parameter.Name) : -1;
        m_values.push_back(former < 0 ? Value() : values[std::size_t(former)]);
        m_isSet.push_back(former >= 0 && isSet[std::size_t(former)]);
    }
    m_known = statement;
}

void SqliteQueryDef::SetParameter(const QString& name, const Value& value)
{
    // Asking for the statement anew for each value would cost more than the statement itself;
    // a changed catalogue is noticed when it runs.
    if (!m_known) {
        know(prepared());
    }
    const int place = m_known->parameters.find(name);
    if (place < 0) {
        withStatement(m_sql, [&] { throw dbError(DbFault::ParameterNotThere, name, m_name); });
    }
    const auto number = std::size_t(place);
    m_values[number] = parameterValue(m_known->translation.parameters[number], value);
    m_isSet[number] = true;
}

const std::vector<Value>& SqliteQueryDef::values() const
{
    const auto unset = std::find(m_isSet.begin(), m_isSet.end(), false);
    if (unset != m_isSet.end()) {
        const auto number = std::size_t(unset - m_isSet.begin());
        throw dbError(DbFault::ParameterWithoutValue, m_known->translation.parameters[number].Name);
    }
    return m_values;
}

void SqliteQueryDef::Execute()
{
    const std::shared_ptr<const Prepared> statement = prepared();
    know(statement);
    m_recordsAffected = openSession(m_lease).execute(*statement, values());
}

std::unique_ptr<Recordset> SqliteQueryDef::OpenRecordset()
{
    const std::shared_ptr<const Prepared> statement = prepared();
    know(statement);
    return openRecordset(m_lease, statement, values());
}

void SqliteQueryDef::Close()
{
    m_lease.reset();
    m_known.reset();
}

} // namespace melovane::sqlite
