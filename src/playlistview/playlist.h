#pragma once

#include "bus/bus_table.h"
#include "platform/controls/drop_target.h"
#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "platform/db/recordset.h"
#include "platform/media/cue_finder.h"
#include "playlists/list_history.h"
#include "playlistview/playlist_look.h"
#include "store/pending_jobs.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace melovane {

class Clipboard;
class Clock;
class cls_PLInsertMoveDel;
class ConfigObjects;
class GlobalSettings;
class MessageLoop;
class MLVFunction;
struct MlvPlaylistDetail;
class ModUndoRedo;
class PointerControl;
class Timer;
class Warnings;

/// The controls that the playlist view speaks to; they outlive it.
struct PlaylistControls
{
    GridControl& grid;
    PointerControl& pointer;
    Clipboard& clipboard;
    Warnings& warnings;
};

/// What changes lists; outlives the view.
struct PlaylistTools
{
    MLVFunction& functions;
    cls_PLInsertMoveDel& edits;
    ListHistory& history;
    ModUndoRedo& snapshots;
};

/// What the playlist view is made over; all of it outlives the view.
struct PlaylistViewParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    const Clock& clock;
    MessageLoop& loop;
    MLVMessageBus& bus;
    PlaylistTools tools;
    ErrorSink log = {}; ///< hears of messages that the view failed on
};

/// What the playlist view has other parts of the program do.
struct PlaylistActions
{
    /// Name of the program that the view stands in.
    QString program;
    /// Starts the BPM finder; cmd is "auto" or "manuell".
    std::function<void(const QString& cmd, const QString& fid, const QString& plid)> startBeatGauge;
    /// The monitor player goes a few seconds back (-1) or on (1).
    std::function<void(int direction)> monitorStep;
    /// Where a stored file lies on this machine; empty when it is not there.
    std::function<QString(const QString& file)> locate;
    /// Identifiers of the tracks that files and folders hold, in their order; a file that is new
    /// enters the library.
    std::function<QStringList(const QStringList& places)> tracksOf;
    std::function<void(const QString& name, const GridControl& grid)> saveLayout;
    std::function<void(const QString& name, GridControl& grid)> loadLayout;
    /// Puts the entries of list files into a list: at a position, or at the end without one. True
    /// when there are new entries.
    std::function<bool(const QStringList& files, Pnid list, std::optional<Sid> target, int aktion)>
        insertLists = [](const QStringList&, Pnid, std::optional<Sid>, int) { return false; };
    /// Opens an entry in the sample tool.
    std::function<void(const MlvPlaylistDetail& entry)> editSample = {};
    /// Where the sound of a file begins and ends: looked for so many milliseconds from either end,
    /// sound being what is louder than so much of 32768. Nothing for a file that cannot be read.
    std::function<std::optional<CueRange>(const QString& file, int withinMs, int loudness)> cuesOf =
        [](const QString&, int, int) { return std::nullopt; };
};

/// What is told about the list that is shown.
struct PlaylistSummary
{
    QString name; ///< empty when no list is shown
    int entries = 0;
    qint64 milliseconds = 0;
    bool locked = false;
};

/// The playlist view: shows one playlist or jingle list, marks what plays, and changes entries by
/// the user's hand.
///
/// Shows nothing until a list is opened over the bus ("playlist.aktivieren"). Every change goes
/// through the editing engine, can be undone, and is told to the others with "playlist.change".
/// A locked list is never changed.
class ctl_Playlist : public QObject, public DropTarget
{
    Q_OBJECT

public:
    ctl_Playlist(const PlaylistViewParts& parts,
                 PlaylistControls controls,
                 PlaylistActions actions);
    ~ctl_Playlist() override;

    /// The rows of the grid; hand it to the grid before start().
    [[nodiscard]] DataControl& Data1() { return m_data1; }

    [[nodiscard]] const GridLook& look() const { return m_look; }

    /// Fonts, colours and the note of the empty grid.
    void start();

    /// Stores the layout of the grid; writes what waits to be written.
    void end();

    /// The list that is shown; 0 for none.
    [[nodiscard]] Pnid GetPNID() const { return m_pnid; }

    /// The last list that was opened to become the active one.
    [[nodiscard]] Pnid activeList() const { return m_active; }

