#include "platform/linux/tag_file.h"

#include "platform/linux/mpeg_frame.h"
#include "platform/linux/system_names.h"
#include "platform/linux/tag_parts.h"
#include "platform/system/io_error.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace melovane::linux_media {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes behind the tags that are read back after a write.
constexpr qint64 kSoundReadBack = qint64{64} * 1024;
/// Bytes copied and compared at once: few enough to stay in the processor's cache.
constexpr qint64 kPiece = qint64{256} * 1024;
/// As many tags are read.
constexpr int kMaxTags = 8;
/// Waits for another writer of the suite: a second in all.
constexpr int kLockAttempts = 200;
constexpr long kLockPauseNs = 5'000'000;
constexpr qint64 kOldTagLength = 128;
/// Largest tags that are held in memory at once.
constexpr qint64 kLargestFront = qint64{128} * 1024 * 1024;

TagWriteFault faultOf(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
        return TagWriteFault::NotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
        return TagWriteFault::ReadOnly;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return TagWriteFault::Full;
    default:
        return TagWriteFault::Failed;
    }
}

bool isSame(const timespec& one, const timespec& other)
{
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

Bytes viewOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()), size_t(bytes.size())};
}

[[noreturn]] void failChanged()
{
    throw TagFailure{TagWriteFault::Changed, {}};
}

/// Fills all of `bytes`.
void readInto(int descriptor, qint64 offset, QByteArray& bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::pread(descriptor, bytes.data() + done, size_t(bytes.size() - done), offset + done);
        if (got < 0 && errno != EINTR) {
            failTag(errno);
        }
        if (got == 0) {
            failChanged();
        }
        done += std::max<ssize_t>(got, 0);
    }
}

/// Length of an APE tag that begins with these bytes; 0 for none.
qint64 apeLength(const QByteArray& bytes)
{
    if (bytes.size() < 32 || !bytes.startsWith("APETAGEX")) {
        return 0;
    }
    quint32 size = 0;
    for (int i = 3; i >= 0; --i) {
        size = size << 8U | quint8(bytes[12 + i]);
    }
    return 32 + qint64{size};
}

} // namespace

void failTag(int error)
{
    throw TagFailure{faultOf(error), linuxfiles::systemWords(error)};
}

QByteArray readAt(int descriptor, qint64 offset, qint64 length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    readInto(descriptor, offset, bytes);
    return bytes;
}

void writeAt(int descriptor, qint64 offset, const QByteArray& bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::pwrite(descriptor, bytes.constData() + done,
                                     size_t(bytes.size() - done), offset + done);
        if (got < 0 && errno != EINTR) {
            failTag(errno);
        }
        done += std::max<ssize_t>(got, 0);
    }
}

void copyPart(int from, qint64 begin, qint64 end, int to, qint64 place)
{
    QByteArray piece;
    for (qint64 at = begin; at < end; at += kPiece) {
        piece.resize(std::min(kPiece, end - at));
        readInto(from, at, piece);
        writeAt(to, place + at - begin, piece);
    }
}

void comparePart(int from, qint64 begin, qint64 end, int to, qint64 place)
{
    QByteArray piece;
    QByteArray other;
    for (qint64 at = begin; at < end; at += kPiece) {
        piece.resize(std::min(kPiece, end - at));
        other.resize(piece.size());
        readInto(from, at, piece);
        readInto(to, place + at - begin, other);
        if (piece != other) {
            failChanged();
        }
    }
}

void setDate(int descriptor, const timespec& modified)
{
    const timespec times[2] = {{0, UTIME_OMIT}, modified};
    // A file of somebody else that we may write takes the date of this moment instead.
    (void)::futimens(descriptor, times);
}

TagFile::TagFile(const QString& path)
{
    try {
        m_path = linuxfiles::linkTarget(linuxnames::systemPath(path));
    } catch (const IoError& error) {
        throw TagFailure{TagWriteFault::NotFound, error.reason()};
    }
    open();
    lock();
    if (::fstat(m_file.number(), &m_facts) != 0) {
        failTag(errno);
    }
    readFront();
    findSound();
    if (m_facts.st_size - m_front.size() >= kOldTagLength) {
        m_oldTag = readAt(m_file.number(), m_facts.st_size - kOldTagLength, kOldTagLength);
        if (!m_oldTag.startsWith("TAG")) {
            m_oldTag.clear();
        }
    }
}

