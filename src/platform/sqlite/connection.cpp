#include "platform/sqlite/connection.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/functions.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/stored_text.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <thread>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kOpenFlags =
    SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;

/// What stands in every file beside the user's tables. Keep.
///
/// mlv_object lists tables ('T'), links ('L') and stored queries ('Q') in the order of their
/// creation; mlv_field holds what a declared type cannot say.
constexpr const char* kCatalogueTables[] = {
    "CREATE TABLE mlv_object(ord INTEGER PRIMARY KEY AUTOINCREMENT, kind TEXT NOT NULL,"
    " name TEXT NOT NULL UNIQUE COLLATE NOCASE, sql TEXT, type INTEGER, connect TEXT, source TEXT)",
    "CREATE TABLE mlv_field(tbl TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE,"
    " dflt TEXT, zerolen INTEGER, PRIMARY KEY(tbl, name))"};

/// Pages kept in memory per file, in KiB (negative says KiB to SQLite).
constexpr auto kCacheSize = "PRAGMA cache_size=-16384"_L1;

/// Waits for another program, in steps that grow to a few milliseconds: much finer than SQLite's
/// own, so that of several busy writers none goes without for long.
int waitForOthers(void* timeout, int tries)
{
    using std::chrono::microseconds;
    thread_local std::chrono::steady_clock::time_point begin;
    const auto now = std::chrono::steady_clock::now();
    if (tries == 0) {
        begin = now;
    }
    if (now - begin >= *static_cast<const std::chrono::milliseconds*>(timeout)) {
        return 0;
    }
    std::this_thread::sleep_for(microseconds(std::min(200 + tries * 50, 5000)));
    return 1;
}

/// The first read of a file; what is wrong with it shows here. The result code of SQLite.
int firstRead(sqlite3* connection)
{
    return sqlite3_exec(connection, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr,
                        nullptr);
}

} // namespace

void Connection::Closer::operator()(sqlite3* handle) const
{
    sqlite3_close_v2(handle);
}

Connection::Handle Connection::open(const QByteArray& name, int flags)
{
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &raw, flags, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK) {
        throwError(raw, code);
    }
    return handle;
}

Connection::Handle Connection::openExisting(const QString& path)
{
    Handle handle = open(QFile::encodeName(path), kOpenFlags);
    const int code = firstRead(handle.get()) & 0xFF;
    if ((code == SQLITE_CANTOPEN || code == SQLITE_READONLY) && inReadOnlyFolder(path) &&
        !hasJournal(path)) {
        // On read-only media there is no room for the shared memory of WAL, and nobody to share
        // with.
        const QByteArray name = "file:" + QFile::encodeName(path).toPercentEncoding("/");
        handle = open(name + "?immutable=1", kOpenFlags);
    }
    return handle;
}

Connection::Connection(const QString& path, const ConnectionOptions& options)
    : m_path(path)
    , m_id(checkDatabaseFile(path))
    , m_busyTimeout(options.busyTimeout)
    , m_handle(openExisting(path))
    , m_statements(m_handle.get())
{
    configure(options);
    checkCatalogue();
    chooseJournal();
}

void Connection::configure(const ConnectionOptions& options)
{
    sqlite3* const db = m_handle.get();
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // A table renamed in a rebuild must not be looked for in triggers of others.
    sqlite3_db_config(db, SQLITE_DBCONFIG_LEGACY_ALTER_TABLE, 1, nullptr);
    setWaiting(true);
    registerFunctions(db, options.now);
    run(kCacheSize);
    run(u"PRAGMA synchronous=FULL"_s);
}

void Connection::setWaiting(bool waits)
{
    sqlite3_busy_handler(handle(), waits ? waitForOthers : nullptr, &m_busyTimeout);
}

void Connection::checkCatalogue()
{
    if (const int code = firstRead(handle()); code != SQLITE_OK) {
        throwError(handle(), code);
    }
    if (number(u"SELECT count(*) FROM sqlite_schema WHERE name='mlv_object'"_s) != 1) {
        throw dbError(DbFault::FileOfAnother, m_path);
    }
}

/// WAL stands in the file's header, so there is something to do only when a file was moved from or
/// to the network. A failure leaves the file as it is: both kinds can be worked with.
void Connection::chooseJournal()
{
    if (isReadOnly()) {
        return;
    }
    const bool wants = onLocalFileSystem(m_path);
    Statement mode(handle(), u"PRAGMA main.journal_mode"_s);
    const bool has = mode.step() && mode.text(0) == "wal"_L1;
    mode.reset();
    if (wants != has) {
        const char* change =
            wants ? "PRAGMA main.journal_mode=WAL" : "PRAGMA main.journal_mode=DELETE";
        sqlite3_exec(handle(), change, nullptr, nullptr, nullptr);
    }
}

bool Connection::isReadOnly() const
{
    return sqlite3_db_readonly(handle(), "main") == 1;
}

bool Connection::inTransaction() const
{
    return sqlite3_get_autocommit(handle()) == 0;
}

void Connection::run(const QString& sql)
{
    Statement(handle(), sql).run();
}

qint64 Connection::number(const QString& sql)
{
    const auto statement = m_statements.take(sql);
    return statement->step() ? statement->number(0) : 0;
}

void Connection::createFile(const QString& path)
{
    Handle handle = open(QFile::encodeName(path), kOpenFlags | SQLITE_OPEN_CREATE);
    // Made safe as a whole when it gets its name.
    QStringList statements{u"PRAGMA synchronous=OFF"_s, u"PRAGMA page_size=4096"_s,
                           u"PRAGMA encoding='UTF-8'"_s,
                           u"PRAGMA application_id=%1"_s.arg(kApplicationId)};
    for (const char* table : kCatalogueTables) {
        statements.append(QString::fromLatin1(table));
    }
    if (onLocalFileSystem(QFileInfo(path).path())) {
        statements.append(u"PRAGMA journal_mode=WAL"_s);
    }
    for (const QString& statement : statements) {
        Statement(handle.get(), statement).run();
    }
}

} // namespace melovane::sqlite
