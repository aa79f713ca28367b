#pragma once

#include "bus/bus_table.h"
#include "library/library_look.h"
#include "library/library_query.h"
#include "library/search_history.h"
#include "library/track_edits.h"
#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "platform/db/recordset.h"
#include "store/pending_jobs.h"
#include "views/grid_reposition.h"
#include "views/layout_files.h"

#include <QObject>

#include <functional>
#include <memory>
#include <span>

namespace melovane {

class Clipboard;
class Clock;
class ConfigObjects;
class Files;
class GlobalSettings;
class MessageLoop;
class Mod_API;
class PointerControl;
class SearchBox;
class Timer;

/// A number of tracks as people read it: "1 284", with a narrow space that does not break.
[[nodiscard]] QString groupedNumber(qint64 number);

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
    ErrorSink log = {}; ///< hears of messages that the view failed on
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
};

/// The library view: which tracks the grid shows, in which order, where it stands, and what the
/// user does with them.
///
/// Every way to the rows leads over a statement of LibraryQuery into `Data1`. A statement that
/// fails leaves the rows and the statement as they were. Reads the settings when it acts, so a
/// change by a sibling counts from the next action on.
class ctl_MP3DB : public QObject
{
    Q_OBJECT

public:
    ctl_MP3DB(const Mp3dbParts& parts, Mp3dbControls controls, Mp3dbActions actions);
    ~ctl_MP3DB() override;

    /// The rows of the grid; hand it to the grid before start().
    [[nodiscard]] DataControl& Data1() { return m_data1; }

    [[nodiscard]] const GridLook& look() const { return m_look; }

    /// What happens to cells that the user changes.
    [[nodiscard]] GridEditing& editing() { return m_edits; }

    /// Shows the first view: the last search of the former run, else an empty grid. From then on
    /// changes of other programs are noticed. \throws DbError when the database cannot be read
    void start();

    /// Stores the search text, the sorting and the layout of the grid.
    void end();

    /// Runs the statement anew and stays on the same track.
    void Refresh();

    /// Shows the rows of a node: the one way in for trees and menus. A group shows none. See
    /// TreeRequest for the arguments.
    void FindTreeValue(const TreeRequest& request, bool addToHistory);

    /// Shows the tracks marked as deleted.
    void DB_ALL_DEL();
    /// Shows the tracks whose files were not found.
    void DB_ALL_NOEXIST();

    /// `FID` of the current row; empty without one.
    [[nodiscard]] QString GetFID() const;

    /// Selects all rows and gives their ids joined by commas.
    [[nodiscard]] QString SetAllBookmarks();

    /// Puts the selected rows into the table of the tag tool.
    void FillTempMp3EditTable();

    /// Reads and writes `suche.his`. Quiet.
    void LoadHist();
    void SaveHist();

    /// The list of the search line begins anew with its examples.
    void DelSuchlist();

    void SetComboFokus();

    /// A command of the main window's keys: "play.start", "play.center", "play.stop", "copy",
    /// "selall", "insert" or "append". False when the grid has not the keyboard, or for others.
    bool SendKeyUp(const QString& command);

    /// Rows that the grid shows.
    [[nodiscard]] qint64 matchCount() const { return m_data1.rowCount(); }

    /// Tracks in the library, whatever is shown.
    [[nodiscard]] qint64 librarySize() const { return m_librarySize; }

    [[nodiscard]] QString SortColName() const { return m_query.SortColName(); }

    [[nodiscard]] QString SortRichtung() const { return m_query.SortRichtung(); }

    // -- What the user does --

    /// Searches when the setting `LiveSuche` is on.
    void searchTextChanged(const QString& text);

    /// Enter: searches, and keeps a text that found something in list and history.
    void searchEntered(const QString& text);

    /// Shows what a text asks for, see readSearchText. An empty text leaves the grid as it is.
    void search(const QString& text);

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

    /// The selected rows as a drag; files only as far as they are there.
    [[nodiscard]] DragContent dragContent();

