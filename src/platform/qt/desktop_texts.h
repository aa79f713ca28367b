#pragma once

#include <QString>

class QApplication;

namespace melovane {

/// Gives the texts of Qt's own windows (file dialog, context menu of a text field) in a language.
///
/// \param code "de", "en" ...; a language that the machine has no texts for leaves them English
void setLanguageOfDesktopTexts(QApplication& application, const QString& code);

/// A key combination in the words of that language: "Strg+C" for "Ctrl+C".
[[nodiscard]] QString nativeKeys(const QString& portable);

} // namespace melovane
