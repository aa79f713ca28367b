#include "platform/sqlite/engine/recordset.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/engine/sqlite_error.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

[[noreturn]] void throwNoCurrentRecord()
{
    throw dbError(DbFault::NoCurrentRecord);
}

} // namespace

SqliteRecordset::SqliteRecordset(std::weak_ptr<SessionLease> lease, std::shared_ptr<RowSet> rows)
    : m_lease(std::move(lease))
    , m_rows(std::move(rows))
{
    MoveFirst();
}

Session& SqliteRecordset::session() const
{
    return openSession(m_lease);
}

RowSet& SqliteRecordset::rows() const
{
    if (!m_rows) {
        throw dbError(DbFault::SetClosed);
    }
    return *m_rows;
}

bool SqliteRecordset::Eof() const
{
    return !m_rows || m_index >= m_rows->size() || m_rows->count() == 0;
}

bool SqliteRecordset::Bof() const
{
    return !m_rows || m_index < 0 || m_rows->count() == 0;
}

void SqliteRecordset::moveTo(qint64 index)
{
    CancelUpdate();
    m_index = index;
    m_reached = std::max(m_reached, std::min(index + 1, m_rows->size()));
}

void SqliteRecordset::MoveFirst()
{
    moveTo(rows().count() == 0 ? 0 : rows().indexAt(0));
}

void SqliteRecordset::MoveLast()
{
    const qint64 count = rows().count();
    moveTo(count == 0 ? 0 : rows().indexAt(count - 1));
    m_reached = rows().size();
}

void SqliteRecordset::MoveNext()
{
    const qint64 size = rows().size();
    qint64 index = std::min(m_index + 1, size);
    while (index < size && rows().isDeleted(index)) {
        ++index;
    }
    moveTo(index);
}

void SqliteRecordset::MovePrevious()
{
    qint64 index = std::max<qint64>(std::min(m_index, rows().size()) - 1, -1);
    while (index >= 0 && rows().isDeleted(index)) {
        --index;
    }
    moveTo(index);
}

qint64 SqliteRecordset::RecordCount() const
{
    return m_rows ? m_rows->rowsBefore(std::min(m_reached, m_rows->size())) : 0;
}

qint64 SqliteRecordset::rowCount() const
{
    return m_rows ? m_rows->count() : 0;
}

qint64 SqliteRecordset::AbsolutePosition() const
{
    return m_rows ? m_rows->positionOf(m_index) : -1;
}

void SqliteRecordset::SetAbsolutePosition(qint64 row)
{
    if (row < 0 || row >= rows().count()) {
        throwNoCurrentRecord();
    }
    moveTo(rows().indexAt(row));
}

Bookmark SqliteRecordset::bookmark() const
{
    return AbsolutePosition() < 0 ? Bookmark{} : Bookmark{m_index};
}

void SqliteRecordset::SetBookmark(Bookmark mark)
{
    if (rowOf(mark) < 0) {
        throwNoCurrentRecord();
    }
    moveTo(mark.id);
}

qint64 SqliteRecordset::rowOf(Bookmark mark) const
{
    return m_rows ? m_rows->positionOf(mark.id) : -1;
}

qint64 SqliteRecordset::rowOfSame(const Recordset& other, Bookmark mark) const
{
    const auto* set = dynamic_cast<const SqliteRecordset*>(&other);
    if (!m_rows || !set || set->rowOf(mark) < 0) {
        return -1;
    }
    return m_rows->positionOfSame(*set->m_rows, mark.id);
}

Bookmark SqliteRecordset::LastModified() const
{
    return m_lastModified;
}

int SqliteRecordset::fieldCount() const
{
    return int(rows().columns().size());
}

const ResultColumn& SqliteRecordset::column(int index) const
{
    if (index < 0 || index >= fieldCount()) {
        throw dbError(DbFault::ItemNotFound, QString::number(index));
    }
    return rows().columns()[std::size_t(index)];
}

const FieldDef& SqliteRecordset::fieldDef(int index) const
{
    return column(index).field;
}

int SqliteRecordset::fieldIndex(QStringView name) const
{
    return rows().columnIndex(name);
}

const Row& SqliteRecordset::currentRow() const
{
    Session& open = session();
    if (Bof() || Eof()) {
        throwNoCurrentRecord();
    }
    if (!rows().isDeleted(m_index)) {
        const Row& row = rows().row(open, m_index);
        if (row.state == Row::State::Present) {
            return row;
        }
    }
    throw dbError(DbFault::RecordDeleted);
}

Value SqliteRecordset::value(int index) const
{
    [[maybe_unused]] const ResultColumn& existing = column(index);
    if (isWriting()) {
        if (std::optional<Value> written = m_writer->value(index)) {
            return *std::move(written);
        }
    }
    return currentRow().cells[std::size_t(index)];
}

