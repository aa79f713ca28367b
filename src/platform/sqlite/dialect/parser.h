#pragma once

#include "platform/sqlite/dialect/ast.h"
#include "platform/sqlite/dialect/lexer.h"

#include <algorithm>

/// Second step of the dialect: tokens become a tree.
namespace melovane::sqlite::dialect {

/// How deep brackets, subqueries and signs may be nested.
inline constexpr int kDeepestNesting = 200;
/// Binding of `&`, the weakest operator that makes a value of values.
inline constexpr int kValueLevel = 5;
/// Most sources of one `from`; SQLite joins no more.
inline constexpr int kMostSources = 60;

/// Reads one statement. `statement` and `tokens` must outlive the tree.
class Parser
{
public:
    Parser(const QString& statement, const Tokens& tokens);

    /// \throws DbError kSyntax with the place; also for a second statement behind ";"
    [[nodiscard]] Statement parse();

    /// The tokens are an expression and nothing else; also "*".
    [[nodiscard]] ExprPtr parseExpression();

    /// The tokens are the name of a table or query and nothing else.
    [[nodiscard]] QStringView parseName();

private:
    /// Counts how deep the reader stands; too deep is a fault of the statement, not of the stack.
    class Nesting
    {
    public:
        explicit Nesting(Parser& parser);
        ~Nesting();
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& m_parser;
    };

    // Tokens
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
    [[noreturn]] void fail(const QString& what) const;
    void expectEnd() const;
    [[nodiscard]] QStringView name(const QString& what);
    [[nodiscard]] QStringView optionalAlias();

    // Statements
    [[nodiscard]] std::vector<DeclaredParameter> parameters();
    [[nodiscard]] Statement statement();
    [[nodiscard]] Statement selectStatement();
    [[nodiscard]] Statement executeStatement();
    [[nodiscard]] Statement insertStatement();
    [[nodiscard]] Statement updateStatement();
    [[nodiscard]] Statement deleteStatement();
    [[nodiscard]] std::vector<PlacedName> nameList();
    [[nodiscard]] Assignment assignment();

    // Select
    [[nodiscard]] SelectPtr select();
    [[nodiscard]] SelectPtr unionArm(bool& bracketed);
    [[nodiscard]] SelectPtr selectArm();
    [[nodiscard]] SelectPtr crosstab();
    void topClause(Select& select);
    void intoClause();
    void refuseOtherFile() const;
    [[nodiscard]] SelectItem selectItem();
    [[nodiscard]] std::vector<OrderItem> orderList();
    [[nodiscard]] std::vector<FromPtr> fromList();
    [[nodiscard]] FromPtr joinChain();
    [[nodiscard]] FromPtr source();
    [[nodiscard]] bool acceptJoin(FromNode::Kind& kind);

    // Expressions, weakest binding first
    [[nodiscard]] ExprPtr expression();
    [[nodiscard]] ExprPtr binary(int level);
    [[nodiscard]] ExprPtr negation();
    [[nodiscard]] ExprPtr comparison();
    [[nodiscard]] bool acceptComparison(Op& op);
    [[nodiscard]] ExprPtr testBehind(ExprPtr value, bool& more);
    [[nodiscard]] ExprPtr quantifiedTest(Op op, ExprPtr value);
    [[nodiscard]] ExprPtr inTest(ExprPtr value, bool negated);
    [[nodiscard]] ExprPtr betweenTest(ExprPtr value, bool negated);
    [[nodiscard]] ExprPtr minus();
    [[nodiscard]] ExprPtr primary();
    [[nodiscard]] ExprPtr nameOrCall();
    [[nodiscard]] ExprPtr call(const Token& function);
    [[nodiscard]] ExprPtr bracketed();
    [[nodiscard]] ExprPtr dateLiteral();
    [[nodiscard]] bool acceptOperator(int level, Op& op);
    [[nodiscard]] ExprPtr make(Expr::Kind kind) const;

    // Changes of the catalogue
    [[nodiscard]] Statement ddl(DdlAction action) const;
    [[nodiscard]] Statement createStatement();
    [[nodiscard]] Statement createTable();
    [[nodiscard]] Statement createIndex(bool unique);
    [[nodiscard]] Statement dropStatement();
    [[nodiscard]] Statement alterStatement();
    [[nodiscard]] FieldDef columnDefinition(TableDef* table);
    void columnConstraints(FieldDef& field, TableDef* table);
    void tableConstraint(TableDef& table);
    void columnType(FieldDef& field);
    [[nodiscard]] QStringList columnNames();

    const QString& m_statement;
    const Tokens& m_tokens;
    const size_t m_last;
    size_t m_at = 0;
    int m_depth = 0;
    int m_sources = 0;
    Statement* m_intoOf = nullptr; ///< whose select may name a new table, while it is read
};

} // namespace melovane::sqlite::dialect
