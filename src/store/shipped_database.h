#pragma once

#include <QString>

namespace melovane {

class DBEngine;
class Files;

/// Makes the database that a first start copies into the user's data folder: all tables, templates,
/// stored queries and first rows, at the level of this release. Links to the side files are not in
/// it; they are made at the first start.
///
/// \param schemaFolder holds tables.txt, queries/<name>.sql and rows/<table>.txt
/// \param target replaced as a whole once the new file is complete; kept otherwise
/// \throws IoError for a source that is missing or not understood, DbError
void buildShippedDatabase(DBEngine& engine,
                          Files& files,
                          const QString& schemaFolder,
                          const QString& target);

} // namespace melovane
