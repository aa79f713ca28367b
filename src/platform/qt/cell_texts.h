#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>

#include <vector>

class QFontMetrics;
class QPainter;
class QRect;

namespace melovane {

/// The texts of cells, cut to their room and laid out once for as long as they are painted again
/// and again: laying out takes most of the time of a page.
class CellTexts
{
public:
    /// A text as it fits into a width, in points: what has no room is left out at the end, of a
    /// path in the middle, as neighbours have their beginning in common.
    [[nodiscard]] static QString
    fitting(const QFontMetrics& metrics, const QString& text, int width);

    /// Draws a text as one line in the middle of the height, in pen and font of the painter, as far
    /// as it fits.
    /// \param side left, right or horizontally centred
    void draw(QPainter& painter, const QRect& room, Qt::Alignment side, const QString& text);

    /// Texts laid out so far.
    [[nodiscard]] qint64 laidOut() const { return m_laidOut; }

private:
    struct Key
    {
        QString text;
        int width = 0;
        std::size_t font = 0; ///< its place in m_fonts

        friend bool operator==(const Key&, const Key&) = default;
    };

    friend size_t qHash(const Key& key, size_t seed)
    {
        return qHashMulti(seed, key.text, key.width, key.font);
    }

    [[nodiscard]] std::size_t fontOf(const QPainter& painter);
    [[nodiscard]] static QStaticText
    laidOut(const QPainter& painter, int width, const QString& text);

    QHash<Key, QStaticText> m_texts;
    std::vector<QFont> m_fonts;
    qreal m_scale = 0; ///< points of the device in a unit
    qint64 m_laidOut = 0;
};

} // namespace melovane
