#include "shell/wings/edit_wing.h"

#include "library/ui/mp3db_widget.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"
#include "trackedit/ui/edit_tag_widget.h"

namespace melovane {

EditWing::EditWing(Machine& machine, Desk& room, SuiteWing& suite, ListsWing& lists)
    : desk(room)
    , panel(parts(machine, suite, lists), room.window.tags())
{}

EditTagParts EditWing::parts(Machine& machine, SuiteWing& suite, ListsWing& lists)
{
    return {.engine = *machine.engine,
            .settings = machine.settings,
            .texts = machine.texts,
            .loop = machine.loop,
            .bus = suite.bus,
            .history = lists.history,
            .log = machine.log(),
            .mayWrite = [world = suite.world(machine)] { return !world.isReadOnly(); },
            .placeOf = [&machine](const QString& file) { return machine.locator.placeOf(file); },
            .run =
                [&machine](const QString& line) {
                    return machine.processes.start(line, Processes::WindowStyle::Normal);
                },
            .left = [this] { focusRows(); }};
}

TagPanelCommands EditWing::commands()
{
    return {.show =
                [this](const QString& fid, bool edits, bool inLibrary) {
                    isOfLibrary = inLibrary;
                    panel.showTrack(fid, edits);
                },
            .saveState = [this] { panel.end(); }};
}

void EditWing::focusRows()
{
    if (isOfLibrary) {
        desk.window.library().controls().grid.focus();
    } else {
        desk.window.playlist().controls(desk.warnings).grid.focus();
    }
}

} // namespace melovane
