#include "platform/sqlite/dialect/statement_writer.h"

#include "platform/db/db_error.h"

#include <algorithm>
#include <utility>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

QueryType queryTypeOf(const Statement& statement)
{
    switch (statement.kind) {
    case StatementKind::Select:
        break;
    case StatementKind::Insert:
        return QueryType::Append;
    case StatementKind::Update:
        return QueryType::Update;
    case StatementKind::Delete:
        return QueryType::Delete;
    case StatementKind::MakeTable:
        return QueryType::MakeTable;
    case StatementKind::Ddl:
        return QueryType::Ddl;
    }
    if (!statement.select) {
        return QueryType::Select;
    }
    if (!statement.select->unions.empty()) {
        return QueryType::SetOperation;
    }
    return statement.select->crosstab ? QueryType::Crosstab : QueryType::Select;
}

void StatementWriter::takeResult(const std::vector<ColumnRef>& columns)
{
    m_result.columns.reserve(columns.size());
    for (const ColumnRef& column : columns) {
        m_result.columns.push_back({column.field, column.table, column.column});
    }
}

void StatementWriter::selectStatement(const Statement& statement)
{
    const Select& select = *statement.select;
    m_result.kind = StatementKind::Select;
    if (!select.unions.empty()) {
        const SelectSql written = m_in.unionSelect(select, nullptr, Translator::Use::Result);
        m_result.sql = written.text;
        takeResult(written.columns);
        return;
    }
    const std::unique_ptr<Translator::Arm> written = m_in.arm(select, nullptr);
    m_result.sql = Translator::rows(
        select, *written, Translator::columnTexts(*written, Translator::Use::Result), false);
    takeResult(written->columns);
    const bool parameterInside =
        std::any_of(written->columns.begin(), written->columns.end(),
                    [](const ColumnRef& column) { return column.sql.parameter; });
    m_result.keyed = written->plain && !written->distinct && written->scope.keyed &&
                     !written->tables.empty() && !parameterInside;
    if (!m_result.keyed) {
        for (ResultColumn& column : m_result.columns) {
            column.table = -1;
        }
        return;
    }
    QStringList keys;
    QString joins;
    QString tables;
    QString found;
    int number = 0;
    for (const TableUse& use : written->tables) {
        m_result.tables.push_back(use.base);
        keys.append(use.rowId);
        const QString table = qualified(use.base) + u" AS "_s + use.alias;
        const QString itsRow = use.rowId + u" = ?"_s + QString::number(++number);
        joins += u" LEFT JOIN "_s + table + u" ON "_s + itsRow;
        tables += (number == 1 ? u""_s : u", "_s) + table;
        found += (number == 1 ? u""_s : u" AND "_s) + itsRow;
    }
    m_result.keySql = Translator::rows(select, *written, keys, false);
    m_result.rowSql = u"SELECT "_s + keys.join(u", ");
    for (const ColumnRef& column : written->columns) {
        m_result.rowSql += u", "_s + column.sql.text;
    }
    // Where no table may lack its row, a plain question is answered twice as fast.
    const bool outer = std::any_of(m_result.tables.begin(), m_result.tables.end(),
                                   [](const BaseTable& table) { return table.optional; });
    m_result.rowSql +=
        outer ? u" FROM (SELECT 1)"_s + joins : u" FROM "_s + tables + u" WHERE "_s + found;
}

void StatementWriter::makeTableStatement(const Statement& statement)
{
    m_result.kind = StatementKind::MakeTable;
    const SelectSql made = m_in.select(*statement.select, nullptr, Translator::Use::Derived);
    DdlAction& action = m_result.ddl.emplace();
    action.table.Name = statement.target.toString();
    const BaseTable target{action.table.Name, u"main"_s, action.table.Name};
    QString names;
    for (const ColumnRef& column : made.columns) {
        // Rows of a join may repeat a number that a table gave once.
        FieldDef& field = action.table.Fields.emplace_back();
        field.Name = column.name;
        field.Type = column.field.Type;
        field.Size = column.field.Size;
        names += names.isEmpty() ? u""_s : u", "_s;
        appendQuotedName(names, column.name);
    }
    m_result.written = {target};
    m_result.sql = u"INSERT INTO "_s + qualified(target) + u" ("_s + names + u") "_s +
                   insertSource(made.columns, made, QString());
}

/// Values stand where the query's parameters do, so nothing is left to be bound.
void StatementWriter::executeStatement(const Statement& statement)
{
    const Source& source = m_in.find(statement.query, statement.position);
    if (source.kind != Source::Kind::Query) {
        m_in.fail(statement.position, u"\"%1\" ist keine Abfrage"_s.arg(source.name));
    }
    std::vector<TableUse> none;
    Scope scope;
    scope.tables = &none;
    m_in.parameters().setMayAdd(false);
    std::vector<Sql> arguments;
    for (const ExprPtr& value : statement.values) {
        arguments.push_back(asValue(m_in.expression(*value, scope)));
    }
    const Translator::Stored& query = m_in.read(source);
    if (!query.statement.query.isEmpty()) {
        m_in.fail(statement.position,
                  u"die Abfrage \"%1\" führt selbst eine Abfrage aus"_s.arg(source.name));
    }
    const size_t given = arguments.size();
    m_in.parameters().setArguments(std::move(arguments));
    m_in.parameters().setMayAdd(true);
    try {
        const Translator::InQuery inside(m_in, query);
        run(query.statement);
    } catch (const DbError& fault) {
        throw faultOf(source.name, fault);
    }
    const std::vector<ParameterDef>& wanted = m_in.parameters().all();
    if (given > wanted.size()) {
        m_in.fail(statement.values[wanted.size()]->position,
                  u"zu viele Werte für die Abfrage \"%1\""_s.arg(source.name));
    }
    if (given < wanted.size()) {
        throw DbError(dberror::kTooFewParameters,
                      u"Der Parameter \"%1\" der Abfrage \"%2\" hat keinen Wert."_s.arg(
                          wanted[given].Name, source.name),
                      m_in.text());
    }
}

void StatementWriter::run(const Statement& statement)
{
    m_result.queryType = queryTypeOf(statement);
    m_in.parameters().declare(statement.parameters);
    switch (statement.kind) {
    case StatementKind::Select:
        selectStatement(statement);
        break;
    case StatementKind::Insert:
        insertStatement(statement);
        break;
    case StatementKind::Update:
        updateStatement(statement);
        break;
    case StatementKind::Delete:
        deleteStatement(statement);
        break;
    case StatementKind::MakeTable:
        makeTableStatement(statement);
        break;
    case StatementKind::Ddl:
        m_result.kind = StatementKind::Ddl;
        m_result.ddl = statement.ddl;
        break;
    }
}

Translation StatementWriter::translated(const Statement& statement)
{
    try {
        if (statement.query.isEmpty()) {
            run(statement);
            m_result.parameters = m_in.parameters().all();
        } else {
            executeStatement(statement);
        }
    } catch (const TooComplex&) {
        m_in.tooComplex();
    }
    return std::move(m_result);
}

} // namespace melovane::sqlite::dialect
