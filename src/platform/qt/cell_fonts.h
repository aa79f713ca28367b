#pragma once

#include <QFont>
#include <QFontMetrics>

#include <array>
#include <memory>

class QPaintDevice;

namespace melovane {

/// The fonts of cells, each measured once: that of the grid, bold, struck out and both. A font that
/// is made anew for each cell is measured anew for each.
class CellFonts
{
public:
    struct Face
    {
        QFont font;
        QFontMetrics metrics;
    };

    /// \param font that of the grid; with another one all are forgotten
    /// \param device what is painted on; null for the screen
    /// \return valid until the next call with another font
    [[nodiscard]] const Face&
    of(const QFont& font, bool isBold, bool isStruckOut, const QPaintDevice* device);

    /// Faces made so far.
    [[nodiscard]] qint64 made() const { return m_made; }

private:
    QFont m_font;
    int m_dotsPerInch = 0; ///< of the device
    std::array<std::unique_ptr<Face>, 4> m_faces;
    qint64 m_made = 0;
};

} // namespace melovane
