#include "platform/sqlite/sqlite_error.h"

#include "platform/sqlite/functions.h"

#include <sqlite3.h>

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

[[noreturn]] void throwConstraint(int code, const QString& message)
{
    const QString place = message.mid(message.indexOf(u": "_s) + 2);
    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        throw DbError(dberror::kDuplicateKey,
                      u"The change would give two rows the same key (%1)."_s.arg(place));
    case SQLITE_CONSTRAINT_NOTNULL:
        throw DbError(dberror::kNullInKey, u"The column %1 must have a value."_s.arg(place));
    case SQLITE_CONSTRAINT_CHECK:
        throw DbError(dberror::kFieldTooSmall,
                      u"The text is too long for the column %1."_s.arg(place));
    }
    throw DbError(dberror::kOther, message);
}

[[noreturn]] void throwGeneral(const QString& message)
{
    if (message.startsWith("no such table"_L1)) {
        throw DbError(dberror::kObjectNotFound, u"The table or query is not there: %1."_s.arg(
                                                    message.mid(message.indexOf(u": "_s) + 2)));
    }
    throw DbError(dberror::kOther, message);
}

} // namespace

void throwReplaced(const QString& path)
{
    throw DbError(dberror::kCannotOpen,
                  u"Die Datenbankdatei wurde inzwischen ersetzt oder entfernt und muss neu "
                  "geöffnet werden: %1"_s.arg(path));
}

void throwUndone()
{
    throw DbError(dberror::kOther,
                  u"Die Transaktion wurde nach einem Fehler rückgängig gemacht."_s);
}

void throwError(sqlite3* connection, int code)
{
    const QString message =
        QString::fromUtf8(connection ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
    if (message.startsWith(kOwnErrorMark)) {
        throwOwnError(message);
    }
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT:
        throwConstraint(code, message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        throw DbError(dberror::kLocked, u"The database is in use by another program."_s);
    case SQLITE_NOTADB:
        throw DbError(dberror::kUnrecognisedFormat, u"The file is not a database."_s);
    case SQLITE_CORRUPT:
        throw DbError(dberror::kCorrupt, u"The database file is damaged (%1)."_s.arg(message));
    case SQLITE_CANTOPEN:
        throw DbError(dberror::kCannotOpen, u"The database file cannot be opened."_s);
    case SQLITE_READONLY:
        throw DbError(dberror::kReadOnly, u"The database is read only."_s);
    case SQLITE_FULL:
        throw DbError(dberror::kDiskFull, u"The disk is full."_s);
    case SQLITE_IOERR:
        throw DbError(dberror::kDiskError,
                      u"Reading or writing the file failed (%1)."_s.arg(message));
    case SQLITE_NOMEM:
        throw DbError(dberror::kOutOfMemory, u"Der Arbeitsspeicher reicht nicht aus."_s);
    case SQLITE_MISMATCH:
        throw DbError(dberror::kTypeMismatch, u"A value does not fit the type of its column."_s);
    }
    throwGeneral(message);
}

} // namespace melovane::sqlite
