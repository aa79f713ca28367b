#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "platform/controls/drop_target.h"
#include "playlistview/monitor_seek.h"
#include "playlistview/open_list.h"
#include "playlistview/play_marks.h"
#include "playlistview/playlist_drags.h"
#include "playlistview/playlist_edits.h"
#include "playlistview/playlist_look.h"
#include "playlistview/playlist_messages.h"
#include "playlistview/playlist_summary.h"
#include "playlistview/playlist_view_parts.h"
#include "playlistview/track_news.h"
#include "playlistview/undo_steps.h"
#include "views/grid_rows.h"

#include <QObject>

#include <span>

namespace melovane {

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

    /// The rows of the grid; hand it to the grid before start().
    [[nodiscard]] DataControl& Data1() { return m_rows.data(); }

    [[nodiscard]] const GridLook& look() const { return m_look; }

    /// Fonts, colours and the note of the empty grid.
    void start();

    /// Stores the layout of the grid; writes what waits to be written.
    void end();

    // -- The list on the screen --

    /// The list that is shown; 0 for none.
    [[nodiscard]] Pnid GetPNID() const { return m_list.pnid; }

    /// The last list that was opened to become the active one.
    [[nodiscard]] Pnid activeList() const { return m_list.active; }

    /// The list that a command without a list means: that on the screen, else the active one.
    [[nodiscard]] Pnid listOfCommands() const
    {
        return m_list.isOpen() ? m_list.pnid : m_list.active;
    }

    [[nodiscard]] bool isLocked() const { return m_list.locked; }

    [[nodiscard]] bool isJingleMode() const { return m_list.jingles; }

    /// Shows a list and makes it the active one; one that is shown is not read again. Nothing while
    /// another program has the file alone. \throws DbError, the former list stays
    void open(Pnid list, bool locked, bool jingles);

    /// The list on the screen must not be changed from now on, or may be.
    void setLocked(bool locked);

    /// Reads the list anew and stays at the same entry and the same place on the screen; one that
    /// is gone is no longer shown. \throws DbError
    void Refresh();

    /// Tells name and length of the list. \throws DbError
    void tellSummary();
    /// Tells what can be undone and redone.
    void tellHistory();

    /// Another program wants the database file alone, and gives it back. \throws DbError
    void disconnectDatabase();
    void reconnectDatabase();
    /// Another database is used from now on, or another content of the same. \throws DbError
    void changeDatabase();

    // -- Rows --

    /// The entry of the current row; 0 without one.
    [[nodiscard]] Plid currentEntry() const;
    [[nodiscard]] QString GetFID() const;

    /// Paints the rows with the values of now.
    void RefreshGrid();
    /// Takes colours, fonts and times from the settings.
    void dress();
    /// Fits the columns to their contents, when the setting `AutosizeGrid` asks for it.
    void fitColumns();
    /// The same, asked for by the user.
    void autosize();
    void saveLayout();

    /// Goes to the row of an entry; a list without it stays where it is.
    void SetAbsolutePosition(Plid entry);

    /// \see PlaylistDrags
    [[nodiscard]] QString SetAllBookmarks(const QString& field) { return m_drags.selectAll(field); }

    void SetGridBookmarks(qint64 start, qint64 stop) { m_drags.selectRange(start, stop); }

    [[nodiscard]] qint64 selectionAnchor() const { return m_drags.anchor(); }

    /// The tracks of the selected rows as a drag text.
    [[nodiscard]] QString selectedTracks();

    /// Puts the selected rows into the table of the tag tool.
    void FillTempMp3EditTable();

    // -- What plays: 0 for none --

    [[nodiscard]] Plid PLID() const { return m_marks.now(); }

    [[nodiscard]] Plid NextPlid() const { return m_marks.next(); }

    void setPlayed(Plid now, Plid next) { m_marks.set(now, next); }

    /// What the monitor player plays now; empty for none.
    void setHeardTrack(const QString& fid) { m_marks.setHeardTrack(fid); }

    // -- For the player, whose window hosts the same view; nothing here calls it --

    void SetPLID(Plid entry) { setPlayed(entry, NextPlid()); }

    void SetNextPlid(Plid entry) { setPlayed(PLID(), entry); }

    // -- Changes, see PlaylistEdits --

    /// The play actions that fit the list, and that of the current row; -1 without one.
    [[nodiscard]] std::vector<int> aktionChoices() const;
    [[nodiscard]] int currentAktion() const;

    /// Writes the play action of the current row. A locked list says that it is.
    void setAktion(int aktion) { m_edits.setAktion(aktion); }

