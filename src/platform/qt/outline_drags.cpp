#include "platform/qt/outline_drags.h"

#include "platform/qt/outline_model.h"
#include "platform/qt/outline_painter.h"
#include "platform/qt/row_cargo.h"
#include "platform/qt/skin.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QTableView>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Form of what a dragged row carries: the view it comes from, ":", its key.
const QString kRowFormat = u"application/x-melovane-tree-row"_s;

/// A drag opens the row it rests on after that.
constexpr std::chrono::milliseconds kRestTime{600};

/// Between the insertion line and the border.
constexpr int kGap = 7;

QByteArray nameOf(const QTableView& view)
{
    return QByteArray::number(reinterpret_cast<quintptr>(&view)) + ':';
}

} // namespace

OutlineDrags::OutlineDrags(const Skin& skin,
                           const OutlineModel& model,
                           const OutlinePainter& painter,
                           QTableView& view)
    : QObject(&view)
    , m_skin(skin)
    , m_model(model)
    , m_painter(painter)
    , m_view(view)
    , m_rest(this)
{
    m_rest.setObjectName(u"Timer_DragRest"_s);
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRestTime);
    connect(&m_rest, &QTimer::timeout, this, [this] { emit restedOn(m_rowUnderPointer); });
}

void OutlineDrags::setDragSource(std::function<DragContent(const std::vector<int>& rows)> source)
{
    m_source = std::move(source);
}

int OutlineDrags::rowAt(const QPoint& place) const
{
    return m_model.rowOf(m_view.indexAt(place));
}

std::unique_ptr<QMimeData> OutlineDrags::cargo(int row) const
{
    auto result = std::make_unique<QMimeData>();
    const QString key = m_model.rows().has(row) ? m_model.rows().row(row).key : QString();
    result->setData(kRowFormat, nameOf(m_view) + key.toUtf8());
    return result;
}

void OutlineDrags::drag(int current, const std::vector<int>& selected)
{
    if (m_model.rows().has(current) && m_model.rows().row(current).movable) {
        auto* drag = new QDrag(&m_view);
        drag->setMimeData(cargo(current).release());
        drag->exec(Qt::MoveAction);
        setTarget({});
        return;
    }
    const DragContent content = m_source ? m_source(selected) : DragContent();
    if (!content.text.isEmpty()) {
        dragRows(m_view, m_skin.theme(), content, qint64(selected.size()));
    }
}

int OutlineDrags::draggedRow(const QMimeData* cargo) const
{
    const QByteArray bytes = cargo->data(kRowFormat);
    const QByteArray mine = nameOf(m_view);
    return bytes.startsWith(mine) ? m_model.find(QString::fromUtf8(bytes.mid(mine.size()))) : -1;
}

OutlineDrags::Target OutlineDrags::targetAt(const QPoint& place, const QMimeData* cargo) const
{
    const int from = draggedRow(cargo);
    const int to = rowAt(place);
    if (from < 0 || to < 0 || from == to) {
        return {};
    }
    if (m_model.rows().row(to).heading) {
        return {to, DropPlace::Into};
    }
    const bool isUpper = place.y() < m_view.visualRect(m_model.indexOf(to)).center().y();
    return {to, isUpper ? DropPlace::Above : DropPlace::Below};
}

void OutlineDrags::setTarget(const Target& target)
{
    if (!(m_target == target)) {
        m_target = target;
        m_view.viewport()->update();
    }
}

void OutlineDrags::enter(QDragEnterEvent& event)
{
    // Of others' drags each place is asked about as the pointer comes there.
    event.setAccepted(draggedRow(event.mimeData()) >= 0 ||
                      (m_dropTarget && event.mimeData()->hasText()));
}

void OutlineDrags::move(QDragMoveEvent& event)
{
    watchRow(rowAt(event.position().toPoint()));
    if (draggedRow(event.mimeData()) < 0 && m_dropTarget) {
        moveOfOthers(event);
        return;
    }
    setTarget(targetAt(event.position().toPoint(), event.mimeData()));
    event.setAccepted(m_target.row >= 0);
}

DropOffer OutlineDrags::offerOf(const QDropEvent& event) const
{
    DropOffer offer;
    offer.text = event.mimeData()->text();
    offer.copyKey = event.modifiers().testFlag(Qt::ControlModifier);
    offer.row = rowAt(event.position().toPoint());
    offer.spot = offer.row >= 0 ? DropOffer::Spot::OnRow : DropOffer::Spot::BelowRows;
    return offer;
}

void OutlineDrags::moveOfOthers(QDragMoveEvent& event)
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

void OutlineDrags::watchRow(int row)
{
    if (row != m_rowUnderPointer) {
        m_rowUnderPointer = row;
        m_rest.start();
    }
}

void OutlineDrags::leave()
{
    m_rest.stop();
    m_rowUnderPointer = -1;
    setTarget({});
}

void OutlineDrags::drop(QDropEvent& event)
{
    const Target target = targetAt(event.position().toPoint(), event.mimeData());
    const int from = draggedRow(event.mimeData());
    leave();
    if (from < 0 && m_dropTarget) {
        const DropOffer offer = offerOf(event);
        const bool isWelcome = m_dropTarget->dropEffect(offer) != DropEffect::None;
        event.setDropAction(Qt::CopyAction);
        event.setAccepted(isWelcome);
        if (isWelcome) {
            m_dropTarget->drop(offer);
        }
        return;
    }
    event.setAccepted(target.row >= 0);
    if (target.row >= 0) {
        emit rowDropped(from, target.row, target.place);
    }
}

void OutlineDrags::paint(QPainter& painter) const
{
    const QModelIndex index = m_model.indexOf(m_target.row);
    if (!index.isValid()) {
        return;
    }
    const QRect place = m_view.visualRect(index);
    painter.setPen(QPen(m_skin.theme().qcolor(ThemeRole::Accent), 2));
    if (m_target.place == DropPlace::Into) {
        painter.drawRect(place.adjusted(1, 1, -2, -1));
        return;
    }
    const int y = m_target.place == DropPlace::Above ? place.top() : place.bottom() + 1;
    const int left = m_painter.placesOf(place, m_target.row).picture.left();
    painter.drawLine(left, y, place.right() - kGap, y);
}

} // namespace melovane
