#pragma once

#include "platform/db/database.h"

#include <QStringList>

#include <functional>
#include <utility>

namespace melovane::test {

/// What the databases of a StatementEngine were asked to do.
struct Statements
{
    QStringList texts; ///< statements, tables and stored queries, in the wording of the caller
    /// Asked before each; throws to let it fail. May be empty.
    std::function<void(const QString& statement)> before;

    void note(const QString& statement)
    {
        texts.append(statement);
        if (before) {
            before(statement);
        }
    }

    QStringList take() { return std::exchange(texts, {}); }
};

/// A database of the real engine that notes its statements.
class StatementDatabase : public Database
{
public:
    StatementDatabase(std::unique_ptr<Database> database, Statements& statements)
        : m_database(std::move(database))
        , m_statements(statements)
    {}

    [[nodiscard]] QString Name() const override { return m_database->Name(); }

    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(const QString& source) override
    {
        m_statements.note(source);
        return m_database->OpenRecordset(source);
    }

    void walkRows(const QString& statement, const RowVisit& visit) override
    {
        m_statements.note(statement);
        m_database->walkRows(statement, visit);
    }

    [[nodiscard]] std::unique_ptr<BulkInsert> bulkInsert(const QString& table,
                                                         const QStringList& columns) override
    {
        return m_database->bulkInsert(table, columns);
    }

    void Execute(const QString& statement) override
    {
        m_statements.note(statement);
        m_database->Execute(statement);
    }

    [[nodiscard]] int RecordsAffected() const override { return m_database->RecordsAffected(); }

    [[nodiscard]] TableDefs& tableDefs() override { return m_database->tableDefs(); }

    [[nodiscard]] QueryDefs& queryDefs() override { return m_database->queryDefs(); }

    std::unique_ptr<QueryDef> CreateQueryDef(const QString& name, const QString& sql) override
    {
        return m_database->CreateQueryDef(name, sql);
    }

    void BeginTrans() override { m_database->BeginTrans(); }

    void BeginTransOn(const QString& table) override { m_database->BeginTransOn(table); }

    void CommitTrans() override { m_database->CommitTrans(); }

    void Rollback() override { m_database->Rollback(); }

    [[nodiscard]] qint64 DataVersion() override { return m_database->DataVersion(); }

    [[nodiscard]] qint64 fileVersion() override { return m_database->fileVersion(); }

    void Close() override { m_database->Close(); }

private:
    std::unique_ptr<Database> m_database;
    Statements& m_statements;
};

/// The real engine with notes of the statements that run, and with failures where a test wants
/// them.
class StatementEngine : public DBEngine
{
public:
    explicit StatementEngine(DBEngine& engine)
        : m_engine(engine)
    {}

    Statements statements;

    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(const QString& name) override
    {
        return std::make_unique<StatementDatabase>(m_engine.OpenDatabase(name), statements);
    }

    void Idle(int action) override { m_engine.Idle(action); }

    [[nodiscard]] Workspace& Workspaces(int index) override { return m_engine.Workspaces(index); }

    void BackupDatabase(const QString& source, const QString& target) override
    {
        m_engine.BackupDatabase(source, target);
    }

    void Release(const QString& name) override { m_engine.Release(name); }

    void GiveAway(const QString& name) override { m_engine.GiveAway(name); }

    void TakeBack(const QString& name) override { m_engine.TakeBack(name); }

private:
    DBEngine& m_engine;
};

} // namespace melovane::test