    /// Start and stop of the current entry become the places where its sound begins and ends.
    /// What cannot be read is told in the status line.
    void AutocueTitel() { m_edits.cueBySound(); }

    /// The sample tool has given an entry another start and stop. Nothing is taken for an entry
    /// that is not of the list on the screen, or that is another track by now, nor a stop before
    /// the start.
    void takeSample(Plid entry, const QString& fid, int start, int stop);

    /// Opens the current entry in the sample tool.
    void editSample();

    /// Lets the user hear the transition from the current entry into the one below it. Behind the
    /// last one comes the first, as when the list plays; a list of one entry says that there is
    /// none.
    void rehearse();

    /// Takes back the last change of a list, or does it once more, and shows it: the list is
    /// opened, the entries that changed are selected. Asks before it writes over what others have
    /// changed since.
    void undo();
    void redo();

    /// What was dropped on a list elsewhere: tracks or entries come to its end, which is told.
    void append(const QString& dragText, Pnid list);

    // -- What the user does --

    /// A button of the tool bar, by key: "all.delete", "play.start", "all.undo" ...
    void toolPressed(const QString& key);

    /// Why the button of that key, or a command of the row menu, cannot work now, in the user's
    /// words; empty when it can. A missing current row is no reason for a button.
    [[nodiscard]] QString whyNot(QStringView key, bool needsRow = false) const;

    /// The key of a command, see commandKey.
    [[nodiscard]] QString keyOf(QStringView key) const { return commandKey(m_settings, key); }

    /// Something that decides about commands has changed, here or around the program.
    void judgeCommands() { emit commandsChanged(); }

    /// A command of the main window's keys: "play.start", "play.center", "play.stop", "copy",
    /// "selall", "insert" or "append", which paste. False when the grid has not the keyboard and
    /// nobody has asked for it, or for others.
    bool SendKeyUp(const QString& command, bool asked = false);

    void rowActivated(qint64 row);

    void digitPressed(int digit) { m_edits.rate(digit); }

    void deletePressed();

    /// Exchanges the current row with its neighbour: -1 above, 1 below.
    void moveRow(int step) { m_edits.moveRow(step); }

    void rowChanged(qint64 row);

    void selectionChanged() { m_drags.forgetSelected(); }

    void contextMenuWanted();
    void headMenuWanted();

    /// The button of the empty view: a new list.
    void emptyButtonPressed();

    [[nodiscard]] DragContent dragContent() { return m_drags.content(); }

    [[nodiscard]] DropEffect dropEffect(const DropOffer& offer) override
    {
        return m_drags.effect(offer);
    }

    void drop(const DropOffer& offer) override;

signals:
    void toolBarWanted();
    void toolTipsWanted();
    void summaryChanged(const PlaylistSummary& summary);
    /// Words of what can be undone and redone, and whether there is something.
    void historyChanged(const QString& undo, bool canUndo, const QString& redo, bool canRedo);
    /// Buttons may be able to work now, or no more.
    void commandsChanged();
    /// The loop button belongs to jingle lists.
    void jingleModeChanged(bool on);
    /// Name of the picture of the volume button.
    void volumeIconChanged(const QString& picture);

private:
    struct ToolRow
    {
        QStringView key;
        void (*work)(ctl_Playlist& view, const QString& key);
    };

    /// Whether there is a step to take back or to do again.
    struct KnownSteps
    {
        bool undo = false;
        bool redo = false;
    };

    [[nodiscard]] static std::span<const ToolRow> toolTable();
    void bookPressed();
    void copyRows();
    void selectAllRows();
    void monitorPressed(const QString& key);

    void load(Pnid list, bool locked);
    void applyLock(bool locked);
    void workInLibrary();
    void showNoList();
    void tellSummaryOrClose();
    void entriesChanged(Pnid list);
    void takeStep(bool isUndo);
    void showStep(const ListHistory::Result& step);
    void updateEmptyNote();
    void tellLent();

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    PlaylistTools m_tools;
    PlaylistControls m_controls;
    PlaylistActions m_actions;
    CommandGate m_gate;
    BusSender m_bus;
    EventGuard m_guard;
    PlaylistLook m_look;
    OpenList m_list;
    GridRows m_rows;
    PlayMarks m_marks;
    MonitorSeek m_seek;
    TrackNews m_news;
    PlaylistEdits m_edits;
    PlaylistDrags m_drags;
    UndoSteps m_steps;
    KnownSteps m_known;
    QString m_monitorCommand;    ///< what a double click asks of the monitor player
    PlaylistMessages m_messages; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
