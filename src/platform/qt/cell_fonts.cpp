#include "platform/qt/cell_fonts.h"

#include <QPaintDevice>

namespace melovane {

const CellFonts::Face&
CellFonts::of(const QFont& font, bool isBold, bool isStruckOut, const QPaintDevice* device)
{
    const int dotsPerInch = device ? device->logicalDpiY() : 0;
    if (m_font != font || m_dotsPerInch != dotsPerInch) {
        m_faces = {};
        m_font = font;
        m_dotsPerInch = dotsPerInch;
    }
    std::unique_ptr<Face>& face = m_faces[(isBold ? 1U : 0U) | (isStruckOut ? 2U : 0U)];
    if (!face) {
        QFont styled = font;
        styled.setBold(isBold || font.bold());
        styled.setStrikeOut(isStruckOut);
        face = std::make_unique<Face>(
            Face{styled, device ? QFontMetrics(styled, device) : QFontMetrics(styled)});
        ++m_made;
    }
    return *face;
}

} // namespace melovane
