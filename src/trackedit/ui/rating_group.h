#pragma once

#include "views/track_look.h"

#include <QRadioButton>
#include <QWidget>

#include <array>

namespace melovane {

class ConfigObjects;
class Skin;

/// One option of the rating group: a small box with the mark in it, which the chosen one fills with
/// its colour.
class RatingButton : public QRadioButton
{
    Q_OBJECT

public:
    /// \param mark 5 to 1, or 0 for none
    RatingButton(const Skin& skin, int mark, QWidget* parent);

    void setColours(const NoteColours& colours);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Skin& m_skin;
    int m_mark;
    NoteColours m_colours;
};

/// `opNote`: none and the five marks, the best first. Arrow keys go from one to the next, the keys
/// 0 to 5 choose a mark.
class RatingGroup : public QWidget
{
    Q_OBJECT

public:
    explicit RatingGroup(const Skin& skin, QWidget* parent = nullptr);

    void setTexts(const ConfigObjects& texts);
    void setColours(const NoteColours& colours);

    /// Marks an option, 0 to 5, without telling it.
    void setOption(int option);

    /// The option that is marked.
    [[nodiscard]] RatingButton& chosen() const;

    [[nodiscard]] RatingButton& first() const { return *m_buttons.front(); }

signals:
    /// The user has chosen an option, 0 to 5.
    void optionChosen(int option);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(int option);

    std::array<RatingButton*, 6> m_buttons{};
};

} // namespace melovane
