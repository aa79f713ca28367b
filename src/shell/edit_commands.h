#pragma once

#include "shell/window_menus.h"

#include <span>

namespace melovane {

class ConfigObjects;
struct LibraryCommands;
struct PlaylistCommands;

/// One command of the menu `mnuBearbeiten`, which stands in the menus of the rows, too.
struct EditRow
{
    QStringView name;         ///< of its entry in the menu bar
    QStringView icon;         ///< name of a picture
    QStringView library;      ///< key of what it is in the library view; empty where it is nothing
    QStringView libraryText;  ///< key of its text in the menu of a row there
    QStringView playlist;     ///< the same two of the playlist view
    QStringView playlistText; ///< never empty where `playlist` is not
};

/// In the order of the menu of a row.
[[nodiscard]] std::span<const EditRow> editRows();

/// The row of a name, or null.
[[nodiscard]] const EditRow* editRow(QStringView name);

/// Cut, copy, insert, append, select all and delete, in whatever the keyboard is.
class EditCommands
{
public:
    /// All outlive the commands.
    struct Parts
    {
        const ConfigObjects& texts;
        const LibraryCommands& library;
        const PlaylistCommands& playlist;
        MenuControl& menus;
    };

    explicit EditCommands(Parts parts);

    /// Does it in that place; nothing where the place does not have it.
    void run(const EditRow& row, EditPlace place) const;

    /// Why it cannot work there now, in the user's words; empty when it can.
    [[nodiscard]] QString whyNot(const EditRow& row, EditPlace place) const;

    /// The same two for where the keyboard is, or was before a menu took it.
    void run(const EditRow& row) const;
    [[nodiscard]] QString whyNot(const EditRow& row) const;

private:
    Parts m_parts;
};

} // namespace melovane
