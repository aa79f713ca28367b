#pragma once

#include "platform/db/db_error.h"
#include "platform/sqlite/engine/connection.h"

#include <sqlite3.h>

namespace melovane::sqlite {

/// Rows read together show one state of the file, and share the cost of looking at it.
class ReadScope
{
public:
    explicit ReadScope(Connection& connection)
        : m_connection(connection)
        , m_own(!connection.inTransaction())
        , m_end(connection.statements().take(QStringLiteral("COMMIT")))
    {
        if (m_own) {
            m_connection.statements().take(QStringLiteral("BEGIN"))->run();
        }
    }

    ~ReadScope()
    {
        if (!m_own) {
            return;
        }
        try {
            m_end->run();
        } catch (const DbError&) {
            // Nothing was written, so nothing is lost; but the file must not stay locked.
            sqlite3_exec(m_connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        }
    }

    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

private:
    Connection& m_connection;
    bool m_own;
    StatementPool::Lease m_end; ///< made beforehand: it must run when memory has gone
};

} // namespace melovane::sqlite
