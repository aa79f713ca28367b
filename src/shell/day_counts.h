#pragma once

#include <QDateTime>

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class GlobalSettings;
class MessageLoop;
class Timer;

/// What the watch over the day counts is made over; all of it outlives it.
struct DayCountParts
{
    GlobalSettings& settings;
    const Clock& clock;
    MessageLoop& loop;
    std::function<bool()> mayWrite; ///< false while the library cannot be written
    std::function<void()> changed;  ///< the views paint their rows anew
};

/// Ends the day counts of tracks also in a console that stays open over night: at the next local
/// midnight, and half a day after the last time.
class DayCounts
{
public:
    explicit DayCounts(DayCountParts parts);
    ~DayCounts();

    /// Watches from now on; what is due at the start has been done.
    void start();

    /// Clears what has ended, when a new day or half a day is over since the last time. A library
    /// that cannot be written waits for the next look.
    void look();

private:
    DayCountParts m_parts;
    QDateTime m_last; ///< when the counts were looked at
    std::unique_ptr<Timer> m_timer;
};

} // namespace melovane
