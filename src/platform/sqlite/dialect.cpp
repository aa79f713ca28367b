#include "platform/sqlite/dialect.h"

#include "platform/db/db_error.h"
#include "platform/sqlite/binder.h"
#include "platform/sqlite/parser.h"

#include <algorithm>

namespace melovane::sqlite {

namespace dialect {

using namespace Qt::Literals::StringLiterals;

void Translator::takeResult(const std::vector<ColumnRef>& columns)
{
    m_result.columns.reserve(columns.size());
    for (const ColumnRef& column : columns) {
        m_result.columns.push_back({column.field, column.table, column.column});
    }
}

void Translator::selectStatement(const Statement& statement)
{
    const Select& select = *statement.select;
    m_result.kind = StatementKind::Select;
    if (!select.unions.empty()) {
        m_result.queryType = QueryType::SetOperation;
        const SelectSql written = unionSelect(select, nullptr, Use::Result);
        m_result.sql = written.text;
        takeResult(written.columns);
        return;
    }
    const std::unique_ptr<Arm> written = arm(select, nullptr);
    const bool distinct = isDistinct(select, *written);
    m_result.sql = columnList(*written, distinct, Use::Result) + written->tail;
    takeResult(written->columns);
    const bool parameterInside =
        std::any_of(written->columns.begin(), written->columns.end(),
                    [](const ColumnRef& column) { return column.sql.parameter; });
    m_result.keyed = written->plain && written->scope.keyed && !written->tables.empty() &&
                     !select.distinct && !select.distinctRow && !parameterInside;
    if (!m_result.keyed) {
        for (ResultColumn& column : m_result.columns) {
            column.table = -1;
        }
        return;
    }
    QString keys;
    QString joins;
    QString tables;
    QString found;
    int number = 0;
    for (const TableUse& use : written->tables) {
        m_result.tables.push_back(use.base);
        keys += (keys.isEmpty() ? u""_s : u", "_s) + use.rowId;
        const QString table = qualified(use.base) + u" AS "_s + use.alias;
        const QString itsRow = use.rowId + u" = ?"_s + QString::number(++number);
        joins += u" LEFT JOIN "_s + table + u" ON "_s + itsRow;
        tables += (number == 1 ? u""_s : u", "_s) + table;
        found += (number == 1 ? u""_s : u" AND "_s) + itsRow;
    }
    m_result.keySql = u"SELECT "_s + keys + written->tail;
    m_result.rowSql = u"SELECT "_s + keys;
    for (const ColumnRef& column : written->columns) {
        m_result.rowSql += u", "_s + column.sql.text;
    }
    // Where no table may lack its row, a plain question is answered twice as fast.
    const bool outer = std::any_of(m_result.tables.begin(), m_result.tables.end(),
                                   [](const BaseTable& table) { return table.optional; });
    m_result.rowSql +=
        outer ? u" FROM (SELECT 1)"_s + joins : u" FROM "_s + tables + u" WHERE "_s + found;
}

Translation Translator::run()
{
    try {
        const Tokens tokens = tokenize(m_statement);
        const Statement statement = Parser(m_statement, tokens).parse();
        declare(statement.parameters);
        switch (statement.kind) {
        case StatementKind::Select:
            selectStatement(statement);
            break;
        case StatementKind::Insert:
            insertStatement(statement);
            break;
        case StatementKind::Update:
            updateStatement(statement);
            break;
        case StatementKind::Delete:
            deleteStatement(statement);
            break;
        case StatementKind::Ddl:
            m_result.kind = StatementKind::Ddl;
            m_result.queryType = QueryType::Ddl;
            m_result.ddl = statement.ddl;
            break;
        }
    } catch (const TooComplex&) {
        tooComplex();
    }
    return std::move(m_result);
}

} // namespace dialect

Translation translate(const QString& statement, const NameSource& names, bool allowParameters)
{
    return dialect::Translator(statement, names, allowParameters).run();
}

} // namespace melovane::sqlite
