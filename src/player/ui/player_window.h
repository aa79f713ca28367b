#pragma once

#include "player/player_desk.h"

#include <QWidget>

#include <functional>
#include <vector>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QSlider;
class QToolButton;

namespace melovane {

class ConfigObjects;
class DeckView;
class IconSet;
class MixView;
class Skin;
struct SoundShape;

/// The player's window: two decks, the mix ahead, what follows, jingles, and the commands of a
/// night. Lays out and shows; what is done is the desk's.
class PlayerWindow : public QWidget
{
    Q_OBJECT

public:
    /// All outlive the window.
    PlayerWindow(PlayerDesk& desk,
                 const ConfigObjects& texts,
                 const Skin& skin,
                 const IconSet& icons);

    /// What moves: decks, mix, notice. Called often.
    void refresh();
    /// What follows, and the jingles. Reads the library.
    void refreshLists();

    /// The shape of a file that a deck may hold. \see DeckView::setShape
    void setShape(const QString& file, const SoundShape& shape);
    /// The file of a deck whose shape is not known; empty for none. 0 or 1.
    [[nodiscard]] QString shapeless(int deck) const;

    /// A line of the program that is no fault of an entry; empty for none.
    void setHint(const QString& text);

    /// The upper half of the work area, or back to where it was.
    void setDocked(bool isDocked);

    [[nodiscard]] bool isDocked() const { return m_isDocked; }

    void bringToFront();

protected:
    void resizeEvent(QResizeEvent* event) override;

signals:
    void dockAsked(bool isDocked);

private:
    void buildCommands();
    void buildPitch();
    void showPitch();
    void nameJingles();
    void buildJingles();
    void layOut();
    QToolButton*
    addCommand(const QString& text, const QString& icon, const std::function<void()>& work);
    QToolButton*
    addSwitch(const QString& text, const QString& icon, const std::function<void(bool isOn)>& work);

    PlayerDesk& m_desk;
    const ConfigObjects& m_texts;
    const IconSet& m_icons;
    DeckView* m_decks[2];
    MixView* m_mix;
    QHBoxLayout* m_commands;
    QToolButton* m_play = nullptr;
    QToolButton* m_pause = nullptr;
    QToolButton* m_loop = nullptr;
    QToolButton* m_mixMode = nullptr;
    QToolButton* m_talkover = nullptr;
    QToolButton* m_dock = nullptr;
    QSlider* m_pitch = nullptr;
    QLabel* m_pitchText = nullptr;
    QListWidget* m_upcoming;
    QGridLayout* m_padGrid;
    std::vector<QPushButton*> m_pads;
    QLabel* m_notice;
    QString m_hint;
    QRect m_before; ///< place before it was docked
    bool m_isDocked = false;
};

} // namespace melovane
