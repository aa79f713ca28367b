#include "platform/db/database.h"

namespace melovane {

Transaction::Transaction(Database& database)
    : m_database(database)
{
    m_database.BeginTrans();
}

Transaction::Transaction(Database& database, const QString& table)
    : m_database(database)
{
    m_database.BeginTransOn(table);
}

Transaction::~Transaction()
{
    if (m_open) {
        m_database.Rollback();
    }
}

void Transaction::commit()
{
    m_database.CommitTrans();
    m_open = false;
}

} // namespace melovane
