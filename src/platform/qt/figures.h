#pragma once

#include <QRect>
#include <QString>

class QPainter;
class QFontMetrics;

namespace melovane {

/// Width of the widest figure of a font.
[[nodiscard]] int figureWidth(const QFontMetrics& metrics);

/// Width of a text whose figures all have the same width: their own, or that of the widest one.
[[nodiscard]] int figureTextWidth(const QFontMetrics& metrics, const QString& text);

/// Draws such a text at the right end of a rectangle, so that figures of rows below each other
/// stand below each other.
void drawFigures(QPainter& painter, const QRect& rect, const QString& text);

} // namespace melovane
