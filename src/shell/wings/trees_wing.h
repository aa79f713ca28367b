#pragma once

#include "playlistview/list_figures.h"
#include "playlistview/ui/list_figures_dialog.h"
#include "trees/playlist_favorit.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct PlaylistWing;
struct SuiteWing;

/// The panel of the lists.
struct TreesWing
{
    TreesWing(Machine& machine,
              Desk& desk,
              SuiteWing& suite,
              ListsWing& lists,
              PlaylistWing& playlist);

    ListFiguresDialog figuresForm;
    frmDetailPlaylist figures;
    PlaylistFavorit favorit;
};

} // namespace melovane
