#pragma once

#include "player/player_desk.h"

#include <QWidget>

namespace melovane {

class ConfigObjects;
class Skin;

/// The next half minute to scale: the end of the present entry, the beginning of the next one, and
/// where both sound.
class MixView : public QWidget
{
    Q_OBJECT

public:
    /// Time from the left edge to the right one.
    static constexpr int kSpanMs = 30'000;

    MixView(const Skin& skin, const ConfigObjects& texts, QWidget* parent = nullptr);

    void setFace(const MixFace& face, bool isPlaying);

    /// Where the present entry ends and the next one begins, in units from the left edge; beyond
    /// the right one when it is further off.
    [[nodiscard]] double endX() const;
    [[nodiscard]] double beginX() const;

    /// What it says in words.
    [[nodiscard]] QString text() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double xOf(double ms) const;

    const Skin& m_skin;
    const ConfigObjects& m_texts;
    MixFace m_face;
    bool m_isPlaying = false;
};

} // namespace melovane
