#pragma once

#include "platform/controls/grid_control.h"
#include "shell/window_place.h"
#include "store/error_sink.h"

#include <QHash>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

/// `Sender` of all messages of the main window, whoever of its parts sends them: the echo guard
/// compares it. Keep.
inline constexpr QStringView kMainWindowName = u"MLVDB";

class ConfigObjects;
class Files;
class GlobalSettings;
class KSMessage;
class MenuControl;
class MessageLoop;
class MLVMessageBus;
class Mod_API;
class MonitorControl;
class SiblingControl;
class SkinControl;
class StatusLine;
class SuiteMessages;
class Warnings;
class WindowData;
class WindowFrame;

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
    /// A button of its tool bar, by key.
    std::function<void(const QString& key)> press = [](const QString&) {};
    /// \see ctl_MP3DB::whyNot, also for the menu entries of the window
    std::function<QString(QStringView key, bool needsRow)> whyNot = [](QStringView, bool) {
        return QString();
    };
    /// Gives the current track a rating, 0 to 5.
    std::function<void(int rating)> rate = [](int) {};
};

/// A play action that the entries of the list on the screen can have.
struct PlayAction
{
    int number = 0;
    QString textKey;
    bool isPresent = false; ///< the current entry has it
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
    /// The same as of the library.
    std::function<void(const QString& key)> press = [](const QString&) {};
    std::function<QString(QStringView key, bool needsRow)> whyNot = [](QStringView, bool) {
        return QString();
    };
    std::function<void(int rating)> rate = [](int) {};
    std::function<std::vector<PlayAction>()> playActions = [] { return std::vector<PlayAction>(); };
    std::function<void(int action)> setPlayAction = [](int) {};
};

/// What the window asks of the tag panel.
struct TagPanelCommands
{
    /// Shows the panel with a track, or takes it away when it shows that track already.
    /// \param edits      the user wants to edit: it is never taken away
    /// \param inLibrary  the view that the keyboard goes back to
    std::function<void(const QString& fid, bool edits, bool inLibrary)> show =
        [](const QString&, bool, bool) {};
    /// Writes what was typed, and keeps the height for the next start.
    std::function<void()> saveState = [] {};
};

/// What the entries of the menus that care for the library do, by the entry's name. An entry that
/// is not in it is shown grey, as one of a later version.
using CareCommands = QHash<QString, std::function<void()>>;

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
    /// The help for the control that has the keyboard. False when it is not installed.
    std::function<bool()> showHelp = [] { return false; };
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
    /// Whether nothing can be written into the library.
    std::function<bool()> isReadOnly = [] { return false; };
    TagPanelCommands tags = {};
    CareCommands care = {};
    /// The texts speak another language now: what stands still on the screen follows.
    std::function<void()> languageChanged = [] {};
};

} // namespace melovane
