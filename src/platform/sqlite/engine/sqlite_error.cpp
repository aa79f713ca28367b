#include "platform/sqlite/engine/sqlite_error.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/functions/functions.h"

#include <QFile>

#include <sqlite3.h>

#include <memory>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

// The length is named because GCC cannot compute it at compile time under the address sanitizer.
constexpr QLatin1StringView kOwnErrorMark(kErrorMark, sizeof(kErrorMark) - 1);

/// "MLV:3464:text" of one of our functions.
[[noreturn]] void throwOwnError(const QString& message)
{
    const qsizetype colon = message.indexOf(u':', kOwnErrorMark.size());
    bool isNumber = false;
    const int number = QStringView(message)
                           .mid(kOwnErrorMark.size(), colon - kOwnErrorMark.size())
                           .toInt(&isNumber);
    throw DbError(isNumber ? number : dberror::kOther, message.mid(colon + 1));
}

/// True when the column named "table.column" belongs to the primary key of its table, in whichever
/// open file that lies.
bool isKeyColumn(sqlite3* connection, const QString& place)
{
    // The order of the three is told, because SQLite does not always find the one that works.
    constexpr char kQuestion[] = "SELECT 1 FROM pragma_database_list AS d"
                                 " CROSS JOIN pragma_index_list(?1, d.name) AS i"
                                 " CROSS JOIN pragma_index_info(i.name, d.name) AS c"
                                 " WHERE substr(i.name, 1, length(?2)) = ?2 AND c.name = ?3";
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(connection, kQuestion, sizeof kQuestion, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
    const QByteArray table = toBytes(place.section(u'.', 0, 0));
    const QByteArray values[] = {table, table + "|P|", toBytes(place.section(u'.', 1))};
    int parameter = 0;
    for (const QByteArray& value : values) {
        sqlite3_bind_text(raw, ++parameter, value.constData(), int(value.size()), SQLITE_STATIC);
    }
    return sqlite3_step(raw) == SQLITE_ROW;
}

/// The message of a failed check is the name of its constraint, see columnClause().
[[noreturn]] void throwCheck(const QString& constraint)
{
    if (constraint.endsWith(kZeroLengthMark)) {
        throw dbError(DbFault::TextEmpty, constraint.chopped(qsizetype(kZeroLengthMark.size())));
    }
    throw dbError(DbFault::TextTooLong, constraint);
}

[[noreturn]] void throwConstraint(sqlite3* connection, int code, const QString& message)
{
    const QString place = message.mid(message.indexOf(u": "_s) + 2);
    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        throw dbError(DbFault::DuplicateKey, place);
    case SQLITE_CONSTRAINT_NOTNULL:
        throw dbError(isKeyColumn(connection, place) ? DbFault::KeyNull : DbFault::ValueRequired,
                      place);
    case SQLITE_CONSTRAINT_CHECK:
        throwCheck(place);
    }
    throw DbError(dberror::kOther, message);
}

[[noreturn]] void throwGeneral(const QString& message)
{
    if (message.startsWith("no such table"_L1)) {
        throw dbError(DbFault::SourceNotFound, message.mid(message.indexOf(u": "_s) + 2));
    }
    throw DbError(dberror::kOther, message);
}

/// What a failure may concern: SQLite does not say which of its files it was.
QString filesOf(sqlite3* connection)
{
    const char* name = connection ? sqlite3_db_filename(connection, "main") : nullptr;
    QString files = QFile::decodeName(name);
    constexpr int kFirstAttached = 2; // behind "main" and "temp"
    if (connection && sqlite3_db_name(connection, kFirstAttached)) {
        files += u" (oder eine verknüpfte Datei)"_s;
    }
    return files;
}

} // namespace

void throwError(sqlite3* connection, int code)
{
    const QString message =
        QString::fromUtf8(connection ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
    if (message.startsWith(kOwnErrorMark)) {
        throwOwnError(message);
    }
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT:
        throwConstraint(connection, code, message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        throw dbError(DbFault::FileLocked, filesOf(connection));
    case SQLITE_NOTADB:
        throw dbError(DbFault::FileIsNoDatabase, filesOf(connection));
    case SQLITE_CORRUPT:
        throw dbError(DbFault::FileDamaged, filesOf(connection), message);
    case SQLITE_CANTOPEN:
        throw dbError(DbFault::FileCannotBeOpened, filesOf(connection), message);
    case SQLITE_READONLY:
        throw dbError(DbFault::FileReadOnly, filesOf(connection));
    case SQLITE_FULL:
        throw dbError(DbFault::DiskFull, filesOf(connection));
    case SQLITE_IOERR:
        throw dbError(DbFault::DiskError, filesOf(connection), message);
    case SQLITE_NOMEM:
        throw dbError(DbFault::OutOfMemory);
    case SQLITE_MISMATCH:
        throw dbError(DbFault::RowNumberMismatch);
    }
    throwGeneral(message);
}

} // namespace melovane::sqlite
