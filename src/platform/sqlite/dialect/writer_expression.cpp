#include "platform/sqlite/dialect/binder.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isLogical(Op op)
{
    return op == Op::Imp || op == Op::Eqv || op == Op::Xor;
}

bool isComparison(Op op)
{
    return op >= Op::Equal && op <= Op::NotLike;
}

Sql truthOf(QString text, const Sql& like)
{
    Sql sql;
    sql.text = std::move(text);
    sql.type = FieldType::Boolean;
    sql.form = Sql::Form::Truth;
    sql.parameter = like.parameter;
    sql.strength = kBindsEqual;
    sql.stack = like.stack;
    sql.height = like.height + 1;
    return sql;
}

} // namespace

Sql Translator::expression(const Expr& expr, Scope& scope)
{
    const size_t before = scope.loose.size();
    Sql result = written(expr, scope);
    if (scope.loose.size() > before && scope.groups.contains(result.text)) {
        scope.loose.resize(before); // the whole expression is a term of the group
    }
    return result;
}

Sql Translator::written(const Expr& expr, Scope& scope)
{
    const Depth depth(*this);
    switch (expr.kind) {
    case Expr::Kind::Null:
        return nullSql();
    case Expr::Kind::Truth:
        return truthLiteral(!expr.negated);
    case Expr::Kind::Number:
        return numberLiteral(expr.text);
    case Expr::Kind::Text:
        return textLiteral(expr.text);
    case Expr::Kind::Date:
        return numberLiteral(expr.number, FieldType::Date);
    case Expr::Kind::Name:
        return name(expr, scope);
    case Expr::Kind::Chain:
        return chain(expr, scope);
    case Expr::Kind::Minus:
        return minusSign(asValue(expression(*expr.args[0], scope)));
    case Expr::Kind::Not: {
        Sql operand = expression(*expr.args[0], scope);
        return isBits(operand) ? bitwiseNot(std::move(operand)) : negated(std::move(operand));
    }
    case Expr::Kind::IsNull: {
        Sql value = atLeast(expression(*expr.args[0], scope), kBindsLess + 1);
        value.text += expr.negated ? u" IS NOT NULL"_s : u" IS NULL"_s;
        value.stack = std::max(value.stack, 3);
        return truthOf(std::move(value.text), value);
    }
    case Expr::Kind::Between:
        return between(expression(*expr.args[0], scope), expression(*expr.args[1], scope),
                       expression(*expr.args[2], scope), expr.negated);
    case Expr::Kind::InList: {
        std::vector<Sql> list;
        list.reserve(expr.args.size());
        for (size_t i = 1; i < expr.args.size(); ++i) {
            list.push_back(expression(*expr.args[i], scope));
        }
        return inList(expression(*expr.args[0], scope), std::move(list), expr.negated);
    }
    case Expr::Kind::InSelect:
        return inSelect(expr, scope);
    case Expr::Kind::Exists:
        return exists(expr, scope);
    case Expr::Kind::Quantified:
        return quantified(expr, scope);
    case Expr::Kind::Scalar:
        return scalar(*expr.select, &scope);
    case Expr::Kind::Call:
        return functionCall(expr, scope);
    case Expr::Kind::Star:
        break;
    }
    fail(expr.position, u"Ausdruck erwartet"_s);
}

Sql Translator::chain(const Expr& expr, Scope& scope)
{
    const Op first = expr.ops.front();
    if (first == Op::And || first == Op::Or) {
        std::vector<Sql> parts;
        parts.reserve(expr.args.size());
        for (const ExprPtr& part : expr.args) {
            parts.push_back(expression(*part, scope));
        }
        return conjoined(std::move(parts), first);
    }
    Sql result = expression(*expr.args.front(), scope);
    for (size_t i = 0; i < expr.ops.size(); ++i) {
        const Op op = expr.ops[i];
        Sql right = expression(*expr.args[i + 1], scope);
        if (isLogical(op)) {
            result = logical(op, std::move(result), std::move(right));
        } else if (isComparison(op)) {
            result = compare(op, std::move(result), std::move(right));
        } else {
            result = arithmetic(op, std::move(result), std::move(right));
        }
    }
    return result;
}

Sql Translator::inSelect(const Expr& expr, Scope& scope)
{
    Sql value = asValue(expression(*expr.args[0], scope));
    const SelectSql list = select(*expr.select, &scope, Use::Value);
    const Sql& column = list.columns.front().sql;
    if (isText(value) && (isNumber(column) || isDate(column))) {
        Sql other = column;
        alignTypes(value, other);
    } else if (isNumber(value) && isText(column)) {
        value = asText(std::move(value));
    }
    Sql result = atLeast(collated(std::move(value)), kBindsLess + 1);
    result.text += (expr.negated ? u" NOT IN ("_s : u" IN ("_s) + list.text + u')';
    result.parameter = result.parameter || list.parameter;
    result.stack = std::max(result.stack, list.stack + 3);
    result.height = std::max(result.height, list.height);
    return truthOf(std::move(result.text), result);
}

Sql Translator::exists(const Expr& expr, Scope& scope)
{
    const SelectSql rows = select(*expr.select, &scope, Use::Exists);
    Sql result;
    result.parameter = rows.parameter;
    result.stack = rows.stack + 2;
    result.height = rows.height;
    result = truthOf(u"EXISTS ("_s + rows.text + u')', result);
    result.strength = kBindsMost;
    return result;
}

/// A row that compares as asked is looked for; for `all` one that does not.
Sql Translator::quantified(const Expr& expr, Scope& scope)
{
    const Expr& operand = *expr.args.front();
    if (hasAggregate(operand)) {
        fail(operand.position, u"vor any und all darf keine Aggregatfunktion stehen"_s);
    }
    Sql value = expression(operand, scope);
    const SelectSql list = select(*expr.select, &scope, Use::Derived);
    if (list.columns.size() != 1) {
        fail(expr.select->position, u"die Unterabfrage darf nur eine Spalte liefern"_s);
    }
    const QString alias = newAlias();
    Sql column;
    column.text = alias + u".c1"_s;
    column.type = list.columns.front().sql.type;
    column.typed = list.columns.front().sql.typed;
    column.strength = kBindsMost;
    column.stack = 3;
    const Sql test = compare(expr.ops.front(), std::move(value), std::move(column));
    Sql result;
    result.parameter = test.parameter || list.parameter;
    result.stack = std::max(test.stack + 12, list.stack + 14);
    result.height = std::max(test.height, list.height) + 1;
    result.text = (expr.negated ? u"NOT EXISTS (SELECT 1 FROM ("_s : u"EXISTS (SELECT 1 FROM ("_s) +
                  list.text + u") AS "_s + alias + u" WHERE "_s +
                  (expr.negated ? u"NOT ifnull("_s + test.text + u", 0))"_s : test.text + u')');
    result = truthOf(std::move(result.text), result);
    result.strength = expr.negated ? kBindsNot : kBindsMost;
    check(result);
    return result;
}

Sql Translator::scalar(const Select& select, Scope* scope)
{
    const SelectSql row = this->select(select, scope, Use::Value);
    Sql result;
    result.text = u'(' + row.text + u')';
    result.type = row.columns.front().sql.type;
    result.typed = row.columns.front().sql.typed;
    result.parameter = row.parameter;
    result.strength = kBindsMost;
    result.stack = row.stack + 1;
    result.height = row.height + 1;
    check(result);
    return result;
}

} // namespace melovane::sqlite::dialect
