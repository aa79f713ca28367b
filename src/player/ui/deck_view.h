#pragma once

#include "player/player_desk.h"

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

    [[nodiscard]] const DeckFace& face() const { return m_face; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTexts(QPainter& painter, const QRect& area) const;
    void paintTimes(QPainter& painter, const QRect& area) const;
    void paintBars(QPainter& painter, const QRect& place, const QRect& level) const;

    const Skin& m_skin;
    const ConfigObjects& m_texts;
    DeckFace m_face;
};

} // namespace melovane
