#include "platform/sqlite/writer.h"

#include "platform/sqlite/functions_date.h"
#include "platform/sqlite/functions_text.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

void check(const Sql& sql)
{
    if (sql.stack > kParserStack || sql.height > kTreeHeight ||
        sql.text.size() > kLongestExpression) {
        throw TooComplex{};
    }
}

Sql leaf(QString text, FieldType type, Sql::Form form)
{
    Sql sql;
    sql.text = std::move(text);
    sql.type = type;
    sql.form = form;
    sql.strength = kBindsMost;
    return sql;
}

bool isTextType(FieldType type)
{
    return type == FieldType::Text || type == FieldType::Memo;
}

QString realText(double number)
{
    if (std::isinf(number)) {
        return number > 0 ? u"9e999"_s : u"-9e999"_s;
    }
    QString text = QString::number(number, 'g', QLocale::FloatingPointShortest);
    if (!text.contains(u'.') && !text.contains(u'e')) {
        text += u".0"_s;
    }
    return text;
}

} // namespace

Sql nullSql()
{
    Sql sql = leaf(u"NULL"_s, FieldType::Text, Sql::Form::Null);
    sql.typed = false;
    return sql;
}

Sql truthLiteral(bool truth)
{
    return numberLiteral(truth ? -1 : 0, FieldType::Boolean);
}

Sql numberLiteral(double number, FieldType type)
{
    const bool whole = type == FieldType::Long || type == FieldType::Boolean;
    Sql sql = leaf(whole ? QString::number(qint64(number)) : realText(number), type,
                   Sql::Form::NumberLiteral);
    sql.number = number;
    if (sql.text.startsWith(u'-')) {
        sql.strength = kBindsSign;
        sql.stack = 2;
    }
    return sql;
}

Sql numberLiteral(QStringView digits)
{
    bool whole = false;
    const qlonglong number = digits.toLongLong(&whole);
    if (whole && number <= std::numeric_limits<qint32>::max()) {
        return numberLiteral(double(number), FieldType::Long);
    }
    bool fine = false;
    double real = digits.toDouble(&fine);
    if (!fine && !std::isinf(real)) {
        real = 0;
    }
    return numberLiteral(real, FieldType::Double);
}

Sql textLiteral(QStringView text)
{
    QString quoted;
    quoted.reserve(text.size() + 4);
    quoted.append(u'\'');
    for (const QChar sign : text) {
        // SQLite would take a zero for the end of the statement; no column holds one.
        if (sign.isNull()) {
            continue;
        }
        if (sign == u'\'') {
            quoted.append(sign);
        }
        quoted.append(sign);
    }
    quoted.append(u'\'');
    Sql sql = leaf(std::move(quoted), FieldType::Text, Sql::Form::TextLiteral);
    sql.literal = text;
    sql.present = true;
    return sql;
}

void appendQuotedName(QString& text, QStringView name)
{
    text.append(u'"');
    for (const QChar sign : name) {
        if (sign == u'"') {
            text.append(sign);
        }
        text.append(sign);
    }
    text.append(u'"');
}

Sql parenthesized(Sql inner)
{
    inner.text.prepend(u'(');
    inner.text.append(u')');
    inner.strength = kBindsMost;
    inner.stack += 1;
    check(inner);
    return inner;
}

Sql atLeast(Sql inner, int strength)
{
    return inner.strength >= strength ? inner : parenthesized(std::move(inner));
}

Sql binary(Sql left, QLatin1StringView op, const Sql& right, int strength, FieldType type)
{
    Sql result = atLeast(std::move(left), strength);
    const bool bare = right.strength > strength;
    result.text.reserve(result.text.size() + op.size() + right.text.size() + 4);
    result.text.append(u' ').append(op).append(bare ? u" "_s : u" ("_s).append(right.text);
    if (!bare) {
        result.text.append(u')');
    }
    result.type = type;
    result.typed = true;
    result.form = Sql::Form::Value;
    result.present = false;
    result.parameter = result.parameter || right.parameter;
    result.strength = strength;
    result.stack = std::max(result.stack, right.stack + (bare ? 2 : 3));
    result.height = std::max(result.height, right.height) + 1;
    check(result);
    return result;
}

