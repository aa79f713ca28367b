#include "platform/sqlite/dialect/parameters.h"

#include "platform/sqlite/dialect/lexer.h"

namespace melovane::sqlite::dialect {

void StatementParameters::declare(const std::vector<DeclaredParameter>& parameters)
{
    for (const DeclaredParameter& declared : parameters) {
        if (find(declared.name) < 0) {
            m_all.push_back({declared.name.toString(), declared.type});
            m_untyped.push_back(false);
        }
    }
}

int StatementParameters::find(QStringView name) const
{
    for (size_t i = 0; i < m_all.size(); ++i) {
        if (sameName(m_all[i].Name, name)) {
            return int(i);
        }
    }
    return -1;
}

int StatementParameters::add(const QString& name)
{
    m_all.push_back({name, FieldType::Text, false});
    m_untyped.push_back(true);
    return int(m_all.size()) - 1;
}

Sql StatementParameters::sql(int place) const
{
    const auto index = size_t(place);
    if (m_arguments) {
        if (index >= m_arguments->size()) {
            return nullSql(); // reported when all parameters are known
        }
        FieldDef target = {};
        target.Type = m_all[index].Type;
        const Sql& given = (*m_arguments)[index];
        return m_untyped[index] ? given : asAssigned(given, target);
    }
    Sql sql;
    sql.text = u'?' + QString::number(place + 1);
    sql.type = m_all[index].Type;
    sql.typed = !m_untyped[index];
    sql.form = Sql::Form::Parameter;
    sql.parameter = true;
    sql.strength = kBindsMost;
    return sql;
}

} // namespace melovane::sqlite::dialect
