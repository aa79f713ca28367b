#include "shell/wings/trees_wing.h"

#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/playlist_wing.h"
#include "shell/wings/suite_wing.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "trees/ui/tree_widget.h"

namespace melovane {

TreesWing::TreesWing(Machine& machine,
                     Desk& desk,
                     SuiteWing& suite,
                     ListsWing& lists,
                     PlaylistWing& playlist,
                     CoverOf cover)
    : figuresForm(machine.texts)
    , figures(*machine.engine, machine.settings, figuresForm)
    , favorit({.engine = *machine.engine,
               .settings = machine.settings,
               .texts = machine.texts,
               .lists = lists.functions,
               .loop = machine.loop,
               .bus = suite.bus,
               .warnings = desk.warnings,
               .popup = desk.popup,
               .sink = suite.toUser(machine),
               .openList = [&playlist] { return playlist.view.GetPNID(); },
               .append = [&playlist](const QString& dragText,
                                     Pnid list) { playlist.view.append(dragText, list); },
               .showDetails = [this](Pnid list) { figures.Show(list); },
               .saveList = [&playlist](Pnid list) { playlist.listFiles.saveList(list); },
               .world = suite.world(machine)},
              desk.window.lists().tree())
    , popup(desk.icons)
    , tree(treeParts(machine, desk, suite, lists, playlist, std::move(cover)), desk.window.tree())
{
    popup.setPlace([&desk] { return desk.window.tree().menuPlace(); });
}

TreeParts TreesWing::treeParts(Machine& machine,
                               Desk& desk,
                               SuiteWing& suite,
                               ListsWing& lists,
                               PlaylistWing& playlist,
                               CoverOf cover)
{
    return {.engine = *machine.engine,
            .settings = machine.settings,
            .texts = machine.texts,
            .lists = lists.functions,
            .loop = machine.loop,
            .bus = suite.bus,
            .warnings = desk.warnings,
            .popup = popup,
            .sink = suite.toUser(machine),
            .mayWrite = [world = suite.world(machine)] { return !world.isReadOnly(); },
            .track = [&machine](const QString& fid) { return machine.data.GetAllDataByFid(fid); },
            .cover = std::move(cover),
            .placeOf = [&machine](const QString& file) { return machine.locator.placeOf(file); },
            .append = [&playlist](const QString& dragText,
                                  Pnid list) { playlist.view.append(dragText, list); },
            .startViewer = [&suite] { suite.commands.viewCovers(); },
            .rebuildTables = [&suite] { suite.commands.rebuildTrees(); }};
}

} // namespace melovane
