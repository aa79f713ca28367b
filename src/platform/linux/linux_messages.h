#pragma once

#include "platform/linux/message_folder.h"
#include "platform/message/message_control.h"

#include <chrono>
#include <memory>
#include <set>
#include <vector>

namespace melovane {

namespace linuxmessages {
class MessageHub;
}

/// Where and how the message controls of a program meet others.
struct MessagePlace
{
    MessagePlace();
    explicit MessagePlace(QString runtimeFolder);

    QString folder; ///< Environment::runtimeFolder; with none no control can be made
    quint32 user;   ///< whose programs are talked to; the user of this process
    std::chrono::milliseconds patience{10'000}; ///< for a program that does not answer a send
    /// Identifiers of posted numbers that only ask to read something again: of equal ones that wait
    /// for the message loop the last is delivered.
    std::set<qint32> refreshes = {};
};

/// Message controls over sockets in the user's runtime folder.
///
/// A program makes one object of it: a send that waits serves the other controls of the same
/// object. The controls may outlive it. Needs the application object, and its message loop for
/// everything that arrives while no send waits.
///
/// A text may have 65536 bytes of UTF-8. Sends nest 64 deep, deeper ones answer 0.
class LinuxMessages : public Messages
{
public:
    explicit LinuxMessages(MessagePlace place);
    ~LinuxMessages() override;

    /// Removes, too, what killed programs have left in the folder.
    [[nodiscard]] std::unique_ptr<KSMessage> makeControl() override;
    [[nodiscard]] bool IsMsgWindow(MessageHandle handle) const override;

    /// True when the send that has ended last was answered by a handler, be it with 0; false when
    /// its target was dead, died, or let the time pass.
    [[nodiscard]] bool lastSendWasAnswered() const;

    /// The live controls of this user, those of this program included.
    [[nodiscard]] std::vector<LiveControl> liveControls() const;

private:
    std::shared_ptr<linuxmessages::MessageHub> m_hub;
};

} // namespace melovane
