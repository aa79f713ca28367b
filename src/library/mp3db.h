#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "library/library_look.h"
#include "library/library_note.h"
#include "library/library_watch.h"
#include "library/mp3db_messages.h"
#include "library/shown_tracks.h"
#include "library/stored_history.h"
#include "library/track_edits.h"
#include "library/track_marks.h"
#include "store/pending_jobs.h"
#include "views/command_gate.h"
#include "views/grid_rows.h"
#include "views/layout_files.h"

#include <QObject>

#include <functional>
#include <span>

namespace melovane {

class Clipboard;
class Clock;
class ConfigObjects;
class Files;
class GlobalSettings;
class ListHistory;
class MessageLoop;
class Mod_API;
class PointerControl;
class SearchBox;

/// The controls that the library view speaks to; they outlive it.
struct Mp3dbControls
{
    GridControl& grid;
    SearchBox& search; ///< `Text1`
    PointerControl& pointer;
    Clipboard& clipboard;
};

/// What the library view is made over; all of it outlives the view.
struct Mp3dbParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    Mod_API& paths;
    Files& files;
    const Clock& clock;
    MessageLoop& loop;
    MLVMessageBus& bus;
    ListHistory& history; ///< takes what the user changes in tracks
    ErrorSink log = {};   ///< hears of messages that the view failed on
};

/// What the library view has other parts of the program do.
struct Mp3dbActions
{
    /// The button of the empty library.
    std::function<void()> startImport;
    /// Starts the BPM finder; cmd is "auto" or "manuell".
    std::function<void(const QString& cmd, const QString& fid)> startBeatGauge;
    /// Where a stored file lies on this machine; empty when it is not there.
    std::function<QString(const QString& file)> locate;
    /// Opens a track in the sample tool.
    std::function<void(const QString& fid)> editSample = {};
    /// What commands find around the view.
    CommandWorld world = {};
};

/// The library view: which tracks the grid shows, and what the user does with them.
///
/// Which tracks these are and in which order is the business of ShownTracks, changes of tracks that
/// of TrackEdits.
class ctl_MP3DB : public QObject
{
    Q_OBJECT

public:
    ctl_MP3DB(const Mp3dbParts& parts, Mp3dbControls controls, Mp3dbActions actions);

    /// The rows of the grid; hand it to the grid before start().
    [[nodiscard]] DataControl& Data1() { return m_rows.data(); }

    [[nodiscard]] const GridLook& look() const { return m_look; }

    /// What happens to cells that the user changes.
    [[nodiscard]] GridEditing& editing() { return m_edits; }

    /// Shows the first view: the last search of the former run, else an empty grid. From then on
    /// changes of other programs are noticed. \throws DbError when the database cannot be read
    void start();

    /// Stores the search text, the sorting and the layout of the grid.
    void end();

    // -- The database --

    /// Runs the statement anew and stays on the same track.
    void Refresh();

    /// Another program wants the database file alone, and gives it back. \throws DbError
    void disconnectDatabase();
    void reconnectDatabase();
    /// Another database is used from now on, or another content of the same. \throws DbError
    void changeDatabase();

    /// Looks whether another program has changed the database.
    void lookForChanges() { m_watch.look(); }

    // -- Which tracks --

    /// Shows the rows of a node: the one way in for trees and menus. A group shows none. See
    /// TreeRequest for the arguments.
    void FindTreeValue(const TreeRequest& request, bool addToHistory);

    /// Shows the tracks marked as deleted.
    void DB_ALL_DEL();
    /// Shows the tracks whose files were not found.
    void DB_ALL_NOEXIST();

    /// What the rows are the answer to, and how they are sorted.
    [[nodiscard]] const ShownTracks& shown() const { return m_shown; }

    /// Rows that the grid shows.
    [[nodiscard]] qint64 matchCount() const { return m_rows.count(); }

    /// Tracks in the library, whatever is shown.
    [[nodiscard]] qint64 librarySize() const { return m_watch.librarySize(); }

    [[nodiscard]] QString SortColName() const { return m_shown.sortColumn(); }

    [[nodiscard]] QString SortRichtung() const { return m_shown.sortOrder(); }

    /// Reads and writes `suche.his`. Quiet.
    void LoadHist();
    void SaveHist();
    /// Tells whether there is a way back and forward.
    void tellHistory();

    // -- Rows --

    /// `FID` of the current row; empty without one.
    [[nodiscard]] QString GetFID() const;

    /// Selects all rows and gives their ids joined by commas.
    [[nodiscard]] QString SetAllBookmarks();

    /// Puts the selected rows into the table of the tag tool.
    void FillTempMp3EditTable();

    /// Opens the current track in the sample tool.
    void MelovaneKIVShow();

