#include "platform/qt/data_grid.h"
#include "platform/qt/data_grid_model.h"
#include "platform/qt/grid_dropping.h"
#include "platform/qt/row_cargo.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>

#include <utility>

// Keys, mouse and drags of the grid.

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

qint64 rowsIn(const std::vector<RowRange>& ranges)
{
    qint64 rows = 0;
    for (const RowRange& range : ranges) {
        rows += range.last - range.first + 1;
    }
    return rows;
}

} // namespace

void DataGrid::setDragSource(std::function<DragContent()> source)
{
    m_dragSource = std::move(source);
}

void DataGrid::setDropTarget(DropTarget& target)
{
    m_dropping = new GridDropping(m_skin, target, *this);
}

void DataGrid::keyboardSearch(const QString& text)
{
    Q_UNUSED(text)
}

void DataGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    // What the user has typed is his until it is taken; Escape gives it up.
    if (hint == QAbstractItemDelegate::RevertModelCache || !m_model || !m_model->wasRefused()) {
        QTableView::closeEditor(editor, hint);
    }
}

void DataGrid::keyPressEvent(QKeyEvent* event)
{
    if (state() == EditingState) {
        // What the editor of a cell has no use for comes here; it must not start anything.
        event->ignore();
        return;
    }
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isDigit = event->key() >= Qt::Key_0 && event->key() <= Qt::Key_9;
    if (event->key() == Qt::Key_Escape) {
        emit escapePressed();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (currentRow() >= 0) {
            emit rowActivated(currentRow());
        }
    } else if (event->key() == Qt::Key_Delete && modifiers == Qt::NoModifier) {
        if (m_deleteKey.pressed(*event)) {
            emit deletePressed();
        }
    } else if (event->key() == Qt::Key_Space && modifiers == Qt::NoModifier && currentRow() >= 0) {
        emit spacePressed();
    } else if (isDigit && modifiers == Qt::ControlModifier) {
        emit digitPressed(event->key() - Qt::Key_0);
    } else if (m_dropping != nullptr && modifiers == Qt::ControlModifier &&
               (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        // Not handed on: the row goes along with the cursor, which must not move twice.
        emit moveRowWanted(event->key() == Qt::Key_Up ? -1 : 1);
    } else {
        QTableView::keyPressEvent(event);
        const bool jumps = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
        if (jumps && modifiers == Qt::NoModifier && currentRow() >= 0) {
            // The view selects nothing when the row was the current one already.
            selectRow(int(currentRow()));
        }
    }
}

void DataGrid::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete) {
        if (m_deleteKey.released(*event) && state() != EditingState) {
            emit deletePressed();
        }
        return;
    }
    QTableView::keyReleaseEvent(event);
}

void DataGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && event->button() == Qt::LeftButton) {
        // The first press with Ctrl has taken the row out of a selection that held it.
        selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        emit rowActivated(index.row());
    }
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (!index.isValid()) {
        return;
    }
    if (!selectionModel()->isRowSelected(index.row())) {
        setCurrentIndex(index);
    }
    const QPoint below = viewport()->mapToGlobal(visualRect(index).bottomLeft());
    emit rowMenuWanted(index.row(), byMouse ? event->globalPos() : below);
}

void DataGrid::startDrag(Qt::DropActions actions)
{
    Q_UNUSED(actions)
    const DragContent content = m_dragSource ? m_dragSource() : DragContent();
    if (content.text.isEmpty()) {
        return;
    }
    dragRows(*this, m_skin.theme(), content, rowsIn(selection()));
}

} // namespace melovane
