#include "platform/sqlite/engine/columns.h"

#include "platform/db/db_fault.h"
#include "platform/db/sql_text.h"
#include "platform/sqlite/dialect/column_defaults.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/system/leading_number.h"

#include <cmath>
#include <limits>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Width of a text column that was made without one.
constexpr int kDefaultWidth = 255;

QString literal(const Value& value)
{
    if (value.isNull()) {
        return u"NULL"_s;
    }
    return value.isText() ? sql::text(value.toText()) : sql::number(value.toDouble());
}

[[noreturn]] void throwMismatch(const FieldDef& field)
{
    throw dbError(DbFault::ValueMismatch, field.Name);
}

/// The number that a value is, not only begins with.
double wholeNumberText(const FieldDef& field, const Value& value)
{
    if (!value.isText()) {
        return value.toDouble();
    }
    bool isNumber = false;
    const double number = value.toText().trimmed().toDouble(&isNumber);
    if (!isNumber) {
        throwMismatch(field);
    }
    return number;
}

Value storableTruth(const FieldDef& field, const Value& value)
{
    if (value.isText()) {
        const QString word = value.toText().trimmed().toLower();
        if (word == "true"_L1 || word == "yes"_L1) {
            return Value(true);
        }
        if (word == "false"_L1 || word == "no"_L1) {
            return Value(false);
        }
    }
    return Value(wholeNumberText(field, value) != 0);
}

Value storableLong(const FieldDef& field, const Value& value)
{
    const double number = wholeNumberText(field, value);
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<int>::min() &&
          rounded <= std::numeric_limits<int>::max())) {
        throwMismatch(field);
    }
    return Value(toLongHalfEven(number));
}

Value storableDouble(const FieldDef& field, const Value& value)
{
    const double number = wholeNumberText(field, value);
    if (!std::isfinite(number)) {
        throwMismatch(field);
    }
    return Value(number);
}

Value storableDate(const FieldDef& field, const Value& value)
{
    if (value.isText()) {
        const QDateTime moment = value.toDateTime();
        if (!moment.isValid()) {
            throwMismatch(field);
        }
        return Value(moment);
    }
    // Asked as a number: a local time would look for the time zone at each call.
    const double day = value.toDouble();
    if (!isDayNumber(day)) {
        throwMismatch(field);
    }
    return Value(Value::Day{day});
}

Value storableText(const FieldDef& field, const Value& value)
{
    QString text = value.toText();
    text.remove(QChar(u'\0'));
    const bool tooLong =
        field.Type == FieldType::Text && field.Size > 0 && text.size() > field.Size;
    if (tooLong) {
        throw dbError(DbFault::TextTooLong, field.Name);
    }
    if (text.isEmpty() && !field.AllowZeroLength) {
        throw dbError(DbFault::TextEmpty, field.Name);
    }
    return Value(text);
}

FieldDef fieldOf(FieldType type, int size, int attributes)
{
    FieldDef field;
    field.Type = type;
    field.Size = size;
    field.Attributes = attributes;
    return field;
}

FieldDef foreignField(const QString& declared)
{
    const auto has = [&](QLatin1StringView word) { return declared.contains(word); };
    if (has("INT"_L1)) {
        return fieldOf(FieldType::Long, 4, kFieldFixed);
    }
    if (has("REAL"_L1) || has("FLOA"_L1) || has("DOUB"_L1) || has("NUM"_L1)) {
        return fieldOf(FieldType::Double, 8, kFieldFixed);
    }
    return fieldOf(FieldType::Memo, 0, kFieldVariable);
}

} // namespace

QString declaredType(const FieldDef& field)
{
    switch (field.Type) {
    case FieldType::Boolean:
        return u"YESNO"_s;
    case FieldType::Long:
        return u"LONG"_s;
    case FieldType::Double:
        return u"DOUBLE"_s;
    case FieldType::Date:
        return u"DATE"_s;
    case FieldType::Text:
        return u"TEXT(%1)"_s.arg(field.Size > 0 ? field.Size : kDefaultWidth);
    case FieldType::Memo:
        return u"TEXT MEMO"_s;
    }
    return {};
}

FieldDef fieldOfType(const QString& declared)
{
    const QString type = declared.toUpper();
    if (type == "YESNO"_L1) {
        return fieldOf(FieldType::Boolean, 1, kFieldFixed);
    }
    if (type == "LONG"_L1) {
        return fieldOf(FieldType::Long, 4, kFieldFixed);
    }
    if (type == "DATE"_L1) {
        return fieldOf(FieldType::Date, 8, kFieldFixed);
    }
    if (type.startsWith("TEXT("_L1)) {
        return fieldOf(FieldType::Text, leadingLong(QStringView(type).sliced(5)), kFieldVariable);
    }
    return foreignField(type);
}

QString columnClause(const QString& table, const FieldDef& field, bool key)
{
    const QString name = quotedName(field.Name);
    if (field.Attributes & kFieldAutoNumber) {
        return name + u" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    }
    QString clause = name + u' ' + declaredType(field);
    const bool isText = field.Type == FieldType::Text || field.Type == FieldType::Memo;
    if (isText) {
        clause += u" COLLATE MLV"_s;
    }
    if (key || field.Required) {
        clause += u" NOT NULL"_s;
    }
    clause += defaultClause(field);
    const QString constraint = table + u'.' + field.Name;
    if (field.Type == FieldType::Text) {
        const int width = field.Size > 0 ? field.Size : kDefaultWidth;
        clause +=
            u" CONSTRAINT %1 CHECK(length(%2)<=%3)"_s.arg(quotedName(constraint), name).arg(width);
    }
    if (isText && !field.AllowZeroLength) {
        clause +=
            u" CONSTRAINT %1 CHECK(%2<>'')"_s.arg(quotedName(constraint + kZeroLengthMark), name);
    }
    return clause;
}

QString defaultClause(const FieldDef& field)
{
    const std::optional<Value> constant = constantDefault(field);
    if (!constant) {
        // Asked for its error: what cannot be computed later is no default.
        [[maybe_unused]] const auto computable = computedDefaults({field});
        const QString clock = clockDefault(field);
        return clock.isEmpty() ? QString() : u" DEFAULT "_s + clock;
    }
    if (constant->isNull() && field.Type != FieldType::Boolean) {
        return {};
    }
    return u" DEFAULT "_s + literal(storable(field, *constant));
}

Value storable(const FieldDef& field, const Value& value)
{
    if (value.isNull()) {
        return field.Type == FieldType::Boolean ? Value(false) : Value();
    }
    switch (field.Type) {
    case FieldType::Boolean:
        return storableTruth(field, value);
    case FieldType::Long:
        return storableLong(field, value);
    case FieldType::Double:
        return storableDouble(field, value);
    case FieldType::Date:
        return storableDate(field, value);
    case FieldType::Text:
    case FieldType::Memo:
        return storableText(field, value);
    }
    return value;
}

} // namespace melovane::sqlite
