#pragma once

#include "platform/qt/qt_popup.h"
#include "playlistview/list_figures.h"
#include "playlistview/ui/list_figures_dialog.h"
#include "trees/library_tree.h"
#include "trees/playlist_favorit.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct PlaylistWing;
struct SuiteWing;

/// The panel of the lists and the library tree.
struct TreesWing
{
    /// The picture file of a track, empty for none.
    using CoverOf = std::function<QString(const MlvAllData& track)>;

    TreesWing(Machine& machine,
              Desk& desk,
              SuiteWing& suite,
              ListsWing& lists,
              PlaylistWing& playlist,
              CoverOf cover);

    ListFiguresDialog figuresForm;
    frmDetailPlaylist figures;
    PlaylistFavorit favorit;
    QtPopup popup; ///< of the library tree
    Tree tree;

private:
    [[nodiscard]] TreeParts treeParts(Machine& machine,
                                      Desk& desk,
                                      SuiteWing& suite,
                                      ListsWing& lists,
                                      PlaylistWing& playlist,
                                      CoverOf cover);
};

} // namespace melovane
