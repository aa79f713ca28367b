#pragma once

class QApplication;
class QString;

namespace melovane {

/// Gives the texts of Qt's own windows (file dialog, context menu of a text field) in a language.
///
/// \param code "de", "en" ...; a language that the machine has no texts for leaves them English
void setLanguageOfDesktopTexts(QApplication& application, const QString& code);

} // namespace melovane
