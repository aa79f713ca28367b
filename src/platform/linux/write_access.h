#pragma once

#include <QString>

namespace melovane {

/// Whether this program may write a database: its file, and where none stands yet also the journal
/// beside it. True for a file that is not there, about which others have more to say.
[[nodiscard]] bool canWriteDatabase(const QString& file);

} // namespace melovane
