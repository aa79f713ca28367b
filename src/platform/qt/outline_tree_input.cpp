#include "platform/qt/outline_drags.h"
#include "platform/qt/outline_model.h"
#include "platform/qt/outline_painter.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/selection_news.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMetaMethod>

#include <utility>

// Keys and mouse of the tree.

namespace melovane {

void OutlineTree::keyPressEvent(QKeyEvent* event)
{
    if (isEditing()) {
        // What the line of text has no use for comes here; it must not start anything.
        QTableView::keyPressEvent(event);
        return;
    }
    const int before = currentRow();
    m_selectionMoved = false;
    if (!takesKey(*event)) {
        QTableView::keyPressEvent(event);
    }
    const bool hasMoved = m_selectionMoved && selectionMode() == ExtendedSelection;
    if (currentRow() >= 0 && (hasMoved || currentRow() != before)) {
        emit rowEntered(currentRow());
    }
}

/// False for a key that is the list's own.
bool OutlineTree::takesKey(const QKeyEvent& event)
{
    const int current = currentRow();
    const bool isPlain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (current >= 0) {
            emit rowActivated(current);
        }
        return true;
    case Qt::Key_F2:
        if (current >= 0) {
            emit editPressed(current);
        }
        return true;
    case Qt::Key_Left:
        foldOrGoUp();
        return true;
    case Qt::Key_Right:
        openOrGoDown();
        return true;
    case Qt::Key_Plus:
        toggle(current, true);
        return isPlain;
    case Qt::Key_Minus:
        toggle(current, false);
        return isPlain;
    case Qt::Key_Asterisk:
        openBranch(current);
        return isPlain;
    case Qt::Key_Space:
        if (event.modifiers().testFlag(Qt::ControlModifier)) {
            flipTick(current);
            return true;
        }
        break;
    default:
        break;
    }
    if (isPlain && !event.text().isEmpty() && event.text().front().isPrint()) {
        typed(event.text());
        return true;
    }
    return false;
}

/// A blank belongs to a name that is being typed; alone it opens a row or flips its box.
void OutlineTree::typed(const QString& text)
{
    static const QMetaMethod kTyped = QMetaMethod::fromSignal(&OutlineTree::letterTyped);
    const bool isListenedTo = isSignalConnected(kTyped);
    const bool goesOn = !isListenedTo && !m_typed.isEmpty() &&
                        m_typing.elapsed() <= QApplication::keyboardInputInterval();
    if (text != QStringLiteral(" ") || goesOn) {
        if (isListenedTo) {
            emit letterTyped(text);
        } else {
            keyboardSearch(text);
        }
        return;
    }
    const int current = currentRow();
    if (current < 0) {
        return;
    }
    if (m_model->rows().isParent(current) || m_model->rows().row(current).fillable) {
        toggle(current, !isOpen(current));
    } else {
        flipTick(current);
    }
}

void OutlineTree::keyboardSearch(const QString& text)
{
    const bool goesOn = m_typing.isValid() && !m_typed.isEmpty() &&
                        m_typing.elapsed() <= QApplication::keyboardInputInterval();
    m_typing.start();
    // The same letter again and again goes from one row to the next.
    const bool isAgain = goesOn && m_typed == text;
    if (!isAgain) {
        m_typed = goesOn ? m_typed + text : text;
    }
    const bool stays = goesOn && !isAgain;
    const int start = currentIndex().isValid() ? currentIndex().row() + (stays ? 0 : 1) : 0;
    const int line = m_model->findText(start, m_typed);
    if (line >= 0) {
        setCurrentIndex(m_model->index(line, 0));
    }
}

/// As far as it can be: of a row that is filled only now, whoever fills it is told.
void OutlineTree::toggle(int row, bool open)
{
    if (!m_model->rows().has(row)) {
        return;
    }
    if (!m_model->rows().isParent(row)) {
        if (open && m_model->rows().row(row).fillable) {
            emit rowOpening(row);
        }
    } else if (isOpen(row) != open) {
        setOpen(row, open);
        emit rowToggled(row, open);
    }
}

void OutlineTree::openBranch(int row)
{
    if (row >= 0 && m_model->rows().isParent(row)) {
        m_model->setBranchOpen(row, true);
        emit rowToggled(row, true);
    } else {
        toggle(row, true);
    }
}

void OutlineTree::openOrGoDown()
{
    const int current = currentRow();
    if (isOpen(current)) {
        setCurrentIndex(m_model->index(currentIndex().row() + 1, 0));
    } else {
        toggle(current, true);
    }
}

void OutlineTree::foldOrGoUp()
{
    const int current = currentRow();
    if (isOpen(current)) {
        toggle(current, false);
    } else if (current >= 0 && m_model->rows().parent(current) >= 0) {
        setCurrentIndex(m_model->indexOf(m_model->rows().parent(current)));
    }
}

