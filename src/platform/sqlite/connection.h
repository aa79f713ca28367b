#pragma once

#include "platform/sqlite/database_file.h"
#include "platform/sqlite/statement.h"

#include <QDateTime>

#include <chrono>
#include <functional>

namespace melovane::sqlite {

/// How connections of one engine are made.
struct ConnectionOptions
{
    std::chrono::milliseconds busyTimeout{3000};
    std::function<QDateTime()> now;
};

/// One SQLite connection with the suite's functions and settings.
class Connection
{
public:
    /// Opens an existing file of ours. \throws DbError as DBEngine::OpenDatabase
    Connection(const QString& path, const ConnectionOptions& options);
    ~Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] sqlite3* handle() const { return m_handle.get(); }

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] const FileId& id() const { return m_id; }

    [[nodiscard]] bool isReadOnly() const;

    /// True while a transaction is open.
    [[nodiscard]] bool inTransaction() const;

    /// Compiled statements that are likely to run again.
    [[nodiscard]] StatementPool& statements() { return m_statements; }

    /// Runs one statement and forgets it.
    void run(const QString& sql);

    /// First cell of the first row as a number, 0 when there is none; for pragmas that are asked
    /// again and again.
    [[nodiscard]] qint64 number(const QString& sql);

    /// While it lives, what another program holds is a failure at once.
    class WithoutWaiting
    {
    public:
        explicit WithoutWaiting(Connection& connection)
            : m_connection(connection)
        {
            m_connection.setWaiting(false);
        }

        ~WithoutWaiting() { m_connection.setWaiting(true); }

        WithoutWaiting(const WithoutWaiting&) = delete;
        WithoutWaiting& operator=(const WithoutWaiting&) = delete;

    private:
        Connection& m_connection;
    };

    /// Makes a new file with an empty catalogue; it must not exist.
    static void createFile(const QString& path);

private:
    struct Closer
    {
        void operator()(sqlite3* handle) const;
    };

    using Handle = std::unique_ptr<sqlite3, Closer>;

    static Handle open(const QByteArray& name, int flags);
    static Handle openExisting(const QString& path);
    void setWaiting(bool waits);
    void configure(const ConnectionOptions& options);
    void checkCatalogue();
    void chooseJournal();

    QString m_path;
    FileId m_id;
    std::chrono::milliseconds m_busyTimeout;
    Handle m_handle;
    StatementPool m_statements;
};

} // namespace melovane::sqlite
