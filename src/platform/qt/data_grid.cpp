#include "platform/qt/data_grid.h"

#include "platform/qt/data_grid_model.h"
#include "platform/qt/data_grid_painter.h"
#include "platform/qt/empty_view.h"
#include "platform/qt/figures.h"
#include "platform/qt/grid_header.h"
#include "platform/qt/selection_news.h"
#include "platform/qt/skin.h"

#include <QAccessible>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Least width of a column that takes free room, in figures, unless its own is smaller.
constexpr double kLeastStretched = 26;

} // namespace

DataGrid::DataGrid(const Skin& skin, const IconSet& icons, QWidget* parent)
    : QTableView(parent)
    , m_skin(skin)
    , m_header(new GridHeader(skin, this))
    , m_emptyView(new EmptyView(icons, u"note"_s, viewport()))
{
    setHorizontalHeader(m_header);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setRowHeight();
    setItemDelegate(new DataGridPainter(skin, icons, this));
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setCornerButtonEnabled(false);

    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_header, &QHeaderView::customContextMenuRequested, this, [this](const QPoint& place) {
        emit headMenuWanted(m_header->viewport()->mapToGlobal(place));
    });
    connect(m_header, &QHeaderView::sectionClicked, this, &DataGrid::headerClicked);
    // The second of two quick clicks turns the order round like a slow one.
    connect(m_header, &QHeaderView::sectionDoubleClicked, this, &DataGrid::headerClicked);
    connect(m_header, &QHeaderView::sectionResized, this, &DataGrid::noteColumnResized);
    connect(m_emptyView, &EmptyView::buttonClicked, this, &DataGrid::emptyButtonClicked);
    connect(&skin, &Skin::changed, viewport(), qOverload<>(&QWidget::update));
    updateEmptyView();
}

DataGrid::~DataGrid() = default;

void DataGrid::setSource(const GridSource& rows,
                         const GridLook& look,
                         std::vector<GridColumn> columns)
{
    m_model = new DataGridModel(rows, look, std::move(columns), this);
    setModel(m_model);
    connect(m_model, &QAbstractItemModel::modelReset, this, &DataGrid::takeNewColumns);
    connect(m_model, &QAbstractItemModel::modelReset, this, &DataGrid::updateEmptyView);
    applyColumnWidths(0);
    m_columnsTaken = m_model->columnCount();
    updateEmptyView();
}

/// Columns that came with the fields of other rows stay out of sight, unless the layout, which was
/// there before them, shows them.
void DataGrid::takeNewColumns()
{
    if (m_columnsTaken == m_model->columnCount()) {
        return;
    }
    applyColumnWidths(std::exchange(m_columnsTaken, m_model->columnCount()));
    // Once: later columns must not undo what the user has arranged since.
    const std::vector<GridColumn> wanted = std::exchange(m_waiting, {});
    if (!wanted.empty()) {
        arrange(wanted);
        m_waiting.clear();
    }
}

void DataGrid::applyColumnWidths(int from)
{
    for (int column = from; column < m_model->columnCount(); ++column) {
        const GridColumn& description = m_model->column(column);
        if (description.fixed) {
            m_header->setSectionResizeMode(column, QHeaderView::Fixed);
        }
        setColumnWidth(column, unitsOf(description.width));
        setColumnHidden(column, !description.shown);
        if (description.stretched) {
            m_stretched[column] = description.width;
        }
    }
    fitStretchedColumns();
}

/// Whether the scroll bar is there or not, so that no column moves when it comes or goes.
int DataGrid::roomForColumns() const
{
    return width() - 2 * frameWidth() - verticalScrollBar()->sizeHint().width();
}

void DataGrid::fitStretchedColumns()
{
    if (m_fitting) {
        return;
    }
    const QScopedValueRollback guard(m_fitting, true);
    double weights = 0;
    int room = roomForColumns() - m_header->length();
    for (const auto& [column, figures] : m_stretched) {
        if (!isColumnHidden(column)) {
            weights += figures;
            room += columnWidth(column) - unitsOf(std::min(figures, kLeastStretched));
        }
    }
    for (const auto& [column, figures] : m_stretched) {
        if (!isColumnHidden(column)) {
            // What is left over by rounding goes to the last.
            const int share = room > 0 ? static_cast<int>(room * figures / weights) : 0;
            setColumnWidth(column, unitsOf(std::min(figures, kLeastStretched)) + share);
            room -= share;
            weights -= figures;
        }
    }
}

