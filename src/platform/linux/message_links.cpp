#include "platform/linux/message_links.h"

#include "platform/linux/message_packet.h"

#include <sys/epoll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>

namespace melovane::linuxmessages {

using linuxfiles::Descriptor;

namespace {

/// Links that one wait() reports at most.
constexpr int kEvents = 64;

/// Bytes that wait for a peer that takes nothing: what it cannot get any more is dropped.
constexpr qsizetype kMaxOutbox = qsizetype{16} * 1024 * 1024;

/// What a waiting packet costs beside its bytes.
constexpr qsizetype kPacketCost = 64;

enum class Sent
{
    Yes,
    Later,
    Never
};

Sent sendNow(int socket, const QByteArray& bytes)
{
    ssize_t count = -1;
    do {
        count =
            ::send(socket, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (count < 0 && errno == EINTR);
    if (count == bytes.size()) {
        return Sent::Yes;
    }
    return count < 0 && errno == EAGAIN ? Sent::Later : Sent::Never;
}

} // namespace

Links::Links()
    : m_epoll(::epoll_create1(EPOLL_CLOEXEC))
    , m_buffer(kMaxPacket, '\0')
{}

LinkNumber Links::add(Link::Kind kind, MessageHandle control, Descriptor socket)
{
    const LinkNumber number = ++m_last;
    const Link& link =
        m_links.emplace(number, Link{kind, control, std::move(socket)}).first->second;
    watch(number, link, EPOLL_CTL_ADD);
    return number;
}

void Links::drop(LinkNumber number)
{
    // Closing a socket takes it out of the set.
    m_links.erase(number);
}

Link* Links::find(LinkNumber number)
{
    const auto found = m_links.find(number);
    return found == m_links.end() ? nullptr : &found->second;
}

LinkNumber Links::find(Link::Kind kind, MessageHandle control) const
{
    const auto found = std::find_if(m_links.begin(), m_links.end(), [&](const auto& entry) {
        return entry.second.kind == kind && entry.second.control == control;
    });
    return found == m_links.end() ? 0 : found->first;
}

std::vector<LinkNumber> Links::all(Link::Kind kind, MessageHandle control) const
{
    std::vector<LinkNumber> numbers;
    for (const auto& [number, link] : m_links) {
        if (link.kind == kind && link.control == control) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

size_t Links::count(Link::Kind kind) const
{
    return size_t(std::count_if(m_links.begin(), m_links.end(),
                                [kind](const auto& entry) { return entry.second.kind == kind; }));
}

void Links::watch(LinkNumber number, const Link& link, int operation) const
{
    epoll_event event = {};
    event.events = EPOLLIN | (link.outbox.empty() ? 0U : quint32{EPOLLOUT});
    event.data.u64 = number;
    ::epoll_ctl(m_epoll.number(), operation, link.socket.number(), &event);
}

Links::Written Links::write(LinkNumber number, const QByteArray& bytes)
{
    Link* link = find(number);
    if (link == nullptr) {
        return Written::Dead;
    }
    const Sent sent = link->outbox.empty() ? sendNow(link->socket.number(), bytes) : Sent::Later;
    if (sent != Sent::Later) {
        return sent == Sent::Yes ? Written::Yes : Written::Dead;
    }
    const qsizetype cost = bytes.size() + kPacketCost;
    if (link->outboxBytes + cost > kMaxOutbox) {
        return Written::Full;
    }
    link->outbox.push_back(bytes);
    link->outboxBytes += cost;
    if (link->outbox.size() == 1) {
        watch(number, *link, EPOLL_CTL_MOD);
    }
    return Written::Yes;
}

void Links::flush(LinkNumber number)
{
    Link* link = find(number);
    if (link == nullptr || link->outbox.empty()) {
        return;
    }
    while (!link->outbox.empty()) {
        // A packet that fails belongs to a peer that is gone; reading from it tells so.
        if (sendNow(link->socket.number(), link->outbox.front()) == Sent::Later) {
            return;
        }
        link->outboxBytes -= link->outbox.front().size() + kPacketCost;
        link->outbox.pop_front();
    }
    watch(number, *link, EPOLL_CTL_MOD);
}

std::vector<LinkNumber> Links::wait(std::chrono::milliseconds patience)
{
    std::array<epoll_event, kEvents> events = {};
    const int count = ::epoll_wait(m_epoll.number(), events.data(), kEvents, int(patience.count()));
    std::vector<LinkNumber> readable;
    for (int i = 0; i < count; ++i) {
        const epoll_event& event = events[size_t(i)];
        if ((event.events & EPOLLOUT) != 0) {
            flush(event.data.u64);
        }
        if ((event.events & ~quint32{EPOLLOUT}) != 0) {
            readable.push_back(event.data.u64);
        }
    }
    return readable;
}

std::optional<QByteArray> Links::read(const Link& link)
{
    const ssize_t count = ::recv(link.socket.number(), m_buffer.data(), size_t(m_buffer.size()),
                                 MSG_DONTWAIT | MSG_TRUNC);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return {};
    }
    return count > 0 && count <= m_buffer.size() ? m_buffer.first(count) : QByteArray();
}

} // namespace melovane::linuxmessages
