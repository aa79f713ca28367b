#pragma once

#include "platform/db/bulk_insert.h"
#include "platform/sqlite/engine/session.h"

namespace melovane::sqlite {

/// Writes rows by statements of many rows each. Inside one statement SQLite keeps its place in the
/// indexes from row to row, and what a statement costs by itself is paid once.
class SqliteBulkInsert : public BulkInsert
{
public:
    /// \throws DbError kSourceNotFound ... for a table or column that is not there
    SqliteBulkInsert(std::weak_ptr<SessionLease> lease,
                     const QString& table,
                     const QStringList& columns);

    void add(std::vector<Value> row) override;
    void finish() override;

private:
    using Row = std::vector<Value>;

    void write();
    void insert(const Row* rows, std::size_t count);
    void requireTarget(Session& session);
    [[nodiscard]] QString statementOf(std::size_t rows) const;

    std::weak_ptr<SessionLease> m_lease;
    QString m_source;                         ///< a select of the columns, in the suite's dialect
    std::shared_ptr<const Prepared> m_target; ///< the same, with the places of table and columns
    QStringList m_names;               ///< columns written, those with a computed default behind
    QStringList m_defaults;            ///< the computed defaults in SQLite's words
    std::vector<Row> m_rows;           ///< not written yet
    std::unique_ptr<Statement> m_many; ///< of kRowsTogether rows
    std::unique_ptr<Statement> m_one;
};

} // namespace melovane::sqlite
