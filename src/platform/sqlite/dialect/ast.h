#pragma once

#include "platform/sqlite/dialect/translation.h"

#include <QString>
#include <QStringView>

#include <memory>
#include <vector>

/// The tree of a statement, as it was written; nothing in it is bound to a table yet.
///
/// Texts are views into the statement or its Tokens.
namespace melovane::sqlite::dialect {

struct Expr;
struct Select;
struct FromNode;
using ExprPtr = std::unique_ptr<Expr>;
using SelectPtr = std::unique_ptr<Select>;
using FromPtr = std::unique_ptr<FromNode>;

enum class Op
{
    Imp,
    Eqv,
    Xor,
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,
    NotLike,
    Concat,
    Add,
    Subtract,
    Modulo,
    IntDivide,
    Multiply,
    Divide,
    Power
};

struct Expr
{
    enum class Kind
    {
        Null,
        Truth,  ///< negated: false
        Number, ///< text: as written
        Text,
        Date,       ///< number: day number
        Name,       ///< qualifier may be empty
        Star,       ///< the argument of count(*)
        Chain,      ///< args joined by ops, one precedence, from left to right
        Minus,      ///< one operand
        Not,        ///< one operand
        IsNull,     ///< one operand; negated: is not null
        Between,    ///< three operands
        InList,     ///< value, then the list
        InSelect,   ///< value; the list is `select`
        Exists,     ///< select
        Scalar,     ///< select
        Quantified, ///< value, compared by ops[0] with the rows of select; negated: with all
        Call        ///< text: function name; negated: `distinct` before the argument
    };

    Kind kind = Kind::Null;
    bool negated = false;
    qsizetype position = 0;
    QStringView qualifier;
    QStringView text;
    double number = 0;
    std::vector<ExprPtr> args;
    std::vector<Op> ops; ///< Chain: one fewer than args
    SelectPtr select;
};

/// Columns made of values: "transform value select ... pivot by in (list)".
struct Crosstab
{
    ExprPtr value; ///< one aggregate at least
    ExprPtr by;
    std::vector<ExprPtr> list; ///< literals, one per column
};

struct SelectItem
{
    ExprPtr expr; ///< null for a star
    QStringView alias;
    QStringView starOf; ///< star: name before ".*", or empty for all
    qsizetype position = 0;
};

/// One source of `from`, or a join of two.
struct FromNode
{
    enum class Kind
    {
        Named,
        Select,
        Inner,
        Left,
        Right
    };

    Kind kind = Kind::Named;
    QStringView name;
    QStringView alias;
    qsizetype position = 0;
    SelectPtr select;
    FromPtr left;
    FromPtr right;
    ExprPtr on;
};

struct OrderItem
{
    ExprPtr expr;
    bool descending = false;
};

struct Select
{
    bool distinct = false;
    bool distinctRow = false;
    bool unionAll = false; ///< how this arm is joined to the one before it
    qint64 top = -1;       ///< -1: no `top`
    bool percent = false;
    qsizetype position = 0;
    std::vector<SelectItem> items;
    std::vector<FromPtr> from;
    ExprPtr where;
    std::vector<ExprPtr> group;
    ExprPtr having;
    std::vector<OrderItem> order;
    std::vector<SelectPtr> unions;     ///< further arms
    std::vector<OrderItem> unionOrder; ///< order of all arms together
    std::unique_ptr<Crosstab> crosstab;
};

struct Assignment
{
    QStringView qualifier;
    QStringView column;
    ExprPtr value;
    qsizetype position = 0;
};

struct DeclaredParameter
{
    QStringView name;
    FieldType type = FieldType::Text;
};

/// A name and where it stands.
struct PlacedName
{
    QStringView text;
    qsizetype position = 0;
};

struct Statement
{
    StatementKind kind = StatementKind::Select;
    std::vector<DeclaredParameter> parameters;

    /// Select, and the rows of an insert or of a new table.
    SelectPtr select;

    /// Insert: the target. Make-table: the new table. Update and delete: what is walked.
    QStringView target;
    qsizetype position = 0;
    std::vector<PlacedName> columns;
    std::vector<ExprPtr> values;

    /// Execute: the stored query; `values` are what its parameters get, by their place.
    QStringView query;

    std::vector<FromPtr> from;
    std::vector<Assignment> assignments;
    ExprPtr where;
    QStringView deleteFrom; ///< delete: name before ".*", or empty

    std::optional<DdlAction> ddl;
};

} // namespace melovane::sqlite::dialect
