#include "shell/wings/main_wing.h"

#include "bus/message_names.h"
#include "config/retold_texts.h"
#include "library/ui/mp3db_widget.h"
#include "platform/db/db_error.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/qt_font_chooser.h"
#include "platform/qt/retell.h"
#include "platform/system/path_text.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/ui/hint_line.h"
#include "shell/wings/care_wing.h"
#include "shell/wings/desk.h"
#include "shell/wings/edit_wing.h"
#include "shell/wings/library_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/place_parts.h"
#include "shell/wings/playlist_wing.h"
#include "shell/wings/sound_wing.h"
#include "shell/wings/suite_wing.h"
#include "shell/wings/trees_wing.h"
#include "trackedit/ui/edit_tag_widget.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "trees/ui/tree_widget.h"

#include <QGuiApplication>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

MainWing::MainWing(const Below& wings)
    : below(wings)
    , editBox(wings.machine.texts, wings.suite.bus, inputBox)
    , info(wings.machine.settings, wings.machine.texts, wings.machine.paths, infoForm)
    , window(windowParts(), wings.desk.window.controls())
    , quick({.machine = wings.machine,
             .desk = wings.desk,
             .suite = wings.suite,
             .library = wings.library,
             .playlist = wings.playlist,
             .trees = wings.trees,
             .window = window})
    , firstHour({.settings = wings.machine.settings,
                 .texts = wings.machine.texts,
                 .data = wings.machine.data,
                 .showAllTracks = [&wings = below] { wings.library.view.emptyButtonPressed(); },
                 .showHint = [&wings = below](
                                 const QString& hint) { wings.desk.window.hints().setHint(hint); }})
    , dayCounts(dayCountParts())
    , keys(wings.machine.settings, wings.machine.loop, keyActions())
    , place(wings.machine.files,
            wings.machine.loop,
            path::join(wings.machine.paths.GetConfigPath(),
                       wings.machine.paths.programName() + u".place"_s),
            placeParts(wings.desk, wings.library, wings.playlist, wings.trees, window.guard()))
{}

MainWing::~MainWing() = default;

MlvdbParts MainWing::windowParts()
{
    Machine& machine = below.machine;
    SuiteWing& suite = below.suite;
    return {.settings = machine.settings,
            .texts = machine.texts,
            .paths = machine.paths,
            .files = machine.files,
            .loop = machine.loop,
            .bus = suite.bus,
            .data = machine.data,
            .siblings = suite.siblings,
            .suite = suite.suite,
            .message = *suite.message,
            .monitor = below.sound.monitor,
            .warnings = below.desk.warnings,
            .library = below.library.commands(),
            .playlist = below.playlist.commands(),
            .dialogs = dialogs(),
            .log = machine.log(),
            .isReadOnly = suite.world(machine).isReadOnly,
            .tags = below.edit.commands(),
            .care = commands(),
            .languageChanged = [this] { translate(); }};
}

/// What the menu entries do that the window's own logic does not know.
CareCommands MainWing::commands()
{
    CareCommands all = below.care.commands();
    all.insert(u"mnuQuickOpen"_s, [this] { quick.open(); });
    return all;
}

DayCountParts MainWing::dayCountParts()
{
    return {.settings = below.machine.settings,
            .clock = below.machine.clock,
            .loop = below.machine.loop,
            .mayWrite = [this] { return below.library.view.whyNot(u"mnuDelDayCount").isEmpty(); },
            .changed =
                [this] {
                    below.library.view.refreshCells();
                    below.playlist.view.RefreshGrid();
                }};
}

WindowDialogs MainWing::dialogs()
{
    return {
        .showInfo = [this] { info.Show(); },
        .askNewGenre = [this] { editBox.Show(); },
        .editLibraryLayout = [this] { return below.library.editLayout(); },
        .chooseFont =
            [this](const GridFont& present) {
                const ConfigObjects& texts = below.machine.texts;
                return QtFontChooser({.title = texts.text(u"mnuFont"_s),
                                      .name = texts.text(u"font.name"_s),
                                      .size = texts.text(u"font.size"_s),
                                      .bold = texts.text(u"font.bold"_s),
                                      .sample = texts.text(u"font.sample"_s),
                                      .ok = texts.text(u"uebernehmen"_s),
                                      .cancel = texts.text(u"Abbruch"_s)})
                    .choose(present);
            },
        .editPlaylistLayout = [this] { return below.playlist.editLayout(); },
        .exportList = [this](int list) { below.playlist.exportList(Pnid(list)); },
        .showHelp = [this] { return below.desk.help.showFor(below.desk.window.focusWidget()); }};
}

KeyActions MainWing::keyActions()
{
    ctl_MP3DB& library = below.library.view;
    return {.toView =
                [this, &library](const QString& command) {
                    return library.SendKeyUp(command) || below.playlist.view.SendKeyUp(command);
                },
            .stopMonitor = [this] { below.sound.monitor.stop(); },
            .setFavorit = [this] { below.suite.sender.SendMessage(bus::kDbSetFavorit); },
            .playNext = [this, &library] { return window.player().playNext(library.GetFID()); },
            .playNow = [this, &library] { return window.player().playNow(library.GetFID()); },
            .showPlayer = [this] { window.player().showPlayer(); }};
}

