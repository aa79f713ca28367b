#include "platform/qt/cell_texts.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace melovane {

namespace {

/// Some four pages of a large screen; a text laid out takes about 700 bytes.
constexpr qsizetype kMostTexts = 2000;

/// Plain, bold, struck out and both, twice.
constexpr std::size_t kMostFonts = 8;

/// Letters from here on may run from right to left, where sides are the painter's own matter.
constexpr char16_t kFirstRightToLeft = 0x590;

bool runsToTheRight(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar letter) { return letter.unicode() < kFirstRightToLeft; });
}

} // namespace

QString CellTexts::fitting(const QFontMetrics& metrics, const QString& text, int width)
{
    const bool isPath = text.startsWith(u'/') || QStringView(text).mid(1).startsWith(u":\\");
    return metrics.elidedText(text, isPath ? Qt::ElideMiddle : Qt::ElideRight, width);
}

/// Forgets all texts when they are painted by another device or in too many fonts.
std::size_t CellTexts::fontOf(const QPainter& painter)
{
    const qreal scale = painter.device()->devicePixelRatioF();
    const auto found = std::find(m_fonts.begin(), m_fonts.end(), painter.font());
    const bool isKnown = found != m_fonts.end();
    if (scale != m_scale || m_texts.size() >= kMostTexts ||
        (!isKnown && m_fonts.size() == kMostFonts)) {
        m_texts.clear();
        m_fonts = {painter.font()};
        m_scale = scale;
        return 0;
    }
    if (!isKnown) {
        m_fonts.push_back(painter.font());
        return m_fonts.size() - 1;
    }
    return std::size_t(found - m_fonts.begin());
}

QStaticText CellTexts::laidOut(const QPainter& painter, int width, const QString& text)
{
    QStaticText made(text);
    made.setTextFormat(Qt::PlainText);
    made.setPerformanceHint(QStaticText::AggressiveCaching);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    made.setTextOption(option);
    // In points of the device, or it would be laid out again by the first painting.
    const qreal scale = painter.device()->devicePixelRatioF();
    const auto prepare = [&] { made.prepare(QTransform::fromScale(scale, scale), painter.font()); };
    prepare();
    // Most texts fit, and to ask beforehand takes as long as to lay them out.
    if (made.size().width() > width) {
        made.setText(fitting(painter.fontMetrics(), text, width));
        prepare();
    }
    return made;
}

void CellTexts::draw(QPainter& painter, const QRect& room, Qt::Alignment side, const QString& text)
{
    if (painter.font().strikeOut() || !runsToTheRight(text)) {
        painter.drawText(room, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                         fitting(painter.fontMetrics(), text, room.width()));
        return;
    }
    const Key key{text, room.width(), fontOf(painter)};
    auto found = m_texts.find(key);
    if (found == m_texts.end()) {
        found = m_texts.insert(key, laidOut(painter, room.width(), text));
        ++m_laidOut;
    }
    const QSizeF size = found->size();
    const qreal left = side & Qt::AlignRight     ? room.width() - size.width()
                       : side & Qt::AlignHCenter ? (room.width() - size.width()) / 2
                                                 : 0;
    painter.drawStaticText(room.topLeft() + QPointF(left, (room.height() - size.height()) / 2),
                           *found);
}

} // namespace melovane
