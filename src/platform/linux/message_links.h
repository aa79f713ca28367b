#pragma once

#include "platform/linux/file_writing.h"
#include "platform/message/message_control.h"

#include <QByteArray>

#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace melovane::linuxmessages {

/// Number of a link, never used again: a handler may close any link, also the one it was called
/// from.
using LinkNumber = quint64;

/// One socket of a message control.
struct Link
{
    enum class Kind
    {
        Listener,
        Accepted, ///< a peer that sends to a control of ours
        Outgoing  ///< to a control of another program
    };

    Kind kind = Kind::Listener;
    MessageHandle control = 0; ///< ours; of an outgoing link the other's
    linuxfiles::Descriptor socket;
    int serving = 0;      ///< handlers that run for this peer
    bool closing = false; ///< goes when the last of them has been answered

    // What the peer has not taken yet.
    std::deque<QByteArray> outbox = {};
    qsizetype outboxBytes = 0;
};

/// The sockets of a program's message controls, in one epoll set. Nothing here blocks but wait().
class Links
{
public:
    Links();

    /// For the message loop: readable when wait() would find something.
    [[nodiscard]] int descriptor() const { return m_epoll.number(); }

    LinkNumber add(Link::Kind kind, MessageHandle control, linuxfiles::Descriptor socket);
    void drop(LinkNumber number);

    /// Null when the link has gone.
    [[nodiscard]] Link* find(LinkNumber number);
    /// The first link of that kind to that control; 0 for none.
    [[nodiscard]] LinkNumber find(Link::Kind kind, MessageHandle control) const;
    [[nodiscard]] std::vector<LinkNumber> all(Link::Kind kind, MessageHandle control) const;
    [[nodiscard]] size_t count(Link::Kind kind) const;

    enum class Written
    {
        Yes,
        Full, ///< the packet is lost; what waits for the peer stays in its order
        Dead
    };

    /// Hands a packet to the peer, now or as soon as it takes one, in the order of the calls. Full
    /// when so much waits already that the peer must be hung.
    [[nodiscard]] Written write(LinkNumber number, const QByteArray& bytes);

    /// Waits until a link can be read or has ended, and sends what peers take meanwhile.
    [[nodiscard]] std::vector<LinkNumber> wait(std::chrono::milliseconds patience);

    /// The next packet of a link in bytes: nothing when none is there, an empty one when the peer
    /// is gone or the packet is too long to be one of ours.
    [[nodiscard]] std::optional<QByteArray> read(const Link& link);

private:
    void watch(LinkNumber number, const Link& link, int operation) const;
    void flush(LinkNumber number);

    linuxfiles::Descriptor m_epoll;
    std::map<LinkNumber, Link> m_links;
    LinkNumber m_last = 0;
    QByteArray m_buffer;
};

} // namespace melovane::linuxmessages
