#pragma once

#include "bus/bus_table.h"
#include "platform/controls/tree_control.h"
#include "playlists/list_catalogue.h"
#include "store/error_sink.h"
#include "trees/favorit_rows.h"

#include <QObject>

#include <functional>
#include <memory>
#include <span>

namespace melovane {

class ConfigObjects;
class Database;
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
    /// Shows the figures of a list; empty as long as there is no such dialog.
    std::function<void(Pnid list)> showDetails;
    /// Asks for a file and writes the list to it; empty as long as nobody does.
    std::function<void(Pnid list)> saveList = {};
};

/// The tree of the lists that the user has marked, with the jingle lists on top: opens, plays,
/// makes, names, locks, sorts, moves and deletes them.
///
/// The picture of a row is its state, see pictureOf().
class PlaylistFavorit : public QObject
{
    Q_OBJECT

public:
    PlaylistFavorit(FavoritParts parts, TreeControl& tree);
    ~PlaylistFavorit() override;

    /// Reads all anew. The current row, what is folded and the place on the screen stay. While the
    /// user is typing a name it waits until he has finished, and while another program has the
    /// library until that is back.
    void Refresh();

    /// Makes the playing playlist current and opens it; without one the first playlist.
    void ShowActivePlaylist();

    /// The name of a playlist row; empty for others.
    [[nodiscard]] QString GetPlaylistname(int row) const;
    /// The number of a playlist or jingle list row as a text; empty for others.
    [[nodiscard]] QString GetPlaylistID(int row) const;
    /// Likewise of a group; "-1" for that of the jingle lists.
    [[nodiscard]] QString GetGroupID(int row) const;
    /// The group of a row: of the nearest one from it upwards that has a number.
    [[nodiscard]] QString FindGRID(int row) const;

    /// The group that imported lists go into: that of the current row, else a new one.
    [[nodiscard]] GroupId importGroup();

    /// Gives the row of a key another text.
    void UpdateTreeRow(const QString& key, const QString& text);
    /// Rereads the name of a playlist by its number and marks its file to be written.
    void UpdatePlaylistName(const QString& list);
    /// Rereads the name of a group.
    void UpdateGroupName(const QString& group);

    /// Keeps what is folded for the next start.
    void end();

    // -- What the user does --

    /// A button of the tool bar, by key: "all.newdoc", "all.newdir", "all.activate", "all.lock",
    /// "all.book", "all.refresh" or "all.delete".
    void toolPressed(const QString& key);
    /// False for what can do nothing at all in this program.
    [[nodiscard]] bool canDo(const QString& key) const;

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
    /// A row was dropped: it moves there, a list dropped into a group behind its last.
    void rowDropped(int from, int to, DropPlace place);
    /// \param row -1 beside all rows
    void contextMenu(int row);

signals:
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();

private:
    [[nodiscard]] static std::span<const BusRow<PlaylistFavorit>> busTable();
    void showDetails(const MLVMessage& message);
    void saveFile(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void playlistName(const MLVMessage& message);
    void groupName(const MLVMessage& message);
    void treeRow(const MLVMessage& message);
    void refill(const MLVMessage& message);
    void refillAll(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void rereadList(const MLVMessage& message);
    void listChanged(const MLVMessage& message);
    void start(const MLVMessage& message);

    void fill();
    void newList();
    void newGroup();
    void lock(int row);
    void sort(int row, const QString& column);
    void showInPanel(int row);
    void deleteList(int row);
    void deleteGroup(int row);
    [[nodiscard]] std::vector<ListPlace> places(const std::vector<TreeRow>& rows) const;
    [[nodiscard]] std::vector<TreeRow> rowsFrom(int first, int last) const;
    [[nodiscard]] Pnid listOf(int row) const;
    [[nodiscard]] bool isList(int row) const;
    /// The row as its table has it now; the text stays when there is no such list any more.
    void rereadRow(int row);
    [[nodiscard]] std::optional<ListState> readState(Pnid list) const;
    [[nodiscard]] int rowOfList(Pnid list) const;
    void withDatabase(const QString& where, const std::function<void(Database&)>& work) const;

    FavoritParts m_parts;
    TreeControl& m_tree;
    BusSender m_bus;
    std::unique_ptr<Timer> m_restTimer; ///< from an arrow key to the opening of the list
    bool m_showAll = false;             ///< also lists that are not marked
    bool m_refillWaits = false;
    bool m_isAway = false; ///< another program has the library; the rows stay as they are
    QString m_library;     ///< file that the rows were read from
    EventGuard m_guard;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
