#pragma once

#include "intake/drop_commands.h"
#include "playlistfiles/kopie_file.h"
#include "playlistfiles/m3u_commands.h"
#include "playlistfiles/ui/kopie_file_dialog.h"
#include "playlistview/playlist.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
struct LibraryWing;
struct ListsWing;
struct Machine;
struct SoundWing;
struct SuiteWing;

/// The playlist view, and what a user does with a whole list: import, save, export.
struct PlaylistWing
{
    /// The wings that stand below this one.
    struct Below
    {
        Machine& machine;
        Desk& desk;
        SuiteWing& suite;
        SoundWing& sound;
        ListsWing& lists;
        LibraryWing& library;
    };

    /// What the view has the tree of lists do, which is made behind it.
    struct TreeActions
    {
        std::function<GroupId()> importGroup; ///< the group that imported lists go into
        std::function<void()> newList;        ///< makes a list and opens it
    };

    PlaylistWing(const Below& below, TreeActions tree);

    /// What the main window asks of the view.
    [[nodiscard]] PlaylistCommands commands();

    /// `frmEditGrid` for its grid. True when another layout was written.
    [[nodiscard]] bool editLayout();

    /// `frmKopieFile` for a list.
    void exportList(Pnid list);

    /// Takes from now on what the sample tool hands back.
    void hearSampleTool(const EventGuard& guard);

    Below below;
    TreeActions tree;
    M3uCommands listFiles;
    DropCommands drops;
    ctl_Playlist view;
    KopieFileDialog exportForm;
    frmKopieFile exports;

private:
    void tracksEntered();
    [[nodiscard]] M3uCommandParts listFileParts();
    [[nodiscard]] PlaylistViewParts viewParts();
    [[nodiscard]] PlaylistActions viewActions();
    [[nodiscard]] KopieParts exportParts();
};

/// The play actions for the current entry of the view.
[[nodiscard]] std::vector<PlayAction> playActionsOf(const ctl_Playlist& view);

} // namespace melovane
