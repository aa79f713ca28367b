#include "platform/linux/message_links.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>

namespace melovane::linuxmessages {
namespace {

using linuxfiles::Descriptor;

/// A link whose peer takes only what it is asked to take.
class MessageLinks : public testing::Test
{
protected:
    MessageLinks()
    {
        std::array<int, 2> ends = {};
        EXPECT_EQ(
            ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()),
            0);
        peer.reset(ends[1]);
        link = links.add(Link::Kind::Outgoing, 70000, Descriptor(ends[0]));
    }

    Links links;
    LinkNumber link = 0;
    Descriptor peer = Descriptor();
};

TEST_F(MessageLinks, WhatAPeerDoesNotTakeIsKeptUpToAMeasureAndThenLost)
{
    const QByteArray packet(qsizetype{32} * 1024, 'x');
    constexpr int kFarTooMany = 4096; // 128 MB
    int taken = 0;
    while (taken < kFarTooMany && links.write(link, packet) == Links::Written::Yes) {
        ++taken;
    }
    EXPECT_GT(taken, 100);
    EXPECT_LT(taken, 1024);
    EXPECT_EQ(links.write(link, packet), Links::Written::Full);
    EXPECT_NE(links.find(link), nullptr) << "what waits for the peer stays";
}

} // namespace
} // namespace melovane::linuxmessages
