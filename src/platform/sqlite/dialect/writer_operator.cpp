#include "platform/sqlite/dialect/writer.h"
#include "platform/sqlite/functions/functions_date.h"
#include "platform/sqlite/functions/functions_text.h"

#include <algorithm>
#include <optional>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// For comparisons: a text that is no number is null there, equal to nothing.
Sql comparableNumber(const Sql& sql)
{
    if (sql.form == Sql::Form::TextLiteral) {
        if (const auto number = wholeTextNumber(sql.literal)) {
            return numberLiteral(*number, FieldType::Double);
        }
    }
    return call("mlv_num"_L1, sql, FieldType::Double);
}

Sql comparableDate(const Sql& sql)
{
    if (sql.form == Sql::Form::TextLiteral) {
        if (const auto day = dateFromText(sql.literal)) {
            return numberLiteral(*day, FieldType::Date);
        }
    }
    return call("mlv_cdate"_L1, sql, FieldType::Date);
}

} // namespace

void alignTypes(Sql& left, Sql& right)
{
    const auto align = [](Sql& text, const Sql& other) {
        if (isText(text) && isNumber(other)) {
            text = comparableNumber(text);
        } else if (isText(text) && isDate(other)) {
            text = comparableDate(text);
        }
    };
    align(left, right);
    align(right, left);
}

namespace {

QLatin1StringView comparisonSign(Op op)
{
    switch (op) {
    case Op::NotEqual:
        return "<>"_L1;
    case Op::Less:
        return "<"_L1;
    case Op::LessEqual:
        return "<="_L1;
    case Op::Greater:
        return ">"_L1;
    case Op::GreaterEqual:
        return ">="_L1;
    case Op::Like:
        return "LIKE"_L1;
    case Op::NotLike:
        return "NOT LIKE"_L1;
    case Op::Equal:
    case Op::Imp:
    case Op::Eqv:
    case Op::Xor:
    case Op::Or:
    case Op::And:
    case Op::Concat:
    case Op::Add:
    case Op::Subtract:
    case Op::Modulo:
    case Op::IntDivide:
    case Op::Multiply:
    case Op::Divide:
    case Op::Power:
        break;
    }
    return "="_L1;
}

Sql truth(Sql sql)
{
    sql.form = Sql::Form::Truth;
    return sql;
}

/// One side at least must bring the collation; SQLite asks the left one first.
void collateEither(Sql& left, Sql& right)
{
    const bool texts = (isText(left) || !left.typed) && (isText(right) || !right.typed);
    const bool leftHasIt = left.form == Sql::Form::Column && isText(left);
    const bool rightHasIt =
        right.form == Sql::Form::Column && isText(right) && left.form != Sql::Form::Column;
    if (!texts || leftHasIt || rightHasIt) {
        return;
    }
    right.type = FieldType::Text;
    right.typed = true;
    right.form = Sql::Form::Value;
    right = collated(std::move(right));
}

} // namespace

Sql compare(Op op, Sql left, Sql right)
{
    left = asValue(std::move(left));
    right = asValue(std::move(right));
    if (op == Op::Like || op == Op::NotLike) {
        left = isDate(left) ? asText(std::move(left)) : std::move(left);
        right = isDate(right) ? asText(std::move(right)) : std::move(right);
        return truth(binary(atLeast(std::move(left), kBindsLess + 1), comparisonSign(op),
                            atLeast(std::move(right), kBindsLess + 1), kBindsEqual,
                            FieldType::Boolean));
    }
    alignTypes(left, right);
    collateEither(left, right);
    return truth(binary(atLeast(std::move(left), kBindsLess + 1), comparisonSign(op),
                        atLeast(std::move(right), kBindsLess + 1), kBindsEqual,
                        FieldType::Boolean));
}

Sql between(Sql value, Sql low, Sql high, bool isNegated)
{
    value = asValue(std::move(value));
    low = asValue(std::move(low));
    high = asValue(std::move(high));
    alignTypes(value, low);
    alignTypes(value, high);
    alignTypes(value, low);
    if (isText(value) || !value.typed) {
        const bool texts = isText(value) || (isText(low) && isText(high));
        value.type = FieldType::Text;
        value.typed = texts;
        value = collated(std::move(value));
    }
    value = atLeast(std::move(value), kBindsLess + 1);
    low = atLeast(std::move(low), kBindsLess + 1);
    Sql result = binary(std::move(value), isNegated ? "NOT BETWEEN"_L1 : "BETWEEN"_L1, low,
                        kBindsEqual, FieldType::Boolean);
    high = atLeast(std::move(high), kBindsLess + 1);
    result.text.append(u" AND "_s).append(high.text);
    result.parameter = result.parameter || high.parameter;
    result.stack = std::max(result.stack, high.stack + 4);
    result.height = std::max(result.height, high.height + 2);
    check(result);
    return truth(std::move(result));
}

