#include "platform/linux/message_hub.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace melovane::linuxmessages {

using linuxfiles::Descriptor;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

/// Sends that may wait inside one another. Two handlers that answer each other with a send would
/// otherwise end with the stack.
constexpr int kMaxNesting = 64;

/// Times that one turn of the message loop looks for more, so that the window has its turn, too.
constexpr int kRounds = 256;

/// Peers that are let in at the same time; a suite has some ten.
constexpr size_t kMaxPeers = 256;

/// Posted bytes that wait for the message loop. A program that never returns to it loses what
/// comes after.
constexpr qsizetype kMaxPosted = qsizetype{64} * 1024 * 1024;
/// What a posted message costs beside its text.
constexpr qsizetype kPostedCost = 128;

Descriptor spareDescriptor()
{
    return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

bool isSend(PacketType type)
{
    return type == PacketType::SendNumber || type == PacketType::SendText;
}

qsizetype costOf(const Packet& packet)
{
    return kPostedCost + packet.text.size() * qsizetype(sizeof(QChar));
}

} // namespace

MessageHub::MessageHub(MessageFolder folder, milliseconds patience, std::set<qint32> refreshes)
    : m_folder(std::move(folder))
    , m_patience(patience)
    , m_notifier(m_links.descriptor(), QSocketNotifier::Read)
    , m_spare(spareDescriptor())
    , m_refreshes(std::move(refreshes))
{
    m_delivery.setSingleShot(true);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [this] { fromLoop(&MessageHub::serveReady); });
    m_delivery.callOnTimeout(&m_delivery, [this] { fromLoop(&MessageHub::deliverPosted); });
}

void MessageHub::fromLoop(void (MessageHub::*step)())
{
    auto self = shared_from_this();
    ((*this).*step)();
    if (self.use_count() == 1) {
        // The last control went in a handler. The notifier that called us must not go before it has
        // returned.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [last = std::move(self)] {}, Qt::QueuedConnection);
    }
}

MessageHandle MessageHub::open(std::shared_ptr<const Handlers> handlers)
{
    m_folder.sweep();
    auto [listener, handle] = m_folder.listen();
    if (listener.isValid()) {
        m_controls.emplace(handle, std::move(handlers));
        m_links.add(Link::Kind::Listener, handle, std::move(listener));
    }
    return handle;
}

void MessageHub::close(MessageHandle control)
{
    m_folder.remove(control);
    m_controls.erase(control);
    drop(m_links.find(Link::Kind::Listener, control));
    for (const LinkNumber number : m_links.all(Link::Kind::Accepted, control)) {
        Link* link = m_links.find(number);
        // Who waits for a handler of this control still gets its answer.
        if (link->serving > 0) {
            link->closing = true;
        } else {
            drop(number);
        }
    }
}

bool MessageHub::isOpen(MessageHandle control) const
{
    return m_controls.contains(control);
}

qint32 MessageHub::send(MessageHandle target, Packet packet, std::optional<milliseconds> patience)
{
    packet.sequence = ++m_lastSequence;
    m_answered = false;
    const QByteArray bytes = encode(packet);
    if (bytes.isEmpty() || m_nesting >= kMaxNesting) {
        return 0;
    }
    const auto self = shared_from_this();
    ++m_nesting;
    const auto leave = qScopeGuard([this] { --m_nesting; });
    if (!isOpen(target)) {
        return sendFar(target, packet.sequence, bytes, patience.value_or(m_patience));
    }
    const qint32 result = deliver(target, packet);
    m_answered = true;
    return result;
}

qint32 MessageHub::sendFar(MessageHandle target,
                           quint32 sequence,
                           const QByteArray& bytes,
                           milliseconds patience)
{
    Pending pending{sequence, writeTo(target, bytes)};
    if (pending.link == 0) {
        return 0;
    }
    m_pending.push_back(&pending);
    const auto leave = qScopeGuard([this] { m_pending.pop_back(); });
    await(pending, patience);
    m_answered = pending.answered;
    return pending.result;
}

void MessageHub::await(Pending& pending, milliseconds patience)
{
    const auto end = steady_clock::now() + patience;
    bool last = false;
    while (!pending.done && !last) {
        const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        // A handler may have used up the time while the answer lay ready.
        last = left <= milliseconds::zero();
        pump(std::clamp(left, milliseconds::zero(), patience));
    }
}

void MessageHub::post(MessageHandle target, const Packet& packet)
{
    const QByteArray bytes = encode(packet);
    if (bytes.isEmpty()) {
        return;
    }
    if (isOpen(target)) {
        keepPosted(target, packet);
    } else {
        static_cast<void>(writeTo(target, bytes));
    }
}

LinkNumber MessageHub::writeTo(MessageHandle target, const QByteArray& bytes)
{
    const LinkNumber known = m_links.find(Link::Kind::Outgoing, target);
    if (known != 0) {
        const Links::Written written = m_links.write(known, bytes);
        if (written != Links::Written::Dead) {
            // A second link to a program that hangs would lose what waits for it on this one.
            return written == Links::Written::Yes ? known : 0;
        }
        drop(known);
    }
    Descriptor socket = m_folder.connect(target);
    if (!socket.isValid()) {
        return 0;
    }
    const LinkNumber made = m_links.add(Link::Kind::Outgoing, target, std::move(socket));
    if (m_links.write(made, bytes) != Links::Written::Yes) {
        drop(made);
        return 0;
    }
    return made;
}

