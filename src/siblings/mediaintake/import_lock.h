#pragma once

#include <QString>

namespace melovane {

class Files;

/// Name under which OnlyCopy lets one import at a time into a database: the same for every path
/// that leads to its file.
[[nodiscard]] QString importLockName(const Files& files, const QString& database);

} // namespace melovane
