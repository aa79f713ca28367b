#include "platform/sqlite/dialect/binder.h"
#include "platform/sqlite/functions/functions_date.h"

#include <algorithm>
#include <utility>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

void nameOf(ColumnRef& column, const QString& name)
{
    column.name = name;
    column.field.Name = name;
}

/// SQLite takes a bare number in `order by` for the place of a column.
bool isConstant(const Sql& sql)
{
    return sql.form == Sql::Form::NumberLiteral || sql.form == Sql::Form::TextLiteral ||
           sql.form == Sql::Form::Null;
}

} // namespace

bool hasAggregate(const Expr& expr)
{
    if (expr.kind == Expr::Kind::Call && isAggregate(expr.text)) {
        return true;
    }
    return std::any_of(expr.args.begin(), expr.args.end(),
                       [](const ExprPtr& arg) { return hasAggregate(*arg); });
}

void Translator::expandStar(const SelectItem& item, Scope& scope, std::vector<ColumnRef>& columns)
{
    bool hit = false;
    for (const Range& range : scope.ranges) {
        if (!item.starOf.isEmpty() && !sameName(range.name, item.starOf)) {
            continue;
        }
        hit = true;
        const size_t before = columns.size();
        if (range.source != nullptr) {
            for (const FieldDef& field : range.source->fields) {
                columns.push_back(tableColumn(range, field, scope));
            }
        }
        columns.insert(columns.end(), range.columns.begin(), range.columns.end());
        for (size_t i = before; i < columns.size(); ++i) {
            scope.usedTables |= bitOf(columns[i]);
            if (scope.grouped && !scope.groups.contains(columns[i].sql.text)) {
                scope.loose.push_back({columns[i].name, item.position});
            }
            columns[i].range = range.name;
        }
    }
    if (!hit) {
        fail(item.position, item.starOf.isEmpty()
                                ? u"* ohne from"_s
                                : u"die Tabelle \"%1\" ist nicht genannt"_s.arg(item.starOf));
    }
}

ColumnRef Translator::itemColumn(const SelectItem& item, Scope& scope, int& unnamed)
{
    ColumnRef column;
    const Expr& expr = *item.expr;
    const bool plain = expr.kind == Expr::Kind::Name &&
                       resolve(expr.qualifier, expr.text, scope, column, expr.position);
    if (!plain) {
        column.sql = asValue(expression(expr, scope));
        column.field.Type = column.sql.type;
        column.field.Size = sizeOf(column.sql.type);
        if (item.alias.isEmpty()) {
            column.name = u"Expr"_s + QString::number(1000 + unnamed++);
        }
    }
    if (!item.alias.isEmpty()) {
        column.range.clear();
    }
    nameOf(column, item.alias.isEmpty() ? column.name : item.alias.toString());
    return column;
}

/// Columns of one name are told apart by the name of what they were taken from.
static void tellApart(std::vector<ColumnRef>& columns)
{
    std::vector<size_t> twins;
    for (size_t i = 0; i < columns.size(); ++i) {
        for (size_t j = 0; j < columns.size() && !columns[i].range.isEmpty(); ++j) {
            if (i != j && sameName(columns[i].name, columns[j].name)) {
                twins.push_back(i);
                break;
            }
        }
    }
    for (const size_t i : twins) {
        nameOf(columns[i], columns[i].range + u'.' + columns[i].name);
    }
}

void Translator::items(const Select& select, Scope& scope, std::vector<ColumnRef>& columns)
{
    int unnamed = 0;
    scope.select = &select;
    columns.reserve(select.items.size());
    for (size_t i = 0; i < select.items.size(); ++i) {
        scope.visibleAliases = i;
        const SelectItem& item = select.items[i];
        if (item.expr) {
            columns.push_back(itemColumn(item, scope, unnamed));
        } else {
            expandStar(item, scope, columns);
        }
        if (columns.size() > kMostColumns) {
            tooComplex();
        }
    }
    scope.visibleAliases = 0;
    if (select.crosstab) {
        crosstabColumns(*select.crosstab, scope, columns);
    }
    if (scope.ranges.size() > 1) {
        tellApart(columns);
    }
}

namespace {

/// What a column of a crosstab is called: its value as a text.
QString crosstabName(const Expr& value)
{
    switch (value.kind) {
    case Expr::Kind::Null:
        return u"<>"_s;
    case Expr::Kind::Truth:
        return value.negated ? u"0"_s : u"-1"_s;
    case Expr::Kind::Date:
        return formatDate(value.number, u"dd.mm.yyyy");
    case Expr::Kind::Number:
    case Expr::Kind::Text:
        return value.text.toString();
    case Expr::Kind::Name:
    case Expr::Kind::Star:
    case Expr::Kind::Chain:
    case Expr::Kind::Minus:
    case Expr::Kind::Not:
    case Expr::Kind::IsNull:
    case Expr::Kind::Between:
    case Expr::Kind::InList:
    case Expr::Kind::InSelect:
    case Expr::Kind::Exists:
    case Expr::Kind::Scalar:
    case Expr::Kind::Quantified:
    case Expr::Kind::Call:
        break;
    }
    return {};
}

} // namespace

