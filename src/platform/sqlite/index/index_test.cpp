#include "platform/sqlite/index/index_test.h"

#include <algorithm>

namespace melovane::sqlite {

IndexTest::IndexTest(const SearchTest& test)
    : m_kind(test.kind)
    , m_text(test.text)
    , m_pattern(test.kind == SearchTest::Kind::Like ? test.text : QString())
    , m_folded(textcompare::fold(test.text))
    , m_numbers(test.numbers)
{}

bool IndexTest::matches(const IndexCell& cell) const
{
    switch (cell.kind) {
    case IndexCell::Kind::Text:
        return matchesText(cell.folded);
    case IndexCell::Kind::Number:
        return matchesNumber(cell.number);
    case IndexCell::Kind::Null:
    case IndexCell::Kind::Foreign:
        break;
    }
    return false;
}

bool IndexTest::matchesText(const QString& folded) const
{
    switch (m_kind) {
    case SearchTest::Kind::Like:
        return m_pattern.matchesFolded(folded);
    case SearchTest::Kind::Equal:
        return folded == m_folded;
    case SearchTest::Kind::AtLeast:
        return textcompare::compare(folded, m_folded) >= 0;
    case SearchTest::Kind::AnyOfNumbers:
        break;
    }
    return false;
}

bool IndexTest::matchesNumber(double number) const
{
    if (m_kind == SearchTest::Kind::AtLeast) {
        return number >= m_numbers.front();
    }
    return std::find(m_numbers.begin(), m_numbers.end(), number) != m_numbers.end();
}

} // namespace melovane::sqlite
