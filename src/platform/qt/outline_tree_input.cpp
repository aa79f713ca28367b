#include "platform/controls/drop_target.h"
#include "platform/qt/outline_model.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>

// Keys, mouse and drags of the tree.

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Form of what a dragged row carries: the tree it comes from, ":", its key.
const QString kRowFormat = u"application/x-melovane-tree-row"_s;

QByteArray nameOf(const OutlineTree* tree)
{
    return QByteArray::number(reinterpret_cast<quintptr>(tree)) + ':';
}

} // namespace

void OutlineTree::keyPressEvent(QKeyEvent* event)
{
    const int before = currentRow();
    if (isEditing()) {
        // What the line of text has no use for comes here; it must not start anything.
        QTreeView::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (before >= 0) {
            emit rowActivated(before);
        }
        return;
    case Qt::Key_F2:
        if (before >= 0) {
            emit editPressed(before);
        }
        return;
    case Qt::Key_Left:
        // Never sideways: there is nothing to scroll to.
        foldOrGoUp();
        break;
    default:
        QTreeView::keyPressEvent(event);
    }
    if (currentRow() >= 0 && currentRow() != before) {
        emit rowEntered(currentRow());
    }
}

void OutlineTree::foldOrGoUp()
{
    const QModelIndex index = currentIndex();
    if (m_model->rowCount(index) > 0 && isExpanded(index)) {
        collapse(index);
    } else if (index.parent().isValid()) {
        setCurrentIndex(index.parent());
    }
}

void OutlineTree::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && !event->isAutoRepeat() && !isEditing()) {
        if (currentRow() >= 0) {
            emit deletePressed(currentRow());
        }
        return;
    }
    QTreeView::keyReleaseEvent(event);
}

void OutlineTree::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeView::mouseReleaseEvent(event);
    emit handLeft();
}

void OutlineTree::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    QTreeView::mouseDoubleClickEvent(event);
    if (index.isValid() && event->button() == Qt::LeftButton) {
        emit rowActivated(m_model->placeOf(index));
    }
}

void OutlineTree::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (index.isValid()) {
        setCurrentIndex(index);
    }
    const QPoint below = viewport()->mapToGlobal(visualRect(index).bottomLeft());
    emit menuWanted(m_model->placeOf(index), byMouse ? event->globalPos() : below);
}

void OutlineTree::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    Q_UNUSED(hint)
    QTreeView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    m_model->setEdited({}, {});
    emit editEnded();
}

std::unique_ptr<QMimeData> OutlineTree::cargo(int index) const
{
    auto result = std::make_unique<QMimeData>();
    result->setData(kRowFormat, nameOf(this) + row(index).key.toUtf8());
    return result;
}

void OutlineTree::startDrag(Qt::DropActions actions)
{
    Q_UNUSED(actions)
    const int dragged = currentRow();
    if (!row(dragged).movable) {
        return;
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(cargo(dragged).release());
    drag->exec(Qt::MoveAction);
    setTarget({});
    emit handLeft();
}

int OutlineTree::draggedRow(const QMimeData* cargo) const
{
    const QByteArray bytes = cargo->data(kRowFormat);
    const QByteArray mine = nameOf(this);
    return bytes.startsWith(mine) ? find(QString::fromUtf8(bytes.mid(mine.size()))) : -1;
}

OutlineTree::Target OutlineTree::targetAt(const QPoint& place, const QMimeData* cargo) const
{
    const int from = draggedRow(cargo);
    const int to = m_model->placeOf(indexAt(place));
    if (from < 0 || to < 0 || from == to) {
        return {};
    }
    if (row(to).heading) {
        return {to, DropPlace::Into};
    }
    const bool isUpper = place.y() < placeOf(to).center().y();
    return {to, isUpper ? DropPlace::Above : DropPlace::Below};
}

void OutlineTree::setTarget(const Target& target)
{
    if (!(m_target == target)) {
        m_target = target;
        viewport()->update();
    }
}

void OutlineTree::dragEnterEvent(QDragEnterEvent* event)
{
    // Of others' drags each place is asked about as the pointer comes there.
    event->setAccepted(draggedRow(event->mimeData()) >= 0 ||
                       (m_dropTarget && event->mimeData()->hasText()));
}

void OutlineTree::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeView::dragMoveEvent(event); // scrolls at the borders
    // The view's own delay would also fold a row that is open, under the pointer of the user.
    unfoldLater(m_model->placeOf(indexAt(event->position().toPoint())));
    if (draggedRow(event->mimeData()) < 0 && m_dropTarget) {
        moveOfOthers(*event);
        return;
    }
    setTarget(targetAt(event->position().toPoint(), event->mimeData()));
    event->setAccepted(m_target.row >= 0);
}

DropOffer OutlineTree::offerOf(const QDropEvent& event) const
{
    DropOffer offer;
    offer.text = event.mimeData()->text();
    offer.copyKey = event.modifiers().testFlag(Qt::ControlModifier);
    offer.row = m_model->placeOf(indexAt(event.position().toPoint()));
    offer.spot = offer.row >= 0 ? DropOffer::Spot::OnRow : DropOffer::Spot::BelowRows;
    return offer;
}

void OutlineTree::moveOfOthers(QDragMoveEvent& event)
{
    const DropOffer offer = offerOf(event);
    if (m_dropTarget->dropEffect(offer) == DropEffect::None) {
        setTarget({});
        event.ignore();
        return;
    }
    setTarget({int(offer.row), DropPlace::Into});
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

void OutlineTree::unfoldLater(int row)
{
    if (row != m_rowUnderPointer) {
        m_rowUnderPointer = row;
        m_unfold.start();
    }
}

void OutlineTree::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTreeView::dragLeaveEvent(event);
    m_unfold.stop();
    m_rowUnderPointer = -1;
    setTarget({});
}

void OutlineTree::dropEvent(QDropEvent* event)
{
    const Target target = targetAt(event->position().toPoint(), event->mimeData());
    const int from = draggedRow(event->mimeData());
    setTarget({});
    m_unfold.stop();
    m_rowUnderPointer = -1;
    stopAutoScroll();
    setState(NoState);
    if (from < 0 && m_dropTarget) {
        const DropOffer offer = offerOf(*event);
        const bool isWelcome = m_dropTarget->dropEffect(offer) != DropEffect::None;
        event->setDropAction(Qt::CopyAction);
        event->setAccepted(isWelcome);
        if (isWelcome) {
            m_dropTarget->drop(offer);
        }
        return;
    }
    event->setAccepted(target.row >= 0);
    if (target.row >= 0) {
        emit rowDropped(from, target.row, target.place);
    }
}

} // namespace melovane
