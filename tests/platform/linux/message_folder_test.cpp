#include "platform/linux/linux_messages.h"
#include "platform/linux/message_packet.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using linuxfiles::Descriptor;
using linuxmessages::PacketType;

/// A user that is nobody here.
constexpr quint32 kStranger = 65534;

sockaddr_un addressOf(const QString& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray name = path.toUtf8();
    EXPECT_LT(size_t(name.size()), sizeof address.sun_path);
    std::copy(name.cbegin(), name.cend(), address.sun_path);
    return address;
}

/// A socket as any program of this user can make it.
class RawPeer
{
public:
    explicit RawPeer(const QString& path)
        : m_socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        const sockaddr_un address = addressOf(path);
        m_connected = ::connect(m_socket.number(), reinterpret_cast<const sockaddr*>(&address),
                                sizeof address) == 0;
    }

    [[nodiscard]] bool isConnected() const { return m_connected; }

    // NOLINTNEXTLINE(modernize-use-nodiscard): most tests send and look at the answer alone.
    bool write(const QByteArray& bytes) const
    {
        return ::send(m_socket.number(), bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL) ==
               bytes.size();
    }

    /// True when the other side has ended the connection.
    [[nodiscard]] bool isTurnedAway() const
    {
        char byte = 0;
        const ssize_t count = ::recv(m_socket.number(), &byte, 1, MSG_DONTWAIT);
        return count == 0 || (count < 0 && errno != EAGAIN);
    }

    [[nodiscard]] bool hasAnswer() const
    {
        char byte = 0;
        return ::recv(m_socket.number(), &byte, 1, MSG_DONTWAIT | MSG_PEEK) == 1;
    }

private:
    Descriptor m_socket;
    bool m_connected = false;
};

/// A socket of that name that listens, as another program's would.
Descriptor listenAt(const QString& path)
{
    Descriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const sockaddr_un address = addressOf(path);
    EXPECT_EQ(::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
              0);
    EXPECT_EQ(::listen(socket.number(), 5), 0);
    return socket;
}

class MessageFolder : public testing::Test
{
protected:
    MessageFolder()
    {
        control->setMessageNumber([](qint32, qint32 one, qint32 two) { return one + two; });
        control->setMessageText([this](qint32, qint32, const QString&) { return ++texts; });
        control->setTarget(control->handle());
    }

    [[nodiscard]] QString socketOf(MessageHandle handle) const
    {
        return folder.file(u"AfxOleControl42.%1"_s.arg(handle));
    }

    [[nodiscard]] QStringList names() const
    {
        return QDir(folder.path()).entryList(QDir::System | QDir::Files);
    }

    /// Sends bytes over a connection of their own; true when they got the connection ended.
    bool isRefused(const QByteArray& bytes)
    {
        const RawPeer peer(socketOf(control->handle()));
        EXPECT_TRUE(peer.isConnected());
        EXPECT_TRUE(peer.write(bytes));
        EXPECT_TRUE(test::waitFor([&] { return peer.hasAnswer() || peer.isTurnedAway(); }));
        return !peer.hasAnswer();
    }

    test::TempFolder folder;
    LinuxMessages messages{MessagePlace(folder.path())};
    std::unique_ptr<KSMessage> control = messages.makeControl();
    int texts = 0;
};

