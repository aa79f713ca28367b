#pragma once

#include <QRect>
#include <QString>

class QFont;
class QPainter;
class QPaintDevice;
class QFontMetrics;

namespace melovane {

/// Width of the widest figure of a font. Here and below: measured once for metrics that are kept;
/// those of a font made anew are measured each time, by more than ten texts.
[[nodiscard]] int figureWidth(const QFontMetrics& metrics);

/// True for a font whose own figures stand below each other.
[[nodiscard]] bool figuresAreEqual(const QFontMetrics& metrics);

/// Width of a text whose figures all have the same width: their own, or that of the widest one.
[[nodiscard]] int figureTextWidth(const QFontMetrics& metrics, const QString& text);

/// The room that a text needs so that nothing of it is cut: text is cut by its exact width, which
/// may be a part of a unit more than the rounded one.
///
/// \param device what it is painted on; null for the screen
[[nodiscard]] int
wholeTextWidth(const QFont& font, const QString& text, const QPaintDevice* device);

/// Draws a text of figures of equal width at the right end of a rectangle, so that figures of rows
/// below each other stand below each other.
///
/// \param metrics of the painter's font
void drawFigures(QPainter& painter,
                 const QFontMetrics& metrics,
                 const QRect& rect,
                 const QString& text);

} // namespace melovane
