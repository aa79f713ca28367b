#pragma once

#include "shell/quick_open.h"

#include <QStringList>

class QWidget;

namespace melovane {

/// All entries of the window's menu bar, with the menus above each in its title: as grey as they
/// are now.
///
/// \param without names of menus whose entries stand elsewhere
/// The entries live as long as the menus.
[[nodiscard]] std::vector<QuickEntry>
menuCommands(const QWidget& window, const QString& kind, const QStringList& without);

/// The same of the menu of its rows. \param title stands before the name of each entry
[[nodiscard]] std::vector<QuickEntry>
rowMenuCommands(const QWidget& window, const QString& kind, const QString& title);

/// The buttons with names in a part of the window, seen or too many for its width.
[[nodiscard]] std::vector<QuickEntry>
buttonsOf(const QWidget& view, const QString& kind, const QString& title);

} // namespace melovane
