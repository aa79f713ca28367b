#pragma once

#include "platform/sqlite/dialect/parsed_statement.h"
#include "platform/sqlite/dialect/translation.h"

/// The suite's SQL dialect, translated to SQLite's.
///
/// A text becomes tokens, the tokens a tree, and a walk over the tree binds every name to a column
/// of the catalogue, gives every expression a type and writes SQLite text. Stored queries named in
/// a `from` are woven in, so the result names nothing but tables. Positions of faults are counted
/// in letters of the original text.
namespace melovane::sqlite {

/// Translates one statement. `now` and the other clock functions become function calls, never
/// values, so a translation may be kept for as long as the catalogue does not change.
///
/// An unknown column name becomes a parameter of that name when `allowParameters` is set, and
/// throws kTooFewParameters naming it otherwise. Declared `parameters` are allowed either way.
/// \throws DbError kSyntax with the place of the fault, kObjectNotFound, kTooFewParameters
[[nodiscard]] Translation
translate(const ParsedStatement& statement, const NameSource& names, bool allowParameters = false);

/// The same for a text that nobody else reads.
[[nodiscard]] Translation
translate(const QString& statement, const NameSource& names, bool allowParameters = false);

/// What kind of statement a text is by its words alone, whether or not its names exist. That of the
/// query behind `execute` is not known: Select.
/// \throws DbError kSyntax with the place of the fault
[[nodiscard]] QueryType writtenQueryType(const QString& statement);

} // namespace melovane::sqlite
