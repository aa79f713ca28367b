#include "platform/sqlite/dialect/parsed_statement.h"

#include "platform/sqlite/dialect/parser.h"

namespace melovane::sqlite {

ParsedStatement::ParsedStatement(const QString& text)
    : m_text(text)
    , m_tokens(dialect::tokenize(m_text))
    , m_tree(dialect::Parser(m_text, m_tokens).parse())
{}

} // namespace melovane::sqlite
