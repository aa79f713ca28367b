#include "platform/sqlite/dialect/dialect.h"

#include "platform/sqlite/dialect/statement_writer.h"

namespace melovane::sqlite {

Translation
translate(const ParsedStatement& statement, const NameSource& names, bool allowParameters)
{
    return dialect::StatementWriter(statement.text(), names, allowParameters)
        .translated(statement.tree());
}

Translation translate(const QString& statement, const NameSource& names, bool allowParameters)
{
    return translate(ParsedStatement(statement), names, allowParameters);
}

QueryType writtenQueryType(const QString& statement)
{
    return dialect::queryTypeOf(ParsedStatement(statement).tree());
}

} // namespace melovane::sqlite
