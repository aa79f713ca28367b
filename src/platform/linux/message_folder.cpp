#include "platform/linux/message_folder.h"

#include "platform/linux/linux_files.h"
#include "platform/linux/system_names.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <limits>

namespace melovane::linuxmessages {

using linuxfiles::Descriptor;

namespace {

/// Small numbers stand for other things in the programs' files: 0 is nobody, 2 an answer.
constexpr quint32 kFirstHandle = 65536;

/// Behind the name of a socket that nobody listens on yet.
const QByteArray kUnfinished = ".new";
/// Seconds after which an unfinished socket belongs to a program that was killed.
constexpr time_t kUnfinishedAge = 60;
/// Sockets that one sweep looks at.
constexpr size_t kSweep = 64;
constexpr int kAttempts = 16;

/// Room for the longest text message and some hundred posted numbers.
constexpr int kBuffer = 256 * 1024;

QByteArray nameOf(MessageHandle handle)
{
    return kMessageControlClass.toLatin1() + '.' + QByteArray::number(handle);
}

/// The handle in the name of a socket; 0 when it is no control's.
MessageHandle handleIn(const QByteArray& name)
{
    const QByteArray head = kMessageControlClass.toLatin1() + '.';
    bool isNumber = false;
    const MessageHandle handle =
        name.startsWith(head) ? name.sliced(head.size()).toInt(&isNumber) : 0;
    return isNumber && handle > 0 && name == nameOf(handle) ? handle : 0;
}

/// The place of a socket for the system. A path that is too long for it goes by way of the opened
/// folder.
class Address
{
public:
    explicit Address(const QByteArray& path)
    {
        m_address.sun_family = AF_UNIX;
        QByteArray place = path;
        if (place.size() >= qsizetype(sizeof m_address.sun_path)) {
            const qsizetype end = path.lastIndexOf('/');
            m_folder.reset(::open(path.first(end).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
            place = "/proc/self/fd/" + QByteArray::number(m_folder.number()) + path.sliced(end);
        }
        m_fits = place.size() < qsizetype(sizeof m_address.sun_path);
        std::memcpy(m_address.sun_path, place.constData(), m_fits ? size_t(place.size()) : 0);
    }

    [[nodiscard]] bool fits() const { return m_fits; }

    [[nodiscard]] const sockaddr* get() const
    {
        return reinterpret_cast<const sockaddr*>(&m_address);
    }

    [[nodiscard]] socklen_t size() const { return sizeof m_address; }

private:
    sockaddr_un m_address = {};
    Descriptor m_folder;
    bool m_fits = false;
};

Descriptor makeSocket()
{
    Descriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (socket.isValid()) {
        // Less room is no failure; what does not fit waits on our side.
        ::setsockopt(socket.number(), SOL_SOCKET, SO_SNDBUF, &kBuffer, sizeof kBuffer);
    }
    return socket;
}

/// Who stands at the other end, as the kernel knows it.
ucred peerOf(int socket)
{
    ucred peer = {0, uid_t(-1), gid_t(-1)};
    socklen_t size = sizeof peer;
    ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size);
    return peer;
}

} // namespace

MessageFolder::MessageFolder(QString path, quint32 user)
    : m_path(std::move(path))
    , m_user(user)
{}

QByteArray MessageFolder::pathOf(const QByteArray& name) const
{
    return linuxnames::encode(m_path) + '/' + name;
}

bool MessageFolder::place(const QByteArray& from, const QByteArray& to) const
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    // File systems that cannot tell; two equal random numbers are too rare to mind.
    return errno == EINVAL && ::rename(from.constData(), to.constData()) == 0;
}

MessageFolder::Endpoint MessageFolder::listen() const
{
    if (m_path.isEmpty()) {
        return {};
    }
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const auto handle = MessageHandle(QRandomGenerator::system()->bounded(
            kFirstHandle, quint32(std::numeric_limits<MessageHandle>::max())));
        const QByteArray path = pathOf(nameOf(handle));
        const QByteArray unfinished = path + kUnfinished;
        const Address address(unfinished);
        Descriptor socket = makeSocket();
        if (!address.fits() || !socket.isValid()) {
            return Endpoint();
        }
        if (::bind(socket.number(), address.get(), address.size()) != 0) {
            continue;
        }
        // Under its real name only when it listens: a socket that refuses looks left over.
        if (::listen(socket.number(), SOMAXCONN) == 0 && place(unfinished, path)) {
            return {std::move(socket), handle};
        }
        ::unlink(unfinished.constData());
    }
    return {};
}

