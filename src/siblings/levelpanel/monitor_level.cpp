#include "siblings/levelpanel/monitor_level.h"

#include "bus/message_numbers.h"
#include "config/global_settings.h"
#include "platform/system/timers.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keep, the console reads it with the next track.
const QString kKey = u"Volume.Monitor"_s;
constexpr int kDefault = 7500;

/// So long after the last change the hand rests.
constexpr std::chrono::milliseconds kRest{500};

} // namespace

MonitorLevel::MonitorLevel(GlobalSettings& settings, KSMessage& control, MessageLoop& loop)
    : m_settings(settings)
    , m_control(control)
    , m_timer(loop.makeTimer(kRest, [this] { keep(); }))
{}

MonitorLevel::~MonitorLevel()
{
    keep();
}

int MonitorLevel::volume() const
{
    const int stored = m_settings.GetKeyValueLong(section::kGlobal.toString(), kKey, kDefault);
    return std::clamp(m_chosen.value_or(stored), 0, kLoudest);
}

void MonitorLevel::choose(int volume)
{
    const int valid = std::clamp(volume, 0, kLoudest);
    if (valid == this->volume()) {
        return;
    }
    m_chosen = valid;
    m_timer->start();
    // The console may have been started again since.
    m_settings.RefreshMessageHandle();
    m_control.setTarget(m_settings.MessageHandleDB());
    m_control.Post(message::kMonitorVolume, message::kMonitorVolumeIcon, valid);
}

void MonitorLevel::keep()
{
    m_timer->stop();
    if (m_chosen) {
        m_settings.WriteKeyValue(section::kGlobal.toString(), kKey, QString::number(*m_chosen));
        m_chosen.reset();
    }
}

} // namespace melovane