Sql call(QLatin1StringView name, const std::vector<Sql>& args, FieldType type)
{
    Sql result = leaf(name, type, Sql::Form::Value);
    result.text.append(u'(');
    for (size_t i = 0; i < args.size(); ++i) {
        result.text.append(i == 0 ? u""_s : u", "_s).append(args[i].text);
        result.stack = std::max(result.stack, args[i].stack + 5);
        result.height = std::max(result.height, args[i].height + 1);
        result.parameter = result.parameter || args[i].parameter;
    }
    result.text.append(u')');
    check(result);
    return result;
}

Sql call(QLatin1StringView name, const Sql& arg, FieldType type)
{
    Sql result = leaf(name, type, Sql::Form::Value);
    result.text.append(u'(').append(arg.text).append(u')');
    result.stack = arg.stack + 5;
    result.height = arg.height + 1;
    result.parameter = arg.parameter;
    check(result);
    return result;
}

Sql joined(std::vector<Sql> parts, Op op)
{
    // Groups keep the tree low: SQLite refuses trees that are higher than a thousand.
    constexpr size_t kGroup = 200;
    if (parts.size() > kMostConditions) {
        throw TooComplex{};
    }
    const bool isAnd = op == Op::And;
    const int strength = isAnd ? kBindsAnd : kBindsOr;
    while (parts.size() > kGroup) {
        std::vector<Sql> groups;
        for (size_t at = 0; at < parts.size(); at += kGroup) {
            const auto begin = parts.begin() + std::ptrdiff_t(at);
            const auto end = parts.begin() + std::ptrdiff_t(std::min(at + kGroup, parts.size()));
            groups.push_back(parenthesized(joined(std::vector<Sql>(begin, end), op)));
        }
        parts = std::move(groups);
    }
    Sql result = std::move(parts.front());
    for (size_t i = 1; i < parts.size(); ++i) {
        result = binary(std::move(result), isAnd ? "AND"_L1 : "OR"_L1, parts[i], strength,
                        FieldType::Boolean);
        result.form = Sql::Form::Truth;
    }
    return result;
}

Sql negated(Sql condition)
{
    Sql result = atLeast(std::move(condition), kBindsNot);
    result.text.prepend(u"NOT "_s);
    result.type = FieldType::Boolean;
    result.typed = true;
    result.form = Sql::Form::Truth;
    result.strength = kBindsNot;
    result.stack += 1;
    result.height += 1;
    check(result);
    return result;
}

Sql minusSign(Sql operand)
{
    if (operand.form == Sql::Form::NumberLiteral) {
        const FieldType type = operand.type == FieldType::Boolean ? FieldType::Long : operand.type;
        return numberLiteral(operand.number == 0 ? 0 : -operand.number, type);
    }
    Sql result = atLeast(asNumber(std::move(operand)), kBindsMost);
    result.text.prepend(u'-');
    result.type = result.type == FieldType::Boolean ? FieldType::Long : result.type;
    result.form = Sql::Form::Value;
    result.strength = kBindsSign;
    result.stack += 1;
    result.height += 1;
    check(result);
    return result;
}

bool isText(const Sql& sql)
{
    return sql.typed && isTextType(sql.type);
}

bool isDate(const Sql& sql)
{
    return sql.typed && sql.type == FieldType::Date;
}

bool isNumber(const Sql& sql)
{
    return sql.typed && !isTextType(sql.type) && sql.type != FieldType::Date;
}

FieldType commonType(FieldType left, FieldType right)
{
    if (left == right) {
        return left;
    }
    if (isTextType(left) || isTextType(right)) {
        return left == FieldType::Memo || right == FieldType::Memo ? FieldType::Memo
                                                                   : FieldType::Text;
    }
    if (left == FieldType::Double || right == FieldType::Double) {
        return FieldType::Double;
    }
    return left == FieldType::Date || right == FieldType::Date ? FieldType::Date : FieldType::Long;
}

