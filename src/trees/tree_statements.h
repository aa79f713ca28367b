#pragma once

#include "trees/parked_favorits.h"

#include <QString>

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

/// The rows of a table that TreeTable refills, before `table` is replaced by the column's name.
[[nodiscard]] QString fillTable();
[[nodiscard]] QString fillImportDate();

/// The steps of MusicMatch for one of the four selection fields.
[[nodiscard]] QString addTypedValues(const QString& column);
[[nodiscard]] QString dropKnownValues(const QString& column);

} // namespace melovane::treesql
