#include "platform/qt/figures.h"

#include <QFontMetrics>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <utility>
#include <vector>

namespace melovane {

namespace {

/// Widths of the figures of a font.
struct Figures
{
    int widest = 0;
    bool areEqual = true; ///< the font's own figures stand below each other
};

Figures measured(const QFontMetrics& metrics)
{
    // Ten of them, so that parts of a unit and figures that move closer together show.
    const int mixed = metrics.horizontalAdvance(QStringLiteral("0123456789"));
    Figures result;
    for (char16_t figure = u'0'; figure <= u'9'; ++figure) {
        const int ten = metrics.horizontalAdvance(QString(10, QChar(figure)));
        result.areEqual = result.areEqual && ten == mixed;
        result.widest = std::max(result.widest, metrics.horizontalAdvance(QChar(figure)));
    }
    return result;
}

/// Measured once for the fonts in use: a page asks some hundred times.
Figures figuresOf(const QFontMetrics& metrics)
{
    constexpr std::size_t kFonts = 8;
    static std::vector<std::pair<QFontMetrics, Figures>> known;
    for (const auto& [font, figures] : known) {
        if (font == metrics) {
            return figures;
        }
    }
    if (known.size() == kFonts) {
        known.clear();
    }
    return known.emplace_back(metrics, measured(metrics)).second;
}

int widthOf(const QFontMetrics& metrics, QChar sign, int figure)
{
    return sign.isDigit() ? figure : metrics.horizontalAdvance(sign);
}

} // namespace

int figureWidth(const QFontMetrics& metrics)
{
    return figuresOf(metrics).widest;
}

bool figuresAreEqual(const QFontMetrics& metrics)
{
    return figuresOf(metrics).areEqual;
}

int figureTextWidth(const QFontMetrics& metrics, const QString& text)
{
    const Figures figures = figuresOf(metrics);
    if (figures.areEqual) {
        return metrics.horizontalAdvance(text);
    }
    int width = 0;
    for (const QChar sign : text) {
        width += widthOf(metrics, sign, figures.widest);
    }
    return width;
}

int wholeTextWidth(const QFont& font, const QString& text, const QPaintDevice* device)
{
    return qCeil(QFontMetricsF(font, device).horizontalAdvance(text));
}

void drawFigures(QPainter& painter,
                 const QFontMetrics& metrics,
                 const QRect& rect,
                 const QString& text)
{
    const Figures figures = figuresOf(metrics);
    if (figures.areEqual) {
        painter.drawText(rect, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
        return;
    }
    int left = rect.right() + 1 - figureTextWidth(metrics, text);
    for (const QChar sign : text) {
        const int width = widthOf(metrics, sign, figures.widest);
        painter.drawText(QRect(left, rect.top(), width, rect.height()),
                         Qt::AlignCenter | Qt::TextDontClip, QString(sign));
        left += width;
    }
}

} // namespace melovane
