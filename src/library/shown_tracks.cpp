#include "library/shown_tracks.h"

#include "bus/event_guard.h"
#include "config/global_settings.h"
#include "library/library_look.h"
#include "library/search_text.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/pointer_control.h"
#include "platform/db/db_error.h"
#include "platform/system/trim_blanks.h"
#include "views/grid_rows.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section of the settings with the state of this view.
const QString kStateSection = u"Default"_s;

/// Columns that are never fitted to their contents, and the widest that others get, in figures.
const QStringList kFixedColumns = {u"ac"_s, u"dc"_s, u"note"_s};
constexpr double kWidestFitted = 60;

/// Name of every way to the rows in the log.
const QString kShowEvent = u"ctl_MP3DB.show"_s;

} // namespace

ShownTracks::ShownTracks(Parts parts)
    : m_parts(parts)
    , m_query(m_parts.engine)
{}

void ShownTracks::configure()
{
    m_parts.rows.changeDatabase(m_parts.settings.DbName());
    readSorting();
    m_query.configure(m_parts.settings.DbName());
}

void ShownTracks::readSorting()
{
    // The names stand in a file that anybody may edit, and end up in a statement.
    QString column = m_parts.settings.GetKeyValue(kStateSection, u"SortColName"_s, u"Titel"_s);
    if (m_parts.grid.columnOf(column) < 0) {
        column = u"Titel"_s;
    }
    m_sortColIndex = m_parts.grid.columnOf(column);
    m_query.setSorting(column,
                       m_parts.settings.GetKeyValue(kStateSection, u"SortRichtung"_s, u"ASC"_s));
    showArrow();
}

void ShownTracks::showFirst(const QString& text, bool hasRows)
{
    if (!hasRows) {
        QString statement;
        // Half a short form of the last run is no reason to start without the library.
        const bool isSearch = !text.isEmpty() && m_parts.guard.run(kShowEvent, [&] {
            statement = m_query.searchStatement(text, chosenSearchColumns(m_parts.settings));
        });
        m_parts.rows.data().SetRecordSource(isSearch ? statement : m_query.startStatement());
        m_parts.rows.read();
    }
    m_isResult = !text.isEmpty();
    if (m_isResult) {
        take({ShownRequest::Kind::SearchLine, text});
    }
    fitColumns();
}

void ShownTracks::take(const ShownRequest& request)
{
    m_request = request;
    m_node.reset();
    if (request.kind == ShownRequest::Kind::SearchLine) {
        m_lastSearch = request.text;
    }
}

// ---- which tracks

bool ShownTracks::search(const QString& text)
{
    if (isHalfShortForm(readSearchText(text))) {
        return false; // its other half is being typed
    }
    const ShownRequest request{ShownRequest::Kind::SearchLine, trimBlanks(text)};
    return showResult(text.startsWith(u'*'), request, [&] {
        return m_query.searchStatement(text, chosenSearchColumns(m_parts.settings));
    });
}

bool ShownTracks::showTree(const TreeRequest& request)
{
    const bool isShown = showResult(request.value.startsWith(u'*'), shownRequest(request), [&] {
        return m_query.treeStatement(request, chosenSearchColumns(m_parts.settings));
    });
    if (isShown) {
        m_node = request;
    }
    return isShown;
}

bool ShownTracks::showWhole(LibraryView view)
{
    return showResult(false, shownRequest(view), [&] { return m_query.wholeView(view); });
}

/// \param inside the text stands anywhere in a column, which the pointer tells
bool ShownTracks::showResult(bool inside,
                             const ShownRequest& request,
                             const std::function<QString()>& statement)
{
    const BusyCursor busy(m_parts.pointer, inside ? PointerShape::Search : PointerShape::Wait);
    QString wanted;
    if (!m_parts.guard.run(kShowEvent, [&] { wanted = statement(); })) {
        return false;
    }
    if (wanted != m_parts.rows.data().RecordSource()) {
        if (!apply(wanted)) {
            return false;
        }
        goToFirst();
    }
    m_isResult = true;
    take(request);
    m_parts.look.setPlayIsTimeOfDay(m_query.view() == LibraryView::DBState);
    fitColumns();
    return true;
}

bool ShownTracks::apply(const QString& statement)
{
    bool isWhole = true;
    const bool ran = m_parts.guard.run(kShowEvent, [&] {
        try {
            m_parts.rows.show(statement);
        } catch (const DbError& error) {
            // Half a short form is no fault of anybody's: its other half is being typed.
            if (error.number() != dberror::kSyntax) {
                throw;
            }
            isWhole = false;
        }
    });
    return ran && isWhole;
}

/// Other tracks begin at their first; the keyboard in the grid has a row to act on.
void ShownTracks::goToFirst()
{
    if (m_parts.rows.count() == 0) {
        return;
    }
    m_parts.grid.showRow(0);
    if (m_parts.grid.hasKeyboard()) {
        m_parts.grid.goToRow(0, 0);
    }
}

void ShownTracks::fitColumns()
{
    if (m_parts.settings.AutosizeGrid() != 0) {
        m_parts.grid.fitColumns(kFixedColumns, kWidestFitted);
    }
}

// ---- order and place

void ShownTracks::sortBy(int column)
{
    const QString field = m_parts.grid.dataField(column);
    if (field.isEmpty()) {
        return;
    }
    const BusyCursor busy(m_parts.pointer);
    const bool turn = column == m_sortColIndex && sortOrder() != "DESC"_L1;
    const QString statement = m_query.sortedBy(field, turn ? u"DESC"_s : u"ASC"_s);
    m_sortColIndex = column;
    showArrow();
    applyKeepingTrack(statement);
}

void ShownTracks::showArrow()
{
    m_parts.grid.setSortArrow(m_sortColIndex, sortOrder() == "DESC"_L1 ? SortArrow::Descending
                                                                       : SortArrow::Ascending);
}

void ShownTracks::refresh()
{
    applyKeepingTrack(m_parts.rows.data().RecordSource());
}

void ShownTracks::applyKeepingTrack(const QString& statement)
{
    const GridRows::Place place = m_parts.rows.place();
    if (apply(statement)) {
        m_parts.rows.restore(place, GridRows::Stays::Track);
        m_parts.rows.restoreSelection(place);
        fitColumns();
    }
}

void ShownTracks::storeSorting()
{
    GlobalSettings& settings = m_parts.settings;
    settings.WriteKeyValue(kStateSection, u"SortColName"_s, sortColumn());
    settings.WriteKeyValue(kStateSection, u"SortRichtung"_s, sortOrder());
    settings.WriteKeyValue(kStateSection, u"SortColIndex"_s, QString::number(m_sortColIndex));
}

} // namespace melovane
