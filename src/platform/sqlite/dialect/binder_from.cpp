#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/binder.h"
#include "platform/sqlite/dialect/parser.h"

#include <algorithm>
#include <utility>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The row id has three names; a column may take one of them away.
QLatin1StringView rowIdName(const Source& source)
{
    for (const QLatin1StringView name : {"rowid"_L1, "_rowid_"_L1, "oid"_L1}) {
        const bool taken =
            std::any_of(source.fields.begin(), source.fields.end(), [&](const FieldDef& field) {
                return field.Name.compare(name, Qt::CaseInsensitive) == 0;
            });
        if (!taken) {
            return name;
        }
    }
    return "rowid"_L1;
}

/// Without distinct, groups and the like the rows are those of the tables.
bool isPlain(const Select& select)
{
    const bool aggregated =
        std::any_of(select.items.begin(), select.items.end(),
                    [](const SelectItem& item) { return item.expr && hasAggregate(*item.expr); });
    return !select.distinct && !select.distinctRow && select.top < 0 && select.unions.empty() &&
           select.group.empty() && !select.having && !select.from.empty() && !aggregated;
}

/// Conditions of the side that may be null decide whether a row finds a partner; those of the other
/// side decide whether the row is there at all.
FromText joinOuter(FromText kept, FromText nulled, Sql on, Scope& scope)
{
    std::vector<Sql> conditions = std::move(nulled.conditions);
    conditions.insert(conditions.begin(), std::move(on));
    const Sql test = joined(std::move(conditions), Op::And);
    FromText result;
    result.single = false;
    result.conditions = std::move(kept.conditions);
    if (nulled.single) {
        result.text = kept.text + u" LEFT JOIN "_s + nulled.text;
        result.appendable = kept.appendable;
        result.stack = std::max(kept.stack, nulled.stack);
    } else if (kept.single) {
        result.text = nulled.text + u" RIGHT JOIN "_s + kept.text;
        result.appendable = false;
        result.stack = std::max(kept.stack, nulled.stack);
    } else {
        // Inside brackets SQLite knows no row ids.
        scope.keyed = false;
        result.text = kept.text + u" LEFT JOIN ("_s + nulled.text + u')';
        result.appendable = kept.appendable;
        result.stack = std::max(kept.stack, nulled.stack + 3);
    }
    result.text += u" ON "_s + test.text;
    result.stack = std::max(result.stack, test.stack + 9);
    return result;
}

FromText joinInner(FromText left, FromText right, Scope& scope)
{
    if (!right.appendable && left.appendable) {
        std::swap(left, right);
    }
    FromText result = std::move(left);
    result.single = false;
    if (right.appendable) {
        result.text += u" JOIN "_s + right.text;
    } else {
        scope.keyed = false;
        result.text += u" JOIN ("_s + right.text + u')';
    }
    result.stack = std::max(result.stack, right.stack + (right.appendable ? 0 : 3));
    std::move(right.conditions.begin(), right.conditions.end(),
              std::back_inserter(result.conditions));
    return result;
}

} // namespace

DbError faultOf(const QString& query, const DbError& fault)
{
    return {fault.number(), u"In der Abfrage \"%1\": %2"_s.arg(query, fault.text()),
            fault.statement()};
}

void Translator::bindFrom(const std::vector<FromPtr>& list, Scope& scope)
{
    FromText all;
    bool first = true;
    for (const FromPtr& node : list) {
        FromText next = bindNode(*node, scope, false);
        all = first ? std::move(next) : joinInner(std::move(all), std::move(next), scope);
        first = false;
    }
    if (scope.tables->size() > size_t(kMostSources) || scope.ranges.size() > size_t(kMostSources)) {
        tooComplex();
    }
    scope.from = std::move(all.text);
    scope.fromStack = all.stack;
    std::move(all.conditions.begin(), all.conditions.end(), std::back_inserter(scope.conditions));
}

FromText Translator::bindNode(const FromNode& node, Scope& scope, bool nullable)
{
    const Depth depth(*this);
    switch (node.kind) {
    case FromNode::Kind::Named:
        return bindNamed(node, scope, nullable);
    case FromNode::Kind::Select:
        return derived(*node.select, node.alias.toString(), scope);
    case FromNode::Kind::Inner:
    case FromNode::Kind::Left:
    case FromNode::Kind::Right:
        return bindJoin(node, scope, nullable);
    }
    return {};
}

FromText Translator::bindJoin(const FromNode& node, Scope& scope, bool nullable)
{
    FromText left = bindNode(*node.left, scope, nullable || node.kind == FromNode::Kind::Right);
    FromText right = bindNode(*node.right, scope, nullable || node.kind == FromNode::Kind::Left);
    Sql on = expression(*node.on, scope);
    if (node.kind == FromNode::Kind::Left) {
        return joinOuter(std::move(left), std::move(right), std::move(on), scope);
    }
    if (node.kind == FromNode::Kind::Right) {
        return joinOuter(std::move(right), std::move(left), std::move(on), scope);
    }
    FromText result = joinInner(std::move(left), std::move(right), scope);
    result.conditions.push_back(std::move(on));
    return result;
}