Sql inList(Sql value, std::vector<Sql> list, bool isNegated)
{
    value = asValue(std::move(value));
    bool allNumbers = true;
    for (Sql& entry : list) {
        entry = asValue(std::move(entry));
        allNumbers = allNumbers && isNumber(entry);
    }
    if (isText(value) && allNumbers) {
        alignTypes(value, list.front());
    }
    Sql result = atLeast(collated(value), kBindsLess + 1);
    result.text.append(isNegated ? u" NOT IN ("_s : u" IN ("_s);
    bool first = true;
    for (Sql& entry : list) {
        if (isText(value) && entry.typed) {
            entry = asText(std::move(entry));
        } else if (value.typed && !isText(value)) {
            Sql model = value;
            alignTypes(model, entry);
        }
        result.text.append(first ? u""_s : u", "_s).append(entry.text);
        first = false;
        result.parameter = result.parameter || entry.parameter;
        result.stack = std::max(result.stack, entry.stack + 5);
        result.height = std::max(result.height, entry.height + 1);
    }
    result.text.append(u')');
    result.height += 1;
    result.type = FieldType::Boolean;
    result.typed = true;
    result.strength = kBindsEqual;
    check(result);
    return truth(std::move(result));
}

namespace {

/// A text beside a number: the sum when the text is a number, else both as one text.
Sql addMixed(Sql left, Sql right)
{
    const auto literalNumber = [](Sql& side) {
        if (side.form != Sql::Form::TextLiteral) {
            return true;
        }
        const auto number = wholeTextNumber(side.literal);
        if (number) {
            side = numberLiteral(*number, FieldType::Double);
        }
        return number.has_value();
    };
    if (!literalNumber(left) || !literalNumber(right)) {
        return binary(asText(std::move(left)), "||"_L1, asText(std::move(right)), kBindsConcat,
                      FieldType::Text);
    }
    if (isText(left) || isText(right)) {
        return call("mlv_add"_L1, {left, right}, FieldType::Text);
    }
    return binary(std::move(left), "+"_L1, right, kBindsAdd, FieldType::Double);
}

Sql add(Sql left, Sql right)
{
    if ((isText(left) && isNumber(right)) || (isNumber(left) && isText(right))) {
        return addMixed(std::move(left), std::move(right));
    }
    if (isText(left) || isText(right)) {
        return binary(asText(std::move(left)), "||"_L1, asText(std::move(right)), kBindsConcat,
                      FieldType::Text);
    }
    if (!left.typed && !right.typed) {
        Sql result = call("mlv_plus"_L1, {left, right}, FieldType::Text);
        result.typed = false;
        return result;
    }
    FieldType type =
        commonType(left.typed ? left.type : right.type, right.typed ? right.type : left.type);
    if (type == FieldType::Boolean) {
        type = FieldType::Long;
    }
    if (isDate(left) != isDate(right)) {
        type = FieldType::Date;
    }
    return binary(std::move(left), "+"_L1, right, kBindsAdd, type);
}

Sql subtract(Sql left, Sql right)
{
    left = asNumber(std::move(left));
    right = asNumber(std::move(right));
    FieldType type =
        left.typed && right.typed ? commonType(left.type, right.type) : FieldType::Double;
    if (isDate(left) && !isDate(right)) {
        type = FieldType::Date;
    } else if (isDate(left)) {
        type = FieldType::Double;
    } else if (type == FieldType::Boolean) {
        type = FieldType::Long;
    }
    return binary(std::move(left), "-"_L1, right, kBindsAdd, type);
}

Sql multiply(Sql left, Sql right)
{
    left = asNumber(std::move(left));
    right = asNumber(std::move(right));
    const auto whole = [](const Sql& sql) {
        return sql.typed && (sql.type == FieldType::Long || sql.type == FieldType::Boolean);
    };
    const FieldType type = whole(left) && whole(right) ? FieldType::Long : FieldType::Double;
    return binary(std::move(left), "*"_L1, right, kBindsMultiply, type);
}

Sql divide(Sql left, const Sql& right)
{
    left = asNumber(std::move(left));
    if (!left.typed || left.type != FieldType::Double) {
        left = binary(std::move(left), "*"_L1, numberLiteral(1, FieldType::Double), kBindsMultiply,
                      FieldType::Double);
    }
    return binary(std::move(left), "/"_L1, asNumber(right), kBindsMultiply, FieldType::Double);
}

Sql concat(Sql left, Sql right)
{
    const auto orEmpty = [](Sql sql) {
        sql = asText(std::move(sql));
        return sql.present ? sql : call("ifnull"_L1, {sql, textLiteral(u"")}, FieldType::Text);
    };
    Sql result = binary(orEmpty(std::move(left)), "||"_L1, orEmpty(std::move(right)), kBindsConcat,
                        FieldType::Text);
    result.present = true;
    return result;
}

} // namespace

