#include "platform/linux/message_packet.h"

#include <QByteArrayView>

#include <array>
#include <cstring>

namespace melovane::linuxmessages {

namespace {

/// First word of every packet; its last letter counts the versions of the layout.
constexpr quint32 kMark = 0x4D4C5631;

/// Words in front of the text, in the machine's byte order: mark, type, sequence number, id, two
/// numbers, bytes of the text.
using Head = std::array<quint32, 7>;
static_assert(sizeof(Head) == kPacketHead);

bool isType(quint32 number)
{
    return number >= quint32(PacketType::SendNumber) && number <= quint32(PacketType::Reply);
}

bool carriesText(PacketType type)
{
    return type == PacketType::SendText || type == PacketType::PostText;
}

} // namespace

QByteArray encode(const Packet& packet)
{
    const QByteArray text = packet.text.toUtf8();
    if (text.size() > kMaxTextBytes) {
        return {};
    }
    const Head head = {kMark,
                       quint32(packet.type),
                       packet.sequence,
                       quint32(packet.id),
                       quint32(packet.first),
                       quint32(packet.second),
                       quint32(text.size())};
    QByteArray bytes(kPacketHead, Qt::Uninitialized);
    std::memcpy(bytes.data(), head.data(), sizeof head);
    return bytes + text;
}

std::optional<Packet> decode(QByteArrayView bytes)
{
    if (bytes.size() < kPacketHead || bytes.size() > kMaxPacket) {
        return {};
    }
    Head head = {};
    std::memcpy(head.data(), bytes.data(), sizeof head);
    const auto [mark, number, sequence, id, first, second, textBytes] = head;
    const QByteArrayView text = bytes.sliced(kPacketHead);
    if (mark != kMark || !isType(number) || qsizetype{textBytes} != text.size()) {
        return {};
    }
    const auto type = PacketType(number);
    if (!text.isEmpty() && (!carriesText(type) || !text.isValidUtf8())) {
        return {};
    }
    return Packet{type,          sequence,       qint32(id),
                  qint32(first), qint32(second), QString::fromUtf8(text)};
}

} // namespace melovane::linuxmessages
