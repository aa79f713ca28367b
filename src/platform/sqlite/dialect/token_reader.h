#pragma once

#include "platform/sqlite/dialect/lexer.h"

#include <algorithm>

namespace melovane::sqlite::dialect {

/// The place in the tokens of a statement, and the questions that all parts of the parser ask
/// there: at.. only looks, accept.. goes on when it fits, expect.. fails when it does not.
class TokenReader
{
public:
    /// Both outlive it.
    TokenReader(const QString& statement, const Tokens& tokens)
        : m_statement(statement)
        , m_tokens(tokens)
        , m_last(tokens.list.size() - 1)
    {}

    [[nodiscard]] const Token& peek(size_t ahead = 0) const
    {
        return m_tokens.list[std::min(m_at + ahead, m_last)];
    }

    const Token& take();

    [[nodiscard]] bool atWord(Word word, size_t ahead = 0) const
    {
        return peek(ahead).word == word;
    }

    [[nodiscard]] bool atSign(char16_t sign, size_t ahead = 0) const
    {
        return peek(ahead).sign == sign;
    }

    [[nodiscard]] bool atName(QStringView name, size_t ahead = 0) const;

    /// A select stands here, or several in brackets joined by `union`.
    [[nodiscard]] bool atSelect(size_t ahead = 0) const;
    bool acceptWord(Word word);
    bool acceptSign(char16_t sign);
    bool acceptName(QStringView name);
    void expectWord(Word word, const QString& text);
    void expectSign(char16_t sign);
    /// \throws DbError kSyntax with the present place
    [[noreturn]] void fail(const QString& what) const;
    void expectEnd() const;
    [[nodiscard]] QStringView name(const QString& what);
    [[nodiscard]] QStringView optionalAlias();

    /// Goes over tokens that were looked at.
    void skip(size_t count = 1) { m_at += count; }

    /// The statement's text from a place to the present token.
    [[nodiscard]] QString textSince(qsizetype start) const
    {
        return m_statement.mid(start, peek().position - start);
    }

private:
    const QString& m_statement;
    const Tokens& m_tokens;
    const size_t m_last;
    size_t m_at = 0;
};

} // namespace melovane::sqlite::dialect
