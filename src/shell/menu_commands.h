#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "shell/edit_commands.h"
#include "shell/mlvdb_parts.h"
#include "shell/window_menus.h"

#include <span>

namespace melovane {

class SiblingCommands;

/// What the entries of the window's menus do.
class MenuCommands
{
public:
    /// All outlive the commands.
    struct Parts
    {
        MlvdbParts& window;
        MlvdbControls& controls;
        BusSender& bus; ///< of the main window
        const EventGuard& guard;
        SiblingCommands& siblings;
        const EditCommands& edit;
        std::function<void(const QString& text)> showStatusText;
    };

    explicit MenuCommands(Parts parts);

    /// The menus from left to right, top to bottom.
    [[nodiscard]] static std::span<const MenuRow> rows();

    /// Texts and ticks of all entries, in the user's language.
    void setCaptions();
    /// The programs that the user has added, as far as they are installed.
    void buildPlugIns();

    /// Greys what cannot work now, and says why. Asked for whenever a menu opens.
    void judge();

    /// Runs the action of an entry, or says why it cannot work now; a failure leaves the window
    /// running.
    void clicked(const MenuRow& row);
    /// An entry of `mnuPlugIn`, by the name of its record.
    void plugInClicked(const QString& name);

    /// Words for the entries that take a change of a list back and do it again.
    void setHistoryTexts(const QString& undo, const QString& redo);

    // The layouts are reached from the headings of the grids, too.

    void mnuDatenbank();
    void mnuPlaylist();

private:
    void mnuConfig();
    void mnuImpMP3New();
    void mnuImpMP3Edit();
    void mnuImpMP3Again();
    void mnuImpPlaylistBas();
    void mnuExpPlaylistBas();
    void mnuAktivePlaylist();
    void mnuAktivePlaystFiles();
    void mnuExitJobs();
    void mnuExit();
    void mnuDelDayCount();
    void mnuViewDel();
    void mnuNoExistAnzeigen();
    void mnuToDatei();
    void mnuRefreshTree();
    void mnuDelSuchlist();
    [[nodiscard]] QString whyNot(const MenuRow& row) const;
    void edit(QStringView name);
    void mnuCut();
    void mnuCopy();
    void mnuPaste();
    void mnuPasteAppend();
    void mnuSelectAll();
    void mnuDelete();
    void mnuUndo();
    void mnuRedo();
    void mnuFont();
    void mnuRepairGridLayout();
    void mnuAutosizeGrid();
    void mnuInternet();
    void openMakersPage(const QString& name);
    void mnuInternetPage();
    void mnuInternetVersions();
    void mnuUeber();

    [[nodiscard]] QString text(const QString& id) const;

    Parts m_parts;
};

} // namespace melovane
