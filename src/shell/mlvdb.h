#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "shell/context_menu.h"
#include "shell/docking.h"
#include "shell/language_files.h"
#include "shell/menu_commands.h"
#include "shell/mlvdb_parts.h"
#include "shell/player_commands.h"
#include "shell/sibling_commands.h"
#include "shell/skin_files.h"
#include "shell/status_text.h"
#include "shell/suite_handler.h"
#include "shell/window_messages.h"
#include "shell/window_place.h"

#include <QString>

#include <vector>

namespace melovane {

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

    [[nodiscard]] MenuCommands& menu() { return m_menu; }

    /// `popupDBGRID` of the grids.
    [[nodiscard]] ContextMenu& contextMenu() { return m_contextMenu; }

    /// The theme files that lie ready, by title.
    [[nodiscard]] std::vector<SkinEntry> skins() const;
    /// Takes a theme and keeps it for the next start; an empty name follows the desktop.
    void chooseSkin(const QString& fileName);

    [[nodiscard]] std::vector<LanguageEntry> languages() const { return m_languages.entries(); }

    /// Takes a language at once, in every view.
    void chooseLanguage(const QString& fileName);

    /// Other programs of the suite, for the user.
    [[nodiscard]] SiblingCommands& siblings() { return m_siblings; }

    [[nodiscard]] PlayerCommands& player() { return m_player; }

    [[nodiscard]] const EventGuard& guard() const { return m_guard; }

    /// What other programs ask of the window.
    [[nodiscard]] SuiteHandler& suiteHandler() { return m_suiteHandler; }

    void showStatusText(const QString& text) { m_statusText.show(text); }

    /// The title of what the monitor player lets hear stands in the status line as long as it
    /// plays.
    void showHeardTitle(const QString& title);

private:
    /// What the window shows of the settings.
    struct Followed
    {
        QString skin;        ///< as the settings have it
        QString language;    ///< its file
        QStringList colours; ///< and font
        QStringList keys;    ///< of all bindings
    };

    // Load, in this order.
    void loadSkin();
    void startViews();
    void takeSkin();
    [[nodiscard]] Followed present() const;
    /// Theme, language, font, colours and keys as the settings have them now.
    void followSettings();
    /// The texts, and with them the whole window, in the language of the settings.
    void speak();
    /// The title says when nothing can be written into the library, and so does the status line.
    void tellAccess();
    [[nodiscard]] QString skinTitle(const QString& fileName) const;

    MlvdbParts m_parts;
    MlvdbControls m_controls;
    BusSender m_bus;
    SkinFiles m_skinFiles;
    LanguageFiles m_languages;
    Followed m_followed; ///< empty before the load
    StatusText m_statusText;
    EventGuard m_guard;
    SiblingCommands m_siblings;
    PlayerCommands m_player;
    WindowPlace m_place;
    Docking m_docking;
    SuiteHandler m_suiteHandler;
    EditCommands m_edit;
    ContextMenu m_contextMenu;
    MenuCommands m_menu;
    WindowMessages m_messages; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
