#include "platform/sqlite/engine/database_care.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/connection.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/system/clock.h"

#include <QFile>

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Pages of one slice: less than a millisecond, so that nobody who reads or writes meanwhile waits
/// longer than that.
constexpr int kPagesOfSlice = 64;

/// Steps of the engine's machine between two questions whether a check goes on: less than a
/// millisecond.
constexpr int kStepsOfSlice = 5'000;

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

Handle openPlain(const QString& path, int flags)
{
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &raw,
                                     flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    Handle handle(raw, sqlite3_close_v2);
    if (code != SQLITE_OK) {
        throwError(raw, code);
    }
    return handle;
}

void execute(sqlite3* connection, const char* statement)
{
    const int code = sqlite3_exec(connection, statement, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        throwError(connection, code);
    }
}

/// False when `step` gave it up; the target then holds what it held.
bool copyInSlices(sqlite3* source, sqlite3* target, const SliceStep& step)
{
    std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> backup(
        sqlite3_backup_init(target, "main", source, "main"), sqlite3_backup_finish);
    if (!backup) {
        throwError(target, sqlite3_extended_errcode(target));
    }
    int code = SQLITE_OK;
    while ((code = sqlite3_backup_step(backup.get(), kPagesOfSlice)) == SQLITE_OK) {
        const int whole = sqlite3_backup_pagecount(backup.get());
        if (!step(whole - sqlite3_backup_remaining(backup.get()), whole)) {
            return false;
        }
    }
    sqlite3_backup_finish(backup.release()); // gives the target the words for a failure
    if (code != SQLITE_DONE) {
        throwError(target, code);
    }
    return true;
}

/// A new file, its owner's alone, that goes away again unless it is kept.
class NewFile
{
public:
    explicit NewFile(QString path)
        : m_path(std::move(path))
    {
        if (!QFile(m_path).open(QIODevice::WriteOnly | QIODevice::NewOnly,
                                QFile::ReadOwner | QFile::WriteOwner)) {
            throw dbError(fileId(m_path) ? DbFault::FileExists : DbFault::FileNotWritten, m_path);
        }
    }

    ~NewFile()
    {
        if (!m_isKept) {
            QFile::remove(m_path);
            removeJournals(m_path);
        }
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void keep() { m_isKept = true; }

private:
    QString m_path;
    bool m_isKept = false;
};

int askStep(void* step)
{
    return (*static_cast<const SliceStep*>(step))(0, 0) ? 0 : 1;
}

int takeLine(void* lines, int, char** cells, char**)
{
    const QString line = QString::fromUtf8(cells[0]);
    if (line != u"ok"_s) {
        static_cast<QStringList*>(lines)->append(line);
    }
    return 0;
}

class SqliteCare : public DatabaseCare
{
public:
    explicit SqliteCare(const Clock& clock)
        : m_options{.now = [&clock] { return clock.now(); }}
    {}

    [[nodiscard]] bool
    copy(const QString& source, const QString& target, const SliceStep& step) override
    {
        Connection from(source, asItIs(source));
        NewFile file(target);
        {
            const Handle to = openPlain(target, SQLITE_OPEN_READWRITE);
            execute(to.get(), "PRAGMA synchronous=OFF");
            // An open reading is what keeps a foreign commit from starting the copy over.
            execute(from.handle(), "BEGIN");
            execute(from.handle(), "SELECT count(*) FROM sqlite_schema");
            const bool isDone = copyInSlices(from.handle(), to.get(), step);
            execute(from.handle(), "COMMIT");
            if (!isDone) {
                return false;
            }
            execute(to.get(), "PRAGMA journal_mode=DELETE");
        }
        file.keep();
        return true;
    }

    [[nodiscard]] std::optional<QStringList>
    check(const QString& name, Depth depth, const SliceStep& step) override
    {
        Connection connection(name, asItIs(name));
        if (!step(0, 0)) {
            return std::nullopt;
        }
        SliceStep question = step;
        sqlite3_progress_handler(connection.handle(), kStepsOfSlice, askStep, &question);
        QStringList lines;
        const int code = sqlite3_exec(connection.handle(),
                                      depth == Depth::Pages ? "PRAGMA main.quick_check(100)"
                                                            : "PRAGMA main.integrity_check(100)",
                                      takeLine, &lines, nullptr);
        const QString words = QString::fromUtf8(sqlite3_errmsg(connection.handle()));
        sqlite3_progress_handler(connection.handle(), 0, nullptr, nullptr);
        if ((code & 0xFF) == SQLITE_INTERRUPT) {
            return std::nullopt;
        }
        if (code != SQLITE_OK) {
            lines.append(words);
        }
        return lines;
    }

    [[nodiscard]] qint64 rows(const QString& name, const QString& table) override
    {
        Connection connection(name, asItIs(name));
        return connection.number(u"SELECT count(*) FROM \"%1\""_s.arg(table));
    }

    void reindex(const QString& name) override
    {
        execute(Connection(name, asItIs(name)).handle(), "REINDEX");
    }

    [[nodiscard]] bool
    restore(const QString& source, const QString& library, const SliceStep& step) override
    {
        Connection target(library, asItIs(library));
        const Handle from = openPlain(source, SQLITE_OPEN_READONLY);
        requireSamePages(from.get(), target.handle(), library);
        if (!copyInSlices(from.get(), target.handle(), step)) {
            return false;
        }
        // Somebody who still reads keeps the journal long; the next checkpoint will do then.
        sqlite3_wal_checkpoint_v2(target.handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                                  nullptr);
        return true;
    }

private:
    /// A file keeps its kind of journal: a copy needs none, whoever looks into it.
    [[nodiscard]] ConnectionOptions asItIs(const QString& name) const
    {
        bool isWal = true;
        const auto take = [](void* result, int, char** cells, char**) {
            *static_cast<bool*>(result) = qstrcmp(cells[0], "wal") == 0;
            return 0;
        };
        if (fileId(name)) {
            // One that cannot be read is refused where it is opened for the work.
            sqlite3_exec(openPlain(name, SQLITE_OPEN_READWRITE).get(), "PRAGMA journal_mode", take,
                         &isWal, nullptr);
        }
        ConnectionOptions options = m_options;
        options.sharesMemory = [isWal](const QString&) { return isWal; };
        return options;
    }

    static qint64 pageSize(sqlite3* connection)
    {
        qint64 size = 0;
        const auto take = [](void* result, int, char** cells, char**) {
            *static_cast<qint64*>(result) = QByteArray(cells[0]).toLongLong();
            return 0;
        };
        const int code = sqlite3_exec(connection, "PRAGMA page_size", take, &size, nullptr);
        if (code != SQLITE_OK) {
            throwError(connection, code);
        }
        return size;
    }

    static void requireSamePages(sqlite3* source, sqlite3* target, const QString& library)
    {
        const qint64 here = pageSize(target);
        const qint64 there = pageSize(source);
        if (here != there) {
            throw DbError(
                dberror::kInvalidOperation,
                u"Die Seiten der Datenbank %1 haben %2 Bytes, die der Sicherung %3."_s.arg(library)
                    .arg(here)
                    .arg(there));
        }
    }

    ConnectionOptions m_options;
};

} // namespace

std::unique_ptr<DatabaseCare> makeDatabaseCare(const Clock& clock)
{
    return std::make_unique<SqliteCare>(clock);
}

} // namespace melovane::sqlite
