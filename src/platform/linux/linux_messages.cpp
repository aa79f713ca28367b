#include "platform/linux/linux_messages.h"

#include "platform/linux/message_hub.h"

#include <unistd.h>

namespace melovane {

using linuxmessages::Handlers;
using linuxmessages::MessageFolder;
using linuxmessages::MessageHub;
using linuxmessages::Packet;
using linuxmessages::PacketType;

namespace {

class SocketControl : public KSMessage
{
public:
    explicit SocketControl(std::shared_ptr<MessageHub> hub)
        : m_hub(std::move(hub))
        , m_handle(m_hub->open(m_handlers))
    {}

    ~SocketControl() override
    {
        if (m_handle != 0) {
            m_hub->close(m_handle);
        }
    }

    SocketControl(const SocketControl&) = delete;
    SocketControl& operator=(const SocketControl&) = delete;

    [[nodiscard]] MessageHandle handle() const override { return m_handle; }

    void setTarget(MessageHandle target) override { m_target = target; }

    [[nodiscard]] MessageHandle target() const override { return m_target; }

    qint32 Send(qint32 id, qint32 wParam, qint32 lParam) override
    {
        return send({PacketType::SendNumber, 0, id, wParam, lParam});
    }

    bool
    SendWithin(std::chrono::milliseconds patience, qint32 id, qint32 wParam, qint32 lParam) override
    {
        if (m_handle == 0) {
            return false;
        }
        static_cast<void>(
            m_hub->send(m_target, {PacketType::SendNumber, 0, id, wParam, lParam}, patience));
        return m_hub->lastSendWasAnswered();
    }

    qint32 SendText(qint32 id, qint32 number, const QString& text) override
    {
        return send({PacketType::SendText, 0, id, number, 0, text});
    }

    void Post(qint32 id, qint32 wParam, qint32 lParam) override
    {
        post({PacketType::PostNumber, 0, id, wParam, lParam});
    }

    void PostText(qint32 id, qint32 number, const QString& text) override
    {
        post({PacketType::PostText, 0, id, number, 0, text});
    }

    void setMessageNumber(NumberHandler handler) override
    {
        m_handlers->number =
            handler ? std::make_shared<const NumberHandler>(std::move(handler)) : nullptr;
    }

    void setMessageText(TextHandler handler) override
    {
        m_handlers->text =
            handler ? std::make_shared<const TextHandler>(std::move(handler)) : nullptr;
    }

private:
    qint32 send(const Packet& packet) { return m_handle == 0 ? 0 : m_hub->send(m_target, packet); }

    void post(const Packet& packet)
    {
        if (m_handle != 0) {
            m_hub->post(m_target, packet);
        }
    }

    std::shared_ptr<Handlers> m_handlers = std::make_shared<Handlers>();
    std::shared_ptr<MessageHub> m_hub;
    MessageHandle m_handle = 0;
    MessageHandle m_target = 0;
};

} // namespace

MessagePlace::MessagePlace()
    : user(::geteuid())
{}

MessagePlace::MessagePlace(QString runtimeFolder)
    : folder(std::move(runtimeFolder))
    , user(::geteuid())
{}

LinuxMessages::LinuxMessages(MessagePlace place)
    : m_hub(std::make_shared<MessageHub>(MessageFolder(std::move(place.folder), place.user),
                                         place.patience,
                                         std::move(place.refreshes)))
{}

LinuxMessages::~LinuxMessages() = default;

std::unique_ptr<KSMessage> LinuxMessages::makeControl()
{
    return std::make_unique<SocketControl>(m_hub);
}

bool LinuxMessages::IsMsgWindow(MessageHandle handle) const
{
    return m_hub->isOpen(handle) || m_hub->folder().isAlive(handle);
}

bool LinuxMessages::lastSendWasAnswered() const
{
    return m_hub->lastSendWasAnswered();
}

std::vector<LiveControl> LinuxMessages::liveControls() const
{
    return m_hub->folder().controls();
}

} // namespace melovane
