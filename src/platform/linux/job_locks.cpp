#include "platform/linux/job_locks.h"

#include "platform/linux/linux_file_lock.h"
#include "platform/linux/system_names.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using linuxfiles::Descriptor;

namespace {

/// Whether the lock is had; else errno tells why not.
bool lockNow(int descriptor, int kind)
{
    int result = -1;
    do {
        result = ::flock(descriptor, kind | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

} // namespace

QString jobLockFile(const Files& files,
                    const QStringList& folders,
                    const QString& job,
                    const QString& library)
{
    const auto folder = std::find_if(folders.begin(), folders.end(), [&](const QString& path) {
        return !path.isEmpty() && files.folderExists(path);
    });
    if (folder == folders.end()) {
        return {};
    }
    const FileFacts facts = files.facts(library).value_or(FileFacts{});
    return path::join(*folder,
                      u"%1-%2-%3.lock"_s.arg(job).arg(facts.device, 0, 16).arg(facts.inode, 0, 16));
}

std::function<std::unique_ptr<FileLock>()> jobClaim(const QString& path)
{
    if (path.isEmpty()) {
        return {};
    }
    return [path] { return lockFile(path, std::chrono::milliseconds::zero()); };
}

bool isLocked(const QString& path)
{
    const QByteArray name = linuxnames::systemPath(path);
    const Descriptor file(::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    // A shared lock, so that those who look never take one another for the holder.
    return file.isValid() && !lockNow(file.number(), LOCK_SH) && errno == EWOULDBLOCK;
}

bool InheritedLock::take(const QString& path)
{
    const QByteArray name = linuxnames::systemPath(path);
    Descriptor file(::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (file.isValid() && !lockNow(file.number(), LOCK_EX) && errno == EWOULDBLOCK) {
        return false;
    }
    m_file = std::move(file);
    return true;
}

void InheritedLock::keepInChild() const
{
    if (m_file.isValid()) {
        ::fcntl(m_file.number(), F_SETFD, 0);
    }
}

} // namespace melovane
