#include "platform/sqlite/index/index_loader.h"

namespace melovane::sqlite {

std::vector<IndexColumnBuilder> buildersOf(const std::vector<IndexField>& fields)
{
    std::vector<IndexColumnBuilder> builders;
    builders.reserve(fields.size());
    for (const IndexField& field : fields) {
        builders.emplace_back(field.isText);
    }
    return builders;
}

IndexLoader::IndexLoader(std::vector<IndexField> fields)
    : m_fields(std::move(fields))
    , m_builders(buildersOf(m_fields))
{}

bool IndexLoader::step(IndexedFile& file)
{
    if (!m_table) {
        if (!file.readRows(m_fields, m_builders, m_keys)) {
            m_table = std::make_unique<IndexTable>(IndexArray(std::move(m_keys)));
        }
        return true;
    }
    const auto next = std::size_t(m_table->columns().size());
    if (next < m_fields.size()) {
        m_table->addColumn(m_fields[next].name, m_builders[next].make());
        m_builders[next] = IndexColumnBuilder(true);
    }
    return next + 1 < m_fields.size();
}

} // namespace melovane::sqlite
