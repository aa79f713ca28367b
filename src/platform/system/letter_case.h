#pragma once

#include <QString>
#include <QStringView>

namespace melovane {

/// Upper and lower case letter by letter, so the length never changes: "ß" stays "ß".
[[nodiscard]] QString upperCase(QStringView text);
[[nodiscard]] QString lowerCase(QStringView text);

} // namespace melovane
