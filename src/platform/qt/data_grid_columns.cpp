#include "platform/qt/data_grid.h"
#include "platform/qt/data_grid_model.h"
#include "platform/qt/data_grid_painter.h"
#include "platform/qt/figures.h"
#include "platform/qt/grid_font.h"
#include "platform/qt/grid_header.h"

#include <QScopedValueRollback>

#include <algorithm>

// Selection, arrangement of the columns, and fonts of the grid.

namespace melovane {

namespace {

/// Units above and below the line of text of a row, together.
constexpr int kRowSpace = 8;

/// How many rows decide the width of a fitted column in a grid that isn't shown yet.
constexpr int kRowsMeasuredUnseen = 100;

} // namespace

std::vector<RowRange> DataGrid::selection() const
{
    std::vector<RowRange> ranges;
    if (!m_model) {
        return ranges;
    }
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        ranges.push_back({range.top(), range.bottom()});
    }
    std::sort(ranges.begin(), ranges.end(),
              [](const RowRange& one, const RowRange& two) { return one.first < two.first; });
    std::vector<RowRange> joined;
    for (const RowRange& range : ranges) {
        if (!joined.empty() && range.first <= joined.back().last + 1) {
            joined.back().last = std::max(joined.back().last, range.last);
        } else {
            joined.push_back(range);
        }
    }
    return joined;
}

void DataGrid::select(const std::vector<RowRange>& rows)
{
    if (!m_model) {
        return;
    }
    QItemSelection wanted;
    const qint64 last = m_model->rowCount() - 1;
    for (const RowRange& range : rows) {
        const qint64 from = std::max<qint64>(range.first, 0);
        const qint64 to = std::min(range.last, last);
        if (from <= to) {
            wanted.append({m_model->index(static_cast<int>(from), 0),
                           m_model->index(static_cast<int>(to), m_model->columnCount() - 1)});
        }
    }
    selectionModel()->select(wanted, QItemSelectionModel::ClearAndSelect);
}

int DataGrid::currentColumn() const
{
    return currentIndex().isValid() ? currentIndex().column() : -1;
}

void DataGrid::editCurrentCell()
{
    if (currentIndex().flags().testFlag(Qt::ItemIsEditable)) {
        edit(currentIndex());
    }
}

void DataGrid::setEditing(GridEditing* editing)
{
    if (m_model) {
        m_model->setEditing(editing);
    }
}

int DataGrid::unitsOf(double figures) const
{
    return qRound(figures * figureWidth(fontMetrics())) + 2 * DataGridPainter::kPadding;
}

double DataGrid::figuresOf(int units) const
{
    return double(units - 2 * DataGridPainter::kPadding) /
           (m_widthFigure > 0 ? m_widthFigure : figureWidth(fontMetrics()));
}

std::vector<GridColumn> DataGrid::columns() const
{
    std::vector<GridColumn> result;
    std::vector<GridColumn> hidden;
    for (int place = 0; m_model && place < m_header->count(); ++place) {
        const int column = m_header->logicalIndex(place);
        GridColumn description = m_model->column(column);
        description.shown = !isColumnHidden(column);
        const auto stretched = m_stretched.find(column);
        description.stretched = stretched != m_stretched.end();
        if (description.stretched) {
            // Not what it takes in this window, else the window would set its share in the next.
            description.width = stretched->second;
        }
        if (description.shown && !description.stretched) {
            description.width = figuresOf(columnWidth(column));
        }
        (description.shown ? result : hidden).push_back(description);
    }
    result.insert(result.end(), hidden.begin(), hidden.end());
    return result;
}

void DataGrid::placeColumn(int column, int place)
{
    m_header->moveSection(m_header->visualIndex(column), place);
}

void DataGrid::arrange(const std::vector<GridColumn>& layout)
{
    const bool showsOne = std::any_of(layout.begin(), layout.end(), [this](const GridColumn& one) {
        return one.shown && columnOf(one.field) >= 0;
    });
    if (!m_model || !showsOne) {
        return;
    }
    {
        const QScopedValueRollback guard(m_fitting, true);
        m_stretched.clear();
        m_widthFigure = figureWidth(fontMetrics());
        std::vector<bool> named(static_cast<size_t>(m_model->columnCount()), false);
        m_waiting.clear();
        int place = 0;
        for (const GridColumn& wanted : layout) {
            const int column = columnOf(wanted.field);
            if (column < 0 && wanted.shown) {
                m_waiting = layout;
            }
            if (column < 0 || named[static_cast<size_t>(column)]) {
                continue;
            }
            named[static_cast<size_t>(column)] = true;
            placeColumn(column, place++);
            m_model->setHeading(column, wanted.heading);
            setColumnHidden(column, !wanted.shown);
            const GridColumn& own = m_model->column(column);
            setColumnWidth(column, unitsOf(own.fixed ? own.width : wanted.width));
            if (wanted.stretched && wanted.shown) {
                m_stretched[column] = wanted.width;
            }
        }
        for (int column = 0; column < m_model->columnCount(); ++column) {
            if (!named[static_cast<size_t>(column)]) {
                setColumnHidden(column, true);
            }
        }
    }
    fitStretchedColumns();
}

void DataGrid::fitColumns(const QStringList& except, double most)
{
    if (!m_model) {
        return;
    }
    {
        const QScopedValueRollback guard(m_fitting, true);
        // Only what is on the screen is measured; a million rows are not read for a width. Before
        // the first show no row is on the screen, and all would be measured.
        m_header->setResizeContentsPrecision(isVisible() ? 0 : kRowsMeasuredUnseen);
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QString field = m_model->column(column).field;
            if (!isColumnHidden(column) && !except.contains(field, Qt::CaseInsensitive)) {
                resizeColumnToContents(column);
                setColumnWidth(column, std::min(columnWidth(column), unitsOf(most)));
                if (const auto stretched = m_stretched.find(column);
                    stretched != m_stretched.end()) {
                    stretched->second = figuresOf(columnWidth(column));
                }
            }
        }
    }
    fitStretchedColumns();
}

void DataGrid::setRowHeight()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowSpace + m_rowSpacing);
}

void DataGrid::setGridFont(const GridFont& wanted)
{
    // Widths are kept in figures, so they follow the font.
    const std::vector<GridColumn> before = columns();
    setFont(toQFont(wanted));
    // Headings don't inherit: the desktop gives them a font of their own.
    m_header->setFont(font());
    m_rowSpacing = clampedSpacing(wanted);
    setRowHeight();
    if (!before.empty()) {
        arrange(before);
    }
}

void DataGrid::focus()
{
    setFocus(Qt::OtherFocusReason);
}

bool DataGrid::hasKeyboard() const
{
    // Not while a cell is edited: what is typed there is no command.
    return window()->focusWidget() == this && state() != EditingState && isActiveWindow();
}

} // namespace melovane
