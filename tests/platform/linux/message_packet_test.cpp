#include "platform/linux/message_packet.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <cstring>

namespace melovane::linuxmessages {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype kTypeAt = 4;
constexpr qsizetype kTextSizeAt = 24;

const Packet kText = {PacketType::SendText, 7, 3075, -11011, 0, u"Ægir ♫"_s};

void setWord(QByteArray& bytes, qsizetype at, quint32 word)
{
    std::memcpy(bytes.data() + at, &word, sizeof word);
}

TEST(MessagePacket, ComesBackAsItWasSent)
{
    for (const Packet& packet :
         {kText,
          Packet{PacketType::SendNumber, 0xFFFFFFFF, 1036, std::numeric_limits<qint32>::min(),
                 std::numeric_limits<qint32>::max()},
          Packet{PacketType::PostText, 0, 1, 2, 0, QString()},
          Packet{PacketType::Reply, 9, 0, -1, 0}}) {
        const auto read = decode(encode(packet));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->type, packet.type);
        EXPECT_EQ(read->sequence, packet.sequence);
        EXPECT_EQ(read->id, packet.id);
        EXPECT_EQ(read->first, packet.first);
        EXPECT_EQ(read->second, packet.second);
        EXPECT_EQ(read->text, packet.text);
    }
}

TEST(MessagePacket, EveryWrongLengthIsRefused)
{
    const QByteArray bytes = encode(kText);
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        EXPECT_FALSE(decode(bytes.first(size))) << size;
    }
    EXPECT_FALSE(decode(bytes + 'x'));
    EXPECT_FALSE(decode(QByteArray(kMaxPacket + 1, 'x')));
}

TEST(MessagePacket, EveryUnknownTypeIsRefused)
{
    QByteArray bytes = encode({PacketType::PostNumber, 0, 1, 2, 3});
    for (quint32 type = 0; type < 300; ++type) {
        setWord(bytes, kTypeAt, type);
        EXPECT_EQ(decode(bytes).has_value(), type >= 1 && type <= 5) << type;
    }
    setWord(bytes, kTypeAt, 0xFFFFFFFF);
    EXPECT_FALSE(decode(bytes));
}

TEST(MessagePacket, ATextSizeThatLiesIsRefused)
{
    const QByteArray bytes = encode(kText);
    const auto size = quint32(bytes.size() - kPacketHead);
    for (const quint32 lie : {0U, 1U, size - 1, size + 1, 65536U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        QByteArray changed = bytes;
        setWord(changed, kTextSizeAt, lie);
        EXPECT_FALSE(decode(changed)) << lie;
    }
}

TEST(MessagePacket, ATextThatIsNoUtf8IsRefused)
{
    for (const char* text :
         {"\xFF", "\xC3", "a\x80z", "\xED\xA0\x80", "\xC0\xAF", "\xF8\x88\x80\x80\x80"}) {
        QByteArray bytes = encode({PacketType::PostText, 0, 1, 2, 0}) + text;
        setWord(bytes, kTextSizeAt, quint32(std::strlen(text)));
        EXPECT_FALSE(decode(bytes)) << text;
    }
}

TEST(MessagePacket, ANumberWithATextIsRefused)
{
    for (const auto type : {PacketType::SendNumber, PacketType::PostNumber, PacketType::Reply}) {
        QByteArray bytes = encode(kText);
        setWord(bytes, kTypeAt, quint32(type));
        EXPECT_FALSE(decode(bytes));
    }
}

TEST(MessagePacket, TheLongestTextFitsAndOneByteMoreDoesNot)
{
    const Packet longest = {PacketType::SendText, 1, 1, 1, 0, QString(kMaxTextBytes, u'x')};
    EXPECT_EQ(encode(longest).size(), kMaxPacket);
    EXPECT_TRUE(decode(encode(longest)));
    EXPECT_TRUE(
        encode({PacketType::SendText, 1, 1, 1, 0, QString(kMaxTextBytes + 1, u'x')}).isEmpty());
}

TEST(MessagePacket, WhateverIsAcceptedIsWhatEncodeWouldHaveMade)
{
    QRandomGenerator random(3);
    int accepted = 0;
    for (int round = 0; round < 50'000; ++round) {
        QByteArray bytes = encode(round % 2 == 0 ? kText : Packet{PacketType::Reply, 1, 0, 2, 0});
        for (int change = random.bounded(4); change >= 0; --change) {
            bytes[random.bounded(bytes.size())] = char(random.bounded(256));
        }
        if (random.bounded(8) == 0) {
            bytes.truncate(random.bounded(bytes.size()));
        }
        if (const auto packet = decode(bytes)) {
            ++accepted;
            ASSERT_EQ(encode(*packet), bytes);
        }
    }
    EXPECT_GT(accepted, 100);
}

} // namespace
} // namespace melovane::linuxmessages
