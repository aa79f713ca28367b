#pragma once

#include <QString>
#include <QStringView>

#include <deque>
#include <vector>

/// First step of the dialect: a text becomes tokens.
namespace melovane::sqlite::dialect {

/// Words with a meaning of their own. Most of them are names where a name is wanted.
enum class Word
{
    None,
    Add,
    All,
    Alter,
    And,
    As,
    Asc,
    Between,
    By,
    Column,
    Constraint,
    Create,
    Delete,
    Desc,
    Distinct,
    DistinctRow,
    Drop,
    Eqv,
    Exists,
    False,
    From,
    Group,
    Having,
    Imp,
    In,
    Index,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Key,
    Left,
    Like,
    Mod,
    Not,
    Null,
    On,
    Or,
    Order,
    Outer,
    Parameters,
    Percent,
    Primary,
    Right,
    Select,
    Set,
    Table,
    Top,
    True,
    Union,
    Unique,
    Update,
    Values,
    Where,
    With,
    Xor
};

// What Token::sign says of the operators with two letters.
inline constexpr char16_t kNotEqualSign = u'\u2260';
inline constexpr char16_t kLessEqualSign = u'\u2264';
inline constexpr char16_t kGreaterEqualSign = u'\u2265';

struct Token
{
    enum class Kind
    {
        Name,        ///< a bare word; `word` tells whether it has a meaning
        BracketName, ///< [name] or `name`, never a keyword
        Number,      ///< digits, point, exponent; "&HFF" and "&O17" as their decimal digits
        Text,        ///< quoted, quotes taken off and doubled ones made single
        Date,        ///< between two #
        Sign,        ///< operator or punctuation
        End
    };

    Kind kind = Kind::End;
    Word word = Word::None;
    QStringView text;
    qsizetype position = 0; ///< 0-based place in the statement
    char16_t sign = 0;      ///< Sign: the letter, or one of the constants above
};

/// Tokens of one statement. Views point into the statement or into `unquoted`; both must live on.
struct Tokens
{
    std::vector<Token> list; ///< ends with Kind::End
    std::deque<QString> unquoted;
};

/// \throws DbError kSyntax for an open quote, bracket or date, and for a letter that starts nothing
[[nodiscard]] Tokens tokenize(const QString& statement);

/// Throws DbError kSyntax with the place, counted from 1, and the text that stands there.
[[noreturn]] void syntaxError(const QString& statement, qsizetype position, const QString& what);

/// Equal without regard to case; the comparison of all names.
[[nodiscard]] bool sameName(QStringView left, QStringView right);

} // namespace melovane::sqlite::dialect
