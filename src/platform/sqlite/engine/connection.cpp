#include "platform/sqlite/engine/connection.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/sqlite/functions/functions.h"

#include <QFile>

#include <sqlite3.h>

#include <algorithm>

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

QByteArray uriOf(const QString& path, const char* options)
{
    return "file:" + QFile::encodeName(path).toPercentEncoding("/") + options;
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
    makeJournalsWritable(path);
    Handle handle = open(QFile::encodeName(path), kOpenFlags);
    const int code = firstRead(handle.get()) & 0xFF;
    if ((code == SQLITE_CANTOPEN || code == SQLITE_READONLY) && inReadOnlyFolder(path)) {
        return openOnReadOnlyMedia(path);
    }
    return handle;
}

/// On read-only media there is no room for the shared memory of WAL, and nobody to share with.
Connection::Handle Connection::openOnReadOnlyMedia(const QString& path)
{
    if (!hasJournal(path)) {
        return open(uriOf(path, "?immutable=1"), kOpenFlags);
    }
    // What stands in the journal is read too; its index is kept in this program's own memory.
    Handle handle = open(uriOf(path, "?vfs=unix-none"), kOpenFlags);
    sqlite3_exec(handle.get(), "PRAGMA locking_mode=EXCLUSIVE", nullptr, nullptr, nullptr);
    return handle;
}

Connection::Connection(const QString& path, const ConnectionOptions& options)
    : m_path(path)
    , m_options(options)
    , m_id(checkDatabaseFile(path))
    , m_handle(openExisting(path))
    , m_statements(m_handle.get())
{
    configure();
    checkCatalogue();
    chooseJournal(u"main"_s, path);
    m_file.emplace(path, m_id);
}

Connection::~Connection()
{
    leaveReplaced(u"main"_s, *m_file);
}

/// Closing removes the journal by its name, and that name may belong to the users of another file
/// by now; while an own journal that is left there would be played into that other file.
void Connection::leaveReplaced(const QString& schema, const OpenedFile& file)
{
    if (file.isCurrent()) {
        return;
    }
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    saveJournal(schema, file);
    if (file.leftJournal()) {
        removeJournals(file.path());
    }
}

/// What was committed stands in a journal that nobody will find: brings it into its file as long as
/// nobody else can have begun a new one.
void Connection::saveJournal(const QString& schema, const OpenedFile& file)
{
    if (file.leftJournal() || file.lostJournal()) {
        sqlite3_wal_checkpoint_v2(handle(), schema.toLatin1().constData(),
                                  SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    }
}

void Connection::requireCurrent()
{
    if (!m_file->isCurrent()) {
        saveJournal(u"main"_s, *m_file);
        throw dbError(DbFault::FileReplaced, m_path);
    }
}

void Connection::configure()
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
    registerFunctions(db, m_options.now);
    run(kCacheSize);
    run(u"PRAGMA synchronous=FULL"_s);
}

void Connection::setWaiting(bool waits)
{
    const auto wait = [](void* connection, int tries) {
        return static_cast<Connection*>(connection)->waitForOthers(tries) ? 1 : 0;
    };
    sqlite3_busy_handler(handle(), waits ? static_cast<int (*)(void*, int)>(wait) : nullptr, this);
}

/// Waits for another program, in steps that grow to a few milliseconds: much finer than SQLite's
/// own, so that of several busy writers none goes without for long. False when it was enough.
bool Connection::waitForOthers(int tries)
{
    const std::chrono::microseconds now = m_options.time->passed();
    if (tries == 0) {
        m_waitsSince = now;
    }
    if (now - m_waitsSince >= m_options.busyTimeout) {
        return false;
    }
    m_options.time->pause(std::chrono::microseconds(std::min(200 + tries * 50, 5000)));
    return true;
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
/// to the network. A failure leaves the file as it is: both kinds can be worked with, and the next
/// one who has the file alone will change it.
void Connection::chooseJournal(const QString& schema, const QString& path)
{
    if (inTransaction() || sqlite3_db_readonly(handle(), schema.toLatin1().constData()) == 1) {
        return;
    }
    const bool wants = m_options.sharesMemory(path);
    const QByteArray question = "PRAGMA " + schema.toLatin1() + ".journal_mode";
    const WithoutWaiting now(*this);
    bool has = false;
    const auto isWal = [](void* result, int, char** cells, char**) {
        *static_cast<bool*>(result) = qstrcmp(cells[0], "wal") == 0;
        return 0;
    };
    if (sqlite3_exec(handle(), question.constData(), isWal, &has, nullptr) == SQLITE_OK &&
        wants != has) {
        const QByteArray change = question + (wants ? "=WAL" : "=DELETE");
        sqlite3_exec(handle(), change.constData(), nullptr, nullptr, nullptr);
    }
}

OpenedFile Connection::attach(const QString& path, const QString& schema)
{
    const FileId id = checkDatabaseFile(path);
    makeJournalsWritable(path);
    const auto run = [&](const char* options) {
        Statement statement(handle(), u"ATTACH ?1 AS "_s + schema);
        statement.bind(1, Value(QString::fromLatin1(uriOf(path, options))));
        statement.run();
    };
    try {
        run("?mode=rw");
    } catch (const DbError& error) {
        const bool shut =
            error.number() == dberror::kCannotOpen || error.number() == dberror::kReadOnly;
        if (!shut || !inReadOnlyFolder(path) || hasJournal(path)) {
            throw;
        }
        run("?immutable=1");
    }
    chooseJournal(schema, path);
    return {path, id};
}

void Connection::detach(const QString& schema, const OpenedFile& file)
{
    leaveReplaced(schema, file);
    run(u"DETACH "_s + schema);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

bool Connection::isReadOnly() const
{
    return sqlite3_db_readonly(handle(), "main") == 1;
}

bool Connection::inTransaction() const
{
    return sqlite3_get_autocommit(handle()) == 0;
}

/// A change of no row. BEGIN IMMEDIATE would take the locks of all attached files too.
void Connection::lock(const QString& schema)
{
    m_statements.take(u"DELETE FROM %1.mlv_object WHERE 0"_s.arg(schema))->run();
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

void Connection::createFile(const QString& path, bool sharesMemory)
{
    Handle handle = open(QFile::encodeName(path), kOpenFlags | SQLITE_OPEN_CREATE);
    // Made safe as a whole when it gets its name.
    QStringList statements{u"PRAGMA synchronous=OFF"_s, u"PRAGMA page_size=4096"_s,
                           u"PRAGMA encoding='UTF-8'"_s,
                           u"PRAGMA application_id=%1"_s.arg(kApplicationId)};
    for (const char* table : kCatalogueTables) {
        statements.append(QString::fromLatin1(table));
    }
    if (sharesMemory) {
        statements.append(u"PRAGMA journal_mode=WAL"_s);
    }
    for (const QString& statement : statements) {
        Statement(handle.get(), statement).run();
    }
}

} // namespace melovane::sqlite
