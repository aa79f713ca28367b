#pragma once

#include <QString>

class QLineEdit;

namespace melovane {

/// Gives the buttons inside an input line a name that a screen reader speaks. They are in the line
/// by then; call again when the language changes.
///
/// \param purpose what the line is for: the name of the picture in front of the text
/// \param clear   what the button behind the text does: one named "clear", or the tool kit's own
void nameLineButtons(QLineEdit& line, const QString& purpose, const QString& clear);

} // namespace melovane
