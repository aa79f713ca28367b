#include "platform/sqlite/index/index_column.h"

#include <algorithm>

namespace melovane::sqlite {

namespace {

/// True when `rows` holds each row once: the rows of a value between its ends, ascending.
bool standByValue(const IndexColumnParts& parts)
{
    quint32 at = 0;
    for (quint32 value = 0; value < parts.ends.size(); ++value) {
        for (const quint32 first = at; at < parts.ends[value]; ++at) {
            const quint32 row = parts.rows[at];
            if (row >= parts.values.size() || parts.values[row] != value ||
                (at > first && parts.rows[at - 1] >= row)) {
                return false;
            }
        }
    }
    return true;
}

bool ascend(const IndexArray<double>& numbers)
{
    // Neither less nor greater: a value that is no number.
    return std::adjacent_find(numbers.begin(), numbers.end(), [](double left, double right) {
               return !(left < right);
           }) == numbers.end();
}

/// True for rising ends of which the last is `size`.
bool endsAt(const IndexArray<quint32>& ends, std::size_t size)
{
    return ends.size() == 0
               ? size == 0
               : std::is_sorted(ends.begin(), ends.end()) && ends[ends.size() - 1] == size;
}

} // namespace

void IndexColumn::mark(const IndexTest& test, IndexBits& rows) const
{
    for (const auto& [first, end] : m_isText ? matchingTexts(test, rows) : matchingNumbers(test)) {
        // Value numbers are one more than the numbers of texts.
        for (quint32 at = m_ends[first]; at < m_ends[end]; ++at) {
            rows.set(m_rows[at]);
        }
    }
}

std::vector<quint32> IndexColumn::sorted(const std::vector<quint32>& rows, bool descending) const
{
    // How many rows each value has is known, so every row goes to its place at once.
    const auto count = quint32(rows.size());
    std::vector<quint32> next(m_ends.size());
    for (std::size_t value = 0; value < next.size(); ++value) {
        const quint32 before = value == 0 ? 0 : m_ends[value - 1];
        next[value] = descending ? count - m_ends[value] : before;
    }
    std::vector<quint32> result(count);
    for (const quint32 row : rows) {
        result[next[m_values[row]]++] = row;
    }
    return result;
}

/// True when all rows of a value are there already; of values with many rows it is not asked.
bool IndexColumn::areIn(quint32 value, const IndexBits& rows) const
{
    constexpr quint32 kFewRows = 4;
    const quint32 first = m_ends[value - 1];
    const quint32 end = m_ends[value];
    return end - first <= kFewRows && std::all_of(m_rows.begin() + first, m_rows.begin() + end,
                                                  [&](quint32 row) { return rows.test(row); });
}

NumberRanges IndexColumn::matchingTexts(const IndexTest& test, const IndexBits& known) const
{
    NumberRanges result;
    switch (test.kind()) {
    case SearchTest::Kind::Like:
        return m_texts.matching(test.pattern(),
                                [&](quint32 number) { return areIn(number + 1, known); });
    case SearchTest::Kind::Equal:
        if (const auto found = m_texts.find(test.folded())) {
            result.add(*found);
        }
        break;
    case SearchTest::Kind::AtLeast:
        result.add(m_texts.lowerBound(test.folded()), m_texts.count());
        break;
    case SearchTest::Kind::AnyOfNumbers:
        break;
    }
    return result;
}

NumberRanges IndexColumn::matchingNumbers(const IndexTest& test) const
{
    NumberRanges result;
    const auto place = [&](double number) {
        return quint32(std::lower_bound(m_numbers.begin(), m_numbers.end(), number) -
                       m_numbers.begin());
    };
    if (test.kind() == SearchTest::Kind::AtLeast) {
        result.add(place(test.numbers().front()), quint32(m_numbers.size()));
        return result;
    }
    std::vector<double> wanted = test.numbers();
    std::sort(wanted.begin(), wanted.end());
    wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
    for (const double number : wanted) {
        const quint32 found = place(number);
        if (found < m_numbers.size() && m_numbers[found] == number) {
            result.add(found);
        }
    }
    return result;
}

quint32 IndexColumn::placeOf(const IndexCell& cell) const
{
    if (cell.kind == IndexCell::Kind::Null) {
        return 0;
    }
    quint32 next = 0;
    bool isThere = false;
    if (m_isText) {
        next = m_texts.lowerBound(cell.folded);
        isThere = next < m_texts.count() && m_texts.decoded(next) == cell.folded;
    } else {
        next = quint32(std::lower_bound(m_numbers.begin(), m_numbers.end(), cell.number) -
                       m_numbers.begin());
        isThere = next < m_numbers.size() && m_numbers[next] == cell.number;
    }
    return 2 * (next + 1) - (isThere ? 0 : 1);
}

int IndexColumn::compare(const IndexCell& left, const IndexCell& right)
{
    if (left.kind == IndexCell::Kind::Text && right.kind == IndexCell::Kind::Text) {
        return textcompare::compare(left.folded, right.folded);
    }
    // Null is the least, and its number is 0 like that of all nulls.
    if (left.kind != right.kind) {
        return left.kind == IndexCell::Kind::Null ? -1 : 1;
    }
    return left.number < right.number ? -1 : (left.number > right.number ? 1 : 0);
}

qint64 IndexColumn::bytes() const
{
    return qint64((m_values.size() + m_ends.size() + m_rows.size()) * sizeof(quint32) +
                  m_numbers.size() * sizeof(double)) +
           m_texts.bytes();
}

IndexColumnParts IndexColumn::parts() const
{
    return {m_isText,       m_fits,          m_texts.letters(),
            m_texts.ends(), m_texts.signs(), m_numbers,
            m_values,       m_ends,          m_rows};
}

std::shared_ptr<const IndexColumn> IndexColumn::fromParts(IndexColumnParts parts, std::size_t rows)
{
    const std::size_t distinct = parts.isText ? parts.textEnds.size() : parts.numbers.size();
    const bool belongs = parts.values.size() == rows && parts.rows.size() == rows &&
                         parts.ends.size() == distinct + 1 &&
                         parts.signs.size() == parts.textEnds.size() && endsAt(parts.ends, rows) &&
                         endsAt(parts.textEnds, parts.letters.size()) && ascend(parts.numbers) &&
                         standByValue(parts);
    if (!belongs) {
        return nullptr;
    }
    auto column = std::make_shared<IndexColumn>();
    column->m_isText = parts.isText;
    column->m_fits = parts.fits;
    column->m_texts =
        IndexTexts(std::move(parts.letters), std::move(parts.textEnds), std::move(parts.signs));
    column->m_numbers = std::move(parts.numbers);
    column->m_values = std::move(parts.values);
    column->m_ends = std::move(parts.ends);
    column->m_rows = std::move(parts.rows);
    return column;
}

void IndexColumnBuilder::addNumber(double number)
{
    m_numbers.resize(m_values.size());
    m_numbers.push_back(number + 0.0); // one zero, without a sign
    m_values.push_back(1);
}

void IndexColumnBuilder::sortNumbers(IndexColumn& column)
{
    m_numbers.resize(m_values.size());
    std::vector<double> distinct;
    for (std::size_t row = 0; row < m_values.size(); ++row) {
        if (m_values[row] != 0 && (distinct.empty() || distinct.back() != m_numbers[row])) {
            distinct.push_back(m_numbers[row]);
        }
    }
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    for (std::size_t row = 0; row < m_values.size(); ++row) {
        if (m_values[row] != 0) {
            const auto place = std::lower_bound(distinct.begin(), distinct.end(), m_numbers[row]);
            m_values[row] = quint32(place - distinct.begin()) + 1;
        }
    }
    column.m_numbers = IndexArray(std::move(distinct));
}

std::shared_ptr<const IndexColumn> IndexColumnBuilder::make()
{
    auto column = std::make_shared<IndexColumn>();
    column->m_isText = m_isText;
    column->m_fits = m_fits && m_texts.fits();
    if (m_isText) {
        IndexTextsBuilder::Sorted sorted = m_texts.sort();
        for (quint32& value : m_values) {
            value = value == 0 ? 0 : sorted.places[value - 1] + 1;
        }
        column->m_texts = std::move(sorted.texts);
    } else {
        sortNumbers(*column);
    }
    const std::size_t distinct = m_isText ? column->m_texts.count() : column->m_numbers.size();
    std::vector<quint32> ends(distinct + 2);
    for (const quint32 value : m_values) {
        ++ends[value + 1];
    }
    for (std::size_t value = 1; value < ends.size(); ++value) {
        ends[value] += ends[value - 1];
    }
    std::vector<quint32> rows(m_values.size());
    for (std::size_t row = 0; row < m_values.size(); ++row) {
        rows[ends[m_values[row]]++] = quint32(row);
    }
    ends.pop_back();
    column->m_values = IndexArray(std::move(m_values));
    column->m_ends = IndexArray(std::move(ends));
    column->m_rows = IndexArray(std::move(rows));
    return column;
}

} // namespace melovane::sqlite
