#include "platform/qt/grid_font.h"

#include <QFontInfo>

#include <algorithm>

namespace melovane {

QFont toQFont(const GridFont& wanted)
{
    constexpr int kLargest = 72;
    QFont font;
    const QFont named(wanted.name);
    if (!wanted.name.isEmpty() && QFontInfo(named).exactMatch()) {
        font.setFamily(wanted.name);
    }
    if (wanted.size > 0) {
        font.setPointSize(std::min(wanted.size, kLargest));
    }
    font.setBold(wanted.bold);
    return font;
}

int clampedSpacing(const GridFont& wanted)
{
    return std::clamp(wanted.rowSpacing, 0, 200);
}

} // namespace melovane
