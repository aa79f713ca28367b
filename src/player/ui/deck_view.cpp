#include "player/ui/deck_view.h"

#include "config/config_objects.h"
#include "platform/qt/painted_face.h"
#include "platform/qt/skin.h"
#include "store/milli_sec_to_min.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Levels below this are nothing to see, in dB.
constexpr double kQuietDb = -48;
/// Part of the level bar that warns.
constexpr double kLoudPart = 0.94;

QString timeText(double ms)
{
    return Mod_MilliSecToMin::MilliSecToMin(int(std::max(0.0, ms)), 0);
}

QString tenths(double ms)
{
    return timeText(ms) + u'.' + QString::number(int(std::max(0.0, ms) / 100) % 10);
}

/// 0 to 1 of a level, as the ear hears it.
double partOf(int level)
{
    if (level <= 0) {
        return 0;
    }
    return std::clamp(1 - 20 * std::log10(level / 32767.0) / kQuietDb, 0.0, 1.0);
}

QFont sized(QFont font, double factor, bool isBold)
{
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(isBold);
    return font;
}

} // namespace

DeckView::DeckView(const Skin& skin, const ConfigObjects& texts, QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
    , m_texts(texts)
{
    connect(&skin, &Skin::changed, this, qOverload<>(&QWidget::update));
    setPaintedFace(*this, QAccessible::Graphic);
}

void DeckView::setFace(const DeckFace& face)
{
    if (face == m_face) {
        return;
    }
    const bool isOther = face.title != m_face.title || face.artist != m_face.artist;
    m_face = face;
    if (isOther) {
        setAccessibleName(face.artist + u" - "_s + face.title);
    }
    update();
}

void DeckView::setShape(const QString& file, const SoundShape& shape)
{
    if (file == m_face.file) {
        m_shapeFile = file;
        m_shape = shape;
        m_columnsOf = {};
        update();
    }
}

QSize DeckView::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 46, fontMetrics().height() * 9};
}

QSize DeckView::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 26, fontMetrics().height() * 7};
}

void DeckView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme& theme = m_skin.theme();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.qcolor(m_face.isOnAir ? ThemeRole::Accent : ThemeRole::Hairline));
    painter.setBrush(
        theme.qcolor(m_face.isOnAir ? ThemeRole::GridColorAktivePlay : ThemeRole::Panel));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    const int gap = fontMetrics().height() / 2;
    const QRect inner = rect().adjusted(gap, gap, -gap, -gap);
    const int bar = std::max(6, fontMetrics().height() / 3);
    const QRect level(inner.right() - bar + 1, inner.top(), bar, inner.height());
    const QRect left = inner.adjusted(0, 0, -bar - gap, 0);
    const QRect place(left.left(), left.bottom() - bar * 2 + 1, left.width(), bar * 2);
    paintBars(painter, place, level);
    const int times = sized(font(), 3.0, true).pointSize() > 0
                          ? QFontMetrics(sized(font(), 3.0, true)).height()
                          : 0;
    paintTimes(painter, QRect(left.left(), place.top() - gap / 2 - times, left.width(), times));
    const int texts = fontMetrics().height() * 4;
    paintTexts(painter, QRect(left.left(), left.top(), left.width(), texts));
    const QRect middle(left.left(), left.top() + texts, left.width(),
                       place.top() - gap / 2 - times - left.top() - texts);
    if (middle.height() > fontMetrics().height()) {
        paintShape(painter, middle);
    }
}

/// Readable on either ground.
QColor DeckView::secondText() const
{
    return m_skin.theme().qcolor(m_face.isOnAir ? ThemeRole::TextSecondSelected
                                                : ThemeRole::TextSecond);
}