void MessageFolder::remove(MessageHandle handle) const
{
    ::unlink(pathOf(nameOf(handle)).constData());
}

MessageFolder::Call MessageFolder::call(MessageHandle handle) const
{
    Call result;
    if (m_path.isEmpty() || handle <= 0) {
        return result;
    }
    const QByteArray path = pathOf(nameOf(handle));
    const Address address(path);
    Descriptor socket = makeSocket();
    if (!address.fits() || !socket.isValid()) {
        return result;
    }
    if (::connect(socket.number(), address.get(), address.size()) == 0) {
        const ucred peer = peerOf(socket.number());
        if (peer.uid == m_user) {
            result = {Answer::Connected, std::move(socket), peer.pid};
        }
        return result;
    }
    struct stat facts = {};
    if (errno == ECONNREFUSED) {
        result.answer = Answer::Refused;
    } else if (errno == EAGAIN && ::lstat(path.constData(), &facts) == 0 &&
               facts.st_uid == m_user) {
        result.answer = Answer::Busy;
    }
    return result;
}

Descriptor MessageFolder::connect(MessageHandle handle) const
{
    return call(handle).socket;
}

bool MessageFolder::isAlive(MessageHandle handle) const
{
    const Answer answer = call(handle).answer;
    return answer == Answer::Connected || answer == Answer::Busy;
}

Descriptor MessageFolder::accept(int listener) const
{
    Descriptor peer(::accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (peer.isValid() && peerOf(peer.number()).uid != m_user) {
        peer.reset();
        errno = EACCES;
    }
    return peer;
}

std::vector<QByteArray> MessageFolder::names() const
{
    std::vector<QByteArray> result;
    if (!m_path.isEmpty()) {
        for (const QString& name : LinuxFiles().names(m_path)) {
            result.push_back(linuxnames::encode(name));
        }
    }
    return result;
}

std::vector<LiveControl> MessageFolder::controls() const
{
    std::vector<LiveControl> result;
    for (const QByteArray& name : names()) {
        const MessageHandle handle = handleIn(name);
        const Call answer = call(handle);
        if (answer.answer == Answer::Connected || answer.answer == Answer::Busy) {
            result.push_back({handle, answer.process});
        }
    }
    std::sort(result.begin(), result.end(), [](const LiveControl& one, const LiveControl& two) {
        return one.handle < two.handle;
    });
    return result;
}

void MessageFolder::sweepName(const QByteArray& name) const
{
    if (const MessageHandle handle = handleIn(name); handle != 0) {
        if (call(handle).answer == Answer::Refused) {
            remove(handle);
        }
        return;
    }
    const QByteArray path = pathOf(name);
    struct stat facts = {};
    const bool unfinished = name.endsWith(kUnfinished) &&
                            handleIn(name.chopped(kUnfinished.size())) != 0 &&
                            ::lstat(path.constData(), &facts) == 0;
    if (unfinished && facts.st_mtime + kUnfinishedAge < ::time(nullptr)) {
        ::unlink(path.constData());
    }
}

void MessageFolder::sweep() const
{
    std::vector<QByteArray> all = names();
    if (all.size() > kSweep) {
        // Another part each time, so that all get their turn.
        const auto start = QRandomGenerator::system()->bounded(quint32(all.size()));
        std::rotate(all.begin(), all.begin() + start, all.end());
        all.resize(kSweep);
    }
    for (const QByteArray& name : all) {
        sweepName(name);
    }
}

} // namespace melovane::linuxmessages
