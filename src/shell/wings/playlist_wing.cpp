#include "shell/wings/playlist_wing.h"

#include "bus/message_names.h"
#include "bus/message_numbers.h"
#include "platform/controls/status_progress.h"
#include "platform/qt/progress_dialog.h"
#include "playlistfiles/m3u_errors.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/wings/desk.h"
#include "shell/wings/library_wing.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/sound_wing.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A line of the log of imports and exports.
void logImport(Machine& machine, int code, const QString& source, const QString& what)
{
    M3uErrors errors(machine.files, {machine.paths.programFolder(), machine.paths.GetConfigPath()},
                     machine.clock);
    errors.add(code, source, what);
}

/// Shows a long work with files: in the status line, and in a window that can end it.
std::function<std::unique_ptr<ProgressWindow>(const QString& title)>
progressOf(const PlaylistWing::Below& wings)
{
    return [&machine = wings.machine, &desk = wings.desk](const QString& title) {
        return std::make_unique<StatusProgress>(
            std::make_unique<ProgressDialog>(title, machine.texts.text(u"m3u.cancel"_s)),
            desk.window.status());
    };
}

} // namespace

std::vector<PlayAction> playActionsOf(const ctl_Playlist& view)
{
    std::vector<PlayAction> result;
    const int present = view.currentAktion();
    for (const int action : view.aktionChoices()) {
        if (const AktionLook* const look = aktionLook(action)) {
            result.push_back({action, look->key.toString(), action == present});
        }
    }
    return result;
}

PlaylistWing::PlaylistWing(const Below& wings, TreeActions treeActions)
    : below(wings)
    , tree(std::move(treeActions))
    , listFiles(listFileParts())
    , drops({.engine = *wings.machine.engine,
             .settings = wings.machine.settings,
             .texts = wings.machine.texts,
             .files = wings.machine.files,
             .reader = wings.lists.tagReader,
             .clock = wings.machine.clock,
             .pointer = wings.desk.pointer,
             .showStatusText = [this](const QString& text) { below.suite.showStatusText(text); },
             .openProgress = progressOf(wings),
             .libraryChanged = [this] { tracksEntered(); },
             .logRefusal =
                 [&machine = wings.machine](const Refusal& refusal) {
                     logImport(machine, refusal.code, u"Drop"_s, refusal.path);
                 }})
    , view(viewParts(), wings.desk.window.playlist().controls(wings.desk.warnings), viewActions())
    , exportForm(wings.desk.icons, wings.machine.texts)
    , exports(exportParts())
{}

/// The trees follow as soon as their program, which tells this window itself, has filled the tables
/// that the new tracks have marked; where it is not installed they wait for the jobs program.
void PlaylistWing::tracksEntered()
{
    below.suite.sender.SendMessage(bus::kDbChange);
    below.suite.siblings.startRebuildTree({});
}

M3uCommandParts PlaylistWing::listFileParts()
{
    const Machine& machine = below.machine;
    return {.m3u = below.lists.m3u,
            .settings = below.machine.settings,
            .texts = machine.texts,
            .files = machine.files,
            .warnings = below.desk.warnings,
            .chooser = below.desk.fileChooser,
            .bus = below.suite.bus,
            .openProgress = progressOf(below),
            .targetGroup = tree.importGroup,
            .openFile = [this](const QString& file) {
                return below.machine.processes.start(u"notepad.exe "_s + file,
                                                     Processes::WindowStyle::Normal);
            }};
}

PlaylistViewParts PlaylistWing::viewParts()
{
    ListsWing& lists = below.lists;
    return {.engine = *below.machine.engine,
            .settings = below.machine.settings,
            .texts = below.machine.texts,
            .clock = below.machine.clock,
            .loop = below.machine.loop,
            .bus = below.suite.bus,
            .tools = {.functions = lists.functions,
                      .edits = lists.edits,
                      .history = lists.history,
                      .snapshots = lists.snapshots},
            .log = below.machine.log()};
}

