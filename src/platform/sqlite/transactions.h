#pragma once

#include "platform/sqlite/connection.h"

namespace melovane::sqlite {

/// Nested transactions of a connection. The outermost takes the write lock at once, so that nothing
/// read inside it is stale when it is written; inner ones are savepoints.
class Transactions
{
public:
    explicit Transactions(Connection& connection)
        : m_connection(connection)
    {}

    [[nodiscard]] bool isOpen() const { return m_depth > 0; }

    /// Another number for each outermost transaction.
    [[nodiscard]] qint64 number() const { return m_number; }

    /// \throws DbError kLocked, kReadOnly
    void begin();

    /// \throws DbError when there is none, or it could not be written and was undone
    void commit();

    /// Does nothing when there is none.
    void rollback() noexcept;

    /// Undoes all levels.
    void rollbackAll() noexcept;

private:
    [[nodiscard]] bool wasUndone();

    Connection& m_connection;
    int m_depth = 0;
    qint64 m_number = 0;
};

/// One change of several statements: undone unless commit() is reached.
class WriteScope
{
public:
    explicit WriteScope(Transactions& transactions)
        : m_transactions(transactions)
    {
        m_transactions.begin();
    }

    ~WriteScope()
    {
        if (m_open) {
            m_transactions.rollback();
        }
    }

    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    void commit()
    {
        m_open = false;
        m_transactions.commit();
    }

private:
    Transactions& m_transactions;
    bool m_open = true;
};

} // namespace melovane::sqlite
