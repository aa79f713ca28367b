#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/column_defaults.h"
#include "platform/sqlite/dialect/statement_writer.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

Sql StatementWriter::whereOf(const Statement& statement, Scope& scope)
{
    std::vector<Sql> conditions = std::move(scope.conditions);
    scope.conditions.clear();
    if (statement.where) {
        conditions.push_back(m_in.expression(*statement.where, scope));
    }
    Sql test;
    if (!conditions.empty()) {
        test = joined(std::move(conditions), Op::And);
        test.text.prepend(u" WHERE "_s);
    }
    if (test.stack + 12 > kParserStack) {
        m_in.tooComplex();
    }
    return test;
}

std::vector<ColumnRef> StatementWriter::insertColumns(const Statement& statement,
                                                      Scope& scope,
                                                      const std::vector<ColumnRef>* offered)
{
    std::vector<ColumnRef> all;
    m_in.expandStar({}, scope, all);
    std::vector<ColumnRef> columns;
    const auto add = [&](QStringView name) {
        const auto found = std::find_if(all.begin(), all.end(), [&](const ColumnRef& column) {
            return sameName(column.name, name);
        });
        if (found == all.end()) {
            return false;
        }
        columns.push_back(*found);
        return true;
    };
    for (const PlacedName& name : statement.columns) {
        if (!add(name.text)) {
            throw DbError(dberror::kTooFewParameters,
                          u"Die Spalte \"%1\" ist in \"%2\" nicht vorhanden (Zeichen %3)."_s.arg(
                              name.text, statement.target, QString::number(name.position + 1)),
                          m_in.text());
        }
    }
    if (!statement.columns.empty()) {
        return columns;
    }
    // Without a list of columns a select names its targets by the names of its columns.
    const bool named = offered != nullptr &&
                       std::all_of(offered->begin(), offered->end(),
                                   [&](const ColumnRef& column) { return add(column.name); });
    return named ? columns : all;
}

QString StatementWriter::insertSource(const std::vector<ColumnRef>& columns,
                                      const SelectSql& rows,
                                      const QString& defaults)
{
    QString list;
    for (size_t i = 0; i < columns.size(); ++i) {
        Sql value = rows.columns[i].sql;
        value.form = Sql::Form::Value;
        value.text = u"s.c"_s + QString::number(i + 1);
        value.strength = kBindsMost;
        list += (i == 0 ? u""_s : u", "_s) + asAssigned(std::move(value), columns[i].field).text;
    }
    return u"SELECT "_s + list + defaults + u" FROM ("_s + rows.text + u") AS s"_s;
}

void StatementWriter::insertStatement(const Statement& statement)
{
    m_result.kind = StatementKind::Insert;
    std::vector<TableUse> tables;
    Scope target;
    target.tables = &tables;
    FromNode node;
    node.name = statement.target;
    node.position = statement.position;
    std::ignore = m_in.bindNode(node, target, false);
    SelectSql rows;
    if (statement.select) {
        rows = m_in.select(*statement.select, nullptr, Translator::Use::Derived);
    }
    const std::vector<ColumnRef> columns =
        insertColumns(statement, target, statement.select ? &rows.columns : nullptr);
    const size_t given = statement.select ? rows.columns.size() : statement.values.size();
    if (given != columns.size()) {
        m_in.fail(statement.position, u"Zahl der Werte und der Spalten ist verschieden"_s);
    }
    const auto placeOf = [&](size_t index) {
        return index < statement.columns.size() ? statement.columns[index].position
                                                : statement.position;
    };
    QString names;
    std::vector<QString> seen;
    for (const ColumnRef& column : columns) {
        if (column.table != columns.front().table || column.table < 0) {
            m_in.fail(placeOf(seen.size()),
                      u"in \"%1\" kann nicht eingefügt werden"_s.arg(statement.target));
        }
        if (std::any_of(seen.begin(), seen.end(),
                        [&](const QString& other) { return sameName(other, column.column); })) {
            m_in.fail(placeOf(seen.size()),
                      u"die Spalte \"%1\" ist doppelt genannt"_s.arg(column.name));
        }
        seen.push_back(column.column);
        names += names.isEmpty() ? u""_s : u", "_s;
        appendQuotedName(names, column.column);
    }
    const BaseTable base = tables[size_t(columns.front().table)].base;
    m_result.written = {base};
    QString defaults;
    for (const ComputedDefault& left :
         computedDefaults(m_in.names().find(base.name)->fields, seen)) {
        names += u", "_s;
        appendQuotedName(names, left.column);
        defaults += u", "_s + left.sql;
    }
    m_result.sql = u"INSERT INTO "_s + qualified(base) + u" ("_s + names + u") "_s;
    if (statement.select) {
        m_result.sql += insertSource(columns, rows, defaults);
        if (rows.stack + 14 > kParserStack) {
            m_in.tooComplex();
        }
        return;
    }
    Scope none;
    none.tables = &tables;
    m_result.sql += u"VALUES ("_s;
    for (size_t i = 0; i < columns.size(); ++i) {
        const Sql value = asAssigned(m_in.expression(*statement.values[i], none), columns[i].field);
        if (value.stack + 10 > kParserStack) {
            m_in.tooComplex();
        }
        m_result.sql += (i == 0 ? u""_s : u", "_s) + value.text;
    }
    m_result.sql += defaults + u')';
}

