#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What goes over the sockets of the message controls: one packet a message.
namespace melovane::linuxmessages {

/// Numbers on the wire: keep, programs of several releases may run side by side.
enum class PacketType : quint32
{
    SendNumber = 1,
    SendText = 2,
    PostNumber = 3,
    PostText = 4,
    Reply = 5, ///< answers a send of the same sequence number
};

struct Packet
{
    PacketType type = PacketType::PostNumber;
    quint32 sequence = 0; ///< of a send and its reply; 0 for a post
    qint32 id = 0;
    qint32 first = 0;  ///< wParam, the number of a text message, or the result
    qint32 second = 0; ///< lParam
    QString text = {};
};

/// Longest text in bytes of UTF-8.
inline constexpr qsizetype kMaxTextBytes = 65536;
/// Bytes in front of the text.
inline constexpr qsizetype kPacketHead = 28;
inline constexpr qsizetype kMaxPacket = kPacketHead + kMaxTextBytes;

/// The bytes of a packet; empty when its text is too long.
[[nodiscard]] QByteArray encode(const Packet& packet);

/// Reads what a peer has sent. Nothing unless length, type and text are those of a packet made by
/// encode(); the text is valid UTF-8 then.
[[nodiscard]] std::optional<Packet> decode(QByteArrayView bytes);

} // namespace melovane::linuxmessages
