#include "platform/sqlite/dialect/column_defaults.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/dialect.h"

#include <algorithm>
#include <cmath>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Day number of now in SQLite's own words; our functions may not stand in a schema.
constexpr auto kNowClause = "(julianday('now','localtime')-2415018.5)"_L1;
constexpr auto kTodayClause = "(julianday('now','localtime','start of day')-2415018.5)"_L1;
constexpr auto kTimeClause =
    "(julianday('now','localtime')-julianday('now','localtime','start of day'))"_L1;

/// The expression without the sign that may stand before it.
QString bareExpression(const FieldDef& field)
{
    const QString text = field.DefaultValue.trimmed();
    return text.startsWith(u'=') ? text.sliced(1).trimmed() : text;
}

/// A text in quotes, when the closing quote is the one of the first.
std::optional<Value> quotedConstant(const QString& text)
{
    const bool isQuoted = text.size() >= 2 && (text.front() == u'\'' || text.front() == u'"') &&
                          text.back() == text.front();
    if (!isQuoted) {
        return std::nullopt;
    }
    const QString twice(2, text.front());
    QString inner = text.sliced(1, text.size() - 2);
    if (QString(inner).remove(twice).contains(text.front())) {
        return std::nullopt;
    }
    return Value(inner.replace(twice, text.left(1)));
}

/// A default may call functions; tables are not there for it.
class NoTables : public NameSource
{
public:
    [[nodiscard]] std::optional<Source> find(const QString&) const override { return std::nullopt; }
};

QString assigned(const FieldDef& field, const QString& value)
{
    switch (field.Type) {
    case FieldType::Boolean:
        return u"mlv_tobool(%1)"_s.arg(value);
    case FieldType::Long:
        return u"mlv_tolong(%1)"_s.arg(value);
    case FieldType::Double:
        return u"mlv_todouble(%1)"_s.arg(value);
    case FieldType::Date:
        return u"mlv_todate(%1)"_s.arg(value);
    case FieldType::Text:
        return u"mlv_totext(%1, %2)"_s.arg(value).arg(field.Size);
    case FieldType::Memo:
        return u"mlv_totext(%1, 0)"_s.arg(value);
    }
    return value;
}

QString computedSql(const FieldDef& field)
{
    const QString expression = bareExpression(field);
    try {
        const Translation translation = translate(u"select (%1)"_s.arg(expression), NoTables());
        if (translation.kind == StatementKind::Select && translation.columns.size() == 1) {
            return assigned(field, u'(' + translation.sql + u')');
        }
    } catch (const DbError&) {
        throw dbError(DbFault::DefaultWrong, field.Name, expression);
    }
    throw dbError(DbFault::DefaultWrong, field.Name, expression);
}

} // namespace

std::optional<Value> constantDefault(const FieldDef& field)
{
    const QString text = bareExpression(field);
    if (const std::optional<Value> quoted = quotedConstant(text)) {
        return quoted;
    }
    const QString word = text.toLower();
    if (word.isEmpty() || word == "null"_L1) {
        return Value();
    }
    for (const auto truth : {"true"_L1, "yes"_L1, "on"_L1}) {
        if (word == truth) {
            return Value(true);
        }
    }
    for (const auto falsehood : {"false"_L1, "no"_L1, "off"_L1}) {
        if (word == falsehood) {
            return Value(false);
        }
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(Value(number)) : std::nullopt;
}

QString clockDefault(const FieldDef& field)
{
    QString word = bareExpression(field).toLower();
    word.remove("()"_L1);
    if (word == "now"_L1) {
        return kNowClause;
    }
    if (word == "date"_L1) {
        return kTodayClause;
    }
    return word == "time"_L1 ? QString(kTimeClause) : QString();
}

std::vector<ComputedDefault> computedDefaults(const std::vector<FieldDef>& fields,
                                              const std::vector<QString>& given)
{
    std::vector<ComputedDefault> computed;
    for (const FieldDef& field : fields) {
        const bool isGiven = std::any_of(given.begin(), given.end(), [&](const QString& name) {
            return name.compare(field.Name, Qt::CaseInsensitive) == 0;
        });
        if (!field.DefaultValue.isEmpty() && !isGiven && !constantDefault(field)) {
            computed.push_back({field.Name, field.Type, computedSql(field)});
        }
    }
    return computed;
}

} // namespace melovane::sqlite
