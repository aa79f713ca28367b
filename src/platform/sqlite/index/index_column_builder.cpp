#include "platform/sqlite/index/index_column_builder.h"

#include <bit>

namespace melovane::sqlite {

namespace {

constexpr std::size_t kChunksAtOnce = 16;
constexpr std::size_t kItemsAtOnce = 131'072;

/// Of rows that are put to places all over the memory.
constexpr std::size_t kPlacedAtOnce = 65'536;

} // namespace

void IndexColumnBuilder::addNull()
{
    if (m_isText) {
        m_texts.addNull();
    } else {
        m_numbers.addNull();
    }
}

void IndexColumnBuilder::addNumber(double number)
{
    const double plain = number + 0.0; // one zero, without a sign
    const auto bits = std::bit_cast<quint64>(plain) * 0xFF51AFD7ED558CCDULL;
    m_numbers.add(
        quint32(bits >> 32), [&](const IndexNumberEntry& known) { return known.number == plain; },
        [&] { return IndexNumberEntry{plain}; });
}

bool IndexColumnBuilder::settle(std::size_t coming)
{
    constexpr std::size_t kMost = IndexRuns<IndexNumberEntry>::kMostRows;
    const std::size_t open = m_isText ? m_texts.runs().openRows() : m_numbers.openRows();
    if (open + coming < kMost) {
        return false;
    }
    if (m_isText) {
        m_texts.runs().close();
    } else {
        m_numbers.close();
    }
    return true;
}

std::shared_ptr<const IndexColumn> IndexColumnBuilder::make()
{
    IndexColumnMaker maker(std::move(*this));
    while (maker.step()) {
    }
    return maker.take();
}

IndexColumnMaker::IndexColumnMaker(IndexColumnBuilder builder)
    : m_builder(std::move(builder))
{
    if (m_builder.m_isText) {
        m_builder.m_texts.sort(m_work);
    } else {
        m_builder.m_numbers.merge(m_work);
        addNumbers();
    }
    addValues();
    addRows();
}

const std::vector<std::vector<quint32>>& IndexColumnMaker::chunks()
{
    return m_builder.m_isText ? m_builder.m_texts.runs().chunks() : m_builder.m_numbers.chunks();
}

std::size_t IndexColumnMaker::distinct()
{
    return m_builder.m_isText ? m_builder.m_texts.runs().entries().size()
                              : m_builder.m_numbers.entries().size();
}

void IndexColumnMaker::addNumbers()
{
    m_work.add(
        [this] {
            m_numbers.reserve(distinct());
            return distinct();
        },
        kItemsAtOnce,
        [this](std::size_t first, std::size_t end) {
            for (std::size_t i = first; i < end; ++i) {
                m_numbers.push_back(m_builder.m_numbers.entries()[i].number);
            }
        });
}

/// The values of the rows, one behind the other, and how many rows each has.
void IndexColumnMaker::addValues()
{
    m_work.add(
        [this] {
            m_ends.reserve(distinct() + 2);
            return distinct() + 2;
        },
        kItemsAtOnce, [this](std::size_t, std::size_t end) { m_ends.resize(end); });
    m_work.add(
        [this] {
            m_values.reserve(chunks().size() * IndexTextsBuilder::Runs::kMostRows);
            return chunks().size();
        },
        kChunksAtOnce / 2,
        [this](std::size_t first, std::size_t end) {
            for (std::size_t i = first; i < end; ++i) {
                const std::vector<quint32>& chunk = chunks()[i];
                m_values.insert(m_values.end(), chunk.begin(), chunk.end());
                for (const quint32 value : chunk) {
                    ++m_ends[value + 1];
                }
            }
        });
    m_work.add([this] { return m_ends.size() - 1; }, kItemsAtOnce,
               [this](std::size_t first, std::size_t end) {
                   for (std::size_t value = first + 1; value <= end; ++value) {
                       m_ends[value] += m_ends[value - 1];
                   }
               });
}

/// The rows of each value; its end begins as the place of its first row and moves behind the last.
void IndexColumnMaker::addRows()
{
    m_work.add(
        [this] {
            m_rows.reserve(m_values.size());
            return m_values.size();
        },
        kItemsAtOnce, [this](std::size_t, std::size_t end) { m_rows.resize(end); });
    m_work.add([this] { return m_values.size(); }, kPlacedAtOnce,
               [this](std::size_t first, std::size_t end) {
                   for (std::size_t row = first; row < end; ++row) {
                       m_rows[m_ends[m_values[row]]++] = quint32(row);
                   }
               });
}

std::shared_ptr<const IndexColumn> IndexColumnMaker::take()
{
    auto column = std::make_shared<IndexColumn>();
    column->m_isText = m_builder.m_isText;
    column->m_fits = m_builder.m_fits && m_builder.m_texts.fits();
    if (m_builder.m_isText) {
        column->m_texts = m_builder.m_texts.take();
    }
    m_ends.pop_back();
    column->m_numbers = IndexArray(std::move(m_numbers));
    column->m_values = IndexArray(std::move(m_values));
    column->m_ends = IndexArray(std::move(m_ends));
    column->m_rows = IndexArray(std::move(m_rows));
    return column;
}

} // namespace melovane::sqlite
