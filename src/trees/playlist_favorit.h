#pragma once

#include "bus/bus_table.h"
#include "platform/controls/tree_control.h"
#include "store/error_sink.h"
#include "trees/favorit_drops.h"
#include "trees/favorit_edits.h"
#include "trees/favorit_tree.h"
#include "views/command_gate.h"

#include <QObject>

#include <functional>
#include <memory>
#include <span>

namespace melovane {

class ConfigObjects;
class DBEngine;
class GlobalSettings;
class MessageLoop;
class MLVFunction;
class myPopup;
class Timer;
class Warnings;

/// What the playlist panel is made over; all of it outlives the panel.
struct FavoritParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    MLVFunction& lists;
    MessageLoop& loop;
    MLVMessageBus& bus;
    Warnings& warnings;
    myPopup& popup;
    ErrorSink sink; ///< learns of failures: what fails leaves tree and data as they were
    /// The list on the screen, 0 for none: the marked row of the tree follows it.
    std::function<Pnid()> openList;
    /// Appends the tracks or entries of a drag text to a list; tells what it did, or why not.
    std::function<void(const QString& dragText, Pnid list)> append;
    /// Shows the figures of a list; empty as long as there is no such dialog.
    std::function<void(Pnid list)> showDetails;
    /// Asks for a file and writes the list to it; empty as long as nobody does.
    std::function<void(Pnid list)> saveList = {};
    CommandWorld world = {};
};

/// The tree of the lists that the user has marked, with the jingle lists on top: opens, plays,
/// makes, names, locks, sorts, moves and deletes them.
///
/// The picture of a row is its state, see pictureOf(). The marked row is that of the list on the
/// screen, or a heading that the user has chosen; what is done to a list is done to that on the
/// screen, so a row that he has only reached by an arrow key is opened first.
class PlaylistFavorit : public QObject
{
    Q_OBJECT

public:
    PlaylistFavorit(FavoritParts parts, TreeControl& tree);
    ~PlaylistFavorit() override;

    /// \see FavoritTree::refresh
    void Refresh() { m_rows.refresh(); }

    /// Makes the playing playlist current and opens it; without one the first playlist.
    void ShowActivePlaylist();

    /// The name of a playlist row; empty for others.
    [[nodiscard]] QString GetPlaylistname(int row) const { return m_rows.listName(row); }

    /// The number of a playlist or jingle list row as a text; empty for others.
    [[nodiscard]] QString GetPlaylistID(int row) const { return m_rows.listId(row); }

    /// Likewise of a group; "-1" for that of the jingle lists.
    [[nodiscard]] QString GetGroupID(int row) const { return m_rows.groupId(row); }

    /// The group of a row: of the nearest one from it upwards that has a number.
    [[nodiscard]] QString FindGRID(int row) const { return GetGroupID(m_rows.groupRow(row)); }

    /// \see FavoritEdits::importGroup
    [[nodiscard]] GroupId importGroup() { return m_edits.importGroup(); }

    /// Makes a row current and opens its list, also one that the panel does not show. The key of
    /// what is gone does nothing.
    void showRow(const QString& key);

    /// Gives the row of a key another text.
    void UpdateTreeRow(const QString& key, const QString& text);
    /// Rereads the name of a playlist by its number and marks its file to be written.
    void UpdatePlaylistName(const QString& list);
    /// Rereads the name of a group.
    void UpdateGroupName(const QString& group);

    /// Keeps what is folded for the next start.
    void end();

    // -- What the user does --

    /// \see FavoritEdits::newPlaylist
    void newPlaylist();

    /// A button of the tool bar, by key: "all.newdoc", "all.newdir", "all.activate", "all.lock",
    /// "all.book", "all.refresh" or "all.delete".
    void toolPressed(const QString& key);
    /// False for what can do nothing at all in this program.
    [[nodiscard]] bool canDo(const QString& key) const;
    /// Why the button of that key cannot work now, in the user's words; empty when it can.
    [[nodiscard]] QString whyNot(QStringView key) const;

    /// Something that decides about commands has changed, here or around the program.
    void judgeCommands() { emit commandsChanged(); }

    /// A click: the playlist view opens the list. A heading does nothing.
    void rowClicked(int row);
    /// The arrow keys: as a click, once the user rests on a row.
    void rowEntered(int row);
    /// Double click or Enter: the list becomes the playing one.
    void rowActivated(int row);

    /// Lets the user type another name.
    void rename(int row);
    void rowEdited(int row, const QString& text);

    void editEnded();

    void deleteRow(int row);

    /// The mouse was let go, or a drag has ended, without a click: what it has touched is not open.
    void handLeft() { m_rows.leaveOtherLists(); }

    /// A row was dropped: it moves there, a list dropped into a group behind its last.
    void rowDropped(int from, int to, DropPlace place);

    /// What other views' drags may do with the rows.
    [[nodiscard]] DropTarget& drops() { return m_drops; }

    /// \param row -1 beside all rows
    void contextMenu(int row);

signals:
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();
    /// Buttons may be able to work now, or no more.
    void commandsChanged();

private:
    [[nodiscard]] bool may(QStringView command);
    [[nodiscard]] int opened(int row);
    void choose(int entry, const QString& key);
    [[nodiscard]] static std::span<const BusRow<PlaylistFavorit>> busTable();
    void showDetails(const MLVMessage& message);
    void saveFile(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void playlistName(const MLVMessage& message);
    void groupName(const MLVMessage& message);
    void treeRow(const MLVMessage& message);
    void refill(const MLVMessage& message);
    void refillAll(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void listOpened(const MLVMessage& message);
    void rereadList(const MLVMessage& message);
    void listChanged(const MLVMessage& message);
    void start(const MLVMessage& message);

    FavoritParts m_parts;
    BusSender m_bus;
    TreeControl& m_tree;
    FavoritTree m_rows;
    FavoritEdits m_edits;
    FavoritDrops m_drops;
    CommandGate m_gate;
    QString m_shownLibrary;             ///< whose active list was opened last; empty before that
    std::unique_ptr<Timer> m_restTimer; ///< from an arrow key to the opening of the list
    EventGuard m_guard;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
