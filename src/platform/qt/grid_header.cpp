#include "platform/qt/grid_header.h"

#include "platform/qt/figures.h"
#include "platform/qt/skin.h"

#include <QPaintEvent>
#include <QPainter>

namespace melovane {

namespace {

/// Space between a heading and the borders of its section, and between heading and arrow.
constexpr int kPadding = 8;
constexpr int kArrowGap = 5;

} // namespace

GridHeader::GridHeader(const Skin& skin, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
    , m_skin(skin)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setMinimumSectionSize(fontMetrics().height() * 2);
    connect(&skin, &Skin::changed, viewport(), qOverload<>(&QWidget::update));
}

void GridHeader::setSortArrow(int column, SortArrow arrow)
{
    m_arrowColumn = column;
    m_arrow = arrow;
    viewport()->update();
}

int GridHeader::arrowSize() const
{
    return fontMetrics().ascent() * 4 / 5;
}

int GridHeader::arrowSpaceOf(int section) const
{
    const bool arrow = section == m_arrowColumn && m_arrow != SortArrow::None;
    return arrow ? arrowSize() + kArrowGap : 0;
}

QSize GridHeader::sectionSizeFromContents(int section) const
{
    const QString text = model()->headerData(section, Qt::Horizontal).toString();
    const int width = wholeTextWidth(font(), text, this) + arrowSpaceOf(section) + 2 * kPadding;
    return {width, fontMetrics().height() + 10};
}

void GridHeader::paintEvent(QPaintEvent* event)
{
    // The part behind the last section belongs to the head too.
    QPainter painter(viewport());
    painter.fillRect(event->rect(), m_skin.theme().qcolor(ThemeRole::GridHeadColor));
    painter.setPen(m_skin.theme().qcolor(ThemeRole::Hairline));
    const int bottom = viewport()->height() - 1;
    painter.drawLine(event->rect().left(), bottom, event->rect().right(), bottom);
    painter.end();
    QHeaderView::paintEvent(event);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const Theme& theme = m_skin.theme();
    painter->fillRect(rect, theme.qcolor(ThemeRole::GridHeadColor));
    painter->setPen(theme.qcolor(ThemeRole::Hairline));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.right(), rect.top() + 5, rect.right(), rect.bottom() - 5);

    const QString heading = model()->headerData(section, Qt::Horizontal).toString();
    const QVariant flags = model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole);
    const auto alignment = static_cast<Qt::Alignment>(flags.toInt());
    const int arrowSpace = arrowSpaceOf(section);
    const bool arrow = arrowSpace > 0;
    const bool centred = alignment & Qt::AlignHCenter;
    const int padding = centred ? 2 : kPadding;
    const QRect inner = rect.adjusted(padding, 0, -padding, 0);

    const int room = std::max(0, inner.width() - arrowSpace);
    const QString text = fontMetrics().elidedText(heading, Qt::ElideRight, room);
    const int width = fontMetrics().horizontalAdvance(text);
    int left = inner.left();
    if (centred) {
        left += (room - width) / 2;
    } else if (alignment & Qt::AlignRight) {
        left += room - width;
    }
    painter->setPen(theme.qcolor(arrow ? ThemeRole::Text : ThemeRole::TextSecond));
    painter->drawText(QRect(left, inner.top(), width + 1, inner.height()), Qt::AlignVCenter, text);
    if (arrow) {
        const int side = arrowSize();
        const QRect field(left + width + kArrowGap, inner.center().y() - side / 2, side, side);
        drawArrow(*painter, field);
    }
}

void GridHeader::drawArrow(QPainter& painter, const QRect& rect) const
{
    const QRectF field = QRectF(rect).adjusted(0.5, 1.0, -0.5, -1.0);
    const bool up = m_arrow == SortArrow::Ascending;
    const double base = up ? field.bottom() : field.top();
    const double tip = up ? field.top() : field.bottom();
    const QPolygonF triangle{QPointF(field.left(), base), QPointF(field.right(), base),
                             QPointF(field.center().x(), tip)};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_skin.theme().qcolor(ThemeRole::TextSecond));
    painter.drawPolygon(triangle);
    painter.restore();
}

} // namespace melovane
