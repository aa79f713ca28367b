#include "platform/sqlite/dialect/writer.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

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

void check(const Sql& sql)
{
    if (sql.stack > kParserStack || sql.height > kTreeHeight ||
        sql.text.size() > kLongestExpression) {
        throw TooComplex{};
    }
}

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
    const bool plain = !text.contains(u'\'') && !text.contains(QChar(0));
    if (plain) {
        quoted.append(text);
    }
    for (const QChar sign : plain ? QStringView() : text) {
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
    if (name.contains(u'"')) {
        text.append(name.toString().replace(u"\""_s, u"\"\""_s));
    } else {
        text.append(name);
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

} // namespace melovane::sqlite::dialect
