#pragma once

#include "platform/sqlite/ast.h"
#include "platform/sqlite/lexer.h"
#include "platform/sqlite/writer.h"

#include <deque>
#include <memory>
#include <vector>

/// Third step of the dialect: names are bound to the catalogue while SQLite's text is written.
namespace melovane::sqlite::dialect {

/// A column as a statement may name it.
struct ColumnRef
{
    QString name;
    FieldDef field;
    Sql sql;
    int table = -1; ///< of the select's tables, when it is a plain column of one
    QString column; ///< name in that table
};

/// What one name in `from` stands for: a table, or columns made by a query or subselect.
struct Range
{
    QString name;                   ///< alias, else the name in the catalogue
    const Source* source = nullptr; ///< a table's columns are looked up here
    int table = -1;
    std::vector<ColumnRef> columns;
};

/// A table in the written text.
struct TableUse
{
    BaseTable base;
    QString alias; ///< unique in the statement
    QString rowId; ///< "alias.rowid"
};

struct OrderTerm
{
    Sql sql;
    bool descending = false;
};

/// The names that a select sees, and what its `from` came to.
struct Scope
{
    Scope* outer = nullptr;
    std::vector<Range> ranges;
    std::vector<TableUse>* tables = nullptr;
    bool keyed = true;            ///< row ids name a row
    std::vector<Sql> conditions;  ///< of inner joins and woven queries
    std::vector<OrderTerm> order; ///< of woven queries
    QString from;
    int fromStack = 0;
    const Select* select = nullptr; ///< whose aliases may be named
    size_t visibleAliases = 0;
    bool aggregates = false; ///< allowed at this place
    bool sawOwnColumn = false;
    bool sawOuterColumn = false;
};

/// A written select.
struct SelectSql
{
    QString text;
    std::vector<ColumnRef> columns;
    int stack = 0;
    int height = 1;
    bool parameter = false;
    bool ordered = false;
};

/// Translates one statement; used once.
class Translator
{
public:
    Translator(const QString& statement, const NameSource& names, bool allowParameters);

    [[nodiscard]] Translation run();

private:
    /// A stored query's text with its tokens, kept while its tree is in use.
    struct Stored
    {
        Source source;
        Tokens tokens;
        Statement statement;
    };

    /// How the text of a subselect is used.
    enum class Use
    {
        Result,  ///< columns without names
        Derived, ///< in `from`: columns c1, c2 ...
        Value,   ///< one column
        Exists
    };

    /// The text of a `from` that is still growing.
    struct FromText
    {
        QString text;
        bool single = true;     ///< one table, no join
        bool appendable = true; ///< may stand behind "JOIN" as it is
        std::vector<Sql> conditions;
        int stack = 8;
    };

    /// A select without its unions, in parts.
    struct Arm
    {
        Scope scope;
        std::vector<TableUse> tables;
        std::vector<ColumnRef> columns;
        QString tail; ///< from `from` to the limit
        bool plain = true;
        int stack = 0;
        int height = 1;
        bool parameter = false;
        bool ordered = false;
    };

    class Depth;

    [[noreturn]] void fail(qsizetype position, const QString& what) const;
    [[noreturn]] void tooComplex() const;

    // Sources (binder.cpp)
    [[nodiscard]] const Source& find(QStringView name, qsizetype position);
    [[nodiscard]] QString newAlias();
    void bindFrom(const std::vector<FromPtr>& list, Scope& scope);
    [[nodiscard]] FromText bindNode(const FromNode& node, Scope& scope, bool nullable);
    [[nodiscard]] FromText bindJoin(const FromNode& node, Scope& scope, bool nullable);
    [[nodiscard]] FromText joinOuter(FromText kept, FromText nulled, Sql on, Scope& scope);
    [[nodiscard]] FromText joinInner(FromText left, FromText right, Scope& scope);
    [[nodiscard]] FromText bindNamed(const FromNode& node, Scope& scope, bool nullable);
    [[nodiscard]] FromText
    bindQuery(const FromNode& node, const Source& source, Scope& scope, bool nullable);
    [[nodiscard]] FromText
    weave(const Select& select, const QString& name, Scope& scope, bool nullable);
    [[nodiscard]] FromText derived(const Select& select, const QString& name, Scope& scope);
    [[nodiscard]] const Stored& stored(const Source& source, qsizetype position);
    void addRange(Range range, Scope& scope, qsizetype position);
    [[nodiscard]] ColumnRef
    tableColumn(const Range& range, const FieldDef& field, const Scope& scope) const;

