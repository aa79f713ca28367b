#include "platform/qt/figures.h"

#include <QFontMetrics>
#include <QPainter>

namespace melovane {

namespace {

int widthOf(const QFontMetrics& metrics, QChar sign, int figure)
{
    return sign.isDigit() ? figure : metrics.horizontalAdvance(sign);
}

} // namespace

int figureWidth(const QFontMetrics& metrics)
{
    int width = 0;
    for (char16_t figure = u'0'; figure <= u'9'; ++figure) {
        width = std::max(width, metrics.horizontalAdvance(QChar(figure)));
    }
    return width;
}

int figureTextWidth(const QFontMetrics& metrics, const QString& text)
{
    const int figure = figureWidth(metrics);
    int width = 0;
    for (const QChar sign : text) {
        width += widthOf(metrics, sign, figure);
    }
    return width;
}

void drawFigures(QPainter& painter, const QRect& rect, const QString& text)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const int figure = figureWidth(metrics);
    int left = rect.right() + 1 - figureTextWidth(metrics, text);
    for (const QChar sign : text) {
        const int width = widthOf(metrics, sign, figure);
        painter.drawText(QRect(left, rect.top(), width, rect.height()),
                         Qt::AlignCenter | Qt::TextDontClip, QString(sign));
        left += width;
    }
}

} // namespace melovane
