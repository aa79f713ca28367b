#include "playlistview/monitor_seek.h"

#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "platform/system/timers.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <chrono>

namespace melovane {

namespace {

constexpr std::chrono::milliseconds kSeekInterval{50};

/// Five seconds in frames.
constexpr int kStep = static_cast<int>(5000 / Mod_MilliSecToMin::kFrameMs);

} // namespace

MonitorSeek::MonitorSeek(MessageLoop& loop, BusSender& bus, std::function<int()> frame)
    : m_bus(bus)
    , m_frame(std::move(frame))
    , m_timerSeek(loop.makeTimer(kSeekInterval, [this] { tick(); }))
{}

MonitorSeek::~MonitorSeek() = default;

void MonitorSeek::step(int direction)
{
    if (!m_timerSeek->isActive()) {
        m_last = m_frame ? m_frame() : 0;
        m_bus.SendMessage(bus::kMonitorSeek, 0);
        m_timerSeek->start();
    }
    m_last = std::max(0, m_last + direction * kStep);
    m_isNew = true;
}

void MonitorSeek::tick()
{
    if (!std::exchange(m_isNew, false)) {
        m_timerSeek->stop();
        return;
    }
    m_bus.SendMessage(bus::kMonitorSeekSet, m_last);
}

} // namespace melovane
