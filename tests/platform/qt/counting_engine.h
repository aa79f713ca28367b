#pragma once

#include "platform/db/data_control.h"
#include "platform/db/db_error.h"

#include <memory>

namespace melovane::test {

/// How often something was asked for.
struct CellCounter
{
    qint64 rows = 0;
    qint64 reads = 0;
};

/// Rows of two columns, "FID" and "Titel", that are made up when they are read, and counted.
class CountingRecordset : public Recordset
{
public:
    explicit CountingRecordset(CellCounter& counter)
        : m_counter(counter)
    {
        m_fields[0].Name = QStringLiteral("FID");
        m_fields[1].Name = QStringLiteral("Titel");
    }

    [[nodiscard]] bool Eof() const override { return m_row >= m_counter.rows; }

    [[nodiscard]] bool Bof() const override { return m_row < 0; }

    void MoveFirst() override { m_row = 0; }

    void MoveLast() override { m_row = m_counter.rows - 1; }

    void MoveNext() override { ++m_row; }

    void MovePrevious() override { --m_row; }

    [[nodiscard]] qint64 RecordCount() const override { return m_counter.rows; }

    [[nodiscard]] qint64 rowCount() const override { return m_counter.rows; }

    [[nodiscard]] qint64 AbsolutePosition() const override { return m_row; }

    void SetAbsolutePosition(qint64 row) override { m_row = row; }

    [[nodiscard]] Bookmark bookmark() const override { return {m_row}; }

    void SetBookmark(Bookmark mark) override { m_row = mark.id; }

    [[nodiscard]] qint64 rowOf(Bookmark mark) const override { return mark.id; }

    [[nodiscard]] qint64 rowOfSame(const Recordset&, Bookmark mark) const override
    {
        return mark.id;
    }

    [[nodiscard]] Bookmark LastModified() const override { return {}; }

    [[nodiscard]] int fieldCount() const override { return 2; }

    [[nodiscard]] const FieldDef& fieldDef(int index) const override
    {
        return m_fields[static_cast<size_t>(index)];
    }

    [[nodiscard]] int fieldIndex(QStringView name) const override
    {
        return name.compare(m_fields[0].Name, Qt::CaseInsensitive) == 0 ? 0 : 1;
    }

    [[nodiscard]] Value value(int index) const override
    {
        ++m_counter.reads;
        return index == 0 ? Value(QString::number(m_row))
                          : Value(QStringLiteral("Titel %1").arg(m_row));
    }

    using Recordset::value;

    [[nodiscard]] bool Updatable() const override { return false; }

    void AddNew() override {}

    void Edit() override {}

    void setValue(int, const Value&) override {}

    using Recordset::setValue;

    void Update() override {}

    void CancelUpdate() override {}

    void Delete() override {}

    [[nodiscard]] std::unique_ptr<Recordset> Clone() const override
    {
        return std::make_unique<CountingRecordset>(m_counter);
    }

    void Requery() override {}

    void Refresh() override {}

    void Close() override {}

private:
    CellCounter& m_counter;
    std::array<FieldDef, 2> m_fields;
    qint64 m_row = 0;
};

/// A database whose every statement gives a CountingRecordset.
class CountingDatabase : public Database
{
public:
    explicit CountingDatabase(CellCounter& counter)
        : m_counter(counter)
    {}

    [[nodiscard]] QString Name() const override { return {}; }

    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(const QString&) override
    {
        return std::make_unique<CountingRecordset>(m_counter);
    }

    void walkRows(const QString&, const RowVisit&) override { throw refused(); }

    [[nodiscard]] std::unique_ptr<BulkInsert> bulkInsert(const QString&,
                                                         const QStringList&) override
    {
        throw refused();
    }

    void Execute(const QString&) override {}

    [[nodiscard]] int RecordsAffected() const override { return 0; }

    [[nodiscard]] TableDefs& tableDefs() override { throw refused(); }

    [[nodiscard]] QueryDefs& queryDefs() override { throw refused(); }

    std::unique_ptr<QueryDef> CreateQueryDef(const QString&, const QString&) override
    {
        throw refused();
    }

    void BeginTrans() override {}

    void BeginTransOn(const QString&) override {}

    void CommitTrans() override {}

    void Rollback() override {}

    [[nodiscard]] qint64 DataVersion() override { return 1; }

    [[nodiscard]] qint64 fileVersion() override { return 1; }

    void Close() override {}

private:
    static DbError refused() { return {dberror::kOther, QStringLiteral("not here")}; }

    CellCounter& m_counter;
};

class CountingEngine : public DBEngine
{
public:
    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(const QString&) override
    {
        return std::make_unique<CountingDatabase>(counter);
    }

    void Idle(int) override {}

    [[nodiscard]] Workspace& Workspaces(int) override
    {
        throw DbError(dberror::kOther, QStringLiteral("not here"));
    }

    void BackupDatabase(const QString&, const QString&) override {}

    void Release(const QString&) override {}

    void GiveAway(const QString&) override {}

    void TakeBack(const QString&) override {}

    CellCounter counter;
};

} // namespace melovane::test
