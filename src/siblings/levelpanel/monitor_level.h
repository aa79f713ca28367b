#pragma once

#include "platform/message/message_control.h"

#include <functional>
#include <memory>
#include <optional>

namespace melovane {

class GlobalSettings;
class MessageLoop;
class Timer;

/// The volume of the monitor player, 0 to 10000, as the settings keep it and the console plays it.
class MonitorLevel
{
public:
    static constexpr int kLoudest = 10000;
    /// A step of wheel and arrow keys.
    static constexpr int kStep = kLoudest / 20;

    /// \param control what the console is written to from; all outlive this
    MonitorLevel(GlobalSettings& settings, KSMessage& control, MessageLoop& loop);
    /// Keeps what was chosen.
    ~MonitorLevel();
    MonitorLevel(const MonitorLevel&) = delete;
    MonitorLevel& operator=(const MonitorLevel&) = delete;

    /// What was chosen here, else what the file holds now.
    [[nodiscard]] int volume() const;

    /// The console that runs plays so loud at once, and the pictures of its volume buttons follow.
    /// Written to the settings when the hand rests, or at the end. What is beyond is the nearest.
    void choose(int volume);

private:
    void keep();

    GlobalSettings& m_settings;
    KSMessage& m_control;
    std::unique_ptr<Timer> m_timer;
    std::optional<int> m_chosen; ///< not in the settings yet
};

} // namespace melovane