void DataGrid::noteColumnResized(int column, int oldWidth, int newWidth)
{
    Q_UNUSED(oldWidth)
    Q_UNUSED(newWidth)
    if (m_fitting || !m_model) {
        return;
    }
    m_stretched.erase(column); // the user gave it a width of his own
    fitStretchedColumns();
}

void DataGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    m_emptyView->setGeometry(viewport()->rect());
    fitStretchedColumns();
}

void DataGrid::focusInEvent(QFocusEvent* event)
{
    // The view itself makes a cell the current one, but selects nothing.
    const bool hadCurrent = currentIndex().isValid();
    QTableView::focusInEvent(event);
    const bool choosesOne = m_model && !hadCurrent && !selectionModel()->hasSelection();
    if (choosesOne && m_model->rowCount() > 0) {
        goToRow(0, 0);
    }
    viewport()->update();
}

void DataGrid::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    m_deleteKey.forget();
    viewport()->update();
}

int DataGrid::firstShownColumn() const
{
    for (int place = 0; place < m_header->count(); ++place) {
        const int column = m_header->logicalIndex(place);
        if (!isColumnHidden(column)) {
            return column;
        }
    }
    return 0;
}

qint64 DataGrid::currentRow() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

qint64 DataGrid::firstVisibleRow() const
{
    return verticalScrollBar()->value();
}

qint64 DataGrid::visibleRows() const
{
    return std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize());
}

void DataGrid::showRow(qint64 row)
{
    if (m_model && row >= 0 && row < m_model->rowCount()) {
        scrollTo(m_model->index(static_cast<int>(row), firstShownColumn()));
    }
}

void DataGrid::goToRow(qint64 row, qint64 firstVisible)
{
    if (!m_model || row < 0 || row >= m_model->rowCount()) {
        clearSelection();
        return;
    }
    const QModelIndex index = m_model->index(static_cast<int>(row), firstShownColumn());
    setCurrentIndex(index);
    verticalScrollBar()->setValue(
        static_cast<int>(std::clamp<qint64>(firstVisible, 0, m_model->rowCount() - 1)));
    scrollTo(index);
}

QString DataGrid::dataField(int column) const
{
    const bool known = m_model && column >= 0 && column < m_model->columnCount();
    return known ? m_model->column(column).field : QString();
}

int DataGrid::columnOf(const QString& field) const
{
    return m_model ? m_model->columnOf(field) : -1;
}

void DataGrid::setSortButtons(bool on)
{
    m_header->setSectionsClickable(on);
}

void DataGrid::setSortArrow(int column, SortArrow arrow)
{
    m_header->setSortArrow(column, arrow);
}

SortArrow DataGrid::sortArrow(int column) const
{
    return m_header->arrowColumn() == column ? m_header->arrow() : SortArrow::None;
}

void DataGrid::setEmptyNote(const EmptyNote& note)
{
    m_emptyView->setNote(note);
    updateEmptyView();
}

EmptyNote DataGrid::emptyNote() const
{
    return m_emptyView->note();
}

void DataGrid::updateEmptyView()
{
    const bool noRows = !m_model || m_model->rowCount() == 0;
    m_emptyView->setVisible(noRows && m_emptyView->note() != EmptyNote());
}

void DataGrid::fillColumnMenu(QMenu& menu)
{
    const int shown = m_header->count() - m_header->hiddenSectionCount();
    for (int place = 0; place < m_header->count(); ++place) {
        const int column = m_header->logicalIndex(place);
        QAction* entry = menu.addAction(m_model->column(column).heading);
        entry->setCheckable(true);
        entry->setChecked(!isColumnHidden(column));
        entry->setEnabled(!entry->isChecked() || shown > 1);
        connect(entry, &QAction::toggled, this, [this, column](bool on) {
            setColumnHidden(column, !on);
            fitStretchedColumns();
        });
    }
}

void DataGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (current.row() != previous.row()) {
        emit currentRowChanged(currentRow());
    }
}

void DataGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (isToldByRow(selected) && isToldByRow(deselected)) {
        QTableView::selectionChanged(selected, deselected);
    } else {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): that of the table is what takes too long.
        QAbstractItemView::selectionChanged(selected, deselected);
        QAccessibleEvent told(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&told);
    }
    emit selectedRowsChanged();
}

QModelIndex DataGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (m_model && (action == MoveHome || action == MoveEnd)) {
        const int row = action == MoveHome ? 0 : m_model->rowCount() - 1;
        return m_model->index(row, std::max(0, currentIndex().column()));
    }
    return QTableView::moveCursor(action, modifiers);
}

} // namespace melovane
