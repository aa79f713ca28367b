#pragma once

#include "platform/sqlite/engine/connection.h"

namespace melovane::sqlite {

/// The side files of a connection: attached when a statement first names one of their tables, never
/// created.
///
/// Side files are disposable and may be made anew by another program at any time. Each attachment
/// remembers which file it is, and gets a schema name of its own that is never used again, so a
/// statement prepared for a file that is gone fails instead of meeting the new one.
///
/// A transaction takes the write lock of a side file before its first look at it: a side file that
/// it does not name stays free for others, and what it has read is never stale when it writes.
class Attachments
{
public:
    explicit Attachments(Connection& connection)
        : m_connection(connection)
    {}

    ~Attachments();
    Attachments(const Attachments&) = delete;
    Attachments& operator=(const Attachments&) = delete;

    /// Schema name of the file, which is attached when it is not yet.
    /// \throws DbError kFileNotFound and as DBEngine::OpenDatabase
    [[nodiscard]] QString schemaOf(const QString& path);

    /// A number that changes when a table of the schema does; -1 when another file, or none, is
    /// behind its path by now.
    [[nodiscard]] qint64 versionOf(const QString& schema);

    /// To be called before a statement looks at the file: inside a transaction takes its write
    /// lock. \throws DbError kLocked
    void lockForTransaction(const QString& schema);

    /// Sum of the change counters of all attached files, see Database::DataVersion.
    [[nodiscard]] qint64 foreignChanges();

    [[nodiscard]] bool holds(const FileId& file) const;

    /// Lets go of every file but these; for after a change of the links.
    void keepOnly(const QStringList& paths);

private:
    struct Entry
    {
        QString schema;
        OpenedFile file;
        qint64 used = 0;
        qint64 dataVersion = 0;
    };

    QString attach(const QString& path);
    void leave();
    [[nodiscard]] bool isUntouchedByTransaction(const QString& schema) const;
    void detach(std::size_t index);
    void detachLeastUsed();
    [[nodiscard]] qint64 pragma(const QString& schema, const QString& name);

    Connection& m_connection;
    std::vector<Entry> m_entries;
    std::vector<Entry> m_leaving; ///< could not be let go inside a transaction
    int m_made = 0;
    qint64 m_uses = 0;
    qint64 m_foreignChanges = 0;
};

} // namespace melovane::sqlite
