#pragma once

#include "bus/bus_table.h"
#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "platform/controls/grid_control.h"
#include "shell/context_menu.h"
#include "shell/docking.h"
#include "shell/language_files.h"
#include "shell/skin_files.h"
#include "shell/status_text.h"
#include "shell/suite_handler.h"
#include "shell/window_menus.h"
#include "shell/window_place.h"

#include <QString>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace melovane {

class ConfigObjects;
class Files;
class KSMessage;
class MessageLoop;
class Mod_API;
class SiblingControl;
class SkinControl;
class StatusLine;

/// The parts of the main window that its logic speaks to; they outlive it.
struct MlvdbControls
{
    WindowFrame& window;
    StatusLine& status;
    SkinControl& skin;
    MenuControl& menus;
    SplitControls splits;
};

/// What the window asks of the library view. The view is made after the window.
struct LibraryCommands
{
    /// Shows the first view. \throws DbError
    std::function<void()> start;
    std::function<void()> reload;
    std::function<void()> showDeleted;
    std::function<void()> showMissing;
    /// Keeps search, sorting, layout and history for the next start.
    std::function<void()> saveState;
    /// Empties the list of the search line.
    std::function<void()> forgetSearches;
    /// Searches all chosen columns for a text.
    std::function<void(const QString& text)> findAll;
};

/// What the window asks of the playlist view. Numbers are 0 for none.
struct PlaylistCommands
{
    std::function<int()> pnid; ///< the playlist that is shown
    std::function<int()> plid; ///< its current entry
    std::function<void()> start = [] {};
    /// Keeps the layout for the next start.
    std::function<void()> saveState = [] {};
    std::function<void()> undo = [] {};
    std::function<void()> redo = [] {};
    /// Asks for list files and makes lists of them.
    std::function<void()> importLists = [] {};
    /// Asks for a file and writes the active list to it.
    std::function<void()> saveActive = [] {};
};

/// Dialogs that the window opens; forms of their own.
struct WindowDialogs
{
    std::function<void()> showInfo;
    /// `frmEditBox` for a new genre.
    std::function<void()> askNewGenre;
    /// `frmEditGrid` for the library. True when another layout was written.
    std::function<bool()> editLibraryLayout;
    /// Nothing when the user did not choose.
    std::function<std::optional<GridFont>(const GridFont& present)> chooseFont;
    /// The same for the playlist.
    std::function<bool()> editPlaylistLayout = [] { return false; };
    /// `frmKopieFile` for the list of that number.
    std::function<void(int list)> exportList = [](int) {};
};

/// The parts of the program that the window's logic uses; they outlive it.
struct MlvdbParts
{
    GlobalSettings& settings;
    ConfigObjects& texts;
    Mod_API& paths;
    Files& files;
    MessageLoop& loop;
    MLVMessageBus& bus;
    WindowData& data;
    SiblingControl& siblings;
    SuiteMessages& suite;
    KSMessage& message; ///< `KSMessage1` of this window
    MonitorControl& monitor;
    Warnings& warnings;
    LibraryCommands library;
    PlaylistCommands playlist;
    WindowDialogs dialogs;
    ErrorSink log = {}; ///< hears of events that failed
};

/// A theme that can be chosen.
struct SkinEntry
{
    QString fileName; ///< in the folder "skin" of the configuration path
    QString title;
    bool active = false;
};

/// The main window: turns menu entries, bus messages and messages of other programs into the work
/// of the views, and keeps what belongs to none of them. No track, no SQL.
class MLVDB
{
public:
    MLVDB(MlvdbParts parts, MlvdbControls controls);
    ~MLVDB();

    MLVDB(const MLVDB&) = delete;
    MLVDB& operator=(const MLVDB&) = delete;

    /// Before the window is shown. The views hear of it on the bus. \throws DbError, and the window
    /// stays incomplete
    void load();

    /// Once, when the window is active for the first time: side files, jobs behind the console, the
    /// place of the window; over an empty library the importer opens instead.
    void activateFirst();

    /// Before the window closes: siblings see the program as gone; place, views and splits are
    /// kept.
    void unload();

    // -- What the user does --

    /// The menus from left to right, top to bottom.
    [[nodiscard]] static std::span<const MenuRow> menu();

