#pragma once

#include <QString>

namespace melovane {

class Database;

/// A name by its format: each part between two "#" is the pattern of a date and gives this moment,
/// a "#" without a partner stays. \throws DbError
[[nodiscard]] QString nameOfFormat(Database& database, const QString& format);

} // namespace melovane
