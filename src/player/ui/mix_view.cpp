#include "player/ui/mix_view.h"

#include "config/config_objects.h"
#include "platform/qt/painted_face.h"
#include "platform/qt/skin.h"
#include "store/milli_sec_to_min.h"

#include <QLocale>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace melovane {

MixView::MixView(const Skin& skin, const ConfigObjects& texts, QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
    , m_texts(texts)
{
    connect(&skin, &Skin::changed, this, qOverload<>(&QWidget::update));
    setPaintedFace(*this, QAccessible::StaticText);
}

void MixView::setFace(const MixFace& face, bool isPlaying)
{
    m_face = face;
    m_isPlaying = isPlaying;
    setAccessibleName(text());
    update();
}

double MixView::xOf(double ms) const
{
    return std::max(0.0, ms) * width() / kSpanMs;
}

double MixView::endX() const
{
    return xOf(m_face.remainingMs);
}

double MixView::beginX() const
{
    return xOf(m_face.remainingMs - m_face.mixMs);
}

QString MixView::text() const
{
    if (!m_isPlaying) {
        return {};
    }
    if (!m_face.isPlanned) {
        return m_texts.text(u"air.mix.none");
    }
    const int ahead = int(std::max(0.0, m_face.remainingMs - m_face.mixMs));
    return m_texts.text(
        u"air.mix.ahead", Mod_MilliSecToMin::MilliSecToMin(ahead),
        QLocale(m_texts.text(u"Sprach.Code")).toString(m_face.mixMs / 1000.0, 'f', 1));
}

QSize MixView::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 3};
}

void MixView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme& theme = m_skin.theme();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), theme.qcolor(ThemeRole::BackColorSizer));
    if (!m_isPlaying) {
        return;
    }
    const double middle = height() / 2.0;
    painter.setPen(Qt::NoPen);
    // The present entry above falls along the mix, the next one below rises.
    QPainterPath present;
    present.moveTo(0, 2);
    present.lineTo(m_face.isPlanned ? beginX() : endX(), 2);
    present.lineTo(endX(), middle - 1);
    present.lineTo(0, middle - 1);
    painter.setBrush(theme.qcolor(ThemeRole::GridColorAktivePlay));
    painter.drawPath(present);
    if (m_face.isPlanned) {
        QPainterPath next;
        next.moveTo(beginX(), height() - 2);
        next.lineTo(endX(), middle + 1);
        next.lineTo(std::max(endX(), double(width())), middle + 1);
        next.lineTo(std::max(endX(), double(width())), height() - 2);
        painter.setBrush(theme.qcolor(ThemeRole::GridColorNextPlay));
        painter.drawPath(next);
    }
    painter.setPen(theme.qcolor(ThemeRole::Text));
    painter.drawText(rect().adjusted(6, 0, -6, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace melovane
