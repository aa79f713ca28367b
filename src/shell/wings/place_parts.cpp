#include "shell/wings/place_parts.h"

#include "library/library_place.h"
#include "library/ui/mp3db_widget.h"
#include "platform/qt/outline_tree.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/wings/desk.h"
#include "shell/wings/library_wing.h"
#include "shell/wings/playlist_wing.h"
#include "shell/wings/trees_wing.h"
#include "trees/tree_key.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "trees/ui/tree_widget.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString keyOfList(const ctl_Playlist& view)
{
    const qint64 list = numberOf(view.GetPNID());
    return list == 0             ? QString()
           : view.isJingleMode() ? treekey::jingleList(list)
                                 : treekey::playlist(list);
}

PlacePart treeKind(TreesWing& trees)
{
    return {.name = u"Tree"_s,
            .place = [&trees] { return nameOf(trees.tree.kind()).toString(); },
            .keep = [&trees] { trees.tree.end(); }};
}

PlacePart treeRow(Desk& desk, TreesWing& trees)
{
    return {.name = u"Tree.Row"_s,
            .place =
                [&desk] {
                    const OutlineTree& tree = desk.window.tree().outline();
                    const int row = tree.currentRow();
                    return row < 0 ? QString() : tree.row(row).key;
                },
            .restore =
                [&desk, &trees](const QString& key) {
                    const int row = desk.window.tree().outline().find(key);
                    if (row >= 0) {
                        trees.tree.setrow(row);
                    }
                }};
}

PlacePart foldedLists(Desk& desk, TreesWing& trees)
{
    return {.name = u"Lists.Folded"_s,
            .place =
                [&desk] {
                    return desk.window.lists().tree().folded().join(
                        treekey::kStateSeparator.toString());
                },
            .keep = [&trees] { trees.favorit.end(); }};
}

} // namespace

std::vector<PlacePart> placeParts(Desk& desk,
                                  LibraryWing& library,
                                  PlaylistWing& playlist,
                                  TreesWing& trees,
                                  const EventGuard& guard)
{
    const Mp3dbControls controls = desk.window.library().controls();
    GridControl& grid = controls.grid;
    SearchBox& search = controls.search;
    ctl_MP3DB& tracks = library.view;
    ctl_Playlist& list = playlist.view;
    std::vector<PlacePart> parts{
        treeKind(trees),
        foldedLists(desk, trees),
        {.name = u"List"_s,
         .place = [&list] { return keyOfList(list); },
         .restore = [&trees](const QString& key) { trees.favorit.showRow(key); }},
        {.name = u"List.Entry"_s,
         .place = [&list] { return QString::number(numberOf(list.currentEntry())); },
         .restore =
             [&list](const QString& entry) { list.SetAbsolutePosition(Plid(entry.toInt())); }},
        {.name = u"Library.Order"_s,
         .place = [&tracks] { return libraryplace::sorting(tracks); },
         .restore = [&tracks,
                     &grid](const QString& line) { libraryplace::sort(tracks, grid, line); }},
        {.name = u"Library"_s,
         .place = [&tracks, &search] { return libraryplace::tracks(tracks, search); },
         .restore = [&tracks, &search](
                        const QString& line) { libraryplace::showTracks(tracks, search, line); }},
        {.name = u"Library.Row"_s,
         .place = [&grid] { return rowPlace(grid); },
         .restore = [&tracks, &grid](
                        const QString& line) { goToRowPlace(grid, tracks.matchCount(), line); }},
        treeRow(desk, trees),
    };
    for (PlacePart& part : parts) {
        if (part.restore) {
            part.restore = [&guard, restore = std::exchange(part.restore, {})](const QString& at) {
                guard.run(u"WorkPlace"_s, [&] { restore(at); });
            };
        }
    }
    return parts;
}

} // namespace melovane
