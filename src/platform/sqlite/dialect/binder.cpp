#include "platform/sqlite/dialect/binder.h"

#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/parser.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// All sources of a statement, those inside stored queries and subselects counted.
constexpr int kMostAliases = 400;

} // namespace

quint64 bitOf(const ColumnRef& column)
{
    return column.table >= 0 && column.table < kMostSources ? quint64(1) << column.table
                                                            : kEveryTable;
}

int sizeOf(FieldType type)
{
    switch (type) {
    case FieldType::Boolean:
        return 1;
    case FieldType::Long:
        return 4;
    case FieldType::Double:
    case FieldType::Date:
        return 8;
    case FieldType::Text:
        return 255;
    case FieldType::Memo:
        return 0;
    }
    return 0;
}

Translator::Translator(const QString& statement, const NameSource& names, bool allowParameters)
    : m_statement(statement)
    , m_names(names)
    , m_parameters(allowParameters)
{}

void Translator::fail(qsizetype position, const QString& what) const
{
    syntaxError(*m_text, position, what);
}

void Translator::tooComplex() const
{
    throw DbError(dberror::kSyntax, u"Syntaxfehler: Die Anweisung ist zu umfangreich."_s,
                  m_statement);
}

const Source& Translator::find(QStringView name, qsizetype position)
{
    std::optional<Source> source = m_names.find(name.toString());
    if (!source) {
        throw DbError(dberror::kObjectNotFound,
                      u"Die Tabelle oder Abfrage \"%1\" ist nicht vorhanden (Zeichen %2)."_s.arg(
                          name, QString::number(position + 1)),
                      *m_text);
    }
    return m_sources.emplace_back(*std::move(source));
}

QString Translator::newAlias()
{
    if (++m_aliases > kMostAliases) {
        tooComplex();
    }
    return u't' + QString::number(m_aliases);
}

ColumnRef tableColumn(const Range& range, const FieldDef& field, const Scope& scope)
{
    ColumnRef column;
    column.name = field.Name;
    column.field = field;
    column.table = range.table;
    column.column = field.Name;
    const QString& alias = (*scope.tables)[size_t(range.table)].alias;
    column.sql.text.reserve(alias.size() + field.Name.size() + 3);
    column.sql.text.append(alias).append(u'.');
    appendQuotedName(column.sql.text, field.Name);
    column.sql.type = field.Type;
    column.sql.form = Sql::Form::Column;
    column.sql.strength = kBindsMost;
    column.sql.stack = 3;
    return column;
}

bool Translator::resolveHere(QStringView qualifier,
                             QStringView name,
                             Scope& scope,
                             ColumnRef& found,
                             qsizetype position)
{
    bool hit = false;
    const auto take = [&](const Range& range, const auto& make) {
        if (hit) {
            fail(position, u"der Name \"%1\" kommt in mehreren Tabellen vor"_s.arg(name));
        }
        hit = true;
        found = make();
        found.range = range.name;
    };
    for (const Range& range : scope.ranges) {
        if (!qualifier.isEmpty() && !sameName(range.name, qualifier)) {
            continue;
        }
        if (range.source != nullptr) {
            for (const FieldDef& field : range.source->fields) {
                if (sameName(field.Name, name)) {
                    take(range, [&] { return tableColumn(range, field, scope); });
                    break; // a table has no name twice
                }
            }
        }
        for (const ColumnRef& column : range.columns) {
            if (sameName(column.name, name)) {
                take(range, [&] { return column; });
            }
        }
    }
    if (hit) {
        scope.usedTables |= bitOf(found);
    }
    return hit;
}

bool Translator::resolve(QStringView qualifier,
                         QStringView name,
                         Scope& scope,
                         ColumnRef& found,
                         qsizetype position)
{
    for (Scope* at = &scope; at != nullptr; at = at->outer) {
        if (resolveHere(qualifier, name, *at, found, position)) {
            (at == &scope ? scope.sawOwnColumn : scope.sawOuterColumn) = true;
            if (at->grouped && !at->groups.contains(found.sql.text)) {
                at->loose.push_back({name.toString(), position});
            }
            return true;
        }
    }
    return false;
}

bool Translator::aliasOf(QStringView name, Scope& scope, Sql& found)
{
    if (scope.select == nullptr) {
        return false;
    }
    const size_t end = std::min(scope.visibleAliases, scope.select->items.size());
    for (size_t i = 0; i < end; ++i) {
        const SelectItem& item = scope.select->items[i];
        if (!item.expr || item.alias.isEmpty() || !sameName(item.alias, name)) {
            continue;
        }
        // An entry sees those before it only, so this ends.
        const size_t before = scope.visibleAliases;
        scope.visibleAliases = i;
        found = expression(*item.expr, scope);
        scope.visibleAliases = before;
        if (found.text.size() > kLongestStandIn) {
            tooComplex();
        }
        return true;
    }
    return false;
}

Sql Translator::name(const Expr& expr, Scope& scope)
{
    ColumnRef column;
    if (resolve(expr.qualifier, expr.text, scope, column, expr.position)) {
        return std::move(column.sql);
    }
    Sql alias;
    if (expr.qualifier.isEmpty() && aliasOf(expr.text, scope, alias)) {
        return alias;
    }
    return unknownName(expr);
}

Sql Translator::unknownName(const Expr& expr)
{
    QString wanted = expr.text.toString();
    if (!expr.qualifier.isEmpty()) {
        wanted = expr.qualifier.toString() + u'.' + wanted;
    }
    if (const int known = m_parameters.find(wanted); known >= 0) {
        return m_parameters.sql(known);
    }
    const auto clock = [&](QLatin1StringView function) {
        return call(function, std::vector<Sql>{}, FieldType::Date);
    };
    if (sameName(wanted, u"now")) {
        return clock("mlv_now"_L1);
    }
    if (sameName(wanted, u"date")) {
        return clock("mlv_today"_L1);
    }
    if (sameName(wanted, u"time")) {
        return clock("mlv_timeofday"_L1);
    }
    if (sameName(wanted, u"yes") || sameName(wanted, u"on")) {
        return truthLiteral(true);
    }
    if (sameName(wanted, u"no") || sameName(wanted, u"off")) {
        return truthLiteral(false);
    }
    if (!m_parameters.mayAdd()) {
        throw DbError(
            dberror::kTooFewParameters,
            u"Der Name \"%1\" ist keine Spalte der genannten Tabellen (Zeichen %2)."_s.arg(
                wanted, QString::number(expr.position + 1)),
            *m_text);
    }
    constexpr size_t kMostParameters = 1000;
    if (m_parameters.all().size() >= kMostParameters) {
        tooComplex();
    }
    return m_parameters.sql(m_parameters.add(wanted));
}

QString qualified(const BaseTable& table)
{
    QString text;
    if (!table.schema.isEmpty()) {
        appendQuotedName(text, table.schema);
        text.append(u'.');
    }
    appendQuotedName(text, table.table);
    return text;
}

} // namespace melovane::sqlite::dialect