    /// Starts the BPM finder for the current track; cmd is "auto" or "manuell".
    void findTempo(const QString& cmd);

    void toggleFavorit();

    /// Paints the rows with the values of now.
    void refreshCells() { m_rows.data().refreshCells(); }

    /// The tracks that other parts of the program stand on.
    [[nodiscard]] TrackMarks& marks() { return m_marks; }

    /// Takes colours and fonts from the settings.
    void dress();

    void fitColumns() { m_shown.fitColumns(); }

    void saveLayout();
    void loadLayout(const QString& name);
    void focusRows();

    // -- The search line --

    /// The list of the search line begins anew with its examples.
    void DelSuchlist();

    /// The keyboard goes to the search line.
    void SetComboFokus();

    /// Searches when the setting `LiveSuche` is on.
    void searchTextChanged(const QString& text);

    /// Enter: searches, and keeps a text that found something in list and history.
    void searchEntered(const QString& text);

    /// Shows what a text asks for, see readSearchText. An empty text leaves the grid as it is.
    void search(const QString& text);

    // -- What the user does --

    /// A command of the main window's keys: "play.start", "play.center", "play.stop", "copy",
    /// "selall", "insert" or "append". False when the grid has not the keyboard, or for others.
    bool SendKeyUp(const QString& command);

    /// Sorts by a column; a second click on the same one turns the order round. The current track
    /// stays current and on the screen.
    void headerClicked(int column);

    /// A right click on a heading: asks for the dialog of the columns.
    void headMenuWanted();

    /// Double click or Enter: edits the cell, plays the track or appends it to the playlist, as
    /// `GridSwapEditPlay` says; with Ctrl it always appends.
    void rowActivated(qint64 row);

    /// Ctrl and a digit: the mark of the current track.
    void digitPressed(int digit);

    /// Marks the selected tracks as deleted, or takes the mark away.
    void deletePressed();

    /// The button in the empty grid.
    void emptyButtonPressed();

    /// Asks for the context menu of the current track; nothing without one.
    void contextMenuWanted();

    /// A button of the tool bar, by key: "all.db.zur", "all.delete", "play.start" ...
    void toolPressed(const QString& key);

    /// Why the button of that key, or a command of the row menu, cannot work now, in the user's
    /// words; empty when it can. A missing current row is no reason for a button.
    [[nodiscard]] QString whyNot(QStringView key, bool needsRow = false) const;

    /// The key of a command, see commandKey.
    [[nodiscard]] QString keyOf(QStringView key) const { return commandKey(m_settings, key); }

    /// Something that decides about commands has changed, here or around the program.
    void judgeCommands() { emit commandsChanged(); }

    /// The selected rows as a drag; files only as far as they are there.
    [[nodiscard]] DragContent dragContent();

signals:
    /// A search shows this number of tracks.
    /// \param count -1 as long as nobody can tell
    /// \param name  how the view names itself; empty for the search line
    void countChanged(qint64 count, const QString& name = {});
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();
    /// Texts have changed with the language or the keys.
    void toolTipsWanted();
    /// Whether there is a way back and forward.
    void historyChanged(bool back, bool forward);
    /// Buttons may be able to work now, or no more.
    void commandsChanged();
    /// Another program may have changed tracks.
    void changedByOthers();
    /// Name of the picture of the volume button.
    void volumeIconChanged(const QString& picture);

private:
    struct ToolRow
    {
        QStringView key;
        void (*work)(ctl_MP3DB& view, const QString& key);
    };

    [[nodiscard]] static std::span<const ToolRow> toolTable();
    void replay(const std::optional<HistoryEntry>& entry);
    void bookPressed();
    void openDir();
    void copyRows();
    void selectAllRows();
    void monitorPressed(const QString& key);
    void toPlayer(QStringView message);

    void configure();
    void startWithLastSearch();
    void loadGenres();
    void showWholeView(LibraryView view);
    void searchInside();
    bool tellWhenLent();
    /// A search is over.
    void tellResult(bool shown);
    void tellCount();
    [[nodiscard]] LibraryState state() const;
    void updateEmptyNote();

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    Mp3dbControls m_controls;
    Mp3dbActions m_actions;
    CommandGate m_gate;
    BusSender m_bus;
    EventGuard m_guard;
    StoredHistory m_history;
    LibraryLook m_look;
    GridRows m_rows;
    TrackMarks m_marks;
    ShownTracks m_shown;
    LibraryWatch m_watch;
    bool m_searchWaits = false; ///< for the library, which another program has
    PendingJobs m_jobs;
    TrackEdits m_edits;
    LayoutFiles m_layouts;
    QString m_monitorCommand; ///< what a double click asks of the monitor player
    Mp3dbMessages m_messages; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
