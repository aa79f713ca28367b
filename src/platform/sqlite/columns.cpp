#include "platform/sqlite/columns.h"

#include "platform/db/db_fault.h"
#include "platform/db/sql_text.h"
#include "platform/sqlite/stored_text.h"
#include "platform/system/text_number.h"

#include <cmath>
#include <limits>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Width of a text column that was made without one.
constexpr int kDefaultWidth = 255;

/// Day number of now in SQLite's own words; our functions may not stand in a schema.
constexpr auto kNowClause = "(julianday('now','localtime')-2415018.5)"_L1;
constexpr auto kTodayClause = "(julianday('now','localtime','start of day')-2415018.5)"_L1;
constexpr auto kTimeClause =
    "(julianday('now','localtime')-julianday('now','localtime','start of day'))"_L1;

struct Default
{
    enum class Kind
    {
        Constant,
        Now,
        Date,
        Time
    } kind = Kind::Constant;
    Value constant;
};

bool isQuoted(QStringView text)
{
    return text.size() >= 2 && (text.front() == u'\'' || text.front() == u'"') &&
           text.back() == text.front();
}

Default quotedDefault(const QString& text)
{
    QString inner = text.sliced(1, text.size() - 2);
    const QString twice(2, text.front());
    return {Default::Kind::Constant, Value(inner.replace(twice, text.left(1)))};
}

Default parseDefault(const QString& expression)
{
    QString text = expression.trimmed();
    if (text.startsWith(u'=')) {
        text = text.sliced(1).trimmed();
    }
    if (isQuoted(text)) {
        return quotedDefault(text);
    }
    QString word = text.toLower();
    word.remove("()"_L1);
    if (word == "now"_L1) {
        return {Default::Kind::Now, {}};
    }
    if (word == "date"_L1) {
        return {Default::Kind::Date, {}};
    }
    if (word == "time"_L1) {
        return {Default::Kind::Time, {}};
    }
    if (word == "true"_L1 || word == "yes"_L1 || word == "on"_L1) {
        return {Default::Kind::Constant, Value(true)};
    }
    if (word == "false"_L1 || word == "no"_L1 || word == "off"_L1) {
        return {Default::Kind::Constant, Value(false)};
    }
    if (word.isEmpty() || word == "null"_L1) {
        return {};
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) {
        throw DbError(dberror::kSyntax, u"Not a default value of a column: %1"_s.arg(expression));
    }
    return {Default::Kind::Constant, Value(number)};
}

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
    const QDateTime moment = value.toDateTime();
    if (!moment.isValid()) {
        throwMismatch(field);
    }
    return value.isText() ? Value(moment) : Value(Value::Day{value.toDouble()});
}

/// Letters as the file counts them: one that takes two units of a QString is one.
qsizetype lettersOf(const QString& text)
{
    qsizetype letters = text.size();
    for (qsizetype i = 1; i < text.size(); ++i) {
        letters -= text[i - 1].isHighSurrogate() && text[i].isLowSurrogate() ? 1 : 0;
    }
    return letters;
}

Value storableText(const FieldDef& field, const Value& value)
{
    QString text = value.toText();
    text.remove(QChar(u'\0'));
    const bool tooLong = field.Type == FieldType::Text && field.Size > 0 &&
                         text.size() > field.Size && lettersOf(text) > field.Size;
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
    const Default parsed = parseDefault(field.DefaultValue);
    switch (parsed.kind) {
    case Default::Kind::Now:
        return u" DEFAULT "_s + kNowClause;
    case Default::Kind::Date:
        return u" DEFAULT "_s + kTodayClause;
    case Default::Kind::Time:
        return u" DEFAULT "_s + kTimeClause;
    case Default::Kind::Constant:
        break;
    }
    const bool isTruth = field.Type == FieldType::Boolean;
    if (parsed.constant.isNull() && !isTruth) {
        return {};
    }
    return u" DEFAULT "_s + literal(storable(field, parsed.constant));
}

Value defaultValue(const FieldDef& field, const QDateTime& now)
{
    const Default parsed = parseDefault(field.DefaultValue);
    const double day = dayNumber(now);
    switch (parsed.kind) {
    case Default::Kind::Now:
        return storable(field, Value(Value::Day{day}));
    case Default::Kind::Date:
        return storable(field, Value(Value::Day{std::floor(day)}));
    case Default::Kind::Time:
        return storable(field, Value(Value::Day{day - std::floor(day)}));
    case Default::Kind::Constant:
        break;
    }
    return storable(field, parsed.constant);
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