void Translator::crosstabColumns(const Crosstab& crosstab,
                                 Scope& scope,
                                 std::vector<ColumnRef>& columns)
{
    if (!hasAggregate(*crosstab.value)) {
        fail(crosstab.value->position, u"hinter transform fehlt eine Aggregatfunktion"_s);
    }
    const bool grouped = std::exchange(scope.grouped, false); // looked at row by row
    const Sql by = asValue(expression(*crosstab.by, scope));
    scope.grouped = grouped;
    for (const ExprPtr& value : crosstab.list) {
        const QString name = crosstabName(*value);
        if (name.isEmpty()) {
            fail(value->position, value->kind == Expr::Kind::Text
                                      ? u"ein leerer Text gibt keiner Spalte einen Namen"_s
                                      : u"hinter pivot ... in stehen feste Werte"_s);
        }
        if (columns.size() > kMostColumns) {
            tooComplex();
        }
        Sql test;
        if (value->kind == Expr::Kind::Null) {
            test = atLeast(by, kBindsLess + 1);
            test.text += u" IS NULL"_s;
        } else {
            test = compare(Op::Equal, by, expression(*value, scope));
        }
        scope.filter = &test;
        ColumnRef& column = columns.emplace_back();
        column.sql = asValue(expression(*crosstab.value, scope));
        scope.filter = nullptr;
        column.field.Type = column.sql.type;
        column.field.Size = sizeOf(column.sql.type);
        nameOf(column, name);
    }
}

void Translator::appendWhere(const Select& select, Arm& arm)
{
    std::vector<Sql> conditions = std::move(arm.scope.conditions);
    if (select.where) {
        conditions.push_back(expression(*select.where, arm.scope));
    }
    if (conditions.empty()) {
        return;
    }
    const Sql test = joined(std::move(conditions), Op::And);
    arm.tail += u" WHERE "_s + test.text;
    arm.stack = std::max(arm.stack, test.stack + 5);
    arm.height = std::max(arm.height, test.height);
    arm.parameter = arm.parameter || test.parameter;
}

/// Terms come before the columns: what they hold is what a column may show.
void Translator::bindGroups(const Select& select, Arm& arm)
{
    if (select.group.size() > kMostColumns) {
        tooComplex();
    }
    arm.scope.select = &select;
    arm.scope.visibleAliases = select.items.size();
    for (const ExprPtr& expr : select.group) {
        Sql term = asValue(expression(*expr, arm.scope));
        arm.scope.groups.append(term.text);
        term = collated(std::move(term));
        if (isConstant(term)) {
            term.text = u"1 + 0"_s;
        }
        arm.groups.push_back(std::move(term));
    }
    arm.scope.visibleAliases = 0;
    arm.scope.grouped = !arm.plain;
}

void Translator::refuseLoose(Scope& scope)
{
    if (!scope.loose.empty()) {
        const LooseColumn& column = scope.loose.front();
        fail(column.position,
             u"\"%1\" steht weder in group by noch in einer Aggregatfunktion"_s.arg(column.name));
    }
}

void Translator::appendGroup(const Select& select, Arm& arm)
{
    const auto take = [&](const Sql& sql, int stack) {
        arm.stack = std::max(arm.stack, sql.stack + stack);
        arm.height = std::max(arm.height, sql.height);
        arm.parameter = arm.parameter || sql.parameter;
        return sql.text;
    };
    bool first = true;
    for (const Sql& term : arm.groups) {
        arm.tail += (first ? u" GROUP BY "_s : u", "_s) + take(term, 9);
        first = false;
    }
    if (select.having) {
        if (arm.plain) {
            fail(select.having->position, u"having ohne group by"_s);
        }
        arm.scope.aggregates = true;
        arm.scope.visibleAliases = select.items.size();
        arm.tail += u" HAVING "_s + take(expression(*select.having, arm.scope), 7);
        arm.scope.visibleAliases = 0;
        arm.scope.aggregates = false;
    }
}

