#include "platform/sqlite/transactions.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

QString savepoint(int depth)
{
    return u"mlv_level%1"_s.arg(depth);
}

} // namespace

void Transactions::begin()
{
    if (m_depth == 0) {
        m_connection.run(u"BEGIN IMMEDIATE"_s);
        ++m_number;
    } else {
        m_connection.run(u"SAVEPOINT "_s + savepoint(m_depth));
    }
    ++m_depth;
}

void Transactions::commit()
{
    if (m_depth == 0) {
        throw dbError(DbFault::NoTransaction);
    }
    if (wasUndone()) {
        throw dbError(DbFault::TransactionUndone);
    }
    try {
        m_connection.run(m_depth == 1 ? u"COMMIT"_s : u"RELEASE "_s + savepoint(m_depth - 1));
    } catch (const DbError&) {
        rollback();
        throw;
    }
    --m_depth;
}

void Transactions::rollback() noexcept
{
    if (m_depth == 0 || wasUndone()) {
        return;
    }
    --m_depth;
    const QByteArray level = savepoint(m_depth).toLatin1();
    const QByteArray sql =
        m_depth == 0 ? QByteArray("ROLLBACK") : "ROLLBACK TO " + level + "; RELEASE " + level;
    // Fails only when SQLite has already undone everything itself, which is what is wanted.
    sqlite3_exec(m_connection.handle(), sql.constData(), nullptr, nullptr, nullptr);
}

void Transactions::rollbackAll() noexcept
{
    while (m_depth > 0) {
        rollback();
    }
}

/// SQLite ends a transaction by itself after a full disk and the like; then all levels are gone.
bool Transactions::wasUndone()
{
    if (m_connection.inTransaction()) {
        return false;
    }
    m_depth = 0;
    return true;
}

} // namespace melovane::sqlite
