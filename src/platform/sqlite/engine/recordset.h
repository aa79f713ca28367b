#pragma once

#include "platform/db/recordset.h"
#include "platform/sqlite/engine/row_writer.h"

namespace melovane::sqlite {

/// A place in a RowSet, and the row being written there.
class SqliteRecordset final : public Recordset
{
public:
    SqliteRecordset(std::weak_ptr<SessionLease> lease, std::shared_ptr<RowSet> rows);

    [[nodiscard]] bool Eof() const override;
    [[nodiscard]] bool Bof() const override;
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    [[nodiscard]] qint64 RecordCount() const override;
    [[nodiscard]] qint64 rowCount() const override;
    [[nodiscard]] qint64 AbsolutePosition() const override;
    void SetAbsolutePosition(qint64 row) override;
    [[nodiscard]] Bookmark bookmark() const override;
    void SetBookmark(Bookmark mark) override;
    [[nodiscard]] qint64 rowOf(Bookmark mark) const override;
    [[nodiscard]] qint64 rowOfSame(const Recordset& other, Bookmark mark) const override;
    [[nodiscard]] Bookmark LastModified() const override;
    [[nodiscard]] int fieldCount() const override;
    [[nodiscard]] const FieldDef& fieldDef(int index) const override;
    [[nodiscard]] int fieldIndex(QStringView name) const override;
    [[nodiscard]] Value value(int index) const override;
    using Recordset::value;
    [[nodiscard]] bool Updatable() const override;
    void AddNew() override;
    void Edit() override;
    void setValue(int index, const Value& value) override;
    using Recordset::setValue;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    [[nodiscard]] std::unique_ptr<Recordset> Clone() const override;
    void Requery() override;
    void Refresh() override;
    void Close() override;

private:
    /// \throws DbError kObjectClosed when the database was closed
    [[nodiscard]] Session& session() const;
    [[nodiscard]] RowSet& rows() const;
    [[nodiscard]] const Row& currentRow() const;
    [[nodiscard]] const ResultColumn& column(int index) const;

    [[nodiscard]] bool isWriting() const { return m_writer && m_writer->isStarted(); }

    void start(RowWriter::Kind kind);
    void moveTo(qint64 index);
    void requireUpdatable() const;
    void writeNewRow(Session& session);

    std::weak_ptr<SessionLease> m_lease;
    std::shared_ptr<RowSet> m_rows; ///< null once closed
    qint64 m_index = 0;             ///< -1 before the first row, size() behind the last
    qint64 m_reached = 0;           ///< indexes below it have been visited
    Bookmark m_lastModified;
    std::unique_ptr<RowWriter> m_writer; ///< of m_rows; made at the first AddNew or Edit
};

/// Runs a statement that gives rows. \throws DbError kSyntax for one that gives none
[[nodiscard]] std::unique_ptr<Recordset> openRecordset(const std::weak_ptr<SessionLease>& lease,
                                                       std::shared_ptr<const Prepared> statement,
                                                       std::vector<Value> parameters);

} // namespace melovane::sqlite
