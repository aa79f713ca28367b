#pragma once

#include "platform/db/database.h"
#include "platform/sqlite/engine/session.h"

namespace melovane::sqlite {

/// The tables of a session's catalogue.
class SqliteTableDefs : public TableDefs
{
public:
    explicit SqliteTableDefs(std::weak_ptr<SessionLease> lease)
        : m_lease(std::move(lease))
    {}

    [[nodiscard]] std::vector<TableDef> All() const override;
    [[nodiscard]] TableDef Item(const QString& name) const override;
    [[nodiscard]] bool Contains(const QString& name) const override;
    [[nodiscard]] QStringList ownNames() const override;
    [[nodiscard]] QString connectOf(const QString& name) const override;
    void Append(const TableDef& table) override;
    void Delete(const QString& name) override;

private:
    std::weak_ptr<SessionLease> m_lease;
};

/// The stored queries of a session's catalogue.
class SqliteQueryDefs : public QueryDefs
{
public:
    explicit SqliteQueryDefs(std::weak_ptr<SessionLease> lease)
        : m_lease(std::move(lease))
    {}

    [[nodiscard]] QStringList Names() const override;
    [[nodiscard]] bool Contains(const QString& name) const override;
    [[nodiscard]] std::unique_ptr<QueryDef> Item(const QString& name) const override;
    void Delete(const QString& name) override;

private:
    std::weak_ptr<SessionLease> m_lease;
};

/// A connection as its user sees it.
class SqliteDatabase : public Database
{
public:
    /// \param path full path of the file
    SqliteDatabase(QString path, std::shared_ptr<SessionLease> lease);

    [[nodiscard]] QString Name() const override { return m_path; }

    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(const QString& source) override;
    void walkRows(const QString& statement, const RowVisit& visit) override;
    [[nodiscard]] std::unique_ptr<BulkInsert> bulkInsert(const QString& table,
                                                         const QStringList& columns) override;
    void Execute(const QString& statement) override;

    [[nodiscard]] int RecordsAffected() const override { return m_recordsAffected; }

    [[nodiscard]] TableDefs& tableDefs() override { return m_tableDefs; }

    [[nodiscard]] QueryDefs& queryDefs() override { return m_queryDefs; }

    std::unique_ptr<QueryDef> CreateQueryDef(const QString& name, const QString& sql) override;
    void BeginTrans() override;
    void BeginTransOn(const QString& table) override;
    void CommitTrans() override;
    void Rollback() override;
    [[nodiscard]] qint64 DataVersion() override;
    [[nodiscard]] qint64 fileVersion() override;
    void Close() override;

private:
    [[nodiscard]] Session& session() const { return openSession(m_lease); }

    /// Runs an insert with pasted values through the statement that all of its kind share.
    /// \return false when it is none, or is not understood so
    bool executePasted(const QString& statement);

    QString m_path;
    std::shared_ptr<SessionLease> m_lease;
    SqliteTableDefs m_tableDefs;
    SqliteQueryDefs m_queryDefs;
    int m_recordsAffected = 0;
};

} // namespace melovane::sqlite
