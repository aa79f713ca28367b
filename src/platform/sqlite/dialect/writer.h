#pragma once

#include "platform/db/definitions.h"
#include "platform/sqlite/dialect/ast.h"

#include <QString>
#include <QStringView>

#include <vector>

/// Pieces of SQLite text that know their type, and the ways to put them together.
///
/// SQLite's own rules differ from the dialect's wherever types meet: these functions are the one
/// place that knows both.
namespace melovane::sqlite::dialect {

/// An expression in SQLite's words.
struct Sql
{
    enum class Form
    {
        Value,         ///< anything computed
        Column,        ///< a column of a table: carries its collation by itself
        Truth,         ///< SQLite's 1 and 0; becomes -1 and 0 where it is a value
        Null,          ///< the literal
        Parameter,     ///< "?n"
        TextLiteral,   ///< `literal` is its text
        NumberLiteral, ///< `number` is its value; dates too
    };

    QString text;
    FieldType type = FieldType::Text;
    bool typed = true; ///< false: null, and parameters without a declared type
    Form form = Form::Value;
    bool parameter = false; ///< a parameter occurs in it
    bool present = false;   ///< a text that is never null
    int strength = 0;       ///< how strongly its outermost operator binds
    int stack = 1;          ///< places that it needs in the stack of SQLite's parser
    int height = 1;         ///< height of its tree
    QStringView literal;
    double number = 0;
};

// How strongly operators bind in SQLite, weakest first.
inline constexpr int kBindsOr = 1;
inline constexpr int kBindsAnd = 2;
inline constexpr int kBindsNot = 3;
inline constexpr int kBindsEqual = 4;
inline constexpr int kBindsLess = 5;
inline constexpr int kBindsAdd = 7;
inline constexpr int kBindsMultiply = 8;
inline constexpr int kBindsConcat = 9;
inline constexpr int kBindsCollate = 10;
inline constexpr int kBindsSign = 11;
inline constexpr int kBindsMost = 12;

/// SQLite's parser has 100 places; the statement around an expression takes a few.
inline constexpr int kParserStack = 90;
/// SQLite allows trees of 1000.
inline constexpr int kTreeHeight = 900;
/// Longest text of one statement.
inline constexpr qsizetype kLongestExpression = 8'000'000;
/// Longest text that a name may stand for: names that stand for each other double it each time.
inline constexpr qsizetype kLongestStandIn = 50'000;
/// SQLite finds no plan for many more conditions than these.
inline constexpr size_t kMostConditions = 10'000;

/// Thrown by the combining functions; whoever knows the statement makes a DbError of it.
struct TooComplex
{};

/// Throws TooComplex for what SQLite would not take.
void check(const Sql& sql);

// Leaves
[[nodiscard]] Sql nullSql();
[[nodiscard]] Sql truthLiteral(bool truth);
[[nodiscard]] Sql numberLiteral(double number, FieldType type);
[[nodiscard]] Sql numberLiteral(QStringView digits);
[[nodiscard]] Sql textLiteral(QStringView text);
/// A name of SQLite in double quotes.
void appendQuotedName(QString& text, QStringView name);

// Combinations
[[nodiscard]] Sql parenthesized(Sql inner);
/// In brackets when it binds less strongly than asked.
[[nodiscard]] Sql atLeast(Sql inner, int strength);
[[nodiscard]] Sql
binary(Sql left, QLatin1StringView op, const Sql& right, int strength, FieldType type);
[[nodiscard]] Sql call(QLatin1StringView name, const std::vector<Sql>& args, FieldType type);
[[nodiscard]] Sql call(QLatin1StringView name, const Sql& arg, FieldType type);
/// Many conditions joined by `and` or `or`, as a tree of little height.
[[nodiscard]] Sql joined(std::vector<Sql> parts, Op op);
[[nodiscard]] Sql negated(Sql condition);
[[nodiscard]] Sql minusSign(Sql operand);

// Types
[[nodiscard]] bool isText(const Sql& sql);
[[nodiscard]] bool isNumber(const Sql& sql);
[[nodiscard]] bool isDate(const Sql& sql);
/// The type that holds both.
[[nodiscard]] FieldType commonType(FieldType left, FieldType right);
/// Truth as -1 and 0.
[[nodiscard]] Sql asValue(Sql sql);
/// As the text that it is shown with; null stays null.
[[nodiscard]] Sql asText(Sql sql);
/// For arithmetic: a text is the number at its beginning.
[[nodiscard]] Sql asNumber(Sql sql);
/// With the library's collation, unless it has that by itself or is no text.
[[nodiscard]] Sql collated(Sql sql);
/// What an assignment to a column of that type and width stores.
[[nodiscard]] Sql asAssigned(Sql sql, const FieldDef& target);

// Operators of the dialect
[[nodiscard]] Sql compare(Op op, Sql left, Sql right);
[[nodiscard]] Sql between(Sql value, Sql low, Sql high, bool isNegated);
[[nodiscard]] Sql inList(Sql value, std::vector<Sql> list, bool isNegated);
[[nodiscard]] Sql arithmetic(Op op, Sql left, Sql right);
/// imp, eqv, xor
[[nodiscard]] Sql logical(Op op, Sql left, Sql right);
/// and, or: of truths a truth, of numbers their bits
[[nodiscard]] Sql conjoined(std::vector<Sql> parts, Op op);
[[nodiscard]] Sql bitwiseNot(Sql operand);
/// True for a value that logical operators take bit by bit: all but truths, null and parameters
/// without a type.
[[nodiscard]] bool isBits(const Sql& sql);

/// A text or number brought to the type of the other side of a comparison.
void alignTypes(Sql& left, Sql& right);

} // namespace melovane::sqlite::dialect
