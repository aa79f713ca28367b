#pragma once

#include "platform/sqlite/engine/database_file.h"
#include "platform/sqlite/engine/statement.h"
#include "platform/system/passing_time.h"

#include <QDateTime>

#include <chrono>
#include <functional>

namespace melovane::sqlite {

/// How connections of one engine are made.
struct ConnectionOptions
{
    std::chrono::milliseconds busyTimeout{3000};
    std::function<QDateTime()> now;
    /// True where programs that open the file share memory, which WAL needs.
    std::function<bool(const QString& path)> sharesMemory = onLocalFileSystem;
    /// What busyTimeout is measured by.
    std::shared_ptr<PassingTime> time = std::make_shared<SystemPassingTime>();
};

/// One SQLite connection with the suite's functions and settings.
class Connection
{
public:
    /// Opens an existing file of ours. \throws DbError as DBEngine::OpenDatabase
    Connection(const QString& path, const ConnectionOptions& options);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] sqlite3* handle() const { return m_handle.get(); }

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] const FileId& id() const { return m_id; }

    [[nodiscard]] bool isReadOnly() const;

    /// False when another file took the place of this one. \see OpenedFile
    [[nodiscard]] bool isCurrent() const { return m_file->isCurrent(); }

    /// True while a transaction is open.
    [[nodiscard]] bool inTransaction() const;

    /// \throws DbError unless isCurrent()
    void requireCurrent();

    /// Takes the write lock of an attached file, or of "main", for the open transaction.
    /// \throws DbError kLocked, kReadOnly
    void lock(const QString& schema);

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

    /// Attaches an existing file of ours. \throws DbError as the constructor
    [[nodiscard]] OpenedFile attach(const QString& path, const QString& schema);

    /// \throws DbError inside a transaction that has used the file
    void detach(const QString& schema, const OpenedFile& file);

    /// Makes a new file with an empty catalogue; it must not exist.
    /// \param sharesMemory see ConnectionOptions
    static void createFile(const QString& path, bool sharesMemory);

private:
    struct Closer
    {
        void operator()(sqlite3* handle) const;
    };

    using Handle = std::unique_ptr<sqlite3, Closer>;

    static Handle open(const QByteArray& name, int flags);
    static Handle openExisting(const QString& path);
    static Handle openOnReadOnlyMedia(const QString& path);
    void setWaiting(bool waits);
    [[nodiscard]] bool waitForOthers(int tries);
    void configure();
    void checkCatalogue();
    void chooseJournal(const QString& schema, const QString& path);
    void saveJournal(const QString& schema, const OpenedFile& file);
    void leaveReplaced(const QString& schema, const OpenedFile& file);

    QString m_path;
    ConnectionOptions m_options;
    FileId m_id;
    std::chrono::microseconds m_waitsSince{0}; ///< m_options.time when a wait for others began
    Handle m_handle;
    StatementPool m_statements;
    std::optional<OpenedFile> m_file; ///< once it was read
};

} // namespace melovane::sqlite
