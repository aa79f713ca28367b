#pragma once

#include "platform/controls/tree_control.h"

#include <QStringList>

#include <vector>

namespace melovane {

class ConfigObjects;
class Database;

/// The tree that `TreeErweitertConfig` describes: headings, and rows that a statement of the table
/// gives. Both are data, so a new view of the library needs no new code.
struct ExtendedRows
{
    std::vector<TreeRow> rows;
    /// Keys of headings that the user has folded.
    QStringList folded;
};

/// Statements run over the whole library, so those of folded headings wait until they are opened:
/// their headings are fillable. A statement that can't be run leaves its heading, which says why in
/// its tool tip.
/// \throws DbError when the table itself can't be read
[[nodiscard]] ExtendedRows extendedRows(Database& database, const ConfigObjects& texts);

/// A heading that is opened for the first time and the rows of its statement, in that order; the
/// heading has another text when there are none, or says why in its tool tip. Nothing for a number
/// that the table lacks, or that has no statement.
/// \throws DbError when the table itself can't be read
[[nodiscard]] std::vector<TreeRow>
extendedItem(Database& database, const ConfigObjects& texts, qint64 id);

/// The number in the key of a heading, whose folding is remembered; 0 for other rows.
[[nodiscard]] qint64 extendedHeadingOf(const QString& key);

} // namespace melovane
