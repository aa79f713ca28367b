#pragma once

#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/ast.h"
#include "platform/sqlite/dialect/lexer.h"
#include "platform/sqlite/dialect/parameters.h"
#include "platform/sqlite/dialect/writer.h"

#include <deque>
#include <memory>
#include <optional>
#include <utility>
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
    QString range;  ///< what the column was taken from; empty for one with a name of its own
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

/// A column that was named where only groups have a value.
struct LooseColumn
{
    QString name;
    qsizetype position = 0;
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
    quint64 usedTables = 0;      ///< bit n: a column of table n was named
    const Sql* filter = nullptr; ///< aggregates see only the rows that pass it
    bool grouped = false;        ///< columns have a value only as part of a group or an aggregate
    QStringList groups;          ///< the terms of `group by` as they are written
    std::vector<LooseColumn> loose;
};

/// Bits of all tables: what a column that is no plain one may come from.
inline constexpr quint64 kEveryTable = ~quint64(0);

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

/// The text of a `from` that is still growing.
struct FromText
{
    QString text;
    bool single = true;     ///< one table, no join
    bool appendable = true; ///< may stand behind "JOIN" as it is
    std::vector<Sql> conditions;
    int stack = 8;
};

/// Binds the names of one statement and writes its sources, expressions and selects; used once.
///
/// One class by recursive descent, like the parser: a source may be a select, a select holds
/// expressions, an expression may be a select again, and all of them ask for names. Whole
/// statements are written by StatementWriter, parameters are kept by StatementParameters.
class Translator
{
public:
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

    /// A select without its unions, in parts.
    struct Arm
    {
        Scope scope;
        std::vector<TableUse> tables;
        std::vector<ColumnRef> columns;
        QString tail;                 ///< from `from` to `having`
        std::vector<Sql> groups;      ///< collated, no constants
        std::vector<OrderTerm> order; ///< collated, no constants
        bool plain = true;            ///< each row is one row of each table
        bool distinct = false;
        int stack = 0;
        int height = 1;
        bool parameter = false;
    };

    class InQuery;

    Translator(const QString& statement, const NameSource& names, bool allowParameters);

    [[nodiscard]] const NameSource& names() const { return m_names; }

    [[nodiscard]] StatementParameters& parameters() { return m_parameters; }

    /// The statement, or the stored query that is being read.
    [[nodiscard]] const QString& text() const { return *m_text; }

    [[noreturn]] void fail(qsizetype position, const QString& what) const;
    [[noreturn]] void tooComplex() const;

    /// A table or stored query. \throws DbError kObjectNotFound
    [[nodiscard]] const Source& find(QStringView name, qsizetype position);

    /// Fills the scope with what the list names.
    void bindFrom(const std::vector<FromPtr>& list, Scope& scope);
    [[nodiscard]] FromText bindNode(const FromNode& node, Scope& scope, bool nullable);

    /// The tree of a stored query. \throws DbError kSyntax, naming the query
    [[nodiscard]] Stored& read(const Source& source);

    /// Looks for a column among the scope's own names. \return false when there is none
    [[nodiscard]] bool resolveHere(QStringView qualifier,
                                   QStringView name,
                                   Scope& scope,
                                   ColumnRef& found,
                                   qsizetype position);
    [[nodiscard]] Sql expression(const Expr& expr, Scope& scope);

    /// A select without its unions.
    [[nodiscard]] std::unique_ptr<Arm> arm(const Select& select, Scope* outer);

    /// The columns of "*" or "name.*".
    void expandStar(const SelectItem& item, Scope& scope, std::vector<ColumnRef>& columns);

    /// A select with its unions as text.
    [[nodiscard]] SelectSql select(const Select& select, Scope* outer, Use use);
    [[nodiscard]] SelectSql unionSelect(const Select& select, Scope* outer, Use use);
    [[nodiscard]] static QStringList columnTexts(const Arm& arm, Use use);
    /// The rows of an arm with these columns, in its order and cut by its `top`.
    /// \param named the columns are called c1, c2 ...
    [[nodiscard]] static QString
    rows(const Select& select, const Arm& arm, const QStringList& columns, bool named);

private:
    /// The texts of a domain function, read as if they stood in the statement.
    struct Domain
    {
        std::deque<QString> texts;
        std::deque<Tokens> tokens;
        Select select;
    };

    class Depth;

    // Sources (binder_from.cpp)
    [[nodiscard]] QString newAlias();
    [[nodiscard]] FromText bindJoin(const FromNode& node, Scope& scope, bool nullable);
    [[nodiscard]] FromText bindNamed(const FromNode& node, Scope& scope, bool nullable);
    [[nodiscard]] FromText
    bindQuery(const FromNode& node, const Source& source, Scope& scope, bool nullable);
    [[nodiscard]] FromText
    weave(const Select& select, const QString& name, Scope& scope, bool nullable);
    [[nodiscard]] FromText derived(const Select& select, const QString& name, Scope& scope);
    [[nodiscard]] const Stored& stored(const Source& source, qsizetype position);
    void addRange(Range range, Scope& scope, qsizetype position);

