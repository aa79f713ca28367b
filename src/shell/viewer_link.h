#pragma once

#include "bus/mlv_message_bus.h"
#include "platform/message/message_control.h"

#include <QString>

#include <memory>

namespace melovane {

class GlobalSettings;
class MessageLoop;
class Timer;

/// Lets the cover viewer follow the row of the console: the track of "info.from.fid", and that of
/// trackEntered(), goes to a viewer that runs, a moment later, so that a row that is only passed on
/// the way costs nothing.
class ViewerLink
{
public:
    /// How long a row has to stay the current one before the viewer hears of it.
    static constexpr std::chrono::milliseconds kRest{120};

    /// All outlive this.
    ViewerLink(MLVMessageBus& bus, GlobalSettings& settings, Messages& messages, MessageLoop& loop);
    ~ViewerLink();
    ViewerLink(const ViewerLink&) = delete;
    ViewerLink& operator=(const ViewerLink&) = delete;

    /// The row of another track has become the current one, in whichever view.
    void trackEntered(const QString& fid);

private:
    /// Writes the own control where the viewer finds it.
    void publish();
    void received(const MLVMessage& message);
    void tellViewer();
    void tell(MessageHandle viewer);

    GlobalSettings& m_settings;
    const Messages& m_messages;
    std::unique_ptr<KSMessage> m_control;
    std::unique_ptr<Timer> m_timer;
    QString m_fid;
    MLVMessageBus::Subscription m_subscription;
};

} // namespace melovane