void Translator::addRange(Range range, Scope& scope, qsizetype position)
{
    for (const Range& other : scope.ranges) {
        if (!range.name.isEmpty() && sameName(other.name, range.name)) {
            fail(position, u"die Tabelle \"%1\" ist mehrfach genannt"_s.arg(range.name));
        }
    }
    scope.ranges.push_back(std::move(range));
}

FromText Translator::bindNamed(const FromNode& node, Scope& scope, bool nullable)
{
    const Source& source = find(node.name, node.position);
    if (source.kind == Source::Kind::Query) {
        return bindQuery(node, source, scope, nullable);
    }
    TableUse use;
    use.base = {source.name, source.schema, source.table, nullable};
    use.alias = newAlias();
    use.rowId = use.alias + u'.' + rowIdName(source);
    Range range;
    range.name = node.alias.isEmpty() ? source.name : node.alias.toString();
    range.source = &source;
    range.table = int(scope.tables->size());
    addRange(std::move(range), scope, node.position);
    FromText result;
    result.text = qualified(use.base) + u" AS "_s + use.alias;
    scope.tables->push_back(std::move(use));
    return result;
}

Translator::Stored& Translator::read(const Source& source)
{
    Stored& entry = m_stored.emplace_back();
    entry.source = source;
    try {
        entry.tokens = tokenize(entry.source.sql);
        entry.statement = Parser(entry.source.sql, entry.tokens).parse();
    } catch (const DbError& fault) {
        throw faultOf(source.name, fault);
    }
    return entry;
}

const Translator::Stored& Translator::stored(const Source& source, qsizetype position)
{
    for (const QString& open : m_openQueries) {
        if (sameName(open, source.name)) {
            fail(position, u"die Abfrage \"%1\" nennt sich selbst"_s.arg(source.name));
        }
    }
    const Stored& entry = read(source);
    if (entry.statement.kind != StatementKind::Select || !entry.statement.select) {
        fail(position, u"die Abfrage \"%1\" liefert keine Zeilen"_s.arg(source.name));
    }
    m_parameters.declare(entry.statement.parameters);
    return entry;
}

FromText
Translator::bindQuery(const FromNode& node, const Source& source, Scope& scope, bool nullable)
{
    const Stored& query = stored(source, node.position);
    const Select& select = *query.statement.select;
    const QString name = node.alias.isEmpty() ? source.name : node.alias.toString();
    const InQuery inside(*this, query);
    try {
        return isPlain(select) ? weave(select, name, scope, nullable)
                               : derived(select, name, scope);
    } catch (const DbError& fault) {
        throw faultOf(source.name, fault);
    }
}

FromText Translator::weave(const Select& select, const QString& name, Scope& scope, bool nullable)
{
    const size_t tablesBefore = scope.tables->size();
    Scope inner;
    inner.tables = scope.tables;
    inner.select = &select;
    FromText from;
    bool first = true;
    for (const FromPtr& node : select.from) {
        FromText next = bindNode(*node, inner, nullable);
        from = first ? std::move(next) : joinInner(std::move(from), std::move(next), inner);
        first = false;
    }
    std::vector<ColumnRef> columns;
    items(select, inner, columns);
    const auto tooLong = [](const ColumnRef& column) {
        return column.sql.text.size() > kLongestStandIn;
    };
    if (std::any_of(columns.begin(), columns.end(), tooLong)) {
        tooComplex();
    }
    const bool allPlain = std::all_of(columns.begin(), columns.end(),
                                      [](const ColumnRef& column) { return column.table >= 0; });
    if (nullable && !allPlain) {
        // A constant of a query must become null with the rest of its row.
        scope.tables->resize(tablesBefore);
        return derived(select, name, scope);
    }
    if (select.where) {
        from.conditions.push_back(expression(*select.where, inner));
    }
    for (const OrderItem& item : select.order) {
        inner.visibleAliases = select.items.size();
        Sql term = collated(asValue(expression(*item.expr, inner)));
        if (term.form != Sql::Form::NumberLiteral) {
            inner.order.push_back({std::move(term), item.descending});
        }
    }
    std::move(inner.order.begin(), inner.order.end(), std::back_inserter(scope.order));
    scope.keyed = scope.keyed && inner.keyed;
    Range range;
    range.name = name;
    range.columns = std::move(columns);
    addRange(std::move(range), scope, select.position);
    return from;
}

FromText Translator::derived(const Select& inner, const QString& name, Scope& scope)
{
    const SelectSql written = select(inner, nullptr, Use::Derived);
    const QString alias = newAlias();
    Range range;
    range.name = name;
    int index = 0;
    for (const ColumnRef& column : written.columns) {
        ColumnRef& entry = range.columns.emplace_back();
        entry.name = column.name;
        entry.field = column.field;
        entry.sql.text = alias + u".c"_s + QString::number(++index);
        entry.sql.type = column.sql.type;
        entry.sql.typed = column.sql.typed;
        entry.sql.strength = kBindsMost;
        entry.sql.stack = 3;
    }
    addRange(std::move(range), scope, inner.position);
    scope.keyed = false;
    FromText result;
    result.text = u'(' + written.text + u") AS "_s + alias;
    result.stack = written.stack + 7;
    if (result.stack > kParserStack) {
        tooComplex();
    }
    return result;
}

} // namespace melovane::sqlite::dialect
