#include "platform/sqlite/engine/backup.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// A file under work; gone unless it reaches its place.
class TemporaryFile
{
public:
    TemporaryFile(const QString& target, const QDateTime& now)
        : m_target(target)
        , m_path(temporaryBeside(target))
    {
        removeAbandoned(target, now);
        remove();
        // A library, and what stands beside it, is its owner's alone; journals follow its rights.
        (void)QFile(m_path).open(QIODevice::WriteOnly | QIODevice::NewOnly,
                                 QFile::ReadOwner | QFile::WriteOwner);
    }

    ~TemporaryFile() { remove(); }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const QString& path() const { return m_path; }

    void moveIntoPlace(bool replace) const
    {
        if (replace && QFile::exists(m_target)) {
            QFile::setPermissions(m_path, QFile::permissions(m_target));
        }
        sqlite::moveIntoPlace(m_path, m_target, replace);
    }

private:
    void remove() const
    {
        QFile::remove(m_path);
        removeJournals(m_path);
    }

    QString m_target;
    QString m_path;
};

void copyPages(sqlite3* source, const QString& path)
{
    sqlite3* target = nullptr;
    int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &target,
                               SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(target, sqlite3_close_v2);
    if (code != SQLITE_OK) {
        throwError(target, code);
    }
    // All pages in one step, so that a busy writer cannot make it start over and over.
    sqlite3_backup* backup = sqlite3_backup_init(target, "main", source, "main");
    if (backup) {
        sqlite3_backup_step(backup, -1);
        sqlite3_backup_finish(backup);
    }
    code = sqlite3_errcode(target);
    if (code != SQLITE_OK) {
        throwError(target, code);
    }
}

} // namespace

void createDatabaseFile(const QString& path, const ConnectionOptions& options)
{
    if (fileId(path)) {
        throw dbError(DbFault::FileExists, path);
    }
    const TemporaryFile file(path, options.now());
    Connection::createFile(file.path(), options.sharesMemory(QFileInfo(path).path()));
    file.moveIntoPlace(false);
}

void backupDatabase(Connection& source, const QString& target, const QDateTime& now)
{
    if (fileId(target) == source.id()) {
        throw dbError(DbFault::FileOntoItself, target);
    }
    const TemporaryFile file(target, now);
    copyPages(source.handle(), file.path());
    file.moveIntoPlace(true);
}

} // namespace melovane::sqlite