    // Names (binder.cpp)
    [[nodiscard]] bool resolve(QStringView qualifier,
                               QStringView name,
                               Scope& scope,
                               ColumnRef& found,
                               qsizetype position);
    [[nodiscard]] Sql name(const Expr& expr, Scope& scope);
    [[nodiscard]] bool aliasOf(QStringView name, Scope& scope, Sql& found);
    [[nodiscard]] Sql unknownName(const Expr& expr);

    // Expressions (writer_expression.cpp, writer_call.cpp)
    [[nodiscard]] Sql written(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql chain(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql inSelect(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql exists(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql quantified(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql scalar(const Select& select, Scope* scope);
    [[nodiscard]] Sql functionCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql ruledCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql isNullCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql domainCall(const Expr& expr, QLatin1StringView aggregate);
    [[nodiscard]] Sql aggregateCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql countCall(const Expr& expr, Scope& scope, const QString& distinct);
    [[nodiscard]] Sql iifCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql switchCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql chooseCall(const Expr& expr, Scope& scope);
    [[nodiscard]] Sql nzCall(const Expr& expr, Scope& scope);
    void expectArguments(const Expr& expr, size_t least, size_t most) const;

    // Selects (writer_select.cpp)
    void items(const Select& select, Scope& scope, std::vector<ColumnRef>& columns);
    [[nodiscard]] ColumnRef itemColumn(const SelectItem& item, Scope& scope, int& unnamed);
    void appendWhere(const Select& select, Arm& arm);
    void bindGroups(const Select& select, Arm& arm);
    void appendGroup(const Select& select, Arm& arm);
    void refuseLoose(Scope& scope);
    void appendOrder(const Select& select, Arm& arm);
    void mergeRows(const Select& select, Arm& arm);
    void crosstabColumns(const Crosstab& crosstab, Scope& scope, std::vector<ColumnRef>& columns);
    [[nodiscard]] Sql orderTerm(const Expr& expr, const Select& select, Arm& arm);

    // Selects as text (writer_rows.cpp)
    [[nodiscard]] QString unionOrder(const Select& select, const std::vector<ColumnRef>& columns);
    /// Takes the columns out of the arm.
    [[nodiscard]] SelectSql armSql(const Select& select, Arm& arm, Use use) const;

    const QString& m_statement;
    const QString* m_text = &m_statement; ///< the statement or stored query that is being read
    const NameSource& m_names;
    StatementParameters m_parameters;
    std::deque<Source> m_sources;
    std::deque<Stored> m_stored;
    std::deque<Domain> m_domains;
    std::vector<QString> m_openQueries; ///< a query that names itself has no end
    int m_aliases = 0;
    int m_depth = 0;
};

/// Bytes, or letters, of an expression's column of that type.
[[nodiscard]] int sizeOf(FieldType type);

/// A column of a table as an expression names it.
[[nodiscard]] ColumnRef tableColumn(const Range& range, const FieldDef& field, const Scope& scope);

/// The table with its schema, in quotes.
[[nodiscard]] QString qualified(const BaseTable& table);

/// The bits of Scope::usedTables that a column stands for.
[[nodiscard]] quint64 bitOf(const ColumnRef& column);

/// Most columns of a select and most terms of its order; SQLite takes 2000 of both together.
inline constexpr size_t kMostColumns = 990;

/// True when the function makes one value of many rows.
[[nodiscard]] bool isAggregate(QStringView function);

/// The aggregate behind a function over rows of another table ("dcount": "count"); empty for the
/// one that takes any row, null for other functions.
[[nodiscard]] std::optional<QLatin1StringView> domainAggregate(QStringView function);

/// True when an aggregate stands in the expression, not looking into subselects.
[[nodiscard]] bool hasAggregate(const Expr& expr);

/// A fault inside a stored query, whose place is counted in the query's own text.
[[nodiscard]] DbError faultOf(const QString& query, const DbError& fault);

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

/// While a stored query is read, places are counted in its text and it must not name itself.
class Translator::InQuery
{
public:
    InQuery(Translator& translator, const Stored& query)
        : m_translator(translator)
        , m_outerText(std::exchange(translator.m_text, &query.source.sql))
    {
        m_translator.m_openQueries.push_back(query.source.name);
    }

    ~InQuery()
    {
        m_translator.m_openQueries.pop_back();
        m_translator.m_text = m_outerText;
    }

    InQuery(const InQuery&) = delete;
    InQuery& operator=(const InQuery&) = delete;

private:
    Translator& m_translator;
    const QString* m_outerText;
};

} // namespace melovane::sqlite::dialect
