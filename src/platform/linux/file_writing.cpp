#include "platform/linux/file_writing.h"

#include "platform/linux/system_names.h"
#include "platform/system/io_error.h"

#include <QList>
#include <QMutex>
#include <QRandomGenerator>
#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

namespace melovane::linuxfiles {

namespace {

/// Links followed before a chain counts as endless, like the kernel does.
constexpr int kMaxLinks = 40;
/// Attempts to find a free name.
constexpr int kMaxNames = 100;

[[noreturn]] void fail(const QByteArray& path, int error)
{
    throw IoError(linuxnames::decode(path), systemWords(error), error);
}

/// True when the file system refuses what it cannot hold: modes on a FAT stick, dates on a network
/// share of somebody else.
bool cannotHoldIt()
{
    return errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
}

/// Begins the name of a file that is being written: keep, leftovers are known by it.
constexpr char kUnfinished[] = ".mlv-";

QByteArray randomName(const QByteArray& folder)
{
    return folder + '/' + kUnfinished +
           QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

bool isUnfinishedName(const QByteArray& name)
{
    const auto isDigit = [](char sign) {
        return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'z');
    };
    const qsizetype head = qsizetype(sizeof kUnfinished) - 1;
    return name.startsWith(kUnfinished) && name.size() > head &&
           std::all_of(name.begin() + head, name.end(), isDigit);
}

/// Says that the file has a living writer, to whoever would sweep it away. False when somebody has
/// done that in the moment between its making and this.
bool takeAsWriter(int file)
{
    int result = -1;
    do {
        result = ::flock(file, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    struct stat facts = {};
    return ::fstat(file, &facts) != 0 || facts.st_nlink > 0;
}

/// Removes a file that was being written when its program was killed; one that has a writer, in
/// whatever process, is locked by it, and one of another user is his business.
void removeLeftover(const QByteArray& path)
{
    const Descriptor file(
        ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    struct stat facts = {};
    if (file.isValid() && ::fstat(file.number(), &facts) == 0 && S_ISREG(facts.st_mode) &&
        facts.st_uid == ::geteuid() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(path.constData());
    }
}

/// Once per folder and run: what is left behind there later has its writer in this run.
bool isFirstWriteInto(const QByteArray& folder)
{
    static QMutex guard;
    static QSet<QByteArray> known;
    const QMutexLocker locker(&guard);
    const qsizetype before = known.size();
    known.insert(folder);
    return known.size() > before;
}

} // namespace

void Descriptor::reset(int number)
{
    if (m_number >= 0) {
        ::close(m_number);
    }
    m_number = number;
}

void sweepLeftovers(const QByteArray& folder)
{
    DIR* const stream = ::opendir(folder.constData());
    if (stream == nullptr) {
        return;
    }
    QList<QByteArray> leftovers;
    while (const dirent* entry = ::readdir(stream)) {
        if (isUnfinishedName(entry->d_name)) {
            leftovers.append(folder + '/' + entry->d_name);
        }
    }
    ::closedir(stream);
    std::for_each(leftovers.cbegin(), leftovers.cend(), removeLeftover);
}

QByteArray folderOf(const QByteArray& path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(qMax<qsizetype>(slash, 1));
}

QString systemWords(int error)
{
    // Words of one language: the user's are found for them where he reads them.
    const char* const words = ::strerrordesc_np(error);
    return QString::fromLocal8Bit(words != nullptr ? words : std::strerror(error));
}

void failWithErrno(const QByteArray& path)
{
    fail(path, errno);
}

QByteArray linkTarget(const QByteArray& path)
{
    QByteArray end = path;
    for (int links = 0; links < kMaxLinks; ++links) {
        QByteArray text(PATH_MAX, '\0');
        const ssize_t size = ::readlink(end.constData(), text.data(), size_t(text.size()));
        if (size < 0) {
            return end;
        }
        text.truncate(size);
        end = text.startsWith('/') ? text : folderOf(end) + '/' + text;
    }
    fail(path, ELOOP);
}

void writeAll(int descriptor, const QByteArray& bytes, const QByteArray& path)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + done, size_t(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            failWithErrno(path);
        }
        done += qMax<ssize_t>(count, 0);
    }
}

void syncSoFar(int descriptor, const QByteArray& path)
{
    if (::fdatasync(descriptor) != 0) {
        failWithErrno(path);
    }
}

void syncFolder(const QByteArray& path)
{
    // What stands in it is done; a folder that cannot be synced (some network file systems)
    // changes nothing about it.
    const Descriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isValid()) {
        ::fsync(folder.number());
    }
}

Replacement::Replacement(const QByteArray& target, TargetLink link)
{
    if (target.isEmpty()) {
        fail(target, EINVAL);
    }
    m_target = link == TargetLink::Followed ? linkTarget(target) : target;
    m_folder = folderOf(m_target);
    if (::lstat(m_target.constData(), &m_replaced) == 0) {
        refuseUnlessReplaceable();
    } else if (errno != ENOENT) {
        failWithErrno(m_target);
    } else {
        m_replaced = {};
    }
    if (isFirstWriteInto(m_folder)) {
        sweepLeftovers(m_folder);
    }
    open();
}

void Replacement::refuseUnlessReplaceable()
{
    if (S_ISLNK(m_replaced.st_mode)) {
        // The rights of a link say nothing about a file in its place.
        m_replaced = {};
        return;
    }
    if (!S_ISREG(m_replaced.st_mode)) {
        fail(m_target, S_ISDIR(m_replaced.st_mode) ? EISDIR : EINVAL);
    }
    // Renaming would replace a write-protected file, and root may write everything: a file
    // that nobody may write is meant to stay.
    const bool anyWriter = (m_replaced.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    if (!anyWriter || ::faccessat(AT_FDCWD, m_target.constData(), W_OK, AT_EACCESS) != 0) {
        fail(m_target, EACCES);
    }
}

Replacement::~Replacement()
{
    if (!m_name.isEmpty()) {
        ::unlink(m_name.constData());
    }
}

void Replacement::open()
{
    m_file.reset(::open(m_folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwnMode));
    if (!m_file.isValid() && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        openNamed();
    }
    if (!m_file.isValid()) {
        failWithErrno(m_target);
    }
}

void Replacement::openNamed()
{
    for (int attempt = 0; attempt < kMaxNames; ++attempt) {
        const QByteArray name = randomName(m_folder);
        m_file.reset(::open(name.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kOwnMode));
        if (m_file.isValid() && takeAsWriter(m_file.number())) {
            m_name = name;
            return;
        }
        if (!m_file.isValid() && errno != EEXIST) {
            return;
        }
    }
}

void Replacement::giveName()
{
    const QByteArray open = "/proc/self/fd/" + QByteArray::number(m_file.number());
    if (m_name.isEmpty()) {
        // It has a name for a moment.
        (void)::flock(m_file.number(), LOCK_EX);
    }
    for (int attempt = 0; m_name.isEmpty(); ++attempt) {
        const QByteArray name = randomName(m_folder);
        if (::linkat(AT_FDCWD, open.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) ==
            0) {
            m_name = name;
        } else if (errno != EEXIST || attempt == kMaxNames) {
            failWithErrno(m_target);
        }
    }
}

void Replacement::keepFrom(const struct stat& original)
{
    // A copy of what lies on a disc would otherwise refuse to be replaced by the next one.
    m_mode = (original.st_mode | S_IWUSR) & 0777U;
    const timespec times[2] = {{0, UTIME_OMIT}, original.st_mtim};
    if (::futimens(m_file.number(), times) != 0 && !cannotHoldIt()) {
        failWithErrno(m_target);
    }
}

void Replacement::takeRights()
{
    const bool isCopy = m_mode.has_value();
    if (m_replaced.st_mode != 0) {
        // Only root may give files away; for others the new file is theirs, and that is all right.
        const int owned = ::fchown(m_file.number(), m_replaced.st_uid, m_replaced.st_gid);
        m_mode = m_mode.value_or(m_replaced.st_mode & (owned == 0 ? 07777U : 0777U));
    }
    if (m_mode && ::fchmod(m_file.number(), *m_mode) != 0 && !(isCopy && cannotHoldIt())) {
        failWithErrno(m_target);
    }
}

void Replacement::takePlace()
{
    giveName();
    if (::rename(m_name.constData(), m_target.constData()) != 0) {
        failWithErrno(m_target);
    }
    m_name.clear();
}

void Replacement::commit()
{
    takeRights();
    if (::fsync(m_file.number()) != 0) {
        failWithErrno(m_target);
    }
    takePlace();
    syncFolder(m_folder);
}

} // namespace melovane::linuxfiles