    /// Looks whether another program has changed the database; called every kLookInterval.
    void lookForChanges();

signals:
    /// A search shows this number of tracks.
    void countChanged(qint64 count);
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();
    /// Texts have changed with the language or the keys.
    void toolTipsWanted();
    /// Whether there is a way back and forward.
    void historyChanged(bool back, bool forward);

private:
    /// Why the grid is empty.
    enum class Emptiness
    {
        None,
        NoLibrary,
        NoSearch,
        NoHits,
        NothingHere
    };

    struct ToolRow
    {
        QStringView key;
        void (ctl_MP3DB::*handler)(const QString& key);
    };

    [[nodiscard]] static std::span<const BusRow<ctl_MP3DB>> busTable();
    void createToolBars(const MLVMessage& message);
    void renewToolTips(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void changeConfig(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void refreshByFid(const MLVMessage& message);
    void showTrackOf(const MLVMessage& message);
    void clickRow(const MLVMessage& message);
    void showDir(const MLVMessage& message);
    void clickImage(const MLVMessage& message);
    void findTrackOfBpm(const MLVMessage& message);
    void findTempo(const MLVMessage& message);
    void findTempoByHand(const MLVMessage& message);
    void setFavorit(const MLVMessage& message);
    void fillTagTable(const MLVMessage& message);
    void showSampleTool(const MLVMessage& message);
    void passAllRows(const MLVMessage& message);
    void saveLayout(const MLVMessage& message);
    void loadLayout(const MLVMessage& message);
    void autosize(const MLVMessage& message);

    [[nodiscard]] static std::span<const ToolRow> toolTable();
    void stepBack(const QString& key);
    void stepForward(const QString& key);
    void searchAgain(const QString& key);
    void bookPressed(const QString& key);
    void MelovaneKIVShow(const QString& key);
    void toPlayer(const QString& key);
    void openDir(const QString& key);
    void deleteRows(const QString& key);
    void copyRows(const QString& key);
    void selectAllRows(const QString& key);
    void passSelection(const QString& key);
    void monitorPressed(const QString& key);

    void configure();
    void readSorting();
    void startWithLastSearch();
    void loadGenres();
    [[nodiscard]] bool applyStatement(const QString& statement);
    bool show(const QString& statement);
    void requery();
    void applyKeepingTrack(const QString& statement);
    [[nodiscard]] std::vector<qint64> selectedRows() const;
    /// Where rows of a former set stand in the present one.
    [[nodiscard]] std::vector<RowRange> rowsOf(Recordset& former,
                                               const std::vector<qint64>& rows) const;
    void fitColumns();
    void countLibrary();
    void tellCount();
    void tellHistory();
    void replay(const HistoryEntry& entry);
    void showWholeView(LibraryView view);
    void showArrow();
    [[nodiscard]] Emptiness emptiness() const;
    void updateEmptyNote();
    [[nodiscard]] EmptyNote emptyNote() const;
    void searchInside();
    [[nodiscard]] QString historyFile() const;

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    Mod_API& m_paths;
    Files& m_files;
    Mp3dbControls m_controls;
    Mp3dbActions m_actions;
    BusSender m_bus;
    LibraryQuery m_query;
    SearchHistory m_history;
    LibraryLook m_look;
    DataControl m_data1;
    PendingJobs m_jobs;
    TDBGIDReposition m_place; ///< from "db.disconnect" to "db.reconnect"
    TrackEdits m_edits;
    LayoutFiles m_layouts;
    std::unique_ptr<Recordset> m_rowClone; ///< made anew at every requery
    std::unique_ptr<Timer> m_changeTimer;
    QString m_monitorCommand; ///< what a double click asks of the monitor player
    int m_sortColIndex = -1;
    qint64 m_librarySize = 0;
    qint64 m_dataVersion = 0;
    bool m_searchShown = false; ///< not the start statement
    bool m_connected = true;    ///< false while another program has the file alone
    EventGuard m_guard;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