TEST_F(MessageFolder, HoldsOneSocketPerControlWhoseNameSaysClassAndHandle)
{
    EXPECT_EQ(names(), QStringList(u"AfxOleControl42.%1"_s.arg(control->handle())));
    control.reset();
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(MessageFolder, AHandleThatALiveSocketOfAnotherClassUsesIsNoMessageControl)
{
    const Descriptor other = listenAt(folder.file(u"Shell_TrayWnd.4711000"_s));
    EXPECT_FALSE(messages.IsMsgWindow(4711000));
    const Descriptor ours = listenAt(socketOf(4711001));
    EXPECT_TRUE(messages.IsMsgWindow(4711001));
}

TEST_F(MessageFolder, APlainFileOfThatNameIsNoMessageControl)
{
    folder.write(u"AfxOleControl42.4711000"_s, "x");
    EXPECT_FALSE(messages.IsMsgWindow(4711000));
    control->setTarget(4711000);
    EXPECT_EQ(control->Send(1, 2, 3), 0);
}

TEST_F(MessageFolder, AListenerWhoseQueueIsFullCountsAsAlive)
{
    const QString path = socketOf(4711000);
    const Descriptor busy = listenAt(path);
    std::vector<std::unique_ptr<RawPeer>> waiting;
    do {
        waiting.push_back(std::make_unique<RawPeer>(path));
    } while (waiting.back()->isConnected());
    EXPECT_TRUE(messages.IsMsgWindow(4711000));
    control->setTarget(4711000);
    EXPECT_EQ(control->Send(1, 2, 3), 0);
}

TEST_F(MessageFolder, SocketsWithoutAListenerAreSweptAndOthersStay)
{
    for (int i = 0; i < 20; ++i) {
        listenAt(socketOf(4711000 + i));
    }
    listenAt(folder.file(u"Foreign.4711000"_s));
    const Descriptor alive = listenAt(socketOf(65536));
    folder.write(u"notes.txt"_s, "x");
    const auto next = messages.makeControl();
    EXPECT_EQ(names().size(), 5) << names().join(u' ').toStdString();
    EXPECT_TRUE(names().contains(u"AfxOleControl42.65536"_s));
    EXPECT_TRUE(names().contains(u"Foreign.4711000"_s));
    EXPECT_TRUE(names().contains(u"notes.txt"_s));
}

TEST_F(MessageFolder, ASweepLooksAtSomeSocketsOnlyAndAFewOfThemClearAll)
{
    for (int i = 0; i < 200; ++i) {
        listenAt(socketOf(4711000 + i));
    }
    auto next = messages.makeControl();
    const qsizetype left = names().size();
    EXPECT_GT(left, 100);
    EXPECT_LT(left, 160);
    for (int i = 0; i < 60 && names().size() > 2; ++i) {
        next = messages.makeControl();
    }
    EXPECT_EQ(names().size(), 2);
}

TEST_F(MessageFolder, AnUnfinishedSocketIsSweptWhenItIsOldOnly)
{
    const QString young = socketOf(4711000) + u".new"_s;
    const QString old = socketOf(4711001) + u".new"_s;
    listenAt(young);
    listenAt(old);
    const timespec hourAgo[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, old.toUtf8().constData(), hourAgo, 0), 0);
    EXPECT_FALSE(messages.IsMsgWindow(4711000));
    const auto next = messages.makeControl();
    EXPECT_TRUE(QFileInfo::exists(young));
    EXPECT_FALSE(QFileInfo::exists(old));
}

TEST_F(MessageFolder, ANumberWithLeadingZerosIsNoHandleAndItsFileIsLeftAlone)
{
    // Read as a number it would be the control that is there.
    const QString alive = folder.file(u"AfxOleControl42.00%1"_s.arg(control->handle()));
    const Descriptor foreign = listenAt(alive);
    const auto live = messages.liveControls();
    ASSERT_EQ(live.size(), 1U);
    EXPECT_EQ(live[0].handle, control->handle());

    const QString old = folder.file(u"AfxOleControl42.004711000.new"_s);
    listenAt(old);
    const timespec hourAgo[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, old.toUtf8().constData(), hourAgo, 0), 0);
    const auto next = messages.makeControl();
    EXPECT_TRUE(QFileInfo::exists(old)) << "no unfinished socket of a control";
    EXPECT_TRUE(QFileInfo::exists(alive));
}

TEST_F(MessageFolder, WithoutAFolderAControlReachesNobodyAndNobodyReachesIt)
{
    for (const QString& place : {QString(), folder.file(u"absent"_s)}) {
        LinuxMessages none{MessagePlace(place)};
        const auto mute = none.makeControl();
        EXPECT_EQ(mute->handle(), 0);
        mute->setTarget(control->handle());
        EXPECT_EQ(mute->Send(1, 2, 3), 0);
        mute->Post(1, 2, 3);
        EXPECT_FALSE(none.IsMsgWindow(control->handle()));
        EXPECT_TRUE(none.liveControls().empty());
    }
    EXPECT_EQ(control->Send(1, 2, 3), 5);
}

