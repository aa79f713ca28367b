#include "platform/sqlite/engine/database_file.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <fcntl.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype kHeaderSize = 100;
constexpr qsizetype kPageSizeAt = 16;
constexpr qsizetype kChangesAt = 24;
constexpr qsizetype kPagesAt = 28;
constexpr qsizetype kApplicationIdAt = 68;
constexpr qsizetype kPagesValidForAt = 92;
/// What SQLite appends to the name of a file for what it keeps beside it.
constexpr auto kJournal = "-wal"_L1;
constexpr auto kSharedMemory = "-shm"_L1;
constexpr auto kRollbackJournal = "-journal"_L1;
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

/// Reads through SQLite's file layer. Closing a descriptor of our own would drop the locks that
/// other connections of this process hold on the file: the next program that closes it would take
/// itself for the last one and remove the journal under them, with all that is written to it later.
QByteArray readHeader(const QString& path)
{
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(
        systemPath(path).constData(), &raw,
        SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(raw, sqlite3_close_v2);
    if (opened != SQLITE_OK) {
        const int reason = sqlite3_system_errno(raw);
        if ((opened & 0xFF) != SQLITE_CANTOPEN || reason == 0) {
            throwError(raw, opened);
        }
        throw dbError(DbFault::FileCannotBeOpened, path,
                      QString::fromLocal8Bit(std::strerror(reason)));
    }
    sqlite3_file* file = nullptr;
    sqlite3_file_control(raw, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    QByteArray header(kHeaderSize, '\0');
    sqlite3_int64 size = 0;
    int code = file->pMethods->xFileSize(file, &size);
    if (code == SQLITE_OK) {
        header.truncate(qsizetype(std::min<sqlite3_int64>(size, kHeaderSize)));
        code = file->pMethods->xRead(file, header.data(), int(header.size()), 0);
    }
    if (code != SQLITE_OK) {
        throwError(nullptr, code);
    }
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

bool isWritable(const QString& path)
{
    return ::faccessat(AT_FDCWD, systemPath(path).constData(), W_OK, AT_EACCESS) == 0;
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

/// Brings what stands in the journal of a database into its file. The database must stay whole
/// when it is not replaced after all, and its journal must not be met by the file that replaces it.
void settleJournal(const QString& path)
{
    if (!hasJournal(path)) {
        return;
    }
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(systemPath(path).constData(), &raw,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(raw, sqlite3_close_v2);
    const int read = opened == SQLITE_OK ? sqlite3_exec(raw, "SELECT count(*) FROM sqlite_schema",
                                                        nullptr, nullptr, nullptr)
                                         : opened;
    if (read == SQLITE_NOTADB || read == SQLITE_CORRUPT) {
        return; // nothing to be kept
    }
    const int code =
        read == SQLITE_OK
            ? sqlite3_wal_checkpoint_v2(raw, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr)
            : read;
    if (code != SQLITE_OK) {
        throwError(raw, code);
    }
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

OpenedFile::OpenedFile(QString path, const FileId& id)
    : m_path(std::move(path))
    , m_id(id)
    , m_journal(fileId(m_path + kJournal))
    , m_sharedMemory(fileId(m_path + kSharedMemory))
{}

bool OpenedFile::isCurrent() const
{
    return fileId(m_path) == m_id && hasOwnJournal();
}

bool OpenedFile::leftJournal() const
{
    return m_journal && fileId(m_path) != m_id && hasOwnJournal();
}

bool OpenedFile::lostJournal() const
{
    return m_journal && fileId(m_path) == m_id && !fileId(m_path + kJournal);
}

bool OpenedFile::hasOwnJournal() const
{
    return !m_journal || (fileId(m_path + kJournal) == m_journal &&
                          fileId(m_path + kSharedMemory) == m_sharedMemory);
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
    return !isWritable(QFileInfo(path).path());
}

void makeJournalsWritable(const QString& path)
{
    struct stat facts = {};
    if (::stat(systemPath(path).constData(), &facts) != 0 || !isWritable(path)) {
        return;
    }
    for (const auto suffix : {kJournal, kSharedMemory}) {
        const QString journal = path + suffix;
        if (fileId(journal) && !isWritable(journal)) {
            // Fails when the file belongs to somebody else; the connection is read only then.
            (void)::chmod(systemPath(journal).constData(), facts.st_mode & 0777);
        }
    }
}

bool hasJournal(const QString& path)
{
    return QFileInfo(path + kJournal).size() > 0 || QFileInfo(path + kRollbackJournal).size() > 0;
}

QString temporaryBeside(const QString& path)
{
    static std::atomic<int> counter{0};
    return u"%1.%2-%3.new"_s.arg(path).arg(::getpid()).arg(++counter);
}

void removeAbandoned(const QString& path, const QDateTime& now)
{
    const QFileInfo target(path);
    const QRegularExpression form(
        u"^%1\\.(\\d+)-\\d+\\.new(-\\w+)?$"_s.arg(QRegularExpression::escape(target.fileName())));
    const QDateTime dayAgo = now.addDays(-1);
    for (const QFileInfo& file : target.dir().entryInfoList(QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch match = form.match(file.fileName());
        // The program may live on another machine that shares the folder: only age tells that.
        if (match.hasMatch() && file.lastModified() < dayAgo &&
            ::kill(match.captured(1).toInt(), 0) != 0) {
            QFile::remove(file.filePath());
        }
    }
}

void removeJournals(const QString& path)
{
    for (const auto suffix : {kJournal, kSharedMemory, kRollbackJournal}) {
        QFile::remove(path + suffix);
    }
}

void moveIntoPlace(const QString& temporary, const QString& target, bool replace)
{
    syncPath(temporary, O_RDWR);
    const QByteArray from = systemPath(temporary);
    const QByteArray to = systemPath(target);
    if (!fileId(target)) {
        removeJournals(target);
    } else if (replace) {
        settleJournal(target);
    }
    const bool moved =
        replace ? ::rename(from.constData(), to.constData()) == 0 : renameExclusive(from, to);
    if (!moved) {
        const bool taken = errno == EEXIST;
        throw dbError(taken ? DbFault::FileExists : DbFault::FileNotWritten, target);
    }
    if (replace) {
        removeJournals(target);
    }
    syncPath(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY);
}

} // namespace melovane::sqlite