PlaylistActions PlaylistWing::viewActions()
{
    LayoutFiles& layouts = below.library.layouts;
    return {.program = below.machine.paths.programName(),
            .startBeatGauge =
                [this](const QString& cmd, const QString& fid, const QString& plid) {
                    below.suite.commands.findTempo(cmd, fid, plid);
                },
            .monitorFrame = [this] { return below.sound.monitor.positionFrames(); },
            .locate = [this](const QString& file) { return below.machine.locator.placeOf(file); },
            .isFolder =
                [this](const QString& place) { return below.machine.files.folderExists(place); },
            .tracksOf = [this](const QStringList& places) { return drops.tracksOf(places); },
            .saveLayout = [&layouts](const QString& name,
                                     const GridControl& grid) { layouts.save(name, grid); },
            .loadLayout = [&layouts](const QString& name,
                                     GridControl& grid) { layouts.load(name, grid); },
            .insertLists =
                [this](const QStringList& files, Pnid list, std::optional<Sid> target, int aktion) {
                    return listFiles.insertLists(files, list, target, aktion);
                },
            .editSample =
                [this](const MlvPlaylistDetail& entry) {
                    below.suite.sampleTool.edit(entry, below.suite.playlistMessage->handle());
                },
            .cuesOf =
                [this](const QString& file, int withinMs, int loudness) {
                    return below.sound.cueFinder.find(file, withinMs, loudness);
                },
            .newList = tree.newList,
            .world = below.suite.world(below.machine),
            .rehearse = [this](const MlvPlaylistDetail& from,
                               const MlvPlaylistDetail& to) { below.sound.rehearse(from, to); }};
}

KopieParts PlaylistWing::exportParts()
{
    Machine& machine = below.machine;
    return {.exports = {.engine = *machine.engine,
                        .settings = machine.settings,
                        .files = machine.files,
                        .locator = machine.locator,
                        .loop = machine.loop},
            .settings = machine.settings,
            .texts = machine.texts,
            .warnings = below.desk.warnings,
            .form = exportForm,
            .logFailures =
                [&machine](const std::vector<ExportFault>& faults) {
                    M3uErrors errors(machine.files,
                                     {machine.paths.programFolder(), machine.paths.GetConfigPath()},
                                     machine.clock);
                    for (const ExportFault& fault : faults) {
                        errors.add(fault.code, u"SavePlaylist"_s, fault.what);
                    }
                    // Where it can be written is known when it was.
                    errors.flush();
                    return errors.file();
                },
            .progressSave =
                [this](const QString& name, qint64 position, qint64 count) {
                    below.desk.window.status().setPanel(StatusPanel::Progress,
                                                        progressText(position, count));
                    if (count > 0) {
                        below.suite.showStatusText(
                            u"%1 (%2 / %3)"_s.arg(name).arg(position).arg(count));
                    }
                }};
}

PlaylistCommands PlaylistWing::commands()
{
    return {.pnid = [this] { return int(numberOf(view.GetPNID())); },
            .plid = [this] { return int(numberOf(view.currentEntry())); },
            .start = [this] { view.start(); },
            .saveState = [this] { view.end(); },
            .undo = [this] { view.undo(); },
            .redo = [this] { view.redo(); },
            .importLists = [this] { listFiles.importLists(); },
            .saveActive = [this] { listFiles.saveList(view.listOfCommands()); },
            .press = [this](const QString& key) { view.toolPressed(key); },
            .whyNot = [this](QStringView key, bool needsRow) { return view.whyNot(key, needsRow); },
            .rate = [this](int rating) { view.digitPressed(rating); },
            .playActions = [this] { return playActionsOf(view); },
            .setPlayAction = [this](int action) { view.setAktion(action); }};
}

bool PlaylistWing::editLayout()
{
    return below.desk.editLayout(below.library.layouts, u"EditGrid-pl"_s, kPlaylistLayout,
                                 view.Data1(), view.look(),
                                 below.desk.window.playlist().controls(below.desk.warnings).grid);
}

void PlaylistWing::exportList(Pnid list)
{
    exports.SetPNID(list);
    exports.Show();
}

void PlaylistWing::hearSampleTool(const EventGuard& guard)
{
    below.suite.playlistMessage->setMessageNumber([this, &guard](qint32 id, qint32 wParam, qint32) {
        MlvdbWindow& window = below.desk.window;
        if (id == message::kSampleValue1 || id == message::kSampleValue2) {
            guard.run(u"SampleTool"_s, [this] {
                const SampleEdit edit = below.suite.sampleTool.read();
                view.takeSample(edit.PLID, edit.FID, edit.FrameStart, edit.FrameStop);
            });
        } else if (id == message::kBringWindowToTop && !view.isLocked() &&
                   wParam == window.windowHandle32()) {
            window.bringToFront();
        }
        return 0;
    });
}

} // namespace melovane