TEST_F(MessageFolder, AFolderWhosePathIsLongerThanASocketAddressServesAsWell)
{
    const QString deep = folder.file(QString(150, u'd') + u"/"_s + QString(150, u'e'));
    ASSERT_TRUE(QDir().mkpath(deep));
    LinuxMessages far{MessagePlace(deep)};
    LinuxMessages near{MessagePlace(deep)};
    const auto one = far.makeControl();
    ASSERT_GE(one->handle(), 65536);
    EXPECT_TRUE(near.IsMsgWindow(one->handle()));
    const auto two = near.makeControl();
    int seen = 0;
    one->setMessageNumber([&](qint32, qint32, qint32) { return ++seen; });
    two->setTarget(one->handle());
    two->Post(1, 2, 3);
    EXPECT_TRUE(test::waitFor([&] { return seen == 1; }));
}

TEST_F(MessageFolder, AControlOfAnotherUserIsNeitherAliveNorSpokenTo)
{
    MessagePlace place(folder.path());
    place.user = kStranger;
    place.patience = std::chrono::seconds(2);
    LinuxMessages theirs(place);
    EXPECT_FALSE(theirs.IsMsgWindow(control->handle()));
    EXPECT_TRUE(theirs.liveControls().empty());
    const auto stranger = theirs.makeControl();
    stranger->setTarget(control->handle());
    EXPECT_EQ(stranger->Send(1, 2, 3), 0);
    stranger->PostText(1, 2, u"x"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(texts, 0);
}

/// Runs a job as another user where this process may become one; its exit code.
int asStranger(const std::function<int()>& job)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const bool changed = ::geteuid() != 0 || ::setuid(kStranger) == 0;
        ::_exit(changed ? job() : 99);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(MessageFolder, AProcessOfAnotherUserIsTurnedAwayAtTheDoor)
{
    // The door is open as wide as it never is, so that the stranger gets as far as the socket. Who
    // cannot become another user takes the part of a program that expects one.
    MessagePlace place(folder.path());
    place.user = ::geteuid() == 0 ? 0 : kStranger;
    LinuxMessages guarded(place);
    const auto target = guarded.makeControl();
    int seen = 0;
    target->setMessageNumber([&](qint32, qint32, qint32) { return ++seen; });
    const QString path = socketOf(target->handle());
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0777), 0);
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0777), 0);
    const QByteArray bytes = linuxmessages::encode({PacketType::PostNumber, 0, 1, 2, 3});
    EXPECT_EQ(asStranger([&] { return RawPeer(path).write(bytes) ? 0 : 1; }), 0);
    const RawPeer late(path);
    EXPECT_TRUE(late.isConnected());
    control->setTarget(control->handle());
    bool turned = false;
    control->setMessageNumber([&](qint32, qint32, qint32) {
        turned = true;
        return 0;
    });
    control->Post(1, 0, 0);
    EXPECT_TRUE(test::waitFor([&] { return turned; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(late.isTurnedAway(), ::geteuid() != 0);
}

TEST_F(MessageFolder, ASocketThatAStrangerHasPutThereIsNotSpokenTo)
{
    const QString path = socketOf(4711000);
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0777), 0);
    int ends[2] = {-1, -1};
    int done[2] = {-1, -1};
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ASSERT_EQ(::pipe2(done, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const bool changed = ::geteuid() != 0 || ::setuid(kStranger) == 0;
        const Descriptor listener = listenAt(path);
        char byte = changed ? 'x' : 'n';
        [[maybe_unused]] ssize_t count = ::write(ends[1], &byte, 1);
        ::close(done[1]);
        count = ::read(done[0], &byte, 1);
        ::_exit(0);
    }
    char ready = 0;
    ASSERT_EQ(::read(ends[0], &ready, 1), 1);
    EXPECT_EQ(ready, 'x');
    MessagePlace place(folder.path());
    place.user = ::geteuid() == 0 ? 0 : kStranger;
    EXPECT_FALSE(LinuxMessages(place).IsMsgWindow(4711000));
    for (const int end : {ends[0], ends[1], done[0], done[1]}) {
        ::close(end);
    }
    ::waitpid(child, nullptr, 0);
}

TEST_F(MessageFolder, APacketOfEveryWrongLengthEndsItsConnectionAndNothingElse)
{
    const QByteArray good = linuxmessages::encode({PacketType::SendText, 1, 2, 3, 0, u"Text"_s});
    EXPECT_FALSE(isRefused(good));
    for (qsizetype size = 1; size < good.size(); ++size) {
        EXPECT_TRUE(isRefused(good.first(size))) << size;
    }
    EXPECT_TRUE(isRefused(good + 'x'));
    EXPECT_TRUE(isRefused(QByteArray(linuxmessages::kMaxPacket + 1, 'x')));
    EXPECT_EQ(texts, 1);
    EXPECT_EQ(control->Send(1, 2, 3), 5);
}

TEST_F(MessageFolder, APacketOfEveryUnknownTypeEndsItsConnection)
{
    QByteArray bytes = linuxmessages::encode({PacketType::SendNumber, 1, 2, 3, 4});
    for (int type = 0; type < 40; ++type) {
        bytes[4] = char(type);
        const bool isSend = type == 1 || type == 2;
        const bool isPost = type == 3 || type == 4;
        if (!isPost) {
            EXPECT_EQ(isRefused(bytes), !isSend) << type;
        }
    }
}

TEST_F(MessageFolder, AnAnswerThatNobodyAskedForEndsItsConnection)
{
    EXPECT_TRUE(isRefused(linuxmessages::encode({PacketType::Reply, 1, 0, 3, 0})));
}

TEST_F(MessageFolder, ThousandsOfRandomPacketsLeaveTheControlAtWork)
{
    QRandomGenerator random(11);
    const QByteArray good =
        linuxmessages::encode({PacketType::SendText, 1, 2, 3, 0, u"Text \u266B"_s});
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = good;
        for (int change = random.bounded(1, 6); change > 0; --change) {
            bytes[random.bounded(bytes.size())] = char(random.bounded(256));
        }
        bytes.truncate(random.bounded(1, int(bytes.size()) + 1));
        RawPeer(socketOf(control->handle())).write(bytes);
        if (round % 100 == 0) {
            QCoreApplication::processEvents();
        }
    }
    EXPECT_FALSE(isRefused(good));
    EXPECT_EQ(control->Send(1, 2, 3), 5);
}