void OutlineTree::flipTick(int row)
{
    TreeRow changed = this->row(row);
    if (changed.tick == RowTick::None) {
        return;
    }
    const bool on = changed.tick == RowTick::Off;
    changed.tick = on ? RowTick::On : RowTick::Off;
    m_model->setRow(row, changed);
    emit rowTicked(row, on);
}

void OutlineTree::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && !event->isAutoRepeat() && !isEditing()) {
        if (currentRow() >= 0) {
            emit deletePressed(currentRow());
        }
        return;
    }
    QTableView::keyReleaseEvent(event);
}

QModelIndex OutlineTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int lines = m_model->rowCount();
    if (lines > 0 && (action == MoveHome || action == MoveEnd)) {
        return m_model->index(action == MoveHome ? 0 : lines - 1, 0);
    }
    return QTableView::moveCursor(action, modifiers);
}

void OutlineTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (isToldByRow(selected) && isToldByRow(deselected)) {
        QTableView::selectionChanged(selected, deselected);
    } else {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): that of the table is what takes too long.
        QAbstractItemView::selectionChanged(selected, deselected);
        QAccessibleEvent told(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&told);
    }
    m_selectionMoved = true;
}

OutlineTree::Part OutlineTree::partAt(const QPoint& place) const
{
    const QModelIndex index = indexAt(place);
    if (!index.isValid()) {
        return {};
    }
    const int row = m_model->rowOf(index);
    const OutlinePlaces places = m_painter->placesOf(visualRect(index), row);
    // A little beside still counts: nobody aims at a mark by the pixel.
    if (places.tick.adjusted(-4, -4, 4, 4).contains(place)) {
        return {Part::Kind::Tick, row};
    }
    if (!places.mark.isEmpty() && place.x() < places.picture.left() &&
        place.x() >= places.mark.left() - 4) {
        return {Part::Kind::Mark, row};
    }
    return {};
}

void OutlineTree::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton ? partAt(event->position().toPoint()) : Part();
    if (m_pressed.kind == Part::Kind::None) {
        QTableView::mousePressEvent(event);
    } else if (m_pressed.kind == Part::Kind::Mark) {
        toggle(m_pressed.row, !isOpen(m_pressed.row));
    }
}

void OutlineTree::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressed.kind == Part::Kind::None) {
        QTableView::mouseMoveEvent(event);
    }
}

void OutlineTree::mouseReleaseEvent(QMouseEvent* event)
{
    const Part pressed = std::exchange(m_pressed, {});
    if (pressed.kind == Part::Kind::None) {
        QTableView::mouseReleaseEvent(event);
    } else if (pressed.kind == Part::Kind::Tick && partAt(event->position().toPoint()) == pressed) {
        flipTick(pressed.row);
    }
    emit handLeft();
}

void OutlineTree::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint place = event->position().toPoint();
    if (event->button() == Qt::LeftButton && partAt(place).kind != Part::Kind::None) {
        mousePressEvent(event); // two quick clicks are two
        return;
    }
    const QModelIndex index = indexAt(place);
    QTableView::mouseDoubleClickEvent(event);
    if (!index.isValid() || event->button() != Qt::LeftButton) {
        return;
    }
    const int row = m_model->rowOf(index);
    if (selectionMode() == ExtendedSelection) {
        // The first press with Ctrl has taken the row out of a selection that held it.
        selectionModel()->select(index, QItemSelectionModel::Select);
    }
    toggle(row, !isOpen(row));
    emit rowActivated(row);
}

void OutlineTree::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (index.isValid() && selectionModel()->isSelected(index)) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    } else if (index.isValid()) {
        setCurrentIndex(index);
    }
    const QRect place = placeOf(m_model->rowOf(index));
    const QPoint below = viewport()->mapToGlobal(place.bottomLeft());
    emit menuWanted(m_model->rowOf(index), byMouse ? event->globalPos() : below);
}

void OutlineTree::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    Q_UNUSED(hint)
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    m_model->setEdited({}, {});
    emit editEnded();
}

void OutlineTree::startDrag(Qt::DropActions actions)
{
    Q_UNUSED(actions)
    m_drags->drag(currentRow(), selectedRows());
    emit handLeft();
}

void OutlineTree::dragEnterEvent(QDragEnterEvent* event)
{
    m_drags->enter(*event);
}

void OutlineTree::dragMoveEvent(QDragMoveEvent* event)
{
    QTableView::dragMoveEvent(event); // scrolls at the borders
    m_drags->move(*event);
}

void OutlineTree::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTableView::dragLeaveEvent(event);
    m_drags->leave();
}

void OutlineTree::dropEvent(QDropEvent* event)
{
    stopAutoScroll();
    setState(NoState);
    m_drags->drop(*event);
}

} // namespace melovane
