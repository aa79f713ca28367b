#pragma once

#include "platform/db/db_error.h"

#include <QString>

struct sqlite3;

namespace melovane::sqlite {

/// Throws the DbError that stands for the last failure of a connection.
///
/// Texts of our own functions that begin "MLV:number:" carry the number of the error themselves.
/// \param code extended result code; not SQLITE_OK
[[noreturn]] void throwError(sqlite3* connection, int code);

/// Runs `work` and adds the statement to each DbError that names none.
template <typename Work> auto withStatement(const QString& statement, Work&& work)
{
    try {
        return work();
    } catch (const DbError& error) {
        if (!error.statement().isEmpty()) {
            throw;
        }
        throw DbError(error.number(), error.text(), statement);
    }
}

} // namespace melovane::sqlite
