#pragma once

#include <QKeySequence>
#include <QList>
#include <QWidget>

#include <functional>

class QAction;
class QHBoxLayout;

namespace melovane {

class ConfigObjects;
class ElidedLabel;
class IconSet;
class Skin;
class SleeveStage;
class SleeveViewer;

/// The viewer's window: the stage, and below it title, picture and tools.
class SleeveWindow : public QWidget
{
    Q_OBJECT

public:
    /// All outlive the window.
    SleeveWindow(SleeveViewer& viewer,
                 const ConfigObjects& texts,
                 const Skin& skin,
                 const IconSet& icons);

    /// Shows what the viewer has now.
    void refresh();

    /// Where the window stands, for the next run: left, top, width and height joined by commas, and
    /// 1 behind them when it is maximised, else 0. It lies in the settings: keep.
    [[nodiscard]] QString placeText() const;

    /// Takes such a text. One that is damaged, or whose window no screen would show, changes
    /// nothing.
    void takePlace(const QString& text);

private:
    QAction* addCommand(const QString& name,
                        const QList<QKeySequence>& keys,
                        const std::function<void()>& work);
    void buildCommands();
    void buildBar();
    void addTool(QHBoxLayout& row, const QString& command, const QString& icon);
    void enable(const QStringList& commands, bool on);
    void toggleFullScreen();
    void leave();

    SleeveViewer& m_viewer;
    const ConfigObjects& m_texts;
    const IconSet& m_icons;
    SleeveStage* m_stage;
    QWidget* m_bar;
    ElidedLabel* m_title;
    ElidedLabel* m_caption;
    bool m_wasMaximised = false; ///< before it filled the screen
};

} // namespace melovane
