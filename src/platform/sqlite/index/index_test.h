#pragma once

#include "platform/db/text_compare.h"
#include "platform/sqlite/index/index_statement.h"

namespace melovane::sqlite {

/// A cell as the index keeps it.
struct IndexCell
{
    enum class Kind
    {
        Null,
        Text,
        Number,
        Foreign ///< nothing that a column of its type holds; only SQLite compares it
    };

    Kind kind = Kind::Null;
    QString folded;
    double number = 0;

    bool operator==(const IndexCell&) const = default;
};

/// A test made ready for many cells.
class IndexTest
{
public:
    explicit IndexTest(const SearchTest& test);

    [[nodiscard]] SearchTest::Kind kind() const { return m_kind; }

    [[nodiscard]] const textcompare::LikePattern& pattern() const { return m_pattern; }

    /// The text as the statement has it: of the pattern, when there is one.
    [[nodiscard]] const QString& text() const { return m_text; }

    /// The text to compare with, folded.
    [[nodiscard]] const QString& folded() const { return m_folded; }

    [[nodiscard]] const std::vector<double>& numbers() const { return m_numbers; }

    /// Null matches nothing. The cell is none of kind Foreign.
    [[nodiscard]] bool matches(const IndexCell& cell) const;

private:
    [[nodiscard]] bool matchesText(const QString& folded) const;
    [[nodiscard]] bool matchesNumber(double number) const;

    SearchTest::Kind m_kind;
    QString m_text;
    textcompare::LikePattern m_pattern;
    QString m_folded;
    std::vector<double> m_numbers;
};

} // namespace melovane::sqlite
