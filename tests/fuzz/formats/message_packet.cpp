#include "platform/linux/message_packet.h"

#include "fuzz/formats/formats.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString check(const QByteArray& bytes)
{
    const auto packet = linuxmessages::decode(bytes);
    return !packet || linuxmessages::encode(*packet) == bytes ? QString() : u"another packet"_s;
}

std::vector<QByteArray> seeds()
{
    using linuxmessages::Packet;
    using linuxmessages::PacketType;
    return {linuxmessages::encode(Packet{PacketType::SendNumber, 7, 1052, -1, 3}),
            linuxmessages::encode(Packet{PacketType::PostText, 0, 1079, 5, 0, u"Träume"_s}),
            linuxmessages::encode(Packet{PacketType::Reply, 7, 0, 1, 0})};
}

} // namespace

Format messagePacket()
{
    return {"message_packet", check, seeds};
}

} // namespace melovane::fuzz
