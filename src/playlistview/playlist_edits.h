#pragma once

#include "platform/controls/grid_control.h"
#include "playlistview/open_list.h"
#include "playlistview/playlist_view_parts.h"

#include <memory>

namespace melovane {

class BusSender;
class EventGuard;
class GridRows;
class Timer;

/// What the view does when something has been changed.
struct EditEvents
{
    /// The entries of a list are others now, or stand in another order; reads them anew when it is
    /// on the screen. \throws DbError
    std::function<void(Pnid list)> entriesChanged;
    /// Values of entries on the screen are others now.
    std::function<void()> valuesChanged;
    /// There is another step to undo.
    std::function<void()> stepsChanged;
};

/// All that changes lists from the playlist view: entries, their order, their values.
///
/// A locked list, and every list while the file is away, stay as they are. What succeeds is told to
/// the view and then to the others, with "playlist.change". All of what it is made with outlives
/// it.
class PlaylistEdits
{
public:
    PlaylistEdits(const PlaylistViewParts& parts,
                  const PlaylistControls& controls,
                  const PlaylistActions& actions,
                  const OpenList& list,
                  GridRows& rows,
                  BusSender& bus,
                  const EventGuard& guard,
                  EditEvents events);
    ~PlaylistEdits();

    /// Whether the list on the screen may be changed now.
    [[nodiscard]] bool canChange() const;

    /// Tells the view and the others that the entries of a list are others now.
    void tellChanged(Pnid list);

    // -- Entries and their order: what comes to the list on the screen is selected --

    /// Puts tracks into the list on the screen: at a position, or at the end without one.
    /// \param dragText of tracks
    void addTracks(const QString& dragText, std::optional<Sid> target);
    /// The same in front of the current row. A locked list says so.
    void addTracksAtRow(const QString& dragText);
    /// Puts tracks at the end of any list. One that is locked or gone says so.
    void appendTracks(const QString& dragText, Pnid list);
    /// The same for tracks or copies of entries, and says what came.
    void appendDropped(const QString& dragText, Pnid list);
    /// Puts the tracks of files, or the entries of list files, into the list on the screen; the
    /// first file decides which. False when there were none, which is told.
    bool addFiles(const QStringList& files, std::optional<Sid> target);
    /// Moves entries of the list on the screen, or copies those of any list into it.
    /// \param dragText of entries
    void placeEntries(const QString& dragText, std::optional<Sid> target, bool copies);
    /// What the clipboard holds: at the end, or else tracks in front of the current row and entries
    /// at the top. Any other text: nothing.
    void paste(bool append);
    /// The selected rows, or the current one when none is selected.
    void deleteRows();
    /// The same; the clipboard holds them, to be pasted with all their values.
    void cutRows();
    /// Exchanges the current row with its neighbour: -1 above, 1 below. The others are told once
    /// the user's hand rests.
    void moveRow(int step);

    // -- Values of entries --

    /// Writes the play action of the current row.
    void setAktion(int aktion);
    /// The current row is repeated from now on, or gets back the play action that it had before.
    void toggleLoop();
    /// Start and stop of the current row become the places where its sound begins and ends.
    void cueBySound();
    /// Start and stop that the sample tool has given to an entry; false when they are not taken.
    bool takeSample(Plid entry, const QString& fid, int start, int stop);
    /// Gives the track of the current row a rating.
    void rate(int digit);
    /// All entries lose their mix styles.
    void deleteMixStyles();
    /// All entries get the out style of one entry and the in style of another.
    void copyMixStyles(Plid outOf, Plid inOf);
    /// All values of all entries as if they had just come; a list that is locked or gone: nothing.
    /// True when it was done.
    bool reset(Pnid list);

    // -- The mark that the list is to be written to its file --

    /// Sets it now, when it still waits for the user's hand to rest.
    void saveWaiting();
    /// Forgets that it waits.
    void forgetWaiting();

private:
    [[nodiscard]] bool mayChange();
    [[nodiscard]] QString rowsToTake() const;
    void takeRows(const std::function<void(const QString& rows)>& take);
    [[nodiscard]] bool mayAppendTo(Pnid list);
    [[nodiscard]] Plid newestEntry() const;
    void tellCame(Plid before);
    void tellStatus(const QString& text);
    [[nodiscard]] Plid currentEntry() const;
    void valueChanged();
    void saveLater();
    void saveNow();

    const ConfigObjects& m_texts;
    PlaylistTools m_tools;
    PlaylistControls m_controls;
    const PlaylistActions& m_actions;
    const OpenList& m_list;
    GridRows& m_rows;
    BusSender& m_bus;
    const EventGuard& m_guard;
    EditEvents m_events;
    std::unique_ptr<Timer> m_timerPlaylistPlaylerUpdate; ///< spelt so
};

/// Whether a file is a list of tracks, by its extension.
[[nodiscard]] bool isListFile(const QString& place);

} // namespace melovane
