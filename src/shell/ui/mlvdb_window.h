#pragma once

#include "platform/controls/window_frame.h"

#include <QMainWindow>

#include <array>
#include <vector>

namespace melovane {

class ConfigObjects;
class EditTagWidget;
class HintLine;
class IconSet;
class MLVDB;
class MonitorBars;
class Mp3dbWidget;
struct MlvdbControls;
class Panel;
class PlaylistWidget;
class PlaylistFavoritWidget;
class Skin;
class SplitPanel;
class StatusBar;
class StatusLine;
class TreeWidget;
class WindowMenuBar;

/// The main window: menus, three splits, status line, and the views in their places.
class MlvdbWindow : public QMainWindow, public WindowFrame
{
    Q_OBJECT

public:
    MlvdbWindow(Skin& skin, const IconSet& icons);

    /// What the logic of the window is made with.
    [[nodiscard]] MlvdbControls controls();

    [[nodiscard]] StatusLine& status();

    [[nodiscard]] MonitorBars& monitor() { return *m_monitor; }

    [[nodiscard]] Mp3dbWidget& library() { return *m_library; }

    [[nodiscard]] PlaylistWidget& playlist() { return *m_playlist; }

    [[nodiscard]] PlaylistFavoritWidget& lists() { return *m_lists; }

    [[nodiscard]] TreeWidget& tree() { return *m_tree; }

    [[nodiscard]] EditTagWidget& tags() { return *m_tags; }

    [[nodiscard]] HintLine& hints() { return *m_hints; }

    /// Connects the form with its logic, which outlives its last event.
    void attach(MLVDB& logic, const ConfigObjects& texts);

    /// Everything that stands still speaks the language of the texts as they are now; the entries
    /// of the menus come from the logic.
    void translate(const ConfigObjects& texts);

    void setCaption(const QString& caption) override;
    void setLeastSize(const QSize& size) override;
    [[nodiscard]] QRect place() const override;
    void setPlace(const QRect& place) override;
    void setOuterPlace(const QRect& place) override;
    [[nodiscard]] bool isMaximisedNow() const override;
    void maximise() override;
    void setNormal() override;
    [[nodiscard]] int windowHandle32() const override;
    [[nodiscard]] QRect screenArea() const override;
    [[nodiscard]] QRect screenOf(const QRect& place) const override;
    void bringToFront() override;
    void closeWindow() override;

signals:
    /// Once, when the window is about to be seen for the first time.
    void firstShown();
    /// Before the window goes.
    void closing();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void fitFrame();
    void buildPanels();
    /// Library above, tag panel below.
    [[nodiscard]] QWidget* buildLibraryArea();
    void fillSkinMenu(QMenu& menu, MLVDB& logic, const ConfigObjects& texts);
    void fillLanguageMenu(QMenu& menu, MLVDB& logic);

    Skin& m_skin;
    const IconSet& m_icons;
    Mp3dbWidget* m_library = nullptr;
    PlaylistWidget* m_playlist = nullptr;
    PlaylistFavoritWidget* m_lists = nullptr;
    TreeWidget* m_tree = nullptr;
    EditTagWidget* m_tags = nullptr;
    HintLine* m_hints = nullptr;
    StatusBar* m_status = nullptr;
    MonitorBars* m_monitor = nullptr;
    WindowMenuBar* m_menus = nullptr;
    std::array<SplitPanel*, 3> m_splits{};
    bool m_shown = false;
    QRect m_outer;   ///< where the frame shall stand
    int m_looks = 0; ///< how often it is still looked whether the frame stands there
};

} // namespace melovane
