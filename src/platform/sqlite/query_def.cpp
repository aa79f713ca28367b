#include "platform/sqlite/query_def.h"

#include "platform/sqlite/columns.h"
#include "platform/sqlite/recordset.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/stored_text.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// The first words of a statement and what they begin; a declaration of parameters stands before.
QueryType typeByFirstWord(QStringView sql)
{
    static const std::pair<QLatin1StringView, QueryType> kWords[] = {
        {"insert"_L1, QueryType::Append},     {"update"_L1, QueryType::Update},
        {"delete"_L1, QueryType::Delete},     {"create"_L1, QueryType::Ddl},
        {"alter"_L1, QueryType::Ddl},         {"drop"_L1, QueryType::Ddl},
        {"transform"_L1, QueryType::Crosstab}};
    QStringView text = sql.trimmed();
    if (text.startsWith("parameters"_L1, Qt::CaseInsensitive)) {
        text = text.sliced(text.indexOf(u';') + 1).trimmed();
    }
    for (const auto& [word, type] : kWords) {
        if (text.startsWith(word, Qt::CaseInsensitive)) {
            return type;
        }
    }
    return QueryType::Select;
}

} // namespace

QueryType queryTypeOf(Session& session, const QString& sql)
{
    try {
        return session.translate(sql, true)->translation.queryType;
    } catch (const DbError& error) {
        if (error.number() == dberror::kSyntax) {
            throw;
        }
        return typeByFirstWord(sql);
    }
}

Value parameterValue(const ParameterDef& parameter, const Value& value)
{
    FieldDef field;
    field.Name = parameter.Name;
    field.Type = parameter.Type;
    return value.isNull() ? Value() : storable(field, value);
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
    return openSession(m_lease).translate(m_sql, true);
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

void SqliteQueryDef::SetParameter(const QString& name, const Value& value)
{
    for (const ParameterDef& parameter : Parameters()) {
        if (nameKey(parameter.Name) == nameKey(name)) {
            m_values.insert(nameKey(name), parameterValue(parameter, value));
            return;
        }
    }
    throw DbError(dberror::kItemNotFound, u"The query %1 has no parameter %2."_s.arg(m_name, name),
                  m_sql);
}

std::vector<Value> SqliteQueryDef::values(const Prepared& statement) const
{
    std::vector<Value> values;
    for (const ParameterDef& parameter : statement.translation.parameters) {
        const auto found = m_values.constFind(nameKey(parameter.Name));
        if (found == m_values.cend()) {
            throw DbError(dberror::kTooFewParameters,
                          u"The parameter %1 has no value."_s.arg(parameter.Name), m_sql);
        }
        values.push_back(*found);
    }
    return values;
}

void SqliteQueryDef::Execute()
{
    const std::shared_ptr<const Prepared> statement = prepared();
    m_recordsAffected = openSession(m_lease).execute(*statement, values(*statement));
}

std::unique_ptr<Recordset> SqliteQueryDef::OpenRecordset()
{
    const std::shared_ptr<const Prepared> statement = prepared();
    return openRecordset(m_lease, statement, values(*statement));
}

void SqliteQueryDef::Close()
{
    m_lease.reset();
}

} // namespace melovane::sqlite
