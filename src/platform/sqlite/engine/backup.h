#pragma once

#include "platform/sqlite/engine/connection.h"

/// Whole database files: made beside their place and renamed into it.
namespace melovane::sqlite {

/// Makes a file with an empty catalogue.
/// \param sharesMemory see ConnectionOptions
/// \throws DbError kObjectExists, kCannotOpen
void createDatabaseFile(const QString& path, bool sharesMemory);

/// Copies what is committed now, also while others write. \throws DbError; the target is then
/// untouched
void backupDatabase(Connection& source, const QString& target);

} // namespace melovane::sqlite
