#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// The fields as one line of a log that is read by eye: each begins at the next column that is a
/// multiple of 14. Line ends inside of a field become blanks.
[[nodiscard]] QString printLine(const QStringList& fields);

} // namespace melovane
