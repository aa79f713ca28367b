#pragma once

#include <functional>
#include <memory>

namespace melovane {

class BusSender;
class MessageLoop;
class Timer;

/// The rewind and forward buttons of a view: they go five seconds back or on in what the monitor
/// player has, over the bus.
///
/// The first press begins a seek (kMonitorSeek); from then on the timer tells the place
/// (kMonitorSeekSet), so that a button that is held down costs one seek a tick. A tick without a
/// press since the last one ends it.
class MonitorSeek
{
public:
    /// \param frame where the monitor plays or stands, in frames
    MonitorSeek(MessageLoop& loop, BusSender& bus, std::function<int()> frame);
    ~MonitorSeek();

    /// \param direction -1 or 1
    void step(int direction);

private:
    void tick();

    BusSender& m_bus;
    std::function<int()> m_frame;
    int m_last = 0; ///< place of the last seek, in frames
    bool m_isNew = false;
    std::unique_ptr<Timer> m_timerSeek; ///< `TimerSeek`
};

} // namespace melovane
