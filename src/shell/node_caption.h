#pragma once

#include <QString>

namespace melovane {

/// What the status line shows for a click in a tree: "Interpret :: Ostwind".
///
/// \param value the clicked value; one without a letter, or with "*", is no name and gives an empty
///              text
/// \param field what the value is; a field that is no name of a node reads as "Info"
[[nodiscard]] QString nodeCaption(const QString& value, const QString& field);

} // namespace melovane
