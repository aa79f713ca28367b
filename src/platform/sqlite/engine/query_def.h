#pragma once

#include "platform/db/database.h"
#include "platform/sqlite/engine/session.h"

#include <vector>

namespace melovane::sqlite {

/// A stored query, or one that is not stored, with the values of its parameters.
class SqliteQueryDef : public QueryDef
{
public:
    SqliteQueryDef(std::weak_ptr<SessionLease> lease, QString name, QString sql, QueryType type);

    [[nodiscard]] QString Name() const override { return m_name; }

    [[nodiscard]] QString SQL() const override { return m_sql; }

    [[nodiscard]] QueryType Type() const override { return m_type; }

    [[nodiscard]] std::vector<FieldDef> Fields() const override;
    [[nodiscard]] std::vector<ParameterDef> Parameters() const override;
    void SetParameter(const QString& name, const Value& value) override;
    void Execute() override;

    [[nodiscard]] int RecordsAffected() const override { return m_recordsAffected; }

    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset() override;
    void Close() override;

private:
    [[nodiscard]] std::shared_ptr<const Prepared> prepared() const;
    void know(const std::shared_ptr<const Prepared>& statement);
    [[nodiscard]] const std::vector<Value>& values() const;

    std::weak_ptr<SessionLease> m_lease;
    QString m_name;
    QString m_sql;
    QueryType m_type;
    std::shared_ptr<const Prepared> m_known; ///< the statement that the values belong to
    std::vector<Value> m_values;             ///< by number
    std::vector<bool> m_isSet;               ///< by number
    int m_recordsAffected = 0;
};

/// What the query does. Told by its first words when the tables that it names are not there (yet).
/// \throws DbError kSyntax when it is no statement
[[nodiscard]] QueryType queryTypeOf(Session& session, const QString& sql);

/// The value as a parameter of that type takes it. \throws DbError kTypeMismatch
[[nodiscard]] Value parameterValue(const ParameterDef& parameter, const Value& value);

} // namespace melovane::sqlite
