#include "platform/sqlite/index/index_loader.h"

#include <algorithm>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace melovane::sqlite {

namespace {

/// Steps of making that are done at once, a millisecond each.
constexpr int kStepsAtOnce = 3;

/// Room of so many bytes and more is given back to the system as soon as it is free. Left to itself
/// the C library would keep it among its own from the first large piece on.
constexpr int kOwnRoom = 128 * 1024;

void giveBackLargeRoomAtOnce()
{
#ifdef __GLIBC__
    [[maybe_unused]] static const int done = ::mallopt(M_MMAP_THRESHOLD, kOwnRoom);
#endif
}

/// Smaller pieces of what a column was made from lie between what is kept, and would else stay with
/// the program: of a million tracks some megabytes. After each column, since all at once takes a
/// long turn.
void giveBackMemory()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace

std::vector<IndexColumnBuilder> buildersOf(const std::vector<IndexField>& fields)
{
    std::vector<IndexColumnBuilder> builders;
    builders.reserve(fields.size());
    for (const IndexField& field : fields) {
        builders.emplace_back(field.isText);
    }
    return builders;
}

IndexLoader::IndexLoader(std::vector<IndexField> fields, std::vector<SearchOrder> order)
    : m_fields(std::move(fields))
    , m_order(std::move(order))
    , m_builders(buildersOf(m_fields))
{
    giveBackLargeRoomAtOnce();
}

bool IndexLoader::step(IndexedFile& file)
{
    if (!m_table) {
        if (!settle()) {
            read(file);
        }
        return true;
    }
    for (int i = 0; i < kStepsAtOnce; ++i) {
        const bool givesBack = m_isMade;
        if (!make()) {
            return false;
        }
        if (m_isMade || givesBack) {
            break; // giving back memory has a turn of its own
        }
    }
    return true;
}

/// What the rows that are read next would else make wait all in one turn: of texts a column in
/// each.
bool IndexLoader::settle()
{
    return std::any_of(m_builders.begin(), m_builders.end(), [](IndexColumnBuilder& builder) {
        return builder.settle(IndexedFile::kMostRowsAtOnce) && builder.isText();
    });
}

void IndexLoader::read(IndexedFile& file)
{
    if (!file.readRows(m_fields, m_builders, m_keys)) {
        m_table = std::make_unique<IndexTable>(IndexArray(std::move(m_keys)));
    }
}

bool IndexLoader::make()
{
    return std::size_t(m_table->columns().size()) < m_fields.size() ? makeColumn() : makeOrder();
}

bool IndexLoader::makeColumn()
{
    const auto next = std::size_t(m_table->columns().size());
    if (!m_column) {
        m_column = std::make_unique<IndexColumnMaker>(std::move(m_builders[next]));
    }
    if (m_isMade) {
        m_table->addColumn(m_fields[next].name, m_column->take());
        m_column.reset();
        m_isMade = false;
        giveBackMemory();
    } else {
        m_isMade = !m_column->step();
    }
    return true;
}

bool IndexLoader::makeOrder()
{
    if (!m_maker) {
        m_maker = m_table->orderMaker(m_order);
    }
    if (!m_maker) {
        return false;
    }
    if (m_maker->step()) {
        return true;
    }
    m_table->addOrder(m_order, m_maker->take());
    return false;
}

} // namespace melovane::sqlite
