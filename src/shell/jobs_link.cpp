#include "shell/jobs_link.h"

#include "bus/message_names.h"
#include "bus/message_numbers.h"
#include "bus/suite_messages.h"
#include "config/global_settings.h"
#include "shell/sibling_control.h"

#include <utility>

namespace melovane {

namespace {

/// A job is ended before the answer comes; the window waits no longer for one that hangs.
constexpr std::chrono::milliseconds kPatience{2000};

} // namespace

JobsLink::JobsLink(MLVMessageBus& bus,
                   GlobalSettings& settings,
                   Messages& messages,
                   SiblingControl& siblings)
    : m_settings(settings)
    , m_messages(messages)
    , m_siblings(siblings)
    , m_control(messages.makeControl())
    , m_subscription(bus.subscribe([this](const MLVMessage& message) { received(message); }))
{}

void JobsLink::received(const MLVMessage& message)
{
    if (bus::kDbDisconnect.compare(message.Command, Qt::CaseInsensitive) == 0) {
        release();
    } else if (bus::kDbReconnect.compare(message.Command, Qt::CaseInsensitive) == 0) {
        startAgain();
    }
}

void JobsLink::release()
{
    const MessageHandle jobs =
        m_settings.GetKeyValueLong(section::kGlobal.toString(), kJobsHandleKey.toString(), 0);
    if (m_messages.IsMsgWindow(jobs)) {
        m_control->setTarget(jobs);
        m_control->SendWithin(kPatience, message::kReleaseDatabase, 0, 0);
        m_hasEnded = true;
    }
}

void JobsLink::startAgain()
{
    if (std::exchange(m_hasEnded, false)) {
        m_siblings.startJobs();
    }
}

} // namespace melovane