TEST_F(MessageFolder, MorePeersThanAnySuiteHasAreTurnedAwayUntilOthersLeave)
{
    const QString path = socketOf(control->handle());
    std::vector<std::unique_ptr<RawPeer>> peers;
    peers.reserve(300);
    for (int i = 0; i < 300; ++i) {
        peers.push_back(std::make_unique<RawPeer>(path));
    }
    EXPECT_TRUE(test::waitFor([&] { return peers.back()->isTurnedAway(); }));
    EXPECT_FALSE(peers.front()->isTurnedAway());
    peers.clear();
    const QByteArray good = linuxmessages::encode({PacketType::SendText, 1, 2, 3, 0, u"T"_s});
    EXPECT_TRUE(test::waitFor([&] { return !isRefused(good); }));
}

TEST_F(MessageFolder, WithoutAFreeDescriptorPeersAreTurnedAwayAndTheLoopDoesNotSpin)
{
    const RawPeer early(socketOf(control->handle()));
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const Descriptor next(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    rlimit none = before;
    none.rlim_cur = rlim_t(next.number());
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const bool refused = test::waitFor([&] { return early.isTurnedAway(); });
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_TRUE(refused);
    EXPECT_FALSE(isRefused(linuxmessages::encode({PacketType::SendNumber, 1, 2, 3, 4})));
}

} // namespace
} // namespace melovane
