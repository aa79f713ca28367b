#include "siblings/sleeveviewer/ui/sleeve_stage.h"

#include "platform/qt/dialog_frame.h"
#include "platform/qt/painted_face.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace melovane {

namespace {

constexpr double kStep = 1.25;
constexpr double kMaxZoom = 12;
/// A small cover is enlarged no further than this, or nothing is to be seen of it but its pixels.
constexpr double kMaxEnlarged = 4;
constexpr int kNotch = 120;

// The stage is dark under a light theme, too: colours of a picture are seen best so.
constexpr QColor kStageOfLightTheme(0x13, 0x15, 0x19);
constexpr QColor kTitle(0xdd, 0xe1, 0xe7);
constexpr QColor kText(0x8a, 0x93, 0xa2);

} // namespace

SleeveStage::SleeveStage(const Skin& skin, QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
{
    setObjectName(QStringLiteral("Stage"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setPaintedFace(*this, QAccessible::Graphic, [this] {
        if (m_isClickable) {
            emit clicked();
        }
    });
}

void SleeveStage::setImage(const QImage& image)
{
    if (image.cacheKey() != m_image.cacheKey()) {
        m_image = image;
        fit();
    }
}

void SleeveStage::setNote(const QString& title, const QString& text)
{
    m_noteTitle = title;
    m_noteText = text;
    setAccessibleDescription(title.isEmpty() ? QString() : title + QStringLiteral(". ") + text);
    update();
}

void SleeveStage::setClickable(bool clickable)
{
    m_isClickable = clickable;
    keepOnStage();
}

void SleeveStage::fit()
{
    m_zoom = 1;
    m_shift = {};
    m_shown = {};
    keepOnStage();
}

void SleeveStage::zoom(int steps)
{
    zoomAbout(QRectF(rect()).center(), steps);
}

/// What lies under the point stays there.
void SleeveStage::zoomAbout(QPointF point, int steps)
{
    const double before = m_zoom;
    m_zoom = std::clamp(m_zoom * std::pow(kStep, steps), 1.0, kMaxZoom);
    const QPointF fromMiddle = point - QRectF(rect()).center();
    m_shift = fromMiddle - (fromMiddle - m_shift) * (m_zoom / before);
    keepOnStage();
}

void SleeveStage::keepOnStage()
{
    const QSizeF room = QSizeF(size());
    const QSizeF picture = place().size();
    const double wide = std::max(0.0, (picture.width() - room.width()) / 2);
    const double high = std::max(0.0, (picture.height() - room.height()) / 2);
    m_shift = {std::clamp(m_shift.x(), -wide, wide), std::clamp(m_shift.y(), -high, high)};
    const bool isLarger = wide > 0 || high > 0;
    setCursor(isLarger        ? Qt::OpenHandCursor
              : m_isClickable ? Qt::PointingHandCursor
                              : Qt::ArrowCursor);
    update();
}

/// Where the picture lies, parts outside the stage included.
QRectF SleeveStage::place() const
{
    const QSizeF picture = QSizeF(m_image.size()) / devicePixelRatioF();
    const int gap = window()->isFullScreen() ? 0 : fontMetrics().height() / 2;
    const QSizeF room = QSizeF(size()) - QSizeF(2 * gap, 2 * gap);
    if (picture.isEmpty() || room.isEmpty()) {
        return {};
    }
    const double whole =
        std::min({room.width() / picture.width(), room.height() / picture.height(), kMaxEnlarged});
    QRectF place(QPointF(), picture * (whole * m_zoom));
    place.moveCenter(QRectF(rect()).center() + m_shift);
    return place;
}

void SleeveStage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme& theme = m_skin.theme();
    painter.fillRect(rect(),
                     theme.isDark() ? theme.qcolor(ThemeRole::BackColorSizer) : kStageOfLightTheme);
    const QRectF where = place();
    if (where.isEmpty()) {
        paintNote(painter);
        return;
    }
    const QSize pixels = (where.size() * devicePixelRatioF()).toSize();
    if (pixels.width() >= m_image.width()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(where, m_image);
        return;
    }
    // Made smaller once, well, and not at every paint.
    if (m_shown.size() != pixels) {
        m_shown = QPixmap::fromImage(
            m_image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    painter.drawPixmap(where, m_shown, QRectF(m_shown.rect()));
}

void SleeveStage::paintNote(QPainter& painter) const
{
    const int line = fontMetrics().height();
    const QFont large = titleFont(font());
    const QRect room = rect().adjusted(line * 2, 0, -line * 2, 0);
    const QRect middle = room.adjusted(0, room.height() / 2 - line * 2, 0, 0);
    painter.setFont(large);
    painter.setPen(kTitle);
    painter.drawText(middle, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_noteTitle);
    painter.setFont(font());
    painter.setPen(kText);
    painter.drawText(middle.adjusted(0, line * 2, 0, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_noteText);
}

void SleeveStage::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_isPressed = true;
        m_isMoved = false;
        m_pressed = event->position();
        m_shiftAtPress = m_shift;
    }
}

void SleeveStage::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF way = event->position() - m_pressed;
    if (!m_isPressed || (!m_isMoved && way.manhattanLength() < QApplication::startDragDistance())) {
        return;
    }
    m_isMoved = true;
    m_shift = m_shiftAtPress + way;
    keepOnStage();
}

void SleeveStage::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_isPressed) {
        return;
    }
    m_isPressed = false;
    if (!m_isMoved && place().contains(event->position())) {
        emit clicked();
    }
}

void SleeveStage::wheelEvent(QWheelEvent* event)
{
    m_turned += event->angleDelta().y();
    const int notches = m_turned / kNotch;
    m_turned -= notches * kNotch;
    if (notches == 0) {
        return;
    }
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomAbout(event->position(), notches);
    } else {
        emit stepped(-notches);
    }
}

void SleeveStage::resizeEvent(QResizeEvent*)
{
    keepOnStage();
}

QSize SleeveStage::sizeHint() const
{
    const int line = fontMetrics().height();
    return {line * 40, line * 40};
}

} // namespace melovane
