#pragma once

#include <QStringView>

#include <span>

namespace melovane {

/// Keys that are always the same, of a command that a menu of the console shows.
struct MenuKey
{
    QStringView textKey; ///< of its caption
    QStringView keys;    ///< "Ctrl+Z"
};

/// As the menus of the console have them; a test compares both. Here because every program of the
/// suite shows them in its help.
[[nodiscard]] std::span<const MenuKey> menuKeys();

} // namespace melovane
