#include "platform/sqlite/engine/searched_table.h"

#include "platform/sqlite/engine/index_reader.h"
#include "platform/sqlite/engine/read_scope.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

class ScopedReading : public IndexedFile::Reading
{
public:
    explicit ScopedReading(Connection& connection)
        : m_scope(connection)
    {}

private:
    ReadScope m_scope;
};

} // namespace

IndexMark SearchedTable::mark()
{
    IndexMark mark;
    mark.dataVersion = m_connection.number(u"PRAGMA main.data_version"_s);
    mark.ownChanges = sqlite3_total_changes64(m_connection.handle());
    m_catalogue.refresh();
    mark.catalogue = m_catalogue.version();
    return mark;
}

qint64 SearchedTable::schemaVersion()
{
    return m_connection.number(u"PRAGMA main.schema_version"_s);
}

std::vector<IndexField> SearchedTable::fields()
{
    m_catalogue.refresh();
    std::vector<IndexField> result;
    if (const auto source = m_catalogue.find(QString::fromUtf16(kSearchedTable))) {
        for (const FieldDef& field : source->fields) {
            result.push_back(
                {field.Name, field.Type == FieldType::Text || field.Type == FieldType::Memo});
        }
    }
    return result;
}

std::unique_ptr<IndexedFile::Reading> SearchedTable::startReading()
{
    return std::make_unique<ScopedReading>(m_connection);
}

bool SearchedTable::readRows(const std::vector<IndexField>& fields,
                             std::vector<IndexColumnBuilder>& builders,
                             std::vector<qint64>& keys)
{
    return sqlite::readRows(m_connection, fields, builders, keys);
}

void SearchedTable::addColumns(IndexTable& table, const std::vector<IndexField>& fields)
{
    sqlite::addColumns(m_connection, table, fields);
}

std::optional<std::vector<IndexCell>> SearchedTable::readRow(const std::vector<IndexField>& fields,
                                                             qint64 key)
{
    return sqlite::readRow(m_connection, fields, key);
}

} // namespace melovane::sqlite
