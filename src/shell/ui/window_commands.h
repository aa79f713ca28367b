#pragma once

#include "shell/quick_open.h"

#include <QStringList>

class QMenu;
class QMenuBar;
class QWidget;

namespace melovane {

/// All entries of the menus, with the menus above each in its title: as grey as they are now.
///
/// \param without names of menus whose entries stand elsewhere
/// The entries live as long as the menus.
[[nodiscard]] std::vector<QuickEntry>
commandsOf(const QMenuBar& bar, const QString& kind, const QStringList& without);

/// The same of one menu. \param title stands before the name of each entry
[[nodiscard]] std::vector<QuickEntry>
commandsOf(const QMenu& menu, const QString& kind, const QString& title);

/// The buttons with names in a part of the window, seen or too many for its width.
[[nodiscard]] std::vector<QuickEntry>
buttonsOf(const QWidget& view, const QString& kind, const QString& title);

} // namespace melovane
