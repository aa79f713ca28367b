#pragma once

#include "platform/sqlite/dialect/parsed_statement.h"

#include <optional>
#include <vector>

/// Statements of the search shape, which the index in memory can answer.
namespace melovane::sqlite {

/// The table that is searched. Keep.
inline constexpr char16_t kSearchedTable[] = u"db_all";

/// One comparison of a column with constants.
struct SearchTest
{
    enum class Kind
    {
        Like,        ///< texts only
        Equal,       ///< texts or numbers
        AtLeast,     ///< texts or numbers
        AnyOfNumbers ///< in (..)
    };

    Kind kind = Kind::Like;
    QString column; ///< as the catalogue spells it
    bool isText = true;
    QString text;
    std::vector<double> numbers;

    bool operator==(const SearchTest&) const = default;
};

struct SearchOrder
{
    QString column; ///< as the catalogue spells it
    bool descending = false;

    bool operator==(const SearchOrder&) const = default;
};

/// A search: of each group at least one test holds.
using SearchCondition = std::vector<std::vector<SearchTest>>;

struct SearchStatement
{
    bool isCount = false; ///< select count(*)
    SearchCondition where;
    std::vector<SearchOrder> order;
};

/// The search that a statement is which the translator has accepted. Nothing when it is of another
/// shape: SQLite answers it then.
/// \param fields columns of the searched table
[[nodiscard]] std::optional<SearchStatement> searchStatement(const ParsedStatement& statement,
                                                             const std::vector<FieldDef>& fields);

} // namespace melovane::sqlite
