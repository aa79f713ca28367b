#include "platform/qt/grid_dropping.h"

#include "platform/qt/row_cargo.h"
#include "platform/qt/skin.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QUrl>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// One row per tick while the pointer is at an edge.
constexpr std::chrono::milliseconds kScrollInterval{80};

/// The marker goes when the pointer has not moved for so long.
constexpr std::chrono::milliseconds kMarkerTime{2000};

/// Height of the insertion line.
constexpr int kMarkerHeight = 2;

class Marker : public QWidget
{
public:
    Marker(const Skin& skin, QWidget* parent)
        : QWidget(parent)
        , m_skin(skin)
    {
        setObjectName(u"frame_InsertPos"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), m_skin.theme().qcolor(ThemeRole::Accent));
    }

private:
    const Skin& m_skin;
};

} // namespace

GridDropping::GridDropping(const Skin& skin, DropTarget& target, QTableView& grid)
    : QObject(&grid)
    , m_skin(skin)
    , m_target(target)
    , m_grid(grid)
    , m_marker(new Marker(skin, grid.viewport()))
{
    m_timerRowScroll.setInterval(kScrollInterval);
    connect(&m_timerRowScroll, &QTimer::timeout, this, &GridDropping::scrollOneRow);
    m_timerVisibleDrag.setInterval(kMarkerTime);
    m_timerVisibleDrag.setSingleShot(true);
    connect(&m_timerVisibleDrag, &QTimer::timeout, this, &GridDropping::hideMarker);
    for (QWidget* place : {grid.viewport(), grid.horizontalHeader()->viewport()}) {
        place->setAcceptDrops(true);
        place->installEventFilter(this);
    }
    // The headings accept drops as one control; the viewport inside it is where they arrive.
    grid.horizontalHeader()->setAcceptDrops(true);
    grid.setAcceptDrops(true);
}

bool GridDropping::eventFilter(QObject* watched, QEvent* event)
{
    // Events arrive until the places are gone, and the grid is no grid any more by then.
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return handle(static_cast<QDropEvent&>(*event), watched != m_grid.viewport());
    case QEvent::DragLeave:
        hideMarker();
        return true;
    default:
        return false;
    }
}

DropOffer GridDropping::offerOf(const QDropEvent& event, bool onHeadings) const
{
    DropOffer offer;
    offer.text = event.mimeData()->text();
    if (!RowCargo::isIn(*event.mimeData())) {
        for (const QUrl& url : event.mimeData()->urls()) {
            if (url.isLocalFile()) {
                offer.files.append(url.toLocalFile());
            }
        }
    }
    offer.copyKey = event.modifiers().testFlag(Qt::ControlModifier);
    const QModelIndex index = m_grid.indexAt(event.position().toPoint());
    if (onHeadings) {
        offer.spot = DropOffer::Spot::AboveRows;
    } else if (m_grid.model() && m_grid.rowAt(event.position().toPoint().y()) >= 0) {
        offer.spot = DropOffer::Spot::OnRow;
        offer.row = index.isValid() ? index.row() : m_grid.rowAt(event.position().toPoint().y());
    }
    return offer;
}

bool GridDropping::handle(QDropEvent& event, bool onHeadings)
{
    const DropOffer offer = offerOf(event, onHeadings);
    const DropEffect effect = m_target.dropEffect(offer);
    if (effect == DropEffect::None) {
        hideMarker();
        event.ignore();
        return true;
    }
    // Drags only copy, also where the target moves its own rows: no file manager may ever take a
    // file away.
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop) {
        hideMarker();
        m_target.drop(offer);
        return true;
    }
    m_pointerY = onHeadings ? 0 : event.position().toPoint().y();
    showMarker(offer);
    watchEdges(m_pointerY);
    return true;
}

void GridDropping::showMarker(const DropOffer& offer)
{
    int top = 0;
    const int rows = m_grid.model() ? m_grid.model()->rowCount() : 0;
    if (offer.spot == DropOffer::Spot::OnRow) {
        top = m_grid.rowViewportPosition(static_cast<int>(offer.row));
    } else if (offer.spot == DropOffer::Spot::BelowRows && rows > 0) {
        top = m_grid.rowViewportPosition(rows - 1) + m_grid.rowHeight(rows - 1);
    }
    const int lowest = m_grid.viewport()->height() - kMarkerHeight;
    m_marker->setGeometry(0, std::clamp(top - kMarkerHeight / 2, 0, std::max(0, lowest)),
                          m_grid.viewport()->width(), kMarkerHeight);
    m_marker->show();
    m_marker->raise();
    m_timerVisibleDrag.start();
}

void GridDropping::hideMarker()
{
    m_marker->hide();
    m_timerVisibleDrag.stop();
    m_timerRowScroll.stop();
    m_scrollStep = 0;
}

void GridDropping::watchEdges(int y)
{
    const int edge = m_grid.verticalHeader()->defaultSectionSize();
    m_scrollStep = 0;
    if (y < edge) {
        m_scrollStep = -1;
    } else if (y > m_grid.viewport()->height() - edge) {
        m_scrollStep = 1;
    }
    if (m_scrollStep == 0) {
        m_timerRowScroll.stop();
    } else if (!m_timerRowScroll.isActive()) {
        m_timerRowScroll.start();
    }
}

void GridDropping::scrollOneRow()
{
    QScrollBar* bar = m_grid.verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + m_scrollStep);
    if (bar->value() == before) {
        m_timerRowScroll.stop(); // the end of the rows; one that has left scrolls no further, too
        return;
    }
    // The rows have carried the line away; it stays where the drop would fall.
    DropOffer offer;
    offer.row = m_grid.rowAt(m_pointerY);
    offer.spot = offer.row >= 0 ? DropOffer::Spot::OnRow : DropOffer::Spot::BelowRows;
    showMarker(offer);
}

} // namespace melovane