    // Names (binder.cpp)
    [[nodiscard]] bool resolve(QStringView qualifier,
                               QStringView name,
                               Scope& scope,
                               ColumnRef& found,
                               qsizetype position);
    [[nodiscard]] bool resolveHere(QStringView qualifier,
                                   QStringView name,
                                   Scope& scope,
                                   ColumnRef& found,
                                   qsizetype position);
    [[nodiscard]] Sql name(const Expr& expr, Scope& scope);
    [[nodiscard]] bool aliasOf(QStringView name, Scope& scope, Sql& found);
    [[nodiscard]] Sql unknownName(const Expr& expr);
    [[nodiscard]] Sql parameter(int index);
    void declare(const std::vector<DeclaredParameter>& parameters);

    // Expressions (writer_expression.cpp, writer_call.cpp)
    [[nodiscard]] Sql expression(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql chain(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql inSelect(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql exists(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql scalar(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql functionCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql aggregateCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql countCall(const Expr& expr, Scope& scope, const QString& distinct);
    [[nodiscard]] Sql iifCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql switchCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql chooseCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql nzCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql cases(const std::vector<Sql>& pairs, const Sql* subject, const Sql* other);
    void expectArguments(const Expr& expr, size_t least, size_t most) const;

    // Selects (writer_select.cpp)
    [[nodiscard]] SelectSql select(const Select& select, Scope* outer, Use use);
    [[nodiscard]] SelectSql unionSelect(const Select& select, Scope* outer, Use use);
    [[nodiscard]] std::unique_ptr<Arm> arm(const Select& select, Scope* outer);
    void items(const Select& select, Scope& scope, std::vector<ColumnRef>& columns);
    void expandStar(const SelectItem& item, Scope& scope, std::vector<ColumnRef>& columns);
    [[nodiscard]] ColumnRef itemColumn(const SelectItem& item, Scope& scope, int& unnamed);
    void appendWhere(const Select& select, Arm& arm);
    void appendGroup(const Select& select, Arm& arm);
    void appendOrder(const Select& select, Arm& arm);
    void appendLimit(const Select& select, Arm& arm);
    [[nodiscard]] Sql orderTerm(const Expr& expr, const Select& select, Arm& arm);
    [[nodiscard]] QString unionOrder(const Select& select, const std::vector<ColumnRef>& columns);
    [[nodiscard]] static QString columnList(const Arm& arm, bool distinct, Use use);
    [[nodiscard]] static bool isDistinct(const Select& select, const Arm& arm);
    /// Takes the columns out of the arm.
    [[nodiscard]] SelectSql armSql(const Select& select, Arm& arm, Use use) const;

    // Statements (writer_action.cpp, dialect.cpp)
    void selectStatement(const Statement& statement);
    void insertStatement(const Statement& statement);
    void updateStatement(const Statement& statement);
    void deleteStatement(const Statement& statement);
    [[nodiscard]] static QString insertSource(const std::vector<ColumnRef>& columns,
                                              const SelectSql& rows,
                                              const QString& defaults);
    [[nodiscard]] std::vector<ColumnRef>
    insertColumns(const Statement& statement, Scope& scope, const std::vector<ColumnRef>* offered);
    void takeResult(const std::vector<ColumnRef>& columns);
    [[nodiscard]] static QString qualified(const BaseTable& table);
    [[nodiscard]] Sql whereOf(const Statement& statement, Scope& scope);

    const QString& m_statement;
    const QString* m_text = &m_statement; ///< the statement or stored query that is being read
    const NameSource& m_names;
    const bool m_allowParameters;
    Translation m_result;
    std::deque<Source> m_sources;
    std::deque<Stored> m_stored;
    std::vector<QString> m_openQueries; ///< a query that names itself has no end
    std::vector<bool> m_untyped;        ///< beside the parameters: without a declared type
    int m_aliases = 0;
    int m_depth = 0;
};

/// True when the function makes one value of many rows.
[[nodiscard]] bool isAggregate(QStringView function);

/// True when an aggregate stands in the expression, not looking into subselects.
[[nodiscard]] bool hasAggregate(const Expr& expr);

/// Largest nesting of expressions that the writer follows.
inline constexpr int kDeepestWalk = 600;

class Translator::Depth
{
public:
    explicit Depth(Translator& translator)
        : m_translator(translator)
    {
        if (++m_translator.m_depth > kDeepestWalk) {
            m_translator.tooComplex();
        }
    }

    ~Depth() { --m_translator.m_depth; }

    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    Translator& m_translator;
};

} // namespace melovane::sqlite::dialect
