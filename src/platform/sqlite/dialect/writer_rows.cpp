#include "platform/sqlite/dialect/binder.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// SQLite allows 500 arms.
constexpr size_t kMostUnions = 400;

} // namespace

QStringList Translator::columnTexts(const Arm& arm, Use use)
{
    QStringList texts;
    texts.reserve(qsizetype(arm.columns.size()));
    const bool needsCollation = arm.distinct || use == Use::Derived;
    for (const ColumnRef& column : arm.columns) {
        texts.append(needsCollation ? collated(column.sql).text : column.sql.text);
    }
    return texts;
}

namespace {

/// "c1, c2": the names of the columns of a select in a `from`.
QString numberedNames(qsizetype count)
{
    QString names;
    for (qsizetype i = 1; i <= count; ++i) {
        names += (i == 1 ? u"c"_s : u", c"_s) + QString::number(i);
    }
    return names;
}

QString listOf(const QStringList& columns, bool isNamed)
{
    if (!isNamed) {
        return columns.join(u", ");
    }
    QString list;
    qsizetype index = 0;
    for (const QString& column : columns) {
        list += (index == 0 ? u""_s : u", "_s) + column + u" AS c"_s;
        list += QString::number(++index);
    }
    return list;
}

} // namespace

QString
Translator::rows(const Select& select, const Arm& arm, const QStringList& columns, bool named)
{
    const QString word = arm.distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s;
    const auto orderBy = [&](const auto& termText) {
        QString text;
        for (size_t i = 0; i < arm.order.size(); ++i) {
            text += (i == 0 ? u" ORDER BY "_s : u", "_s) + termText(i);
            text += arm.order[i].descending ? u" DESC"_s : u""_s;
        }
        return text;
    };
    if (select.top < 0 || (arm.order.empty() && !select.percent)) {
        const QString limit =
            select.top < 0 ? QString() : u" LIMIT "_s + QString::number(select.top);
        return word + listOf(columns, named) + arm.tail +
               orderBy([&](size_t i) { return arm.order[i].sql.text; }) + limit;
    }
    // Rows with equal keys share a place, so the last place may hold more rows than `top` says.
    QString inner = word + listOf(columns, true);
    for (size_t i = 0; i < arm.order.size(); ++i) {
        inner += u", "_s + arm.order[i].sql.text + u" AS o"_s + QString::number(i + 1);
    }
    inner += arm.tail;
    const QString names = numberedNames(columns.size());
    const QString place = arm.order.empty() ? u"row_number()"_s : u"rank()"_s;
    const QString window = orderBy([](size_t i) { return u'o' + QString::number(i + 1); });
    const QString most = select.percent
                             ? u"(n * %1 + 99) / 100"_s.arg(std::min<qint64>(select.top, 100))
                             : QString::number(select.top);
    return u"SELECT "_s + names + u" FROM (SELECT "_s + names + u", "_s + place + u" OVER ("_s +
           window.mid(1) + u") AS r, count(*) OVER () AS n FROM ("_s + inner + u")) WHERE r <= "_s +
           most + u" ORDER BY r"_s;
}

SelectSql Translator::armSql(const Select& select, Arm& arm, Use use) const
{
    if (use == Use::Value && arm.columns.size() != 1) {
        fail(select.position, u"die Unterabfrage darf nur eine Spalte liefern"_s);
    }
    SelectSql result;
    result.text = rows(select, arm, columnTexts(arm, use), use == Use::Derived);
    result.columns = std::move(arm.columns);
    result.stack = arm.stack;
    result.height = arm.height;
    result.parameter = arm.parameter;
    result.ordered = !arm.order.empty();
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

namespace {

/// Gives the columns of a union the types that hold those of one more arm too; the arm has as many
/// columns. A column of a union is no table's.
void widenColumns(std::vector<ColumnRef>& columns, const std::vector<ColumnRef>& arm)
{
    for (size_t i = 0; i < columns.size(); ++i) {
        ColumnRef& column = columns[i];
        const Sql& other = arm[i].sql;
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
}

} // namespace

SelectSql Translator::unionSelect(const Select& select, Scope* outer, Use use)
{
    if (select.unions.size() > kMostUnions || select.unionOrder.size() > kMostColumns) {
        tooComplex();
    }
    SelectSql result;
    const auto take = [&](const Select& part, QLatin1StringView word) {
        const std::unique_ptr<Arm> written = arm(part, outer);
        const bool first = word.isEmpty();
        const size_t width = result.columns.size();
        if (!first && written->columns.size() != width) {
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
        if (first) {
            result.columns = sql.columns;
        }
        widenColumns(result.columns, sql.columns);
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
