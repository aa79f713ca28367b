#pragma once

#include "library/mp3db.h"
#include "library/test_library.h"
#include "library/ui/mp3db_widget.h"
#include "platform/linux/linux_messages.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/search_line.h"
#include "platform/qt/skin.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "playlistview/playlist.h"
#include "playlistview/playlist_look.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/library_data.h"
#include "shell/ui/mlvdb_window.h"
#include "shell/window_fixture.h"
#include "store/file_locator.h"

#include <QApplication>

namespace melovane::test {

/// The main window with its views over a library, as the composition root puts it together. Other
/// programs reach it; only those that it would start, sound and warnings are written down instead.
class Console
{
public:
    explicit Console(TestLibrary& tracks)
        : library(tracks)
    {
        window.attach(mlvdb, library.texts);
        window.library().attach(view, library.texts);
        window.playlist().attach(playlist, library.texts);
        QObject::connect(&playlist, &ctl_Playlist::historyChanged, &window,
                         [this](const QString& undo, bool, const QString& redo, bool) {
                             mlvdb.menu().setHistoryTexts(undo, redo);
                         });
        QObject::connect(&window, &MlvdbWindow::firstShown, &view, [this] {
            mlvdb.activateFirst();
            view.SetComboFokus();
        });
        QObject::connect(&window, &MlvdbWindow::closing, &view, [this] { mlvdb.unload(); });
        mlvdb.load();
    }

    ~Console()
    {
        skin.clear();
        qApp->setStyleSheet({});
    }

    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// A control by its name; the test fails loudly when there is none.
    template <typename Control> Control& control(const QString& name)
    {
        auto* found = window.findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }

    /// The grid of the playlist.
    DataGrid& listGrid()
    {
        auto* found = window.playlist().findChild<DataGrid*>(QStringLiteral("PlaylistGrid1"));
        Q_ASSERT(found);
        return *found;
    }

    /// What commands find around the views.
    CommandWorld world()
    {
        return {
            .isInstalled = [this](const QString& program) { return !missing.contains(program); },
            .isPlayerThere = [this] { return playerThere; },
            .isReadOnly = [this] { return readOnly; }};
    }

    std::vector<PlayAction> playActions()
    {
        std::vector<PlayAction> result;
        for (const int action : playlist.aktionChoices()) {
            result.push_back(
                {action, aktionLook(action)->key.toString(), action == playlist.currentAktion()});
        }
        return result;
    }

    DataGrid& grid() { return control<DataGrid>(QStringLiteral("TDBGrid1")); }

    SearchLine& searchLine() { return control<SearchLine>(QStringLiteral("Text1")); }

    TestLibrary& library;
    QStringList log;     ///< monitor and warnings
    QStringList missing; ///< programs that are not installed
    bool playerThere = true;
    bool readOnly = false;
    RecordingProcesses processes;
    QtMessageLoop loop;
    Skin skin{*qApp};
    IconSet icons{skin};
    LoggedMonitor monitor{log};
    LoggedWarnings warnings{log};
    LinuxMessages messages{MessagePlace(library.folders.environment().runtimeFolder())};
    std::unique_ptr<KSMessage> message = messages.makeControl();
    SuiteMessages suite{*library.settings, *library.engine, messages, *message};
    SiblingControl siblings{library.folders.paths(), library.folders.files(), processes};
    LibraryData data{*library.engine,         *library.settings, library.folders.paths(),
                     library.folders.files(), library.clock,     {}};
    bool layoutChosen = false;
    std::optional<GridFont> chosenFont;
    MlvdbWindow window{skin, icons};
    MLVDB mlvdb{
        {*library.settings,
         library.texts,
         library.folders.paths(),
         library.folders.files(),
         loop,
         library.bus,
         data,
         siblings,
         suite,
         *message,
         monitor,
         warnings,
         {[this] { view.start(); }, [this] { view.Refresh(); }, [this] { view.DB_ALL_DEL(); },
          [this] { view.DB_ALL_NOEXIST(); },
          [this] {
              view.end();
              view.SaveHist();
          },
          [this] { view.DelSuchlist(); },
          [this](const QString& text) {
              view.FindTreeValue({QStringLiteral("allfind"), {}, text}, true);
          },
          [this](const QString& key) { view.toolPressed(key); },
          [this](QStringView key, bool needsRow) { return view.whyNot(key, needsRow); },
          [this](int rating) { view.digitPressed(rating); }},
         {[this] { return int(numberOf(playlist.GetPNID())); },
          [this] { return int(numberOf(playlist.currentEntry())); }, [this] { playlist.start(); },
          [this] { playlist.end(); }, [this] { playlist.undo(); }, [this] { playlist.redo(); },
          [] {}, [] {}, [this](const QString& key) { playlist.toolPressed(key); },
          [this](QStringView key, bool needsRow) { return playlist.whyNot(key, needsRow); },
          [this](int rating) { playlist.digitPressed(rating); }, [this] { return playActions(); },
          [this](int action) { playlist.setAktion(action); }},
         {[] {}, [] {},
          [this] {
              log.append(QStringLiteral("layout dialog"));
              return layoutChosen;
          },
          [this](const GridFont&) { return chosenFont; }}},
        window.controls()};
    ListHistory history{*library.engine,
                        library.folders.files(),
                        library.clock,
                        *library.settings,
                        {}};
    ctl_MP3DB view{{*library.engine, *library.settings, library.texts, library.folders.paths(),
                    library.folders.files(), library.clock, loop, library.bus, history},
                   window.library().controls(),
                   {[this] { mlvdb.siblings().importMusic(); },
                    [this](const QString& cmd, const QString& fid) {
                        mlvdb.siblings().findTempo(cmd, fid, {});
                    },
                    [](const QString& file) { return file; },
                    {},
                    world()}};
    FileLocator locator{library.folders.files(), library.folders.programFolder()};
    ModUndoRedo snapshots{library.folders.files(), library.folders.programFolder()};
    MLVFunction functions{
        {*library.engine, *library.settings, library.folders.files(), locator, history, {}},
        library.clock};
    cls_PLInsertMoveDel edits{*library.engine, snapshots, history};
    LayoutFiles layouts{library.folders.paths(), library.folders.files()};
    QStringList droppedTracks; ///< what dropped files hold
    ctl_Playlist playlist{{*library.engine,
                           *library.settings,
                           library.texts,
                           library.clock,
                           loop,
                           library.bus,
                           {functions, edits, history, snapshots}},
                          window.playlist().controls(warnings),
                          playlistActions()};

private:
    PlaylistActions playlistActions()
    {
        return {.program = QStringLiteral("MelovaneDB"),
                .startBeatGauge =
                    [this](const QString& cmd, const QString& fid, const QString& plid) {
                        mlvdb.siblings().findTempo(cmd, fid, plid);
                    },
                .monitorFrame = [] { return 0; },
                .locate = [](const QString& file) { return file; },
                .isFolder = {},
                .tracksOf = [this](const QStringList&) { return droppedTracks; },
                .saveLayout = [this](const QString& name,
                                     const GridControl& layout) { layouts.save(name, layout); },
                .loadLayout = [this](const QString& name,
                                     GridControl& layout) { layouts.load(name, layout); },
                .world = world()};
    }
};

} // namespace melovane::test
