#pragma once

#include "platform/sqlite/dialect/ast.h"
#include "platform/sqlite/dialect/lexer.h"

namespace melovane::sqlite {

/// A statement that was read, once for all who look at it: its text, and the tree whose names and
/// literals are views into that text.
class ParsedStatement
{
public:
    /// \throws DbError kSyntax with the place of the fault
    explicit ParsedStatement(const QString& text);
    ParsedStatement(const ParsedStatement&) = delete;
    ParsedStatement& operator=(const ParsedStatement&) = delete;

    [[nodiscard]] const QString& text() const { return m_text; }

    /// Lives as long as this object.
    [[nodiscard]] const dialect::Statement& tree() const { return m_tree; }

private:
    QString m_text;
    dialect::Tokens m_tokens;
    dialect::Statement m_tree;
};

} // namespace melovane::sqlite
