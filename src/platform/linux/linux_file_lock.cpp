#include "platform/linux/linux_file_lock.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/system_names.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <ctime>

namespace melovane {

namespace {

/// Pause between two attempts. The kernel's own waiting cannot be given up after a time.
constexpr long kPauseNs = 1'000'000;

class DescriptorLock : public FileLock
{
public:
    explicit DescriptorLock(linuxfiles::Descriptor file)
        : m_file(std::move(file))
    {}

private:
    linuxfiles::Descriptor m_file;
};

bool takeLock(int descriptor, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= end) {
            return false;
        }
        const timespec pause = {0, kPauseNs};
        ::nanosleep(&pause, nullptr);
    }
    return true;
}

} // namespace

std::unique_ptr<FileLock> lockFile(const QString& path, std::chrono::milliseconds patience)
{
    const QByteArray name = linuxnames::systemPath(path);
    constexpr int kFlags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    linuxfiles::Descriptor file(
        ::open(name.constData(), O_RDWR | O_CREAT | kFlags, linuxfiles::kOwnMode));
    if (!file.isValid() && errno == EACCES) {
        // Another user made it; a lock needs no right to write.
        file.reset(::open(name.constData(), O_RDONLY | kFlags));
    }
    if (!file.isValid() || !takeLock(file.number(), patience)) {
        return nullptr;
    }
    return std::make_unique<DescriptorLock>(std::move(file));
}

} // namespace melovane