void MainWing::connectViews()
{
    Desk& desk = below.desk;
    const ConfigObjects& texts = below.machine.texts;
    desk.window.attach(window, texts);
    desk.window.library().attach(below.library.view, texts);
    desk.window.playlist().attach(below.playlist.view, texts);
    desk.window.lists().attach(below.trees.favorit, texts);
    desk.window.tree().attach(below.trees.tree, texts);
    connectTagPanel();
    QObject::connect(&desk.window.library(), &Mp3dbWidget::currentTrackChanged, &below.trees.tree,
                     [this] {
                         below.trees.tree.trackEntered(below.library.view.GetFID());
                         below.edit.panel.trackEntered(below.library.view.GetFID());
                         below.suite.viewer.trackEntered(below.library.view.GetFID());
                     });
    QObject::connect(&below.playlist.view, &ctl_Playlist::historyChanged, &desk.window,
                     [this](const QString& undo, bool, const QString& redo, bool) {
                         window.menu().setHistoryTexts(undo, redo);
                     });
    // Programs come and go while other windows are used.
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &desk.window, [this] {
        below.library.view.judgeCommands();
        below.playlist.view.judgeCommands();
        below.trees.favorit.judgeCommands();
        dayCounts.look();
    });
    below.playlist.hearSampleTool(window.guard());
    below.sound.monitor.setOnHeard([this](const HeardTrack& track) {
        window.showHeardTitle(track.title);
        below.library.view.marks().setHeard(track.fid);
        below.playlist.view.setHeardTrack(track.fid);
    });
    desk.popup.setPlace([&desk] { return desk.window.lists().menuPlace(); });
    below.machine.settings.SetKeyboard(&desk.keyboard);
    desk.keyboard.setHandler(&desk.window, [this] { return keys.keyPressed(); });
    QObject::connect(&desk.window, &MlvdbWindow::firstShown, &below.library.view, [this] {
        window.activateFirst();
        below.trees.tree.start();
        below.library.view.SetComboFokus();
    });
    QObject::connect(&desk.window, &MlvdbWindow::closing, &below.library.view, [this] {
        window.unload();
        below.trees.favorit.end();
        below.trees.tree.end();
    });
}

/// All forms and dialogs, open or not, in the language that the texts speak now.
void MainWing::translate()
{
    const ConfigObjects& texts = below.machine.texts;
    m_spoken->become(texts);
    retellAll([this](const QString& text) { return m_spoken->retold(text); });
    m_spoken = std::make_unique<RetoldTexts>(texts);
    MlvdbWindow& form = below.desk.window;
    setLanguageOfDesktopTexts(below.desk.application, texts.text(u"Sprach.Code"));
    form.translate(texts);
    form.lists().translate(below.trees.favorit, texts);
    form.tree().translate(texts);
    form.tags().translate(texts);
    firstHour.showHint();
    announceLanguage();
}

void MainWing::connectTagPanel()
{
    EditTagWidget& form = below.desk.window.tags();
    form.attach(below.edit.panel, below.machine.texts);
    QObject::connect(&form, &EditTagWidget::shownChanged, &below.desk.window.library(),
                     &Mp3dbWidget::setTagPanelShown);
    QObject::connect(&below.library.view, &ctl_MP3DB::changedByOthers, &form,
                     [this] { below.edit.panel.renewTrack(); });
}

/// What the views show comes with the same message, so the hint waits for the turn behind it.
void MainWing::connectFirstHour()
{
    QObject::connect(&below.desk.window.hints(), &HintLine::putAway, &below.desk.window,
                     [this] { firstHour.putAway(); });
    m_libraryChanged = below.suite.bus.subscribe([this](const MLVMessage& message) {
        if (message.Command.compare(bus::kRefreshAll, Qt::CaseInsensitive) == 0) {
            QMetaObject::invokeMethod(
                &below.desk.window,
                [this] {
                    window.guard().run(u"FirstHour"_s, [this] { firstHour.libraryChanged(); });
                },
                Qt::QueuedConnection);
        }
    });
    firstHour.begin();
}

void MainWing::show()
{
    m_spoken = std::make_unique<RetoldTexts>(below.machine.texts);
    connectViews();
    try {
        window.load();
        dayCounts.start();
        connectFirstHour();
        if (below.trees.favorit.whyNot(u"all.activate").isEmpty()) {
            below.trees.favorit.toolPressed(u"all.activate"_s);
        }
    } catch (const DbError& error) {
        below.machine.log()(u"MLVDB.Load"_s, error.text());
        window.showStatusText(below.machine.texts.text(u"fehler.unerwartet", error.text()));
    }
    below.desk.window.show();
}

} // namespace melovane