void TagFile::open()
{
    struct stat facts = {};
    // A device or a pipe may wait for ever when it is opened, or do something.
    if (::lstat(m_path.constData(), &facts) != 0) {
        failTag(errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        failTag(S_ISDIR(facts.st_mode) ? EISDIR : EINVAL);
    }
    // Root may write everything: a file that nobody may write is meant to stay.
    if ((facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        failTag(EACCES);
    }
    m_file.reset(
        ::open(m_path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    if (!m_file.isValid()) {
        failTag(errno);
    }
}

void TagFile::lock()
{
    for (int attempt = 0; ::flock(m_file.number(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return; // a file system without locks
        }
        if (attempt == kLockAttempts) {
            throw TagFailure{TagWriteFault::Changed, linuxfiles::systemWords(EWOULDBLOCK)};
        }
        const timespec pause = {0, kLockPauseNs};
        ::nanosleep(&pause, nullptr);
    }
}

void TagFile::readFront()
{
    qint64 end = 0;
    for (int i = 0; i <= kMaxTags; ++i) {
        const QByteArray header =
            readAt(m_file.number(), end, std::min<qint64>(10, m_facts.st_size - end));
        const qint64 length = tagLength(viewOf(header));
        if (length == 0) {
            m_front = readAt(m_file.number(), 0, end);
            return;
        }
        end += length;
        if (end > m_facts.st_size || end > kLargestFront) {
            break;
        }
    }
    throw TagFailure{TagWriteFault::TagSize, {}};
}

void TagFile::findSound()
{
    constexpr qint64 kLongestPadding = qint64{1024} * 1024;
    const qint64 begin = m_front.size();
    m_sound = readAt(m_file.number(), begin, std::min(kSoundReadBack, m_facts.st_size - begin));
    qint64 place = begin + apeLength(m_sound);
    const qint64 limit = std::min<qint64>(m_facts.st_size, place + kLongestPadding);
    while (place < limit) {
        const QByteArray piece =
            readAt(m_file.number(), place, std::min(kSoundReadBack, limit - place));
        const auto* const found =
            std::find_if(piece.begin(), piece.end(), [](char byte) { return byte != '\0'; });
        place += found - piece.begin();
        if (found != piece.end()) {
            break;
        }
    }
    const QByteArray header =
        place < m_facts.st_size
            ? readAt(m_file.number(), place, std::min<qint64>(4, m_facts.st_size - place))
            : QByteArray();
    if (header.size() < 4 || !parseFrame(viewOf(header))) {
        throw TagFailure{TagWriteFault::NoAudio, {}};
    }
}

void TagFile::checkUnchanged() const
{
    struct stat open = {};
    struct stat named = {};
    if (::fstat(m_file.number(), &open) != 0 || ::lstat(m_path.constData(), &named) != 0) {
        failTag(errno);
    }
    // A changed date of the inode tells also of a write that put the date of the content back.
    const bool same = open.st_size == m_facts.st_size && isSame(open.st_mtim, m_facts.st_mtim) &&
                      isSame(open.st_ctim, m_facts.st_ctim) && named.st_dev == m_facts.st_dev &&
                      named.st_ino == m_facts.st_ino;
    if (!same) {
        failChanged();
    }
}

void TagFile::checkSound() const
{
    struct stat facts = {};
    if (::fstat(m_file.number(), &facts) != 0) {
        failTag(errno);
    }
    if (facts.st_size != m_facts.st_size) {
        failChanged();
    }
    // An old tag lies in the last bytes of a short file, and may have changed.
    const qint64 length =
        std::min<qint64>(m_sound.size(), m_facts.st_size - m_front.size() - m_oldTag.size());
    if (readAt(m_file.number(), m_front.size(), length) != m_sound.first(length)) {
        failChanged();
    }
}

} // namespace melovane::linux_media