bool SqliteRecordset::Updatable() const
{
    return m_rows && m_rows->isKeyed() && !session().connection().isReadOnly();
}

void SqliteRecordset::requireUpdatable() const
{
    withStatement(rows().statement().text, [&] {
        if (!rows().isKeyed()) {
            throw dbError(DbFault::SetReadOnly);
        }
        if (session().connection().isReadOnly()) {
            throw dbError(DbFault::FileReadOnly, session().connection().path());
        }
    });
}

void SqliteRecordset::start(RowWriter::Kind kind)
{
    if (!m_writer) {
        m_writer = std::make_unique<RowWriter>(rows());
    }
    m_writer->start(session(), kind);
}

void SqliteRecordset::AddNew()
{
    requireUpdatable();
    start(RowWriter::Kind::NewRow);
}

void SqliteRecordset::Edit()
{
    requireUpdatable();
    // The row as it is now: it may have been fetched long ago.
    if (AbsolutePosition() >= 0) {
        rows().forget(m_index);
    }
    [[maybe_unused]] const Row& row = currentRow();
    start(RowWriter::Kind::CurrentRow);
}

void SqliteRecordset::setValue(int index, const Value& value)
{
    if (!isWriting()) {
        throw dbError(DbFault::UpdateWithoutEdit);
    }
    [[maybe_unused]] const ResultColumn& existing = column(index);
    m_writer->set(index, value);
}

void SqliteRecordset::Update()
{
    if (!isWriting()) {
        throw dbError(DbFault::UpdateWithoutEdit);
    }
    Session& open = session();
    withStatement(rows().statement().text, [&] {
        if (m_writer->isNewRow()) {
            writeNewRow(open);
        } else {
            m_writer->update(open, m_index);
            rows().noteOwnWrite(open);
            rows().forget(m_index);
            m_lastModified = {m_index};
        }
    });
    CancelUpdate();
}

void SqliteRecordset::writeNewRow(Session& session)
{
    const bool populated = m_reached == rows().size();
    const bool atEnd = Eof();
    // A join has to be read for the new row; when that fails the row must not stay behind an error.
    std::optional<WriteScope> scope;
    if (rows().statement().translation.tables.size() > 1) {
        scope.emplace(session.transactions());
    }
    const RowWriter::Added added = m_writer->insert(session);
    rows().noteOwnWrite(session);
    const qint64 index = rows().append(session, added.table, added.key);
    if (scope) {
        scope->commit();
    }
    m_lastModified = {index};
    if (populated) {
        m_reached = rows().size();
    }
    if (atEnd) {
        m_index = rows().size();
    }
}

void SqliteRecordset::CancelUpdate()
{
    if (m_writer) {
        m_writer->cancel();
    }
}

void SqliteRecordset::Delete()
{
    requireUpdatable();
    CancelUpdate();
    [[maybe_unused]] const Row& row = currentRow();
    Session& open = session();
    withStatement(rows().statement().text, [&] {
        RowWriter::remove(open, rows(), m_index);
        rows().noteOwnWrite(open);
        rows().markDeleted(m_index);
    });
}

std::unique_ptr<Recordset> SqliteRecordset::Clone() const
{
    [[maybe_unused]] const RowSet& open = rows();
    return std::make_unique<SqliteRecordset>(m_lease, m_rows);
}

void SqliteRecordset::Requery()
{
    Session& open = session();
    const QString text = rows().statement().text;
    const bool hasParameters = !rows().parameters().empty();
    m_rows = withStatement(text, [&] {
        return std::make_shared<RowSet>(open, open.translate(text, hasParameters),
                                        rows().parameters());
    });
    m_writer.reset();
    m_lastModified = {};
    m_reached = 0;
    MoveFirst();
}

void SqliteRecordset::Refresh()
{
    rows().forgetAll();
}

void SqliteRecordset::Close()
{
    m_writer.reset();
    m_rows.reset();
}

std::unique_ptr<Recordset> openRecordset(const std::weak_ptr<SessionLease>& lease,
                                         std::shared_ptr<const Prepared> statement,
                                         std::vector<Value> parameters)
{
    const QString text = statement->text;
    return withStatement(text, [&] {
        if (statement->translation.kind != StatementKind::Select) {
            throw dbError(DbFault::ActionOpened);
        }
        auto rows = std::make_shared<RowSet>(openSession(lease), std::move(statement),
                                             std::move(parameters));
        return std::make_unique<SqliteRecordset>(lease, std::move(rows));
    });
}

} // namespace melovane::sqlite
