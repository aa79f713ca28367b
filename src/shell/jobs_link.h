#pragma once

#include "bus/mlv_message_bus.h"
#include "platform/message/message_control.h"

#include <memory>

namespace melovane {

class GlobalSettings;
class SiblingControl;

/// Keeps the jobs program out of a library that another program has for itself: on "db.disconnect"
/// it is asked to let go, which ends it and the job that runs, on "db.reconnect" it is started
/// again, unless somebody has ended it before.
class JobsLink
{
public:
    /// All outlive this.
    JobsLink(MLVMessageBus& bus,
             GlobalSettings& settings,
             Messages& messages,
             SiblingControl& siblings);

private:
    void received(const MLVMessage& message);
    void release();
    void startAgain();

    GlobalSettings& m_settings;
    const Messages& m_messages;
    SiblingControl& m_siblings;
    std::unique_ptr<KSMessage> m_control;
    bool m_hasEnded = false; ///< the jobs program, because it was asked to let go
    MLVMessageBus::Subscription m_subscription;
};

} // namespace melovane
