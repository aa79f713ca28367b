#include "platform/qt/elided_label.h"

#include "platform/qt/whole_text_tip.h"

#include <QHelpEvent>
#include <QPainter>

namespace melovane {

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    // A name may look like markup; it is shown as it stands.
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    if (text().isEmpty()) {
        return QLabel::minimumSizeHint();
    }
    return {fontMetrics().horizontalAdvance(QChar(0x2026)), QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::fits() const
{
    return fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showWholeText(*static_cast<QHelpEvent*>(event), this, text(), fits());
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* event)
{
    if (fits()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
}

} // namespace melovane
