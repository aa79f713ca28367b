#pragma once

#include <QString>
#include <QStringView>

namespace melovane {

/// The text without blanks (U+0020) at both ends; other white space stays.
[[nodiscard]] QString trimBlanks(QStringView text);

} // namespace melovane
