#include "platform/sqlite/engine/transactions.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

QString savepoint(int depth)
{
    return u"mlv_level%1"_s.arg(depth);
}

} // namespace

Transactions::Transactions(Connection& connection)
    : m_connection(connection)
    , m_rollback(connection.handle(), u"ROLLBACK"_s)
{}

void Transactions::begin(const QString& schema)
{
    requireWritable();
    if (m_depth > 0) {
        m_connection.run(u"SAVEPOINT "_s + savepoint(m_depth));
    } else {
        m_connection.statements().take(u"BEGIN"_s)->run();
        try {
            m_connection.lock(schema);
            ++m_number;
        } catch (const DbError&) {
            undoEverything();
            throw;
        }
    }
    ++m_depth;
}

void Transactions::requireWritable()
{
    if (m_depth > 0) {
        // Whether the file is still the one that was opened, commit() asks again.
        if (isLost()) {
            throw dbError(DbFault::TransactionUndone);
        }
        return;
    }
    if (m_connection.inTransaction()) {
        undoEverything();
    }
    m_connection.requireCurrent();
}

void Transactions::commit()
{
    if (m_depth == 0) {
        throw dbError(DbFault::NoTransaction);
    }
    if (isLost()) {
        throw dbError(DbFault::TransactionUndone);
    }
    if (m_depth > 1) {
        m_connection.run(u"RELEASE "_s + savepoint(m_depth - 1));
    } else {
        m_connection.requireCurrent();
        m_connection.statements().take(u"COMMIT"_s)->run();
    }
    --m_depth;
}

void Transactions::rollback() noexcept
{
    if (m_depth == 0) {
        return;
    }
    --m_depth;
    if (m_depth == 0) {
        undoEverything();
        m_lost = false;
    } else if (!isLost()) {
        const QByteArray level = savepoint(m_depth).toLatin1();
        const QByteArray sql = "ROLLBACK TO " + level + "; RELEASE " + level;
        if (sqlite3_exec(m_connection.handle(), sql.constData(), nullptr, nullptr, nullptr) !=
            SQLITE_OK) {
            m_lost = true;
            undoEverything();
        }
    }
}

void Transactions::rollbackAll() noexcept
{
    while (m_depth > 0) {
        rollback();
    }
    undoEverything();
}

/// Fails only when SQLite has already undone everything itself, or when there is no memory at all.
void Transactions::undoEverything() noexcept
{
    if (!m_connection.inTransaction()) {
        return;
    }
    try {
        m_rollback.run();
    } catch (const DbError&) {
        m_rollback.reset();
    }
}

bool Transactions::isLost()
{
    m_lost = m_lost || !m_connection.inTransaction();
    return m_lost;
}

} // namespace melovane::sqlite