    /// The list that a command without a list means: that on the screen, else the active one.
    [[nodiscard]] Pnid listOfCommands() const { return m_pnid == Pnid{} ? m_active : m_pnid; }

    [[nodiscard]] bool isLocked() const { return m_locked; }

    [[nodiscard]] bool isJingleMode() const { return m_jingleMode; }

    /// The entries that the player plays now and next; 0 for none.
    [[nodiscard]] Plid PLID() const { return m_plid; }

    void SetPLID(Plid entry);

    [[nodiscard]] Plid NextPlid() const { return m_nextPlid; }

    void SetNextPlid(Plid entry);

    /// The entry of the current row; 0 without one.
    [[nodiscard]] Plid currentEntry() const;
    [[nodiscard]] QString GetFID() const;

    /// Reads the list anew and stays at the same entry and the same place on the screen.
    void Refresh();
    /// Paints the rows with the values of now.
    void RefreshGrid();

    /// Goes to the row of an entry; a list without it stays where it is.
    void SetAbsolutePosition(Plid entry);

    /// Selects all rows. The values of `field` joined by commas, kept as what the next drag
    /// carries; "null" collects nothing.
    [[nodiscard]] QString SetAllBookmarks(const QString& field);

    /// The same for the rows from one end to the other; a start of -1 does nothing. The higher row
    /// becomes the anchor.
    void SetGridBookmarks(qint64 start, qint64 stop);

    [[nodiscard]] qint64 selectionAnchor() const { return m_anchor; }

    /// Puts the selected rows into the table of the tag tool.
    void FillTempMp3EditTable();

    /// A command of the main window's keys: "play.start", "play.center", "play.stop", "copy",
    /// "selall", "insert" or "append", which paste. False when the grid has not the keyboard and
    /// nobody has asked for it, or for others.
    bool SendKeyUp(const QString& command, bool asked = false);

    /// The play actions that fit the list, and that of the current row; -1 without one.
    [[nodiscard]] std::vector<int> aktionChoices() const;
    [[nodiscard]] int currentAktion() const;

    /// Writes the play action of the current row. A locked list says that it is.
    void setAktion(int aktion);

    /// Start and stop of the current entry become the places where its sound begins and ends.
    /// What cannot be read is told in the status line.
    void AutocueTitel();

    /// The sample tool has given an entry another start and stop. Nothing is taken for an entry
    /// that is not of the list on the screen, or that is another track by now, nor a stop before
    /// the start.
    void takeSample(Plid entry, const QString& fid, int start, int stop);

    /// Takes back the last change of a list, or does it once more. Asks before it writes over what
    /// others have changed since.
    void undo();
    void redo();

    // -- What the user does --

    void toolPressed(const QString& key);
    void rowActivated(qint64 row);
    void digitPressed(int digit);
    void deletePressed();
    /// Exchanges the current row with its neighbour: -1 above, 1 below.
    void moveRow(int step);
    void rowChanged(qint64 row);
    void selectionChanged();
    void contextMenuWanted();
    void headMenuWanted();
    [[nodiscard]] DragContent dragContent();
    [[nodiscard]] DropEffect dropEffect(const DropOffer& offer) override;
    void drop(const DropOffer& offer) override;

signals:
    void toolBarWanted();
    void toolTipsWanted();
    void summaryChanged(const PlaylistSummary& summary);
    /// Words of what can be undone and redone, and whether there is something.
    void historyChanged(const QString& undo, bool canUndo, const QString& redo, bool canRedo);
    /// The loop button belongs to jingle lists.
    void jingleModeChanged(bool on);
    /// Picture of the volume button, 1 to 5; 0 for the plain one.
    void volumeIconChanged(int step);

private:
    struct ToolRow
    {
        QStringView key;
        void (ctl_Playlist::*handler)(const QString& key);
    };

