#pragma once

#include "platform/sqlite/engine/connection.h"

namespace melovane::sqlite {

/// Nested transactions of a connection. The outermost takes the write lock of one file, as a rule
/// the main one, at once, so that nothing read inside it is stale when it is written; inner ones
/// are savepoints.
///
/// An error may undo the whole transaction (a full disk), or a level that cannot be undone alone.
/// All levels are lost then, and nothing more is written until the outermost was rolled back.
class Transactions
{
public:
    explicit Transactions(Connection& connection);

    [[nodiscard]] bool isOpen() const { return m_depth > 0; }

    /// Another number for each outermost transaction.
    [[nodiscard]] qint64 number() const { return m_number; }

    /// \param schema whose write lock the outermost takes: the main file, or an attached one that
    ///               alone is to be changed
    /// \throws DbError kLocked, kReadOnly, kCannotOpen when the file was replaced
    void begin(const QString& schema = QStringLiteral("main"));

    /// When it throws, the level is still open and waits for rollback().
    /// \throws DbError when there is none, or it could not be written
    void commit();

    /// To be called before each change. \throws DbError when the transaction is lost, or the file
    /// was replaced
    void requireWritable();

    /// Does nothing when there is none.
    void rollback() noexcept;

    /// Undoes all levels. The connection may still be inside a transaction when memory or disk
    /// failed again; it must be closed then.
    void rollbackAll() noexcept;

private:
    [[nodiscard]] bool isLost();
    void undoEverything() noexcept;

    Connection& m_connection;
    Statement m_rollback; ///< made beforehand: it must run when memory has gone
    int m_depth = 0;
    qint64 m_number = 0;
    bool m_lost = false;
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
        m_transactions.commit();
        m_open = false;
    }

private:
    Transactions& m_transactions;
    bool m_open = true;
};

} // namespace melovane::sqlite