void MessageHub::serveReady()
{
    for (int round = 0; round < kRounds && pump(milliseconds::zero()); ++round) {
    }
}

bool MessageHub::pump(milliseconds patience)
{
    const auto ready = m_links.wait(patience);
    for (const LinkNumber number : ready) {
        // A handler of an earlier one may have closed it.
        if (const Link* link = m_links.find(number)) {
            if (link->kind == Link::Kind::Listener) {
                acceptFrom(*link);
            } else {
                readFrom(number, *link);
            }
        }
    }
    return !ready.empty();
}

void MessageHub::acceptFrom(const Link& listener)
{
    Descriptor peer = m_folder.accept(listener.socket.number());
    if (!peer.isValid() && (errno == EMFILE || errno == ENFILE)) {
        refuseOne(listener.socket.number());
    }
    if (peer.isValid() && m_links.count(Link::Kind::Accepted) < kMaxPeers) {
        m_links.add(Link::Kind::Accepted, listener.control, std::move(peer));
    }
}

/// With no descriptor left the peer would stand at the door and keep the loop awake for ever.
void MessageHub::refuseOne(int listener)
{
    m_spare.reset();
    static_cast<void>(m_folder.accept(listener));
    m_spare = spareDescriptor();
}

void MessageHub::readFrom(LinkNumber number, const Link& link)
{
    const auto bytes = m_links.read(link);
    if (!bytes) {
        return;
    }
    const auto packet = decode(*bytes);
    if (!packet || !take(number, link, *packet)) {
        drop(number);
    }
}

bool MessageHub::take(LinkNumber number, const Link& link, const Packet& packet)
{
    const bool isReply = packet.type == PacketType::Reply;
    if (isReply != (link.kind == Link::Kind::Outgoing)) {
        return false;
    }
    if (isReply) {
        settle(number, packet);
    } else if (isSend(packet.type)) {
        serve(number, link.control, packet);
    } else {
        keepPosted(link.control, packet);
    }
    return true;
}

void MessageHub::serve(LinkNumber number, MessageHandle control, const Packet& packet)
{
    ++m_links.find(number)->serving;
    const qint32 result = deliver(control, packet);
    Link* link = m_links.find(number);
    if (link == nullptr) {
        return;
    }
    --link->serving;
    const bool ends = link->closing && link->serving == 0;
    const Packet reply{PacketType::Reply, packet.sequence, 0, result, 0};
    if (m_links.write(number, encode(reply)) != Links::Written::Yes || ends) {
        drop(number);
    }
}

void MessageHub::settle(LinkNumber number, const Packet& reply)
{
    // Nobody waits any more for a late answer.
    for (Pending* pending : m_pending) {
        if (pending->sequence == reply.sequence && pending->link == number) {
            pending->done = true;
            pending->answered = true;
            pending->result = reply.first;
        }
    }
}

void MessageHub::drop(LinkNumber number)
{
    m_links.drop(number);
    for (Pending* pending : m_pending) {
        if (pending->link == number) {
            pending->done = true;
        }
    }
}

qint32 MessageHub::deliver(MessageHandle control, const Packet& packet) const
{
    const auto found = m_controls.find(control);
    if (found == m_controls.end()) {
        return 0;
    }
    const Handlers handlers = *found->second;
    if (packet.type == PacketType::SendText || packet.type == PacketType::PostText) {
        return handlers.text ? (*handlers.text)(packet.id, packet.first, packet.text) : 0;
    }
    return handlers.number ? (*handlers.number)(packet.id, packet.first, packet.second) : 0;
}

bool MessageHub::isRefresh(const Packet& packet) const
{
    return packet.type == PacketType::PostNumber && m_refreshes.contains(packet.id);
}

MessageHub::RefreshKey MessageHub::refreshKey(MessageHandle control, const Packet& packet)
{
    return {control, packet.id, packet.first, packet.second};
}

void MessageHub::keepPosted(MessageHandle control, const Packet& packet)
{
    const bool refresh = isRefresh(packet);
    if (refresh) {
        // The last one is kept: what was posted between the two may change what is read again.
        const auto waiting = m_waitingRefreshes.find(refreshKey(control, packet));
        if (waiting != m_waitingRefreshes.end()) {
            static_cast<void>(takePosted(waiting->second));
        }
    }
    if (m_postedBytes + costOf(packet) > kMaxPosted) {
        return;
    }
    m_postedBytes += costOf(packet);
    m_posted.push_back({control, packet});
    if (refresh) {
        m_waitingRefreshes[refreshKey(control, packet)] = std::prev(m_posted.end());
    }
    m_delivery.start();
}

MessageHub::Posted MessageHub::takePosted(PostedList::iterator waiting)
{
    Posted taken = std::move(*waiting);
    m_posted.erase(waiting);
    m_postedBytes -= costOf(taken.packet);
    if (isRefresh(taken.packet)) {
        m_waitingRefreshes.erase(refreshKey(taken.control, taken.packet));
    }
    return taken;
}

void MessageHub::deliverPosted()
{
    if (m_delivering) {
        return;
    }
    m_delivering = true;
    const auto leave = qScopeGuard([this] {
        m_delivering = false;
        if (!m_posted.empty()) {
            m_delivery.start();
        }
    });
    // What a handler posts to itself waits for the next turn of the loop.
    for (size_t left = m_posted.size(); left > 0 && !m_posted.empty(); --left) {
        const Posted next = takePosted(m_posted.begin());
        static_cast<void>(deliver(next.control, next.packet));
    }
}

} // namespace melovane::linuxmessages
