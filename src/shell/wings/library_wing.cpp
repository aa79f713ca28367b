#include "shell/wings/library_wing.h"

#include "library/ui/mp3db_widget.h"
#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

LibraryWing::LibraryWing(Machine& machine, Desk& room, SuiteWing& suite, ListsWing& lists)
    : desk(room)
    , layouts(machine.paths, machine.files)
    , view({.engine = *machine.engine,
            .settings = machine.settings,
            .texts = machine.texts,
            .paths = machine.paths,
            .files = machine.files,
            .clock = machine.clock,
            .loop = machine.loop,
            .bus = suite.bus,
            .history = lists.history,
            .log = machine.log()},
           room.window.library().controls(),
           {.startImport = [&suite] { suite.commands.importMusic(); },
            .startBeatGauge = [&suite](const QString& cmd,
                                       const QString& fid) { suite.commands.findTempo(cmd, fid); },
            .locate = [&machine](const QString& file) { return machine.locator.placeOf(file); },
            .editSample =
                [&suite, &lists](const QString& fid) {
                    suite.sampleTool.edit(lists.functions.GetPlaylistDetailByFID(fid),
                                          suite.playlistMessage->handle());
                },
            .world = suite.world(machine)})
{}

LibraryCommands LibraryWing::commands()
{
    return {.start = [this] { view.start(); },
            .reload = [this] { view.Refresh(); },
            .showDeleted = [this] { view.DB_ALL_DEL(); },
            .showMissing = [this] { view.DB_ALL_NOEXIST(); },
            .saveState =
                [this] {
                    view.end();
                    view.SaveHist();
                },
            .forgetSearches = [this] { view.DelSuchlist(); },
            .findAll =
                [this](const QString& text) {
                    view.FindTreeValue({u"allfind"_s, {}, text}, true);
                },
            .press = [this](const QString& key) { view.toolPressed(key); },
            .whyNot = [this](QStringView key, bool needsRow) { return view.whyNot(key, needsRow); },
            .rate = [this](int rating) { view.digitPressed(rating); }};
}

bool LibraryWing::editLayout()
{
    return desk.editLayout(layouts, u"EditGrid-db"_s, kLibraryLayout, view.Data1(), view.look(),
                           desk.window.library().controls().grid);
}

} // namespace melovane
