#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace melovane {

/// A field of a record line: a text, or a whole number.
using RecordField = std::variant<QString, qint64>;

/// Texts in double quotes and bare numbers, parted by commas. A quote inside a text is doubled, a
/// line end becomes a blank, so a record is always one line.
[[nodiscard]] QString recordLine(const std::vector<RecordField>& fields);

/// The fields of a line, quotes taken off; nothing when a quote is not closed or something stands
/// behind one. Blanks around a bare field are cut.
[[nodiscard]] std::optional<QStringList> readRecordLine(QStringView line);

} // namespace melovane
