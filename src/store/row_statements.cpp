#include "store/row_statements.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString bracketed(const QString& name)
{
    return u'[' + name + u']';
}

QString typeWord(FieldType type)
{
    switch (type) {
    case FieldType::Boolean:
        return u"yesno"_s;
    case FieldType::Long:
        return u"long"_s;
    case FieldType::Double:
        return u"double"_s;
    case FieldType::Date:
        return u"datetime"_s;
    case FieldType::Text:
    case FieldType::Memo:
        break;
    }
    return u"memo"_s;
}

QStringList parameterNames(size_t count)
{
    QStringList names;
    for (size_t i = 0; i < count; ++i) {
        names.append(u"p%1"_s.arg(i));
    }
    return names;
}

QStringList declarations(const QStringList& names, const std::vector<WrittenColumn>& columns)
{
    QStringList declared;
    for (size_t i = 0; i < columns.size(); ++i) {
        declared.append(names[qsizetype(i)] + u' ' + typeWord(columns[i].type));
    }
    return declared;
}

void setAll(QueryDef& query, const QStringList& names, const std::vector<Value>& values)
{
    for (size_t i = 0; i < values.size(); ++i) {
        query.SetParameter(names[qsizetype(i)], values[i]);
    }
}

} // namespace

std::vector<WrittenColumn>
writtenColumns(Database& database, const QString& table, const QStringList& names)
{
    const std::vector<FieldDef> fields = database.tableDefs().Item(table).Fields;
    std::vector<WrittenColumn> columns;
    for (const QString& name : names) {
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const FieldDef& known) {
            return known.Name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (field == fields.end()) {
            throw DbError(dberror::kItemNotFound, u"No column of lists: "_s + name);
        }
        columns.push_back({field->Name, field->Type});
    }
    return columns;
}

RowInsert::RowInsert(Database& database,
                     const QString& table,
                     const std::vector<WrittenColumn>& columns)
    : m_names(parameterNames(columns.size()))
{
    QStringList targets;
    for (const WrittenColumn& column : columns) {
        targets.append(bracketed(column.name));
    }
    m_query = database.CreateQueryDef({}, u"parameters %1; insert into %2 (%3) values (%4)"_s.arg(
                                              declarations(m_names, columns).join(u", "_s), table,
                                              targets.join(u", "_s), m_names.join(u", "_s)));
}

RowInsert::~RowInsert() = default;

void RowInsert::run(const std::vector<Value>& values)
{
    setAll(*m_query, m_names, values);
    m_query->Execute();
}

RowUpdate::RowUpdate(Database& database,
                     const QString& table,
                     const WrittenColumn& key,
                     const std::vector<WrittenColumn>& columns)
    : m_names(parameterNames(columns.size()))
{
    QStringList changes;
    for (size_t i = 0; i < columns.size(); ++i) {
        changes.append(bracketed(columns[i].name) + u'=' + m_names[qsizetype(i)]);
    }
    m_query = database.CreateQueryDef(
        {}, u"parameters %1, pKey %2; update %3 set %4 where %5=pKey"_s.arg(
                declarations(m_names, columns).join(u", "_s), typeWord(key.type), table,
                changes.join(u", "_s), bracketed(key.name)));
}

RowUpdate::~RowUpdate() = default;
RowUpdate::RowUpdate(RowUpdate&&) noexcept = default;
RowUpdate& RowUpdate::operator=(RowUpdate&&) noexcept = default;

void RowUpdate::run(const Value& key, const std::vector<Value>& values)
{
    setAll(*m_query, m_names, values);
    m_query->SetParameter(u"pKey"_s, key);
    m_query->Execute();
}

} // namespace melovane
