#pragma once

#include "platform/sqlite/engine/connection.h"

/// Whole database files: made beside their place and renamed into it.
namespace melovane::sqlite {

/// Makes a file with an empty catalogue.
/// \param options of the connections that will open it
/// \throws DbError kObjectExists, kCannotOpen
void createDatabaseFile(const QString& path, const ConnectionOptions& options);

/// Copies what is committed now, also while others write. \throws DbError; the target is then
/// untouched
/// \param now the time of day by which files are dated
void backupDatabase(Connection& source, const QString& target, const QDateTime& now);

} // namespace melovane::sqlite