Sql Translator::orderTerm(const Expr& expr, const Select& select, Arm& arm)
{
    if (expr.kind == Expr::Kind::Number) {
        bool whole = false;
        const qint64 place = expr.text.toLongLong(&whole);
        if (whole && place >= 1 && place <= qint64(arm.columns.size())) {
            return arm.columns[size_t(place - 1)].sql;
        }
    }
    if (expr.kind == Expr::Kind::Name && expr.qualifier.isEmpty()) {
        for (const SelectItem& item : select.items) {
            if (item.expr && sameName(item.alias, expr.text) && !item.alias.isEmpty()) {
                return asValue(expression(*item.expr, arm.scope));
            }
        }
        for (const ColumnRef& column : arm.columns) {
            if (sameName(column.name, expr.text)) {
                return column.sql;
            }
        }
    }
    arm.scope.visibleAliases = select.items.size();
    Sql term = asValue(expression(expr, arm.scope));
    arm.scope.visibleAliases = 0;
    return term;
}

void Translator::appendOrder(const Select& select, Arm& arm)
{
    std::vector<OrderTerm> terms;
    arm.scope.aggregates = !arm.plain;
    for (const OrderItem& item : select.order) {
        terms.push_back({orderTerm(*item.expr, select, arm), item.descending});
    }
    arm.scope.aggregates = false;
    if (select.order.empty() && arm.plain && !select.distinct) {
        terms = arm.scope.order;
    }
    if (terms.size() > kMostColumns) {
        tooComplex();
    }
    for (OrderTerm& term : terms) {
        if (isConstant(term.sql)) {
            continue;
        }
        OrderTerm& kept = arm.order.emplace_back();
        kept.sql = collated(std::move(term.sql));
        kept.descending = term.descending;
        arm.stack = std::max(arm.stack, kept.sql.stack + 11);
        arm.height = std::max(arm.height, kept.sql.height);
        arm.parameter = arm.parameter || kept.sql.parameter;
    }
}

/// "distinctrow" takes the rows of the tables whose columns are shown once each. When all tables
/// show columns that is what the rows are already.
void Translator::mergeRows(const Select& select, Arm& arm)
{
    const quint64 used = arm.scope.usedTables;
    const quint64 all =
        arm.tables.size() >= 64 ? kEveryTable : (quint64(1) << arm.tables.size()) - 1;
    if (!select.distinctRow || !arm.plain ||
        (arm.tables.size() < 2 && arm.scope.ranges.size() < 2) ||
        (arm.scope.keyed && (used & all) == all)) {
        return;
    }
    if (!arm.scope.keyed || (used & all) == 0) {
        arm.distinct = true;
        return;
    }
    QStringList keys;
    for (size_t i = 0; i < arm.tables.size(); ++i) {
        if ((used >> i & 1) != 0) {
            keys.append(arm.tables[i].rowId);
        }
    }
    arm.tail += u" GROUP BY "_s + keys.join(u", ");
    arm.plain = false;
}

std::unique_ptr<Translator::Arm> Translator::arm(const Select& select, Scope* outer)
{
    auto result = std::make_unique<Arm>();
    Arm& arm = *result;
    arm.scope.outer = outer;
    arm.scope.tables = &arm.tables;
    bindFrom(select.from, arm.scope);
    arm.distinct = select.distinct;
    const auto aggregated = [](const SelectItem& item) {
        return item.expr && hasAggregate(*item.expr);
    };
    if (select.crosstab && select.group.empty()) {
        fail(select.position, u"transform verlangt group by"_s);
    }
    arm.plain =
        select.group.empty() && std::none_of(select.items.begin(), select.items.end(), aggregated);
    bindGroups(select, arm);
    arm.scope.aggregates = true;
    arm.scope.usedTables = 0;
    items(select, arm.scope, arm.columns);
    arm.scope.aggregates = false;
    const quint64 shown = arm.scope.usedTables;
    for (const ColumnRef& column : arm.columns) {
        arm.stack = std::max(arm.stack, column.sql.stack + 7);
        arm.height = std::max(arm.height, column.sql.height + 1);
        arm.parameter = arm.parameter || column.sql.parameter;
    }
    if (!arm.scope.from.isEmpty()) {
        arm.tail = u" FROM "_s + arm.scope.from;
        arm.stack = std::max(arm.stack, arm.scope.fromStack);
    }
    const bool grouped = std::exchange(arm.scope.grouped, false);
    appendWhere(select, arm);
    arm.scope.grouped = grouped;
    appendGroup(select, arm);
    appendOrder(select, arm);
    refuseLoose(arm.scope);
    arm.scope.usedTables = shown;
    mergeRows(select, arm);
    if (select.top >= 0 && (select.percent || !arm.order.empty())) {
        constexpr int kTwoSelectsAround = 24;
        arm.stack += kTwoSelectsAround;
    }
    if (arm.stack > kParserStack || arm.tail.size() > kLongestExpression) {
        tooComplex();
    }
    return result;
}

} // namespace melovane::sqlite::dialect
