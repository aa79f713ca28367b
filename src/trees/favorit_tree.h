#pragma once

#include "platform/controls/tree_control.h"
#include "playlists/list_catalogue.h"
#include "store/error_sink.h"
#include "trees/favorit_rows.h"

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

class ConfigObjects;
class Database;
class DBEngine;
class GlobalSettings;

/// What tells one tree of lists from another.
struct ListTreeForm
{
    /// All rows. \param all also lists that are not marked for the panel
    std::function<std::vector<TreeRow>(Database& database, bool all)> read;
    /// The row of a list.
    std::function<TreeRow(const ListState& list)> row;
    /// Whether the row of the list on the screen is the current one.
    bool followsOpenList = true;
    /// Whether the order of its groups is that of all, and is written with that of the lists.
    bool ordersGroups = false;
};

/// The rows of a tree of lists: what each one stands for, and that they are those of the library.
///
/// A failing read goes to the sink and leaves the rows as they are.
class FavoritTree
{
public:
    /// All of it outlives the rows.
    /// \param sink learns of failing reads and writes
    FavoritTree(DBEngine& engine,
                GlobalSettings& settings,
                const ConfigObjects& texts,
                ErrorSink sink,
                TreeControl& tree,
                std::function<Pnid()> openList,
                ListTreeForm form);

    [[nodiscard]] TreeControl& control() const { return m_tree; }

    // -- What a row stands for; a row that isn't there stands for nothing --

    /// The name of a list without its count; empty for other rows.
    [[nodiscard]] QString listName(int row) const;
    /// The number of a list as a text; empty for other rows.
    [[nodiscard]] QString listId(int row) const;
    /// The number of a group as a text, "-1" for the jingle lists; empty for other rows.
    [[nodiscard]] QString groupId(int row) const;
    /// The row of the nearest group from this one upwards, or -1.
    [[nodiscard]] int groupRow(int row) const;
    [[nodiscard]] bool isList(int row) const;
    [[nodiscard]] Pnid listOf(int row) const;
    /// Whether the list of a row must not be changed: its picture tells.
    [[nodiscard]] bool isLocked(int row) const;
    [[nodiscard]] int rowOfList(Pnid list) const;
    /// The row behind the last list of a group.
    [[nodiscard]] int endOfGroup(int group) const;
    /// The playing playlist, else the first one, else -1; jingle lists don't count.
    [[nodiscard]] int activeRow() const;
    /// Where each list stands, when the rows are these.
    [[nodiscard]] static std::vector<ListPlace> places(const std::vector<TreeRow>& rows);
    /// Where each group stands then; none in a tree that doesn't order them.
    [[nodiscard]] std::vector<GroupPlace> groupPlaces(const std::vector<TreeRow>& rows) const;

    // -- As the library has it --

    /// Nothing when there is no such list.
    [[nodiscard]] std::optional<ListState> readState(Pnid list) const;
    /// The row as its table has it now; the text stays when there is no such list any more.
    void rereadRow(int row);
    void rereadGroup(qint64 group);
    /// The same for each list of that kind whose row is bold.
    void rereadPlaying(bool isJingle);
    /// The file of the list is to be written again; jingle lists have none.
    void markForFile(Pnid list) const;
    void setText(int row, const QString& text);

    // -- All rows --

    /// Reads all anew. The marked row, what is folded and the place on the screen stay. While the
    /// user is typing a name it waits until he has finished, and while another program has the
    /// library until that is back.
    void refresh();
    /// The user has finished typing a name.
    void editEnded();

    /// Another program takes the library: the rows stay as they are, behind a note that says so.
    void leaveLibrary();

    [[nodiscard]] bool isAway() const { return m_isAway; }

    void libraryIsBack();
    /// Reads anew if the library is another file than the one that the rows are from.
    void libraryChanged();

    /// Whether the lists that are not marked for the panel are shown, too.
    [[nodiscard]] bool showsAll() const { return m_showAll; }

    void setShowAll(bool all);

    // -- The marked row --

    /// The row of the list on the screen becomes the current one; none does while it has no row.
    void markOpenList();
    /// The same unless a heading is current, which the user has chosen.
    void leaveOtherLists();

    /// Whether the list of a row is the one on the screen.
    [[nodiscard]] bool isOpen(int row) const { return isList(row) && listOf(row) == m_openList(); }

private:
    bool leftForOther();
    void fill();
    void withDatabase(const QString& where, const std::function<void(Database&)>& work) const;

    DBEngine& m_engine;
    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    ErrorSink m_sink;
    TreeControl& m_tree;
    std::function<Pnid()> m_openList;
    ListTreeForm m_form;
    bool m_showAll = false;
    bool m_refillWaits = false;
    bool m_isAway = false;
    QString m_library; ///< file that the rows were read from
};

} // namespace melovane
