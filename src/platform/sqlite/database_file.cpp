#include "platform/sqlite/database_file.h"

#include "platform/db/db_fault.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype kHeaderSize = 100;
constexpr qsizetype kPageSizeAt = 16;
constexpr qsizetype kChangesAt = 24;
constexpr qsizetype kPagesAt = 28;
constexpr qsizetype kApplicationIdAt = 68;
constexpr qsizetype kPagesValidForAt = 92;
constexpr char kMagic[] = "SQLite format 3";
/// First bytes of a file of the previous engine; its later generation says "ACE" for "Jet".
constexpr char kPreviousMagic[] = "\0\1\0\0Standard ";
constexpr qsizetype kPreviousMagicSize = sizeof kPreviousMagic - 1;

QByteArray systemPath(const QString& path)
{
    return QFile::encodeName(path);
}

/// What follows the marks of the previous engine's name.
bool isPreviousEngine(const QByteArray& header)
{
    return header.startsWith(QByteArray(kPreviousMagic, kPreviousMagicSize)) &&
           (header.mid(kPreviousMagicSize, 3) == "Jet" ||
            header.mid(kPreviousMagicSize, 3) == "ACE");
}

void checkHeader(const QString& path, const QByteArray& header)
{
    if (isPreviousEngine(header)) {
        throw dbError(DbFault::FileOfPrevious, path);
    }
    if (!header.startsWith(QByteArray(kMagic, sizeof kMagic))) {
        throw dbError(header.isEmpty() ? DbFault::FileEmpty : DbFault::FileIsNoDatabase, path);
    }
    if (header.size() < kHeaderSize) {
        throw dbError(DbFault::FileCutOff, path);
    }
    if (qFromBigEndian<qint32>(header.constData() + kApplicationIdAt) != kApplicationId) {
        throw dbError(DbFault::FileOfAnother, path);
    }
}

qint64 bigEndian(const QByteArray& header, qsizetype at)
{
    return qFromBigEndian<quint32>(header.constData() + at);
}

/// SQLite itself overlooks a file that lost part of its last page. A journal beside it says that
/// the header may be ahead of the file.
void checkSize(const QString& path, const QByteArray& header)
{
    if (hasJournal(path) || bigEndian(header, kChangesAt) != bigEndian(header, kPagesValidForAt)) {
        return;
    }
    const qint64 word = qFromBigEndian<quint16>(header.constData() + kPageSizeAt);
    const qint64 pageSize = word == 1 ? 65536 : word;
    struct stat facts = {};
    if (::stat(systemPath(path).constData(), &facts) == 0 &&
        facts.st_size < pageSize * bigEndian(header, kPagesAt)) {
        throw dbError(DbFault::FileCutOff, path);
    }
}

QByteArray readHeader(const QString& path)
{
    const int file = ::open(systemPath(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        throw dbError(DbFault::FileCannotBeOpened, path,
                      QString::fromLocal8Bit(std::strerror(errno)));
    }
    QByteArray header(kHeaderSize, '\0');
    const auto size = ::pread(file, header.data(), std::size_t(kHeaderSize), 0);
    ::close(file);
    header.truncate(std::max<qsizetype>(size, 0));
    return header;
}

void syncPath(const QString& path, int flags)
{
    const int file = ::open(systemPath(path).constData(), flags | O_CLOEXEC);
    const bool synced = file >= 0 && ::fsync(file) == 0;
    if (file >= 0) {
        ::close(file);
    }
    if (!synced) {
        throw dbError(DbFault::FileNotWritten, path);
    }
}

/// Renames without replacing; also where the file system knows no such rename.
bool renameExclusive(const QByteArray& from, const QByteArray& to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    struct stat facts = {};
    if (::stat(to.constData(), &facts) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.constData(), to.constData()) == 0;
}

} // namespace

std::optional<FileId> fileId(const QString& path)
{
    struct stat facts = {};
    if (::stat(systemPath(path).constData(), &facts) != 0) {
        return std::nullopt;
    }
    return FileId{facts.st_dev, facts.st_ino};
}

FileId checkDatabaseFile(const QString& path)
{
    struct stat facts = {};
    if (::stat(systemPath(path).constData(), &facts) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        throw missing ? dbError(DbFault::FileNotFound, path)
                      : dbError(DbFault::FileCannotBeOpened, path,
                                QString::fromLocal8Bit(std::strerror(errno)));
    }
    if (!S_ISREG(facts.st_mode)) {
        throw dbError(DbFault::FileIsNoFile, path);
    }
    const QByteArray header = readHeader(path);
    checkHeader(path, header);
    checkSize(path, header);
    return {facts.st_dev, facts.st_ino};
}

bool sharesMemory(qint64 fileSystem)
{
    // Numbers of statfs(2): nfs, smb, cifs, smb2, fuse, 9p, afs, coda, ncp, ceph, cluster, lustre,
    // folders of a virtual machine's host.
    constexpr std::array<quint32, 14> kRemote = {
        0x6969,     0x517B, 0xFF534D42, 0xFE534D42, 0x65735546, 0x01021997, 0x5346414F,
        0x73757245, 0x564C, 0x00C36400, 0x7461636F, 0x01161970, 0x0BD00BD0, 0x786F4256};
    return std::find(kRemote.begin(), kRemote.end(), quint32(fileSystem)) == kRemote.end();
}

bool onLocalFileSystem(const QString& path)
{
    struct statfs facts = {};
    return ::statfs(systemPath(path).constData(), &facts) == 0 && sharesMemory(facts.f_type);
}

bool inReadOnlyFolder(const QString& path)
{
    return ::faccessat(AT_FDCWD, systemPath(QFileInfo(path).path()).constData(), W_OK,
                       AT_EACCESS) != 0;
}

bool hasJournal(const QString& path)
{
    return QFileInfo(path + "-wal"_L1).size() > 0 || QFileInfo(path + "-journal"_L1).size() > 0;
}

QString temporaryBeside(const QString& path)
{
    static std::atomic<int> counter{0};
    return u"%1.%2-%3.new"_s.arg(path).arg(::getpid()).arg(++counter);
}

void removeJournals(const QString& path)
{
    for (const auto suffix : {"-wal"_L1, "-shm"_L1, "-journal"_L1}) {
        QFile::remove(path + suffix);
    }
}

void moveIntoPlace(const QString& temporary, const QString& target, bool replace)
{
    syncPath(temporary, O_RDWR);
    const QByteArray from = systemPath(temporary);
    const QByteArray to = systemPath(target);
    if (replace || !fileId(target)) {
        removeJournals(target);
    }
    const bool moved =
        replace ? ::rename(from.constData(), to.constData()) == 0 : renameExclusive(from, to);
    if (!moved) {
        const bool taken = errno == EEXIST;
        throw dbError(taken ? DbFault::FileExists : DbFault::FileNotWritten, target);
    }
    syncPath(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY);
}

} // namespace melovane::sqlite
