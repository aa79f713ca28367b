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
    IndexBits values(qint64(m_ends.size()));
    if (m_isText) {
        addTexts(test, values);
    } else {
        addNumbers(test, values);
    }
    // Going to a value costs as much as going to some rows of it, and more than looking at a row.
    constexpr qint64 kValueCost = 8;
    const auto rowCount = qint64(m_rows.size());
    const qint64 perValue = kValueCost + rowCount / qint64(m_ends.size());
    if (values.count() * perValue > rowCount) {
        rows.addPlacesOf({m_values.data(), m_values.size()}, values);
        return;
    }
    values.forEach([&](std::size_t value) {
        for (quint32 at = m_ends[value - 1]; at < m_ends[value]; ++at) {
            rows.set(m_rows[at]);
        }
    });
}

std::vector<quint32> IndexColumn::firstPlaces(bool descending) const
{
    const auto count = quint32(m_rows.size());
    std::vector<quint32> places;
    places.reserve(m_ends.size());
    quint32 before = 0;
    for (const quint32 end : m_ends) {
        places.push_back(descending ? count - end : before);
        before = end;
    }
    return places;
}

void IndexColumn::addTexts(const IndexTest& test, IndexBits& values) const
{
    switch (test.kind()) {
    case SearchTest::Kind::Like:
        m_texts.addMatching(test.pattern(), test.text(), values);
        break;
    case SearchTest::Kind::Equal:
        if (const auto found = m_texts.find(test.folded())) {
            values.set(*found + 1);
        }
        break;
    case SearchTest::Kind::AtLeast:
        values.setRange(m_texts.lowerBound(test.folded()) + 1, m_texts.count() + 1);
        break;
    case SearchTest::Kind::AnyOfNumbers:
        break;
    }
}

void IndexColumn::addNumbers(const IndexTest& test, IndexBits& values) const
{
    const auto place = [&](double number) {
        return std::lower_bound(m_numbers.begin(), m_numbers.end(), number) - m_numbers.begin();
    };
    if (test.kind() == SearchTest::Kind::AtLeast) {
        values.setRange(place(test.numbers().front()) + 1, values.size());
        return;
    }
    for (const double number : test.numbers()) {
        const auto found = std::size_t(place(number));
        if (found < m_numbers.size() && m_numbers[found] == number) {
            values.set(qint64(found) + 1);
        }
    }
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
    return {m_isText, m_fits, m_texts.letters(), m_texts.ends(), m_numbers, m_values,
            m_ends,   m_rows};
}

std::shared_ptr<const IndexColumn> IndexColumn::fromParts(IndexColumnParts parts, std::size_t rows)
{
    const std::size_t distinct = parts.isText ? parts.textEnds.size() : parts.numbers.size();
    const bool belongs = parts.values.size() == rows && parts.rows.size() == rows &&
                         parts.ends.size() == distinct + 1 && endsAt(parts.ends, rows) &&
                         ascend(parts.numbers) && standByValue(parts);
    auto column = std::make_shared<IndexColumn>();
    if (belongs) {
        column->m_texts = IndexTexts(std::move(parts.letters), std::move(parts.textEnds));
    }
    if (!belongs || !column->m_texts.isWhole()) {
        return nullptr;
    }
    column->m_isText = parts.isText;
    column->m_fits = parts.fits;
    column->m_numbers = std::move(parts.numbers);
    column->m_values = std::move(parts.values);
    column->m_ends = std::move(parts.ends);
    column->m_rows = std::move(parts.rows);
    return column;
}

} // namespace melovane::sqlite
