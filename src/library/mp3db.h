#pragma once

#include "library/create_sql_find.h"
#include "library/library_look.h"
#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "platform/db/recordset.h"

#include <QObject>

#include <functional>
#include <memory>

namespace melovane {

class Clock;
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

/// The library view: which tracks the grid shows, in which order, and where it stands.
///
/// Every way to the rows leads over a statement of cls_CreateSqlFind into `Data1`. A statement that
/// fails leaves the rows, the statement and the count as they were. Reads the settings when it
/// acts, so a change by a sibling counts from the next action on.
class ctl_MP3DB : public QObject
{
    Q_OBJECT

public:
    /// \param startImport what the button of the empty library does
    ctl_MP3DB(DBEngine& engine,
              GlobalSettings& settings,
              const Clock& clock,
              MessageLoop& loop,
              Mp3dbControls controls,
              std::function<void()> startImport);
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

    /// Looks whether another program has changed the database; called every kLookInterval.
    void lookForChanges();

signals:
    /// A search shows this number of tracks.
    void countChanged(qint64 count);

private:
    /// Why the grid is empty.
    enum class Emptiness
    {
        None,
        NoLibrary,
        NoSearch,
        NoHits
    };

    void configure();
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
    void searchInside();

    GlobalSettings& m_settings;
    Mp3dbControls m_controls;
    std::function<void()> m_startImport;
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
};

} // namespace melovane