void StatementWriter::updateStatement(const Statement& statement)
{
    m_result.kind = StatementKind::Update;
    std::vector<TableUse> tables;
    Scope scope;
    scope.tables = &tables;
    m_in.bindFrom(statement.from, scope);

    int target = -1;
    std::vector<ColumnRef> columns;
    std::vector<Sql> values;
    for (const Assignment& assignment : statement.assignments) {
        ColumnRef column;
        if (!m_in.resolveHere(assignment.qualifier, assignment.column, scope, column,
                              assignment.position)) {
            throw DbError(dberror::kTooFewParameters,
                          u"Die Spalte \"%1\" ist nicht vorhanden (Zeichen %2)."_s.arg(
                              assignment.column, QString::number(assignment.position + 1)),
                          m_in.text());
        }
        if (column.table < 0 || (target >= 0 && column.table != target)) {
            m_in.fail(
                assignment.position,
                u"die Spalte \"%1\" kann hier nicht geändert werden"_s.arg(assignment.column));
        }
        target = column.table;
        values.push_back(asAssigned(m_in.expression(*assignment.value, scope), column.field));
        if (values.back().stack + 18 > kParserStack) {
            m_in.tooComplex();
        }
        columns.push_back(std::move(column));
    }
    if (!scope.keyed && tables.size() > 1) {
        m_in.fail(statement.position, u"diese Verknüpfung kann nicht geändert werden"_s);
    }
    const TableUse& use = tables[size_t(target)];
    m_result.written = {use.base};
    const QString where = whereOf(statement, scope).text;
    const bool alone = tables.size() == 1 && scope.ranges.size() == 1;
    QString set;
    QString inner;
    for (size_t i = 0; i < columns.size(); ++i) {
        set += i == 0 ? u""_s : u", "_s;
        appendQuotedName(set, columns[i].column);
        set += u" = "_s + (alone ? values[i].text : u"s.v"_s + QString::number(i));
        inner += u", "_s + values[i].text + u" AS v"_s + QString::number(i);
    }
    if (alone) {
        m_result.sql =
            u"UPDATE "_s + qualified(use.base) + u" AS "_s + use.alias + u" SET "_s + set + where;
        return;
    }
    m_result.sql = u"UPDATE "_s + qualified(use.base) + u" AS u SET "_s + set +
                   u" FROM (SELECT "_s + use.rowId + u" AS k"_s + inner + u" FROM "_s + scope.from +
                   where + u") AS s WHERE u"_s + use.rowId.mid(use.alias.size()) + u" = s.k"_s;
}

void StatementWriter::deleteStatement(const Statement& statement)
{
    m_result.kind = StatementKind::Delete;
    std::vector<TableUse> tables;
    Scope scope;
    scope.tables = &tables;
    m_in.bindFrom(statement.from, scope);
    std::vector<ColumnRef> columns;
    SelectItem star;
    star.starOf = statement.deleteFrom;
    star.position = statement.position;
    m_in.expandStar(star, scope, columns);
    int target = -1;
    for (const ColumnRef& column : columns) {
        if (target >= 0 && column.table >= 0 && column.table != target) {
            m_in.fail(statement.position, u"aus welcher Tabelle gelöscht wird, ist nicht gesagt"_s);
        }
        target = column.table >= 0 ? column.table : target;
    }
    if (target < 0 || (!scope.keyed && tables.size() > 1)) {
        m_in.fail(statement.position, u"hier kann nicht gelöscht werden"_s);
    }
    const TableUse& use = tables[size_t(target)];
    m_result.written = {use.base};
    const QString where = whereOf(statement, scope).text;
    if (tables.size() == 1 && scope.ranges.size() == 1) {
        m_result.sql = u"DELETE FROM "_s + qualified(use.base) + u" AS "_s + use.alias + where;
        return;
    }
    m_result.sql = u"DELETE FROM "_s + qualified(use.base) + u" WHERE "_s +
                   use.rowId.mid(use.alias.size() + 1) + u" IN (SELECT "_s + use.rowId +
                   u" FROM "_s + scope.from + where + u')';
}

} // namespace melovane::sqlite::dialect