Sql arithmetic(Op op, Sql left, Sql right)
{
    left = asValue(std::move(left));
    right = asValue(std::move(right));
    switch (op) {
    case Op::Add:
        return add(std::move(left), std::move(right));
    case Op::Subtract:
        return subtract(std::move(left), std::move(right));
    case Op::Multiply:
        return multiply(std::move(left), std::move(right));
    case Op::Divide:
        return divide(std::move(left), right);
    case Op::Concat:
        return concat(std::move(left), std::move(right));
    case Op::IntDivide:
        return call("mlv_idiv"_L1, {asNumber(left), asNumber(right)}, FieldType::Long);
    case Op::Modulo:
        return call("mlv_mod"_L1, {asNumber(left), asNumber(right)}, FieldType::Long);
    case Op::Power:
        return call("mlv_power"_L1, {asNumber(left), asNumber(right)}, FieldType::Double);
    case Op::Imp:
    case Op::Eqv:
    case Op::Xor:
    case Op::Or:
    case Op::And:
    case Op::Equal:
    case Op::NotEqual:
    case Op::Less:
    case Op::LessEqual:
    case Op::Greater:
    case Op::GreaterEqual:
    case Op::Like:
    case Op::NotLike:
        break;
    }
    throw TooComplex{};
}

namespace {

QLatin1StringView bitFunction(Op op)
{
    switch (op) {
    case Op::And:
        return "mlv_bitand"_L1;
    case Op::Or:
        return "mlv_bitor"_L1;
    case Op::Xor:
        return "mlv_bitxor"_L1;
    case Op::Imp:
        return "mlv_bitimp"_L1;
    case Op::Eqv:
    case Op::Equal:
    case Op::NotEqual:
    case Op::Less:
    case Op::LessEqual:
    case Op::Greater:
    case Op::GreaterEqual:
    case Op::Like:
    case Op::NotLike:
    case Op::Concat:
    case Op::Add:
    case Op::Subtract:
    case Op::Modulo:
    case Op::IntDivide:
    case Op::Multiply:
    case Op::Divide:
    case Op::Power:
        break;
    }
    return "mlv_biteqv"_L1;
}

Sql bitwise(Op op, Sql left, Sql right)
{
    return call(bitFunction(op), {asNumber(std::move(left)), asNumber(std::move(right))},
                FieldType::Long);
}

} // namespace

bool isBits(const Sql& sql)
{
    return sql.typed && sql.form != Sql::Form::Truth && sql.type != FieldType::Boolean;
}

Sql bitwiseNot(Sql operand)
{
    return call("mlv_bitnot"_L1, asNumber(std::move(operand)), FieldType::Long);
}

Sql conjoined(std::vector<Sql> parts, Op op)
{
    std::vector<Sql> truths;
    std::optional<Sql> numbers;
    for (Sql& part : parts) {
        if (!isBits(part)) {
            truths.push_back(std::move(part));
        } else {
            numbers = numbers ? bitwise(op, *std::move(numbers), std::move(part)) : std::move(part);
        }
    }
    if (!numbers) {
        return joined(std::move(truths), op);
    }
    return truths.empty() ? *std::move(numbers)
                          : bitwise(op, joined(std::move(truths), op), *std::move(numbers));
}

Sql logical(Op op, Sql left, Sql right)
{
    if (isBits(left) || isBits(right)) {
        return bitwise(op, std::move(left), std::move(right));
    }
    const auto plainTruth = [](Sql sql) {
        return sql.form == Sql::Form::Truth ? sql
                                            : truth(binary(asNumber(std::move(sql)), "<>"_L1,
                                                           numberLiteral(0, FieldType::Long),
                                                           kBindsEqual, FieldType::Boolean));
    };
    if (op == Op::Imp) {
        return joined({negated(std::move(left)), std::move(right)}, Op::Or);
    }
    return truth(binary(
        atLeast(plainTruth(std::move(left)), kBindsLess + 1), op == Op::Xor ? "<>"_L1 : "="_L1,
        atLeast(plainTruth(std::move(right)), kBindsLess + 1), kBindsEqual, FieldType::Boolean));
}

} // namespace melovane::sqlite::dialect
