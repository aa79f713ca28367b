#include "platform/sqlite/engine/sqlite_engine.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/backup.h"
#include "platform/sqlite/engine/database.h"
#include "platform/sqlite/engine/session_pool.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/system/clock.h"

#include <QDir>
#include <QFileInfo>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

QString fullPath(const QString& name)
{
    return QDir::cleanPath(QFileInfo(name).absoluteFilePath());
}

ConnectionOptions connectionOptions(const Clock& clock, const EngineOptions& options)
{
    ConnectionOptions result{options.busyTimeout, [&clock] { return clock.now(); }};
    if (options.sharesMemory) {
        result.sharesMemory = options.sharesMemory;
    }
    if (options.time) {
        result.time = options.time;
    }
    return result;
}

class SqliteEngine : public DBEngine, public Workspace
{
public:
    SqliteEngine(const Clock& clock, const EngineOptions& options)
        : m_pool(std::make_shared<SessionPool>(connectionOptions(clock, options),
                                               SearchOptions{options.searchIndex, options.whenIdle,
                                                             options.snapshotFolder,
                                                             options.searchTimeout}))
    {}

    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(const QString& name) override
    {
        const QString path = fullPath(name);
        return std::make_unique<SqliteDatabase>(path, m_pool->open(path));
    }

    void Idle(int action) override
    {
        if (action & dbRefreshCache) {
            m_pool->refreshAll();
        }
    }

    [[nodiscard]] Workspace& Workspaces(int index) override
    {
        if (index != 0) {
            throw dbError(DbFault::WorkspaceNotFound, QString::number(index));
        }
        return *this;
    }

    [[nodiscard]] std::unique_ptr<Database>
    CreateDatabase(const QString& name, [[maybe_unused]] const QString& locale) override
    {
        const QString path = fullPath(name);
        createDatabaseFile(path, m_pool->options());
        return OpenDatabase(name);
    }

    void BackupDatabase(const QString& source, const QString& target) override
    {
        m_pool->requireOwn(fullPath(target));
        m_pool->release(fullPath(target));
        const std::shared_ptr<SessionLease> lease = m_pool->open(fullPath(source));
        backupDatabase(lease->session().connection(), fullPath(target), m_pool->options().now());
    }

    void Release(const QString& name) override { m_pool->release(fullPath(name)); }

    void GiveAway(const QString& name) override { m_pool->giveAway(fullPath(name)); }

    void TakeBack(const QString& name) override { m_pool->takeBack(fullPath(name)); }

private:
    std::shared_ptr<SessionPool> m_pool;
};

} // namespace

std::unique_ptr<DBEngine> makeEngine(const Clock& clock, const EngineOptions& options)
{
    return std::make_unique<SqliteEngine>(clock, options);
}

} // namespace melovane::sqlite