    [[nodiscard]] static std::span<const BusRow<ctl_Playlist>> busTable();
    void setPlayNormal(const MLVMessage& message);
    void setPlayLoop(const MLVMessage& message);
    void setPlayStop(const MLVMessage& message);
    void refreshByFid(const MLVMessage& message);
    void refreshTempo(const MLVMessage& message);
    void findTempo(const MLVMessage& message);
    void findTempoByHand(const MLVMessage& message);
    void deleteMixStyles(const MLVMessage& message);
    void copyMixStyles(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void setLock(const MLVMessage& message);
    void nameChanged(const MLVMessage& message);
    void open(const MLVMessage& message, bool jingles);
    void activateJingleList(const MLVMessage& message);
    void activatePlaylist(const MLVMessage& message);
    void renewToolTips(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void toActivePlaylist(const MLVMessage& message);
    void insertData(const MLVMessage& message);
    void appendData(const MLVMessage& message);
    void saveLayout(const MLVMessage& message);
    void loadLayout(const MLVMessage& message);
    void autosize(const MLVMessage& message);
    void fillTagTable(const MLVMessage& message);
    void resetList(const MLVMessage& message);
    void refreshList(const MLVMessage& message);
    void refreshPlayed(const MLVMessage& message);
    void changeVolumeIcon(const MLVMessage& message);
    void showSampleTool(const MLVMessage& message);

    [[nodiscard]] static std::span<const ToolRow> toolTable();
    void bookPressed(const QString& key);
    void deleteRows(const QString& key);
    void copyRows(const QString& key);
    void pasteInsert(const QString& key);
    void pasteAppend(const QString& key);
    void selectAllRows(const QString& key);
    void reloadPressed(const QString& key);
    void monitorPressed(const QString& key);
    void seekPressed(const QString& key);
    void volumePressed(const QString& key);
    void toggleLoop(const QString& key);
    void samplePressed(const QString& key);
    void undoPressed(const QString& key);
    void redoPressed(const QString& key);

    // Rows.
    void load(Pnid list, bool locked, bool makeActive);
    void applyLock(bool locked);
    void showNoList();
    void requery();
    void fitColumns();
    void markPlayed();
    void showPlayedEntry();
    [[nodiscard]] Value cellOf(qint64 row, QStringView field) const;
    [[nodiscard]] qint64 rowOf(Plid entry) const;
    [[nodiscard]] Sid sidOf(qint64 row) const;
    void tellSummary();
    void tellHistory();
    void updateEmptyNote();

    // Changes.
    [[nodiscard]] bool canChange() const;
    /// The same, and says so when the list is locked.
    [[nodiscard]] bool mayChange();
    [[nodiscard]] int newAktion() const;
    void changed();
    void afterChange(Pnid list);
    void appendTracks(const QString& dragText, Pnid list);
    void paste(bool append);
    void takeStep(bool isUndo);
    void tellPlayed(const QString& fid);
    void saveLater();
    void saveNow();
    [[nodiscard]] bool isOfThisList(const QString& dragText);
    void dropEntries(const DropOffer& offer, DropEffect effect);
    void dropTracks(const DropOffer& offer, const QString& dragText);
    [[nodiscard]] bool dropFiles(const DropOffer& offer);

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    PlaylistTools m_tools;
    PlaylistControls m_controls;
    PlaylistActions m_actions;
    BusSender m_bus;
    PlaylistLook m_look;
    DataControl m_data1;
    PendingJobs m_jobs;
    std::unique_ptr<Recordset> m_rowClone;               ///< made anew at every requery
    std::unique_ptr<Timer> m_timerPlaylistPlaylerUpdate; ///< spelt so
    std::unique_ptr<Timer> m_timerInfo;                  ///< between two "info.from.fid"
    Pnid m_pnid{};
    Pnid m_active{};
    Plid m_plid{};
    Plid m_nextPlid{};
    bool m_locked = false;
    bool m_jingleMode = false;
    bool m_connected = true; ///< false while another program has the file alone
    Plid m_keptEntry{};      ///< current while the file is away
    qint64 m_keptTop = 0;    ///< likewise the first row on the screen
    qint64 m_anchor = -1;
    QString m_selectedRows;   ///< ids that the next drag carries in place of the selection
    QString m_draggedFid;     ///< track of the first row of the last drag
    QString m_monitorCommand; ///< what a double click asks of the monitor player
    QString m_waitingInfo;    ///< track to be told when m_timerInfo fires
    QString m_toldInfo;
    QString m_checkedDrag; ///< the drag text that m_checkedIsOwn is about
    bool m_checkedIsOwn = false;
    EventGuard m_guard;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
