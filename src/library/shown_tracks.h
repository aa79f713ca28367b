#pragma once

#include "library/shown_request.h"

#include <functional>
#include <optional>

namespace melovane {

class DBEngine;
class EventGuard;
class GlobalSettings;
class GridControl;
class GridRows;
class LibraryLook;
class PointerControl;

/// Which tracks the library view shows, and in which order.
///
/// Every way to the rows leads over a statement of LibraryQuery. A statement that fails leaves the
/// rows and the statement as they were. Reads the settings when it acts, so a change by a sibling
/// counts from the next action on. All of what it is made with outlives it.
class ShownTracks
{
public:
    /// What it speaks to.
    struct Parts
    {
        DBEngine& engine;
        GlobalSettings& settings;
        GridControl& grid;
        PointerControl& pointer;
        GridRows& rows;
        LibraryLook& look;
        const EventGuard& guard; ///< tells why nothing is shown
    };

    explicit ShownTracks(Parts parts);

    /// Takes the database and the sorting from the settings; reads no rows. \throws DbError
    void configure();

    /// The first view of a run, unless there are rows already: a search text, or an empty one for
    /// an empty grid. \throws DbError
    void showFirst(const QString& text, bool hasRows);

    /// What a text asks for, see readSearchText. True when it is shown, here and below.
    bool search(const QString& text);
    /// The rows of a node.
    bool showTree(const TreeRequest& request);
    /// One of the views that need no text.
    bool showWhole(LibraryView view);

    /// Sorts by a column of the grid; a second time turns the order round. The current track stays
    /// current and on the screen. Nothing for a column that is none.
    void sortBy(int column);

    /// Runs the statement anew and stays on the same track.
    void refresh();

    /// False before the first search: the rows of the start are no result of anything.
    [[nodiscard]] bool isResult() const { return m_isResult; }

    [[nodiscard]] LibraryView view() const { return m_query.view(); }

    /// What the rows are the answer to.
    [[nodiscard]] const ShownRequest& request() const { return m_request; }

    /// The node whose rows are shown; nothing for a search and the whole views.
    [[nodiscard]] const std::optional<TreeRequest>& node() const { return m_node; }

    /// The text of the search line that was searched last, without blanks around it.
    [[nodiscard]] const QString& lastSearch() const { return m_lastSearch; }

    [[nodiscard]] QString sortColumn() const { return m_query.SortColName(); }

    /// "ASC" or "DESC".
    [[nodiscard]] QString sortOrder() const { return m_query.SortRichtung(); }

    /// Keeps the sorting for the next run.
    void storeSorting();

    /// Fits the columns to their contents, when the setting `AutosizeGrid` asks for it; so does
    /// every way to the rows here.
    void fitColumns();

private:
    bool
    showResult(bool inside, const ShownRequest& request, const std::function<QString()>& statement);
    void take(const ShownRequest& request);
    bool apply(const QString& statement);
    void applyKeepingTrack(const QString& statement);
    void readSorting();
    void goToFirst();
    void showArrow();

    Parts m_parts;
    LibraryQuery m_query;
    int m_sortColIndex = -1;
    bool m_isResult = false;
    ShownRequest m_request;
    std::optional<TreeRequest> m_node;
    QString m_lastSearch;
};

} // namespace melovane
