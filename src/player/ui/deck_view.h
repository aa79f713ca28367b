#pragma once

#include "player/player_desk.h"
#include "player/sound_shape.h"

#include <QWidget>

namespace melovane {

class ConfigObjects;
class Skin;

/// One deck, to be read from three metres: what it holds, how much of it is left, its place and its
/// level.
class DeckView : public QWidget
{
    Q_OBJECT

public:
    DeckView(const Skin& skin, const ConfigObjects& texts, QWidget* parent = nullptr);

    /// Paints only what is another now.
    void setFace(const DeckFace& face);

    /// The shape of a file; that of another than the deck holds is passed over.
    void setShape(const QString& file, const SoundShape& shape);

    [[nodiscard]] bool hasShape() const
    {
        return m_shapeFile == m_face.file && !m_shape.bins.empty();
    }

    [[nodiscard]] const DeckFace& face() const { return m_face; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Of a file's shape, as wide as it is painted.
    struct ShapePart
    {
        QString file;
        double from = 0; ///< in bins
        double to = 0;
        int width = 0;

        bool operator==(const ShapePart&) const = default;
    };

    [[nodiscard]] QColor secondText() const;
    void paintTexts(QPainter& painter, const QRect& area) const;
    void paintTimes(QPainter& painter, const QRect& area) const;
    void paintShape(QPainter& painter, const QRect& area);
    void paintBars(QPainter& painter, const QRect& place, const QRect& level) const;

    const Skin& m_skin;
    const ConfigObjects& m_texts;
    DeckFace m_face;
    QString m_shapeFile;
    SoundShape m_shape;
    ShapePart m_columnsOf;
    std::vector<ShapeBin> m_columns; ///< of that part: what is painted each time
};

} // namespace melovane
