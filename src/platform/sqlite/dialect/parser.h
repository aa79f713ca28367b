#pragma once

#include "platform/sqlite/dialect/ast.h"
#include "platform/sqlite/dialect/parser_ddl.h"

/// Second step of the dialect: tokens become a tree.
namespace melovane::sqlite::dialect {

/// How deep brackets, subqueries and signs may be nested.
inline constexpr int kDeepestNesting = 200;
/// Binding of `&`, the weakest operator that makes a value of values.
inline constexpr int kValueLevel = 5;
/// Most sources of one `from`; SQLite joins no more.
inline constexpr int kMostSources = 60;

/// Reads one statement. `statement` and `tokens` must outlive the tree.
///
/// One class by recursive descent: a select holds expressions and expressions hold selects, so the
/// two cannot be cut apart. What they stand on (TokenReader) and what needs neither (DdlParser) are
/// classes of their own.
class Parser : private TokenReader
{
public:
    Parser(const QString& statement, const Tokens& tokens)
        : TokenReader(statement, tokens)
    {}

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

    /// For what stands at the present place.
    [[nodiscard]] DdlParser ddl();

    int m_depth = 0;
    int m_sources = 0;
    Statement* m_intoOf = nullptr; ///< whose select may name a new table, while it is read
};

} // namespace melovane::sqlite::dialect