Sql asValue(Sql sql)
{
    if (sql.form != Sql::Form::Truth) {
        return sql;
    }
    Sql result = atLeast(std::move(sql), kBindsMost);
    result.text.prepend(u'-');
    result.form = Sql::Form::Value;
    result.strength = kBindsSign;
    result.stack += 1;
    result.height += 1;
    check(result);
    return result;
}

Sql asText(Sql sql)
{
    sql = asValue(std::move(sql));
    if (isText(sql) || sql.form == Sql::Form::Null) {
        return sql;
    }
    if (isDate(sql)) {
        return call("mlv_datetext"_L1, sql, FieldType::Text);
    }
    return call("mlv_cstr"_L1, sql, FieldType::Text);
}

Sql asNumber(Sql sql)
{
    sql = asValue(std::move(sql));
    return isText(sql) ? call("mlv_lead"_L1, sql, FieldType::Double) : sql;
}

Sql collated(Sql sql)
{
    if (!isText(sql) || sql.form == Sql::Form::Column) {
        return sql;
    }
    Sql result = atLeast(std::move(sql), kBindsCollate);
    result.text.append(u" COLLATE MLV"_s);
    result.strength = kBindsCollate;
    result.form = Sql::Form::Value;
    result.stack = std::max(result.stack, 3);
    result.height += 1;
    check(result);
    return result;
}

namespace {

bool fitsUnchanged(const Sql& sql, const FieldDef& target)
{
    switch (target.Type) {
    case FieldType::Boolean:
        return sql.type == FieldType::Boolean;
    case FieldType::Long:
        return sql.type == FieldType::Boolean ||
               (sql.type == FieldType::Long &&
                (sql.form == Sql::Form::Column || sql.form == Sql::Form::NumberLiteral));
    case FieldType::Double:
        return isNumber(sql) || isDate(sql);
    case FieldType::Date:
        return isDate(sql);
    case FieldType::Memo:
        return isText(sql);
    case FieldType::Text:
        return isText(sql) && (target.Size == 0 || (sql.form == Sql::Form::TextLiteral &&
                                                    sql.literal.size() <= target.Size));
    }
    return false;
}

} // namespace

Sql asAssigned(Sql sql, const FieldDef& target)
{
    sql = asValue(std::move(sql));
    if (sql.form == Sql::Form::Null || (sql.typed && fitsUnchanged(sql, target))) {
        return sql;
    }
    switch (target.Type) {
    case FieldType::Boolean:
        return call("mlv_tobool"_L1, sql, target.Type);
    case FieldType::Long:
        return call("mlv_tolong"_L1, sql, target.Type);
    case FieldType::Double:
        return call("mlv_todouble"_L1, sql, target.Type);
    case FieldType::Date:
        return call("mlv_todate"_L1, sql, target.Type);
    case FieldType::Memo:
        return asText(std::move(sql));
    case FieldType::Text:
        return call("mlv_totext"_L1,
                    {sql.typed && !isText(sql) ? asText(sql) : sql,
                     numberLiteral(target.Size, FieldType::Long)},
                    target.Type);
    }
    return sql;
}

namespace {

/// For comparisons: a text that is no number is null there, equal to nothing.
Sql comparableNumber(Sql sql)
{
    if (sql.form == Sql::Form::TextLiteral) {
        if (const auto number = wholeTextNumber(sql.literal)) {
            return numberLiteral(*number, FieldType::Double);
        }
    }
    return call("mlv_num"_L1, sql, FieldType::Double);
}

Sql comparableDate(Sql sql)
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
            text = comparableNumber(std::move(text));
        } else if (isText(text) && isDate(other)) {
            text = comparableDate(std::move(text));
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

Sql add(Sql left, Sql right)
{
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

Sql logical(Op op, Sql left, Sql right)
{
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
