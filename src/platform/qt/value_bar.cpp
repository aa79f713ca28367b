#include "platform/qt/value_bar.h"

#include "platform/qt/skin.h"

#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace melovane {

namespace {

/// Thickness of the bar, and radius of the knob that shows while it is in use.
constexpr int kThickness = 4;
constexpr int kKnob = 5;

/// Room at either end, for knob and focus ring.
constexpr int kMargin = kKnob + 3;

/// A step of the wheel, in eighths of a degree.
constexpr int kWheelStep = 120;

} // namespace

ValueBar::ValueBar(const Skin& skin, ThemeRole fill, int width, QWidget* parent)
    : QAbstractSlider(parent)
    , m_skin(skin)
    , m_fill(fill)
    , m_width(width)
{
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setTracking(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    connect(&skin, &Skin::changed, this, qOverload<>(&QWidget::update));
}

QSize ValueBar::sizeHint() const
{
    return {m_width, 2 * kMargin};
}

QSize ValueBar::minimumSizeHint() const
{
    return {m_width / 3, 2 * kMargin};
}

int ValueBar::valueAt(int x) const
{
    return QStyle::sliderValueFromPosition(minimum(), maximum(), x - kMargin,
                                           width() - 2 * kMargin);
}

bool ValueBar::event(QEvent* event)
{
    // The window's shortcuts must not take Escape away from a drag.
    if (event->type() == QEvent::ShortcutOverride && isSliderDown() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QAbstractSlider::event(event);
}

void ValueBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || maximum() <= minimum()) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    setSliderPosition(valueAt(event->position().toPoint().x()));
    emit dragged(sliderPosition());
    update();
}

void ValueBar::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown()) {
        setSliderPosition(valueAt(event->position().toPoint().x()));
        emit dragged(sliderPosition());
        update();
    }
}

void ValueBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isSliderDown()) {
        return;
    }
    const int wanted = sliderPosition();
    // Let go without taking the value: that is for the one who hears of it.
    giveUpDrag();
    emit picked(wanted);
}

void ValueBar::giveUpDrag()
{
    setSliderPosition(value());
    setSliderDown(false);
    update();
}

void ValueBar::keyPressEvent(QKeyEvent* event)
{
    const int page = singleStep() > 0 ? pageStep() / singleStep() : 1;
    if (event->modifiers() & ~Qt::KeypadModifier) {
        event->ignore();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        emit stepped(event->key() == Qt::Key_Left ? -1 : 1);
        break;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        emit stepped(event->key() == Qt::Key_PageDown ? -page : page);
        break;
    case Qt::Key_Down:
    case Qt::Key_Up:
        emit raised(event->key() == Qt::Key_Down ? -1 : 1);
        break;
    case Qt::Key_Home:
        emit picked(minimum());
        break;
    case Qt::Key_End:
        emit endPressed();
        break;
    case Qt::Key_Escape:
        if (isSliderDown()) {
            giveUpDrag();
            emit dragGivenUp();
            break;
        }
        [[fallthrough]];
    default:
        event->ignore();
        return;
    }
    event->accept();
}

void ValueBar::wheelEvent(QWheelEvent* event)
{
    m_wheel += event->angleDelta().y();
    const int steps = m_wheel / kWheelStep;
    m_wheel %= kWheelStep;
    if (steps != 0) {
        emit raised(steps);
    }
    event->accept();
}

void ValueBar::hideEvent(QHideEvent* event)
{
    if (isSliderDown()) {
        giveUpDrag();
        emit dragGivenUp();
    }
    QAbstractSlider::hideEvent(event);
}

void ValueBar::paintEvent(QPaintEvent*)
{
    const Theme& theme = m_skin.theme();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasFocus()) {
        painter.setPen(theme.qcolor(ThemeRole::Accent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 1.5, -0.5, -1.5), 4, 4);
    }
    const double room = width() - 2 * kMargin;
    const double at =
        QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(), int(room));
    const double middle = height() / 2.0;
    QRectF bar(kMargin, middle - kThickness / 2.0, room, kThickness);
    const auto fill = [&](ThemeRole role) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.qcolor(role));
    };
    fill(ThemeRole::TextDisabled);
    painter.drawRoundedRect(bar, kThickness / 2.0, kThickness / 2.0);
    bar.setWidth(at);
    fill(m_fill);
    painter.drawRoundedRect(bar, kThickness / 2.0, kThickness / 2.0);
    if (underMouse() || hasFocus() || isSliderDown()) {
        fill(ThemeRole::Text);
        painter.drawEllipse(QPointF(kMargin + at, middle), kKnob, kKnob);
    }
}

} // namespace melovane
