#include "shell/viewer_link.h"

#include "bus/message_names.h"
#include "bus/viewer_messages.h"
#include "config/global_settings.h"
#include "platform/system/timers.h"

namespace melovane {

ViewerLink::ViewerLink(MLVMessageBus& bus,
                       GlobalSettings& settings,
                       Messages& messages,
                       MessageLoop& loop)
    : m_settings(settings)
    , m_messages(messages)
    , m_control(messages.makeControl())
    , m_timer(loop.makeTimer(kRest, [this] { tellViewer(); }))
    , m_subscription(bus.subscribe([this](const MLVMessage& message) { received(message); }))
{
    m_control->setMessageText([this](qint32 id, qint32 number, const QString&) {
        if (id == message::kViewerWantsRow) {
            tell(number);
        }
        return 0;
    });
}

ViewerLink::~ViewerLink() = default;

void ViewerLink::publish()
{
    m_settings.WriteKeyValue(section::kMessageHandle.toString(),
                             message::kRowOfConsoleKey.toString(),
                             QString::number(m_control->handle()));
}

void ViewerLink::received(const MLVMessage& message)
{
    if (bus::kInfoFromFid.compare(message.Command, Qt::CaseInsensitive) == 0) {
        trackEntered(message.Value1.toText());
    } else if (bus::kDbRefreshByFid.compare(message.Command, Qt::CaseInsensitive) == 0 &&
               !m_fid.isEmpty() && message.Value1.toText() == m_fid) {
        trackEntered(m_fid); // its cover may be another one now
    } else if (bus::kCreateToolBars.compare(message.Command, Qt::CaseInsensitive) == 0) {
        publish(); // this copy is the one that runs: its window is being loaded
    }
}

void ViewerLink::trackEntered(const QString& fid)
{
    m_fid = fid;
    m_timer->stop();
    m_timer->start();
}

void ViewerLink::tellViewer()
{
    m_timer->stop();
    const MessageHandle viewer = m_settings.GetKeyValueLong(section::kMessageHandle.toString(),
                                                            message::kViewerKey.toString(), 0);
    if (m_messages.IsMsgWindow(viewer)) {
        tell(viewer);
    }
}

void ViewerLink::tell(MessageHandle viewer)
{
    m_control->setTarget(viewer);
    m_control->PostText(message::kRowOfConsole, 0, m_fid);
}

} // namespace melovane
