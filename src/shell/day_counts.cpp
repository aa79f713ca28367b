#include "shell/day_counts.h"

#include "config/global_settings.h"
#include "platform/system/clock.h"
#include "platform/system/timers.h"

#include <utility>

namespace melovane {

namespace {

/// From one look at the clock to the next: a machine that slept over midnight wakes with the timer
/// anywhere.
constexpr std::chrono::minutes kLookInterval{1};

/// A count ends so long after the last play of its track.
constexpr qint64 kHalfDaySeconds = qint64{12} * 60 * 60;

} // namespace

DayCounts::DayCounts(DayCountParts parts)
    : m_parts(std::move(parts))
    , m_timer(m_parts.loop.makeTimer(kLookInterval, [this] { look(); }))
{}

DayCounts::~DayCounts() = default;

void DayCounts::start()
{
    m_last = m_parts.clock.now();
    m_timer->start();
}

void DayCounts::look()
{
    const QDateTime now = m_parts.clock.now();
    const bool isDue = m_timer->isActive() &&
                       (now.date() != m_last.date() || m_last.secsTo(now) >= kHalfDaySeconds);
    if (!isDue || !m_parts.mayWrite()) {
        return;
    }
    m_last = now;
    m_parts.settings.UpdateLastPlayDayCount();
    m_parts.changed();
}

} // namespace melovane
