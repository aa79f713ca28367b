#pragma once

#include "bus/mlv_message_bus.h"
#include "library/create_sql_find.h"
#include "library/library_look.h"
#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "platform/db/recordset.h"

#include <QObject>

#include <functional>
#include <memory>
#include <span>

namespace melovane {

class Clock;
class ConfigObjects;
class GlobalSettings;
class MessageLoop;
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
};

/// What the library view has other parts of the program do.
struct Mp3dbActions
{
    /// The button of the empty library.
    std::function<void()> startImport;
    /// Starts the BPM finder; cmd is "auto" or "manuell".
    std::function<void(const QString& cmd, const QString& fid)> startBeatGauge;
};

/// The library view: which tracks the grid shows, in which order, and where it stands.
///
/// Every way to the rows leads over a statement of cls_CreateSqlFind into `Data1`. A statement that
/// fails leaves the rows, the statement and the count as they were. Reads the settings when it
/// acts, so a change by a sibling counts from the next action on.
class ctl_MP3DB : public QObject
{
    Q_OBJECT

public:
    ctl_MP3DB(DBEngine& engine,
              GlobalSettings& settings,
              const ConfigObjects& texts,
              const Clock& clock,
              MessageLoop& loop,
              MLVMessageBus& bus,
              Mp3dbControls controls,
              Mp3dbActions actions);
    ~ctl_MP3DB() override;

    /// The rows of the grid; hand it to the grid before start().
    [[nodiscard]] DataControl& Data1() { return m_data1; }

    [[nodiscard]] const GridLook& look() const { return m_look; }

    /// Shows the first view: the last search of the former run, else an empty grid. From then on
    /// changes of other programs are noticed. \throws DbError when the database cannot be read
    void start();

    /// Stores the search text and the sorting.
    void end();

    /// Runs the statement anew and stays on the same track.
    void Refresh();

    /// Shows the rows of a node: the one way in for trees and menus.
    ///
    /// \param kind  "allfind" compares all search columns, "cddir" the folders of a disc, any other
    ///              the one named by `field`
    /// \param field the column; for "cddir" the name of the disc
    /// \param value compared as a whole; "*" stands for anything
    void FindTreeValue(const QString& kind, const QString& field, const QString& value);

    /// Shows the tracks marked as deleted.
    void DB_ALL_DEL();
    /// Shows the tracks whose files were not found.
    void DB_ALL_NOEXIST();

    /// `FID` of the current row; empty without one.
    [[nodiscard]] QString GetFID() const;

    /// Rows found by the last search.
    [[nodiscard]] qint64 matchCount() const { return m_matchCount; }

    /// Tracks in the library, whatever is shown.
    [[nodiscard]] qint64 librarySize() const { return m_librarySize; }

    [[nodiscard]] QString SortColName() const { return m_sortColName; }

    [[nodiscard]] QString SortRichtung() const { return m_sortRichtung; }

    // -- What the user does --

    /// Searches when the setting `LiveSuche` is on.
    void searchTextChanged(const QString& text);

    /// Rows that begin with the text in title, artist or one of the columns chosen in the settings;
    /// "*" stands for anything. An empty text leaves the grid as it is.
    void search(const QString& text);

    /// Sorts by a column; a second click on the same one turns the order round. The current track
    /// stays current and on the screen.
    void headerClicked(int column);

    /// The button in the empty grid.
    void emptyButtonPressed();

    /// Asks for the context menu of the current track; nothing without one.
    void contextMenuWanted();

    /// Buttons of the monitor player, by key: "play.start", "play.center" or "play.stop".
    void monitorPressed(const QString& key);

    /// Looks whether another program has changed the database; called every kLookInterval.
    void lookForChanges();

signals:
    /// A search shows this number of tracks.
    void countChanged(qint64 count);
    /// The buttons of the tool bar are to be made.
    void toolBarWanted();

private:
    /// Where the rows come from.
    enum class ViewKind
    {
        DBGrid,
        DBGridDel,
        DBGridNoExist
    };

    /// Why the grid is empty.
    enum class Emptiness
    {
        None,
        NoLibrary,
        NoSearch,
        NoHits,
        NothingMarked
    };

    struct BusRow
    {
        QStringView name; ///< in lower case
        void (ctl_MP3DB::*handler)(const MLVMessage&);
    };

    [[nodiscard]] static std::span<const BusRow> busTable();
    void MessBus_Message(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void changeConfig(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void refreshByFid(const MLVMessage& message);
    void clickRow(const MLVMessage& message);
    void showDir(const MLVMessage& message);
    void clickImage(const MLVMessage& message);
    void findTempo(const MLVMessage& message);
    void findTempoByHand(const MLVMessage& message);

    void configure();
    void describeRows();
    void setViewKind(ViewKind kind);
    void showMarked(ViewKind kind);
    void showFound(const QString& statement);
    void readSorting();
    void startWithLastSearch();
    void setFindColumns();
    void setSecondaryOrder();
    [[nodiscard]] bool applyStatement(const QString& statement);
    void requery();
    void applyKeepingTrack(const QString& statement);
    void countLibrary();
    void countMatches();
    void showArrow();
    [[nodiscard]] Emptiness emptiness() const;
    void updateEmptyNote();
    [[nodiscard]] EmptyNote emptyNote() const;
    void searchInside();

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    Mp3dbControls m_controls;
    Mp3dbActions m_actions;
    BusSender m_bus;
    cls_CreateSqlFind m_sql;
    LibraryLook m_look;
    DataControl m_data1;
    std::unique_ptr<Recordset> m_rowClone; ///< made anew at every requery
    std::unique_ptr<Timer> m_changeTimer;
    QString m_sortColName;
    QString m_sortRichtung;
    int m_sortColIndex = -1;
    qint64 m_matchCount = 0;
    qint64 m_librarySize = 0;
    qint64 m_dataVersion = 0;
    bool m_searchShown = false; ///< not the start statement
    bool m_countIsRows = false; ///< the statement is none that GetCount can count
    bool m_connected = true;    ///< false while another program has the file alone
    qint64 m_rowBefore = -1;    ///< where the grid stood when the file was let go
    qint64 m_topBefore = -1;
    ViewKind m_viewKind = ViewKind::DBGrid;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
