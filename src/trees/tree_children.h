#pragma once

#include "platform/controls/tree_control.h"

#include <QStringList>

#include <vector>

namespace melovane {

class Database;

namespace treerows {

// -- Rows that are read when the row above them is opened; empty for rows that have none --

[[nodiscard]] std::vector<TreeRow> children(Database& database, const QString& key);
/// The same for many rows, in the order of their keys. The artists of all letters are read in one
/// go.
[[nodiscard]] std::vector<std::vector<TreeRow>> childrenOfEach(Database& database,
                                                               const QStringList& keys);

} // namespace treerows

} // namespace melovane
