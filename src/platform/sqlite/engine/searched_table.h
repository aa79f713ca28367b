#pragma once

#include "platform/sqlite/engine/catalogue.h"
#include "platform/sqlite/engine/index_log.h"
#include "platform/sqlite/index/indexed_file.h"

namespace melovane::sqlite {

/// The searched table of one open database, for the column index of its file.
class SearchedTable : public IndexedFile
{
public:
    /// Both outlive it.
    SearchedTable(Connection& connection, Catalogue& catalogue)
        : m_connection(connection)
        , m_catalogue(catalogue)
        , m_log(connection)
    {}

    [[nodiscard]] bool inTransaction() const override { return m_connection.inTransaction(); }

    [[nodiscard]] IndexMark mark() override;
    [[nodiscard]] qint64 schemaVersion() override;
    [[nodiscard]] std::vector<IndexField> fields() override;

    [[nodiscard]] ChangeLog& changes() override { return m_log; }

    [[nodiscard]] std::unique_ptr<Reading> startReading() override;
    [[nodiscard]] bool readRows(const std::vector<IndexField>& fields,
                                std::vector<IndexColumnBuilder>& builders,
                                std::vector<qint64>& keys) override;
    void addColumns(IndexTable& table, const std::vector<IndexField>& fields) override;
    [[nodiscard]] std::optional<std::vector<IndexCell>>
    readRow(const std::vector<IndexField>& fields, qint64 key) override;

private:
    Connection& m_connection;
    Catalogue& m_catalogue;
    IndexLog m_log;
};

} // namespace melovane::sqlite
