#pragma once

#include <QStringView>

#include <optional>

namespace melovane::sqlite::dialect {

/// The number that the whole text is: blanks around it, a sign, digits, one point. Empty for
/// everything else.
[[nodiscard]] std::optional<double> wholeTextNumber(QStringView text);

} // namespace melovane::sqlite::dialect
