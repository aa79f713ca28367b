#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/tree_control.h"
#include "store/all_data.h"
#include "store/error_sink.h"
#include "trees/favorit_drops.h"
#include "trees/favorit_edits.h"
#include "trees/favorit_tree.h"
#include "trees/favourite_ticks.h"
#include "trees/tree_pages.h"

#include <QObject>

#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;
class DBEngine;
class GlobalSettings;
class MessageLoop;
class MLVFunction;
class myPopup;
class TreeMessages;
class Warnings;

/// What the library tree is made over; all of it outlives the tree.
struct TreeParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    MLVFunction& lists;
    MessageLoop& loop;
    MLVMessageBus& bus;
    Warnings& warnings;
    myPopup& popup;
    ErrorSink sink; ///< learns of failures: what fails leaves the rows as they were
    /// False while the library can only be read.
    std::function<bool()> mayWrite;
    /// One track by its identifier.
    std::function<MlvAllData(const QString& fid)> track;
    /// The picture file of a track, empty for none.
    std::function<QString(const MlvAllData& track)> cover;
    /// Where a stored file lies now; empty for nowhere.
    std::function<QString(const QString& file)> placeOf;
    /// Appends the tracks or entries of a drag text to a list.
    std::function<void(const QString& dragText, Pnid list)> append;
    std::function<void()> startViewer;
    /// Makes the tree tables anew, all of them; they can't be read.
    std::function<void()> rebuildTables;
};

/// The panel at the left of the library: a tool bar and a stack of trees, one for each way into the
/// library. A row that is clicked narrows the library view.
///
/// The trees read the tree tables and count nothing; each is filled when it is opened and stays
/// filled until something was changed. A table that can't be read is made anew, which the panel
/// says meanwhile.
class Tree : public QObject
{
    Q_OBJECT

public:
    Tree(TreeParts parts, TreeForm& form);
    ~Tree() override;

    /// The first fill, of the kind that was seen last: from now on what is stale is read at once.
    void start();
    /// Keeps which kind is seen, for the next start.
    void end();

    // -- Operations of the suite --

    /// The tree of a kind by its name; null for a name that no kind has.
    [[nodiscard]] TreeControl* GetObjectByName(QStringView kind) const;

    /// Text of a row of the tree that is seen.
    [[nodiscard]] QString GetCellText(int row) const { return m_pages.top().row(row).text; }

    /// Gives the row of a list or group another text.
    void UpdatePlaylistTreeRow(const QString& key, const QString& text);
    /// The row of the list that plays now becomes bold, the one that played no longer.
    void ActivatePlaylist(Pnid list);

    /// Makes a row of the tree that is seen the current one.
    void setrow(int row) { m_pages.top().setCurrentRow(row); }

    void AktivateTreeDir() { activate(TreeKind::Dir); }

    void AktivateTreeGenre() { activate(TreeKind::Genre); }

    void AktivateTreeAlbum() { activate(TreeKind::Album); }

    void AktivateTreeInterpret() { activate(TreeKind::Interpret); }

    void AktivateTreeFavorit() { activate(TreeKind::Favorit); }

    void AktivateTreePlaylist() { activate(TreeKind::Playlist); }

    /// Filled anew at each opening, like the next one.
    void AktivateTreeState() { activate(TreeKind::State); }

    void AktivateTreeErweitert() { activate(TreeKind::Erweitert); }

    /// Folds or opens all rows, by turns.
    void ExpandTree() { m_pages.expandTree(); }

    /// Marks all trees to be read at their next opening and reads the one that is seen.
    /// \param mask digits of the suite; the trees are stale whatever they are
    void Refresh(const QString& mask);
    void UpdateColors();

    /// The track that the information tree tells about from now on.
    void showTrack(const QString& fid);
    /// The same for the current row of the library; a track that is shown already is not read
    /// again.
    void trackEntered(const QString& fid);

    /// Shows a folder in the tree of folders; one that it lacks leaves the tree as it is.
    /// \param volume name of the disc that it lies on, or empty
    void showDirectory(const QString& path, const QString& volume);

    /// The lists or their order were changed: the tree of lists is read when it is seen next.
    void refreshLists();
    /// Whether a list may be changed now, told by its picture.
    void setListPicture(const QString& key, const QString& picture);

    [[nodiscard]] TreeKind kind() const { return m_pages.kind(); }

    // -- The library --

    /// Another program takes it: the rows stay as they are, behind a note that says so.
    void leaveLibrary();
    void libraryIsBack();
    /// Reads anew if the library is another file than the one that the rows are from.
    void libraryChanged();

    // -- What the user does with the tree that is seen --

    /// A button, by key, in any case: "tree.dir", "all.refresh", "newgenre" ...
    void toolPressed(const QString& key);
    /// A press on a row, or Enter: the library shows its tracks, with others that are selected.
    void rowClicked(int row);

    /// A double click, or Enter.
    void rowActivated(int row) { rowClicked(row); }

    /// Another row is the current one.
    void rowEntered(int row);
    /// A row is opened whose rows were not read yet.
    void rowOpening(int row);
    /// The user has folded or opened a row.
    void rowToggled(int row, bool open);
    void rowTicked(int row, bool on);
    /// Lets the user type another name of a list or group.
    void rename(int row);
    void rowEdited(int row, const QString& text);
    void editEnded();
    void deletePressed(int row);
    void rowDropped(int from, int to, DropPlace place);
    /// \param row -1 beside all rows
    void contextMenu(int row);
    /// The user begins to type a filter: rows that are read when they are opened are read now.
    void filterBegins();
    /// What a drag of rows carries: their tracks.
    [[nodiscard]] DragContent dragContent(const std::vector<int>& rows);
    /// What the tool tip over a tick says.
    [[nodiscard]] QString tickTip(int row) const;

    /// What other views' drags may do with the lists.
    [[nodiscard]] DropTarget& drops() { return m_listDrops; }

    /// Asks the form for its tool bar.
    void createToolBar() { emit toolBarWanted(); }

signals:
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();

private:
    void activate(TreeKind kind);
    void fill(TreeKind kind);
    void fillKind(TreeKind kind);
    void fillInfo();
    void noteWithoutTracks(TreeKind kind);
    void setNoteWhenEmpty(TreeKind kind, QStringView title, QStringView text);
    [[nodiscard]] int bpmRange() const;
    void fillLists();
    void reload();
    void guarded(QStringView where, const std::function<void()>& work);
    void tableFailed(TreeKind kind, const QString& what);
    void setNote(const EmptyNote& note);
    void sendRow(QStringView command, const TreeRow& row);
    void sendSelected(const std::vector<int>& rows);
    [[nodiscard]] bool refusesChange();
    void goToRow(int row);
    [[nodiscard]] QStringList keysOf(const std::vector<int>& rows) const;

    TreeParts m_parts;
    BusSender m_bus;
    TreePages m_pages;
    FavoritTree m_listRows;
    FavoritEdits m_listEdits;
    FavoritDrops m_listDrops;
    FavouriteTicks m_ticks;
    TreeForm& m_form;
    QString m_enteredKey; ///< of the current row
    QString m_lastKey;    ///< of the row that the library shows
    QString m_lastFid;    ///< of the track that the information tree tells about
    QString m_library;    ///< file that the rows were read from
    bool m_started = false;
    bool m_isAway = false;   ///< another program has the library
    bool m_rebuilds = false; ///< the tables are being made anew because one could not be read
    EventGuard m_guard;
    std::unique_ptr<TreeMessages> m_messages; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