    /// Runs the action of an entry; a failure leaves the window running.
    void menuClicked(const MenuRow& row);
    /// An entry of `mnuPlugIn`, by the name of its record.
    void plugInClicked(const QString& name);

    /// `popupDBGRID` of the grids.
    [[nodiscard]] ContextMenu& contextMenu() { return m_contextMenu; }

    /// The theme files that lie ready, by title.
    [[nodiscard]] std::vector<SkinEntry> skins() const;
    /// Takes a theme and keeps it for the next start; an empty name follows the desktop.
    void chooseSkin(const QString& fileName);

    [[nodiscard]] std::vector<LanguageEntry> languages() const { return m_languages.entries(); }

    /// Takes a language for the next start, and says so.
    void chooseLanguage(const QString& fileName);

    /// Looks for new music: the button of an empty library.
    void importMusic() { mnuImpMP3New(); }

    /// Has the tempo of a track found; see SiblingControl::StartBeatGauge.
    void startBeatGauge(const QString& cmd, const QString& fid, const QString& plid);

    [[nodiscard]] const EventGuard& guard() const { return m_guard; }

    void showStatusText(const QString& text) { m_statusText.show(text); }

    /// Tells that a program of the suite could not be started.
    void tellMissing(const QString& program) { tellMissing(false, program); }

    /// Words for the entries that take a change of a list back and do it again.
    void setHistoryTexts(const QString& undo, const QString& redo);

private:
    [[nodiscard]] static std::span<const BusRow<MLVDB>> busTable();

    void SendMessage(QStringView name, const Value& value1 = {});

    // Load, in this order.
    void setCaptions();
    void loadSkin();
    void buildPlugInMenu();
    void startViews();

    // Menu.
    void mnuConfig();
    void mnuImpMP3New();
    void mnuImpMP3Edit();
    void mnuImpMP3Again();
    void mnuImpPlaylistBas();
    void mnuExpPlaylistBas();
    void mnuAktivePlaylist();
    void mnuAktivePlaystFiles();
    void mnuExitJobs();
    void mnuExit();
    void mnuDelDayCount();
    void mnuViewDel();
    void mnuNoExistAnzeigen();
    void mnuToDatei();
    void mnuRefreshTree();
    void mnuDelSuchlist();
    void mnuUndo();
    void mnuRedo();
    void mnuPlaylist();
    void mnuDatenbank();
    void mnuFont();
    void mnuRepairGridLayout();
    void mnuAutosizeGrid();
    void mnuInternet();
    void mnuUeber();

    // Bus.
    void editBoxNewGenre(const MLVMessage& message);
    void exportList(const MLVMessage& message);
    void runProc(const MLVMessage& message);
    void beatGaugeAuto(const MLVMessage& message);
    void beatGaugeManual(const MLVMessage& message);
    void monitorSeek(const MLVMessage& message);
    void monitorSeekSet(const MLVMessage& message);
    void monitorStop(const MLVMessage& message);
    void monitorStart(const MLVMessage& message);
    void monitorCenter(const MLVMessage& message);
    void playlistChange(const MLVMessage& message);
    void playNext(const MLVMessage& message);
    void playNow(const MLVMessage& message);
    void statusText(const MLVMessage& message);
    void tagEditor(const MLVMessage& message);
    void contextMenuLibrary(const MLVMessage& message);
    void contextMenuPlaylist(const MLVMessage& message);
    void treeClick(const MLVMessage& message);
    void volumeMonitor(const MLVMessage& message);
    void forwardToPlayer(const MLVMessage& message);
    void notYet(const MLVMessage& message);
    void showGridLayout(const MLVMessage& message);

    void refreshPlayerData();
    void tellMissing(bool started, const QString& program);

    MlvdbParts m_parts;
    MlvdbControls m_controls;
    BusSender m_bus;
    SkinFiles m_skinFiles;
    LanguageFiles m_languages;
    StatusText m_statusText;
    EventGuard m_guard;
    WindowPlace m_place;
    Docking m_docking;
    SuiteHandler m_suiteHandler;
    ContextMenu m_contextMenu;
    std::unique_ptr<Timer> m_timerRefreshPlayerData; ///< `TimerRefreshPlayerData`
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
