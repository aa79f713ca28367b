#include "platform/sqlite/binder.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t kMostColumns = 1000;
/// SQLite allows 500 arms.
constexpr size_t kMostUnions = 400;

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
        if (range.source != nullptr) {
            for (const FieldDef& field : range.source->fields) {
                columns.push_back(tableColumn(range, field, scope));
            }
        }
        columns.insert(columns.end(), range.columns.begin(), range.columns.end());
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
    nameOf(column, item.alias.isEmpty() ? column.name : item.alias.toString());
    return column;
}

/// Two plain columns of one name are told apart by the name of their table.
static void tellApart(std::vector<ColumnRef>& columns, const std::vector<QString>& origins)
{
    const auto plainTwin = [&](size_t i, size_t j) {
        return i != j && sameName(columns[i].column, columns[j].name) &&
               sameName(columns[j].name, columns[i].name);
    };
    std::vector<size_t> twins;
    for (size_t i = 0; i < columns.size(); ++i) {
        for (size_t j = 0; j < columns.size() && !origins[i].isEmpty(); ++j) {
            if (plainTwin(i, j)) {
                twins.push_back(i);
                break;
            }
        }
    }
    for (const size_t i : twins) {
        nameOf(columns[i], origins[i] + u'.' + columns[i].name);
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
    if (scope.ranges.size() > 1) {
        std::vector<QString> origins(columns.size());
        for (size_t i = 0; i < columns.size(); ++i) {
            for (const Range& range : scope.ranges) {
                if (columns[i].table >= 0 && range.table == columns[i].table) {
                    origins[i] = range.name;
                }
            }
        }
        tellApart(columns, origins);
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

void Translator::appendGroup(const Select& select, Arm& arm)
{
    const auto take = [&](const Sql& sql, int stack) {
        arm.stack = std::max(arm.stack, sql.stack + stack);
        arm.height = std::max(arm.height, sql.height);
        arm.parameter = arm.parameter || sql.parameter;
        return sql.text;
    };
    if (select.group.size() > kMostColumns) {
        tooComplex();
    }
    bool first = true;
    for (const ExprPtr& expr : select.group) {
        arm.scope.visibleAliases = select.items.size();
        Sql term = collated(asValue(expression(*expr, arm.scope)));
        arm.scope.visibleAliases = 0;
        if (isConstant(term)) {
            term.text = u"1 + 0"_s;
        }
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
    if (select.order.empty() && arm.plain && !select.distinct && !select.distinctRow) {
        terms = arm.scope.order;
    }
    if (terms.size() > kMostColumns) {
        tooComplex();
    }
    for (OrderTerm& term : terms) {
        if (isConstant(term.sql)) {
            continue;
        }
        const Sql sql = collated(std::move(term.sql));
        arm.tail += (arm.ordered ? u", "_s : u" ORDER BY "_s) + sql.text;
        arm.tail += term.descending ? u" DESC"_s : u""_s;
        arm.stack = std::max(arm.stack, sql.stack + 11);
        arm.height = std::max(arm.height, sql.height);
        arm.parameter = arm.parameter || sql.parameter;
        arm.ordered = true;
    }
}

void Translator::appendLimit(const Select& select, Arm& arm)
{
    if (select.top < 0) {
        return;
    }
    if (!select.percent) {
        arm.tail += u" LIMIT "_s + QString::number(select.top);
        return;
    }
    const qint64 percent = std::min<qint64>(select.top, 100);
    const bool distinct = select.distinct || (select.distinctRow && arm.tables.size() > 1);
    const QString rows = columnList(arm, distinct, Use::Derived) + arm.tail;
    arm.tail += u" LIMIT (SELECT (count(*) * %1 + 99) / 100 FROM ("_s.arg(percent) + rows + u"))"_s;
    arm.stack += 20;
}

std::unique_ptr<Translator::Arm> Translator::arm(const Select& select, Scope* outer)
{
    auto result = std::make_unique<Arm>();
    Arm& arm = *result;
    arm.scope.outer = outer;
    arm.scope.tables = &arm.tables;
    bindFrom(select.from, arm.scope);
    const auto aggregated = [](const SelectItem& item) {
        return item.expr && hasAggregate(*item.expr);
    };
    arm.plain =
        select.group.empty() && std::none_of(select.items.begin(), select.items.end(), aggregated);
    arm.scope.aggregates = true;
    items(select, arm.scope, arm.columns);
    arm.scope.aggregates = false;
    for (const ColumnRef& column : arm.columns) {
        arm.stack = std::max(arm.stack, column.sql.stack + 7);
        arm.height = std::max(arm.height, column.sql.height + 1);
        arm.parameter = arm.parameter || column.sql.parameter;
    }
    if (!arm.scope.from.isEmpty()) {
        arm.tail = u" FROM "_s + arm.scope.from;
        arm.stack = std::max(arm.stack, arm.scope.fromStack);
    }
    appendWhere(select, arm);
    appendGroup(select, arm);
    appendOrder(select, arm);
    appendLimit(select, arm);
    if (arm.stack > kParserStack || arm.tail.size() > kLongestExpression) {
        tooComplex();
    }
    return result;
}

QString Translator::columnList(const Arm& arm, bool distinct, Use use)
{
    QString text = distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s;
    int index = 0;
    for (const ColumnRef& column : arm.columns) {
        text += index == 0 ? u""_s : u", "_s;
        const bool needsCollation = distinct || use == Use::Derived;
        text += needsCollation ? collated(column.sql).text : column.sql.text;
        ++index;
        if (use == Use::Derived) {
            text += u" AS c"_s + QString::number(index);
        }
    }
    return text;
}

SelectSql Translator::armSql(const Select& select, const Arm& arm, Use use) const
{
    const bool distinct = select.distinct || (select.distinctRow && arm.tables.size() > 1);
    SelectSql result;
    result.text = columnList(arm, distinct, use) + arm.tail;
    result.columns = arm.columns;
    result.stack = arm.stack;
    result.height = arm.height;
    result.parameter = arm.parameter;
    result.ordered = arm.ordered;
    if (use == Use::Value && arm.columns.size() != 1) {
        fail(select.position, u"die Unterabfrage darf nur eine Spalte liefern"_s);
    }
    return result;
}

SelectSql Translator::select(const Select& select, Scope* outer, Use use)
{
    const Depth depth(*this);
    if (!select.unions.empty()) {
        return unionSelect(select, outer, use);
    }
    return armSql(select, *arm(select, outer), use);
}

QString Translator::unionOrder(const Select& select, const std::vector<ColumnRef>& columns)
{
    QString text;
    for (const OrderItem& item : select.unionOrder) {
        size_t place = 0;
        if (item.expr->kind == Expr::Kind::Number) {
            place = size_t(item.expr->text.toULongLong());
        } else if (item.expr->kind == Expr::Kind::Name) {
            for (size_t i = 0; i < columns.size() && place == 0; ++i) {
                place = sameName(columns[i].name, item.expr->text) ? i + 1 : 0;
            }
        }
        if (place < 1 || place > columns.size()) {
            fail(item.expr->position, u"order by nennt keine Spalte der Vereinigung"_s);
        }
        text += text.isEmpty() ? u" ORDER BY "_s : u", "_s;
        text += QString::number(place);
        text += isText(columns[place - 1].sql) ? u" COLLATE MLV"_s : u""_s;
        text += item.descending ? u" DESC"_s : u""_s;
    }
    return text;
}

SelectSql Translator::unionSelect(const Select& select, Scope* outer, Use use)
{
    if (select.unions.size() > kMostUnions || select.unionOrder.size() > kMostColumns) {
        tooComplex();
    }
    SelectSql result;
    const auto take = [&](const Select& part, QLatin1StringView word) {
        const std::unique_ptr<Arm> written = arm(part, outer);
        const bool first = word.isEmpty();
        if (!first && written->columns.size() != result.columns.size()) {
            fail(part.position, u"die Auswahlen haben verschieden viele Spalten"_s);
        }
        const SelectSql sql = armSql(part, *written, Use::Derived);
        // Only the arm as a whole may have an order or a limit.
        const bool wrapped = part.top >= 0 || sql.ordered;
        result.text += word;
        result.text += wrapped ? u"SELECT * FROM ("_s + sql.text + u')' : sql.text;
        result.stack = std::max(result.stack, sql.stack + (wrapped ? 11 : 3));
        result.height = std::max(result.height, sql.height);
        result.parameter = result.parameter || sql.parameter;
        for (size_t i = 0; i < written->columns.size(); ++i) {
            ColumnRef& column =
                first ? result.columns.emplace_back(written->columns[i]) : result.columns[i];
            const Sql& other = written->columns[i].sql;
            if (other.typed) {
                column.sql.type =
                    column.sql.typed ? commonType(column.sql.type, other.type) : other.type;
                column.sql.typed = true;
            }
            column.table = -1;
            column.sql.form = Sql::Form::Value;
            if (column.field.Type != column.sql.type) {
                column.field.Type = column.sql.type;
                column.field.Size = sizeOf(column.sql.type);
            }
        }
    };
    take(select, ""_L1);
    for (const SelectPtr& part : select.unions) {
        take(*part, part->unionAll ? " UNION ALL "_L1 : " UNION "_L1);
    }
    result.text += unionOrder(select, result.columns);
    result.ordered = !select.unionOrder.empty();
    result.stack = std::max(result.stack, 16);
    if (result.stack > kParserStack) {
        tooComplex();
    }
    if (use == Use::Value && result.columns.size() != 1) {
        fail(select.position, u"die Unterabfrage darf nur eine Spalte liefern"_s);
    }
    return result;
}

} // namespace melovane::sqlite::dialect