void DeckView::paintTexts(QPainter& painter, const QRect& area) const
{
    const Theme& theme = m_skin.theme();
    const QFont small = sized(font(), 0.9, true);
    const QFont large = sized(font(), 1.6, true);
    const QFontMetrics smallMetrics(small);
    const QFontMetrics largeMetrics(large);
    painter.setFont(small);
    painter.setPen(theme.qcolor(m_face.isOnAir ? ThemeRole::Text : ThemeRole::TextSecond));
    const QString state = m_texts.text(m_face.isOnAir    ? u"air.onair"
                                       : m_face.isPaused ? u"air.paused"
                                       : m_face.isLoaded ? u"air.ready"
                                                         : u"air.free");
    QRect line(area.left(), area.top(), area.width(), smallMetrics.height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, state);
    if (!m_face.isLoaded) {
        return;
    }
    if (m_face.bpm > 0) {
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                         m_texts.text(u"air.bpm", QLocale().toString(m_face.bpm, 'f', 1)));
    }
    line = QRect(area.left(), line.bottom() + 2, area.width(), largeMetrics.height());
    painter.setFont(large);
    painter.setPen(theme.qcolor(ThemeRole::Text));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     largeMetrics.elidedText(m_face.title, Qt::ElideRight, line.width()));
    line = QRect(area.left(), line.bottom() + 1, area.width(), fontMetrics().height());
    if (line.bottom() <= area.bottom() + fontMetrics().height()) {
        painter.setFont(font());
        painter.setPen(secondText());
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(m_face.artist, Qt::ElideRight, line.width()));
    }
}

/// What is left, large; what has gone by, small beside it.
void DeckView::paintTimes(QPainter& painter, const QRect& area) const
{
    if (!m_face.isLoaded) {
        return;
    }
    const Theme& theme = m_skin.theme();
    const bool isUnderWay = m_face.isOnAir || m_face.isPaused;
    const double left = isUnderWay ? m_face.remainingMs : m_face.lengthMs;
    painter.setFont(sized(font(), 3.0, true));
    painter.setPen(theme.qcolor(ThemeRole::Text));
    painter.drawText(area, Qt::AlignRight | Qt::AlignBottom,
                     (isUnderWay ? u"-"_s : QString()) + tenths(left));
    painter.setFont(sized(font(), 1.4, false));
    painter.setPen(secondText());
    painter.drawText(area.adjusted(0, 0, 0, -fontMetrics().descent()),
                     Qt::AlignLeft | Qt::AlignBottom, timeText(m_face.elapsedMs));
}

/// The entry from its start to its end; what was heard is dimmed.
void DeckView::paintShape(QPainter& painter, const QRect& area)
{
    if (!hasShape() || m_face.lengthMs <= 0) {
        return;
    }
    const Theme& theme = m_skin.theme();
    const double from = m_face.fromMs * SoundShape::kPerSecond / 1000;
    const double to = (m_face.fromMs + m_face.lengthMs) * SoundShape::kPerSecond / 1000;
    const ShapePart part{m_shapeFile, from, to, area.width()};
    if (part != m_columnsOf) {
        m_columnsOf = part;
        m_columns = reduceShape(m_shape, from, to, area.width());
    }
    const double heard = area.width() * m_face.elapsedMs / m_face.lengthMs;
    const double middle = area.center().y() + 0.5;
    const double scale = area.height() / 256.0;
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (size_t x = 0; x < m_columns.size(); ++x) {
        painter.setPen(
            theme.qcolor(double(x) < heard ? ThemeRole::TextDisabled : ThemeRole::Accent));
        painter.drawLine(QPointF(area.left() + double(x), middle - m_columns[x].high * scale),
                         QPointF(area.left() + double(x), middle - m_columns[x].low * scale));
    }
    painter.setRenderHint(QPainter::Antialiasing);
}

void DeckView::paintBars(QPainter& painter, const QRect& place, const QRect& level) const
{
    const Theme& theme = m_skin.theme();
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.qcolor(ThemeRole::BackColorSizer));
    painter.drawRoundedRect(place, 3, 3);
    painter.drawRoundedRect(level, 3, 3);
    if (m_face.lengthMs > 0) {
        const double part = std::clamp(m_face.elapsedMs / m_face.lengthMs, 0.0, 1.0);
        painter.setBrush(theme.qcolor(ThemeRole::Accent));
        painter.drawRoundedRect(
            QRectF(place.left(), place.top(), place.width() * part, place.height()), 3, 3);
    }
    const double loud = partOf(m_face.level);
    if (loud > 0) {
        painter.setBrush(
            theme.qcolor(loud > kLoudPart ? ThemeRole::VuMeterColorClip : ThemeRole::VuMeterColor));
        const double height = level.height() * loud;
        painter.drawRoundedRect(
            QRectF(level.left(), level.bottom() + 1 - height, level.width(), height), 3, 3);
    }
}

} // namespace melovane
