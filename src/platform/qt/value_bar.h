#pragma once

#include "platform/qt/theme.h"

#include <QAbstractSlider>

namespace melovane {

class Skin;

/// A thin bar that shows how far a value has come, and takes another one by click, drag and keys.
///
/// Left and Right ask for a single step, Page keys for as many as a page has, Home for the least
/// value, and Up, Down and the wheel for what ValueBar::raised says. The value itself changes by
/// setValue alone: whoever hears a wish decides. While the button is down the bar shows what is
/// picked; Escape gives that up.
class ValueBar : public QAbstractSlider
{
    Q_OBJECT

public:
    /// \param fill  colour of what the value has come to
    /// \param width the bar likes to be so many units wide, and can do with a third of it
    ValueBar(const Skin& skin, ThemeRole fill, int width, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The button is down at this value.
    void dragged(int value);
    /// It was let go there, or a key names the value.
    void picked(int value);
    /// What was dragged is not wanted.
    void dragGivenUp();
    /// So many single steps, negative ones back.
    void stepped(int steps);
    /// Up or the wheel forward: 1 or more; Down or the wheel back: -1 or less.
    void raised(int steps);
    void endPressed();

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int valueAt(int x) const;
    void giveUpDrag();

    const Skin& m_skin;
    ThemeRole m_fill;
    int m_width;
    int m_wheel = 0; ///< of a step that is not complete yet, in eighths of a degree
};

} // namespace melovane
