#pragma once

#include <QStringView>

/// The only two doors by which a value enters the text of a statement.
namespace melovane::sql {

/// The text in single quotes, quotes inside doubled. Zero characters are dropped: no column keeps
/// them and a statement ends there.
[[nodiscard]] QString text(QStringView value);

/// The inner part of text(), for statements whose given wording already holds the quotes.
[[nodiscard]] QString quoted(QStringView value);

/// A whole number in plain decimal.
[[nodiscard]] QString number(qint64 value);

/// A real number in plain decimal with a point, whatever the locale.
[[nodiscard]] QString number(double value);

} // namespace melovane::sql
