#pragma once

#include <QSet>
#include <QString>

namespace melovane {

/// The names in a folder that Files::fileExists says yes to, by one look at the folder; none for
/// one that cannot be read.
[[nodiscard]] QSet<QString> filesIn(const QString& folder);

} // namespace melovane
