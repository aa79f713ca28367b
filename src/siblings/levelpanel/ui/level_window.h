#pragma once

#include <QWidget>

class QLabel;
class QSlider;

namespace melovane {

class ConfigObjects;
class IconSet;
class MonitorLevel;

/// The small window of the volume monitor: a slider that mouse, wheel and keys move. Escape
/// closes it.
class LevelWindow : public QWidget
{
    Q_OBJECT

public:
    /// All outlive the window.
    LevelWindow(MonitorLevel& level, const ConfigObjects& texts, const IconSet& icons);

    /// Shows the volume of now, another program may have changed it.
    void refresh();

    /// Shows the window, in front of others.
    void bringToFront();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showVolume();

    MonitorLevel& m_level;
    const ConfigObjects& m_texts;
    const IconSet& m_icons;
    QLabel* m_picture;
    QSlider* m_slider;
    QLabel* m_percent;
    int m_wheel = 0; ///< of a step that is not complete yet, in eighths of a degree
};

} // namespace melovane
