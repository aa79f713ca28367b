#include "shell/status_text.h"

#include "platform/controls/status_line.h"
#include "platform/system/timers.h"

#include <utility>

namespace melovane {

namespace {

constexpr std::chrono::milliseconds kStandTime{5000};
constexpr std::chrono::milliseconds kStepTime{50};

/// Letters that a step takes away, and what is too short to be shown any longer.
constexpr int kStep = 2;
constexpr int kShortest = 3;

} // namespace

StatusText::StatusText(MessageLoop& loop, StatusLine& line)
    : m_line(line)
    , m_timerMsg1(loop.makeTimer(kStandTime, [this] { startRunning(); }))
    , m_timerMsg2(loop.makeTimer(kStepTime, [this] { runOn(); }))
{}

StatusText::~StatusText() = default;

void StatusText::show(const QString& text)
{
    m_timerMsg2->stop();
    m_line.setPanel(StatusPanel::Message, text);
    m_timerMsg1->start();
}

void StatusText::keep(const QString& text)
{
    const QString former = std::exchange(m_kept, text);
    const QString shown = m_line.panel(StatusPanel::Message);
    const bool isOther = m_timerMsg1->isActive() || m_timerMsg2->isActive();
    if (isOther && shown != former && shown != text) {
        return;
    }
    m_timerMsg1->stop();
    m_timerMsg2->stop();
    m_line.setPanel(StatusPanel::Message, text);
}

void StatusText::startRunning()
{
    m_timerMsg1->stop();
    m_marquee = m_line.panel(StatusPanel::Message);
    m_timerMsg2->start();
}

void StatusText::runOn()
{
    m_marquee.remove(0, kStep);
    if (m_marquee.size() > kShortest) {
        m_line.setPanel(StatusPanel::Message, m_marquee);
        return;
    }
    m_timerMsg2->stop();
    m_line.setPanel(StatusPanel::Message, m_kept);
}

} // namespace melovane
