#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace melovane {

/// Gives each text that stands still in a window another wording: titles, labels, buttons, entries
/// of menus, headings of tables, hints in fields, tool tips, names for screen readers. Rows and
/// what the user types stay.
void retell(QWidget& window, const std::function<QString(const QString& text)>& retold);

/// The same of every window of the program, open or not.
void retellAll(const std::function<QString(const QString& text)>& retold);

/// Tells every window that the language has changed, for those that make their content of texts.
void announceLanguage();

} // namespace melovane
