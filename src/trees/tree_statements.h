#pragma once

#include "trees/parked_favorits.h"

#include <QString>

namespace melovane {
class Database;
} // namespace melovane

/// The statements that refill the tree tables. Their wording is given, doubled blanks included:
/// keep.
namespace melovane::treesql {

/// "select * from tree_album where favorit=true" for the table of that name.
[[nodiscard]] QString favorits(const QString& table);

/// "delete from tree_album".
[[nodiscard]] QString empty(const QString& table);

/// A name as it may stand in a statement: every "'" is replaced by "*". So a favourite with an
/// apostrophe finds no row and ceases to be one, which is wanted.
[[nodiscard]] QString quotedName(QString name);

/// Makes the row of that name a favourite again.
[[nodiscard]] QString restoreName(const QString& table, const ParkedFavorit& favorit);
/// The same by genre and name, for `tree_genre_interpret`.
[[nodiscard]] QString restoreGenreName(const ParkedFavorit& favorit);
/// The same by folder, for `tree_dir`.
[[nodiscard]] QString restorePath(const ParkedFavorit& favorit);

/// True when the stored query of that name says what it says in a new library, whatever its blanks
/// and line ends: only then its rows may be made in another way.
[[nodiscard]] bool isShipped(Database& database, const QString& query);

[[nodiscard]] QString fillImportDate();

/// The steps of MusicMatch for one of the four selection fields.
[[nodiscard]] QString addTypedValues(const QString& column);
[[nodiscard]] QString dropKnownValues(const QString& column);

} // namespace melovane::treesql
