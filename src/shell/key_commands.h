#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace melovane {

class GlobalSettings;
class MessageLoop;
class Timer;

/// What the key bindings do; each is set before the first key event.
struct KeyActions
{
    /// A command for the view that has the focus: "play.start", "play.center", "selall", "copy",
    /// "insert" or "append". False when no view has it; the key is then left to its control.
    std::function<bool(const QString& command)> toView;
    std::function<void()> stopMonitor;
    /// Makes the current track a favourite, or no more.
    std::function<void()> setFavorit;
    /// The player plays the current track next or now. False without a current track.
    std::function<bool()> playNext;
    std::function<bool()> playNow;
    /// Brings the player's window to the front.
    std::function<void()> showPlayer;
};

/// Runs the user's key bindings.
///
/// A combination that stays down, or comes a second time at once, runs its binding once; the lock
/// ends half a second after the last
/// press that was handled.
class KeyCommands
{
public:
    KeyCommands(GlobalSettings& settings, MessageLoop& loop, KeyActions actions);
    ~KeyCommands();

    /// A key was pressed in the window: looks what is held down and runs the first binding that
    /// matches. True when the key belongs to a binding that acted, and to nobody else.
    bool keyPressed();

private:
    [[nodiscard]] bool run(const QString& keys);
    [[nodiscard]] bool beginsTheLast(const QString& keys) const;

    GlobalSettings& m_settings;
    KeyActions m_actions;
    QString m_last; ///< combination of the last press
    bool m_lastActed = false;
    std::unique_ptr<Timer> m_timerTastenFreigabe; ///< `TimerTastenFreigabe`: the key lock
};

} // namespace melovane
