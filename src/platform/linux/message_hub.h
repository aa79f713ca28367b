#pragma once

#include "platform/linux/message_folder.h"
#include "platform/linux/message_links.h"
#include "platform/linux/message_packet.h"
#include "platform/message/message_control.h"

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace melovane::linuxmessages {

/// What the events of one control do. Whoever calls a handler keeps it alive meanwhile.
struct Handlers
{
    std::shared_ptr<const KSMessage::NumberHandler> number;
    std::shared_ptr<const KSMessage::TextHandler> text;
};

/// Carries the messages of all controls of this program.
///
/// Two read from the sockets: the message loop, and a send that waits for its answer. A send that
/// waits serves the sends of others to every control of the program, so that programs that send to
/// one another at the same moment all go on. What was posted is kept for the message loop, and the
/// next post waits until the handler of the one before has returned, also when that handler runs a
/// message loop of its own: a burst of posts never stands on the stack.
class MessageHub : public std::enable_shared_from_this<MessageHub>
{
public:
    /// \param patience  how long a send waits for a program that does not answer
    /// \param refreshes identifiers of posts that only ask to read again: of equal ones that wait
    ///                  the last is delivered, at its own place
    MessageHub(MessageFolder folder,
               std::chrono::milliseconds patience,
               std::set<qint32> refreshes = {});

    [[nodiscard]] const MessageFolder& folder() const { return m_folder; }

    /// Makes a control that answers with these handlers, which may change later. 0 when none can
    /// be made.
    [[nodiscard]] MessageHandle open(std::shared_ptr<const Handlers> handlers);
    void close(MessageHandle control);
    [[nodiscard]] bool isOpen(MessageHandle control) const;

    /// Sends and waits; the answer, or 0. Everything may have changed afterwards.
    /// \param patience instead of that of the hub
    [[nodiscard]] qint32 send(MessageHandle target,
                              Packet packet,
                              std::optional<std::chrono::milliseconds> patience = {});

    [[nodiscard]] bool lastSendWasAnswered() const { return m_answered; }

    void post(MessageHandle target, const Packet& packet);

private:
    /// A send that waits; lies on the stack of send().
    struct Pending
    {
        quint32 sequence = 0;
        LinkNumber link = 0;
        bool done = false;
        bool answered = false;
        qint32 result = 0;
    };

    struct Posted
    {
        MessageHandle control = 0;
        Packet packet;
    };

    using PostedList = std::list<Posted>;
    /// Control, identifier and the two numbers of a refresh.
    using RefreshKey = std::tuple<MessageHandle, qint32, qint32, qint32>;

    void fromLoop(void (MessageHub::*step)());

    void serveReady();

    void deliverPosted();
    [[nodiscard]] Posted takePosted(PostedList::iterator waiting);

    /// Waits, and handles what has come; false when nothing has.
    bool pump(std::chrono::milliseconds patience);
    void acceptFrom(const Link& listener);
    void refuseOne(int listener);
    void readFrom(LinkNumber number, const Link& link);
    [[nodiscard]] bool take(LinkNumber number, const Link& link, const Packet& packet);
    void serve(LinkNumber number, MessageHandle control, const Packet& packet);
    void settle(LinkNumber number, const Packet& reply);
    void drop(LinkNumber number);

    [[nodiscard]] qint32 sendFar(MessageHandle target,
                                 quint32 sequence,
                                 const QByteArray& bytes,
                                 std::chrono::milliseconds patience);
    void await(Pending& pending, std::chrono::milliseconds patience);
    /// The link that took the bytes, or 0.
    [[nodiscard]] LinkNumber writeTo(MessageHandle target, const QByteArray& bytes);
    [[nodiscard]] qint32 deliver(MessageHandle control, const Packet& packet) const;
    void keepPosted(MessageHandle control, const Packet& packet);
    [[nodiscard]] bool isRefresh(const Packet& packet) const;
    [[nodiscard]] static RefreshKey refreshKey(MessageHandle control, const Packet& packet);

    MessageFolder m_folder;
    std::chrono::milliseconds m_patience;
    Links m_links;
    QSocketNotifier m_notifier;
    QTimer m_delivery;
    linuxfiles::Descriptor m_spare;
    std::map<MessageHandle, std::shared_ptr<const Handlers>> m_controls;
    std::vector<Pending*> m_pending;
    PostedList m_posted;
    std::set<qint32> m_refreshes;
    std::map<RefreshKey, PostedList::iterator> m_waitingRefreshes;
    qsizetype m_postedBytes = 0;
    quint32 m_lastSequence = 0;
    int m_nesting = 0;
    bool m_delivering = false;
    bool m_answered = false;
};

} // namespace melovane::linuxmessages
