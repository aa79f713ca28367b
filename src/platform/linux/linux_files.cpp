#include "platform/linux/linux_files.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/system_names.h"
#include "platform/system/path_text.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using linuxfiles::Descriptor;
using linuxfiles::failWithErrno;
using linuxfiles::TargetLink;
using linuxnames::systemPath;

namespace {

constexpr qsizetype kBlock = 1024LL * 1024;
/// Bytes of a copy in steps that may wait to be synced: a slow stick needs a second for them.
constexpr qint64 kUnsynced = 4 * kBlock;
/// Listings kept for the second look-up of a path.
constexpr qsizetype kMaxListings = 64;
/// A folder's time may stand still for this long although names are added: ticks of the kernel are
/// 1 to 10 ms, those of some file systems 2 s.
constexpr qint64 kSettledNs = 2'500'000'000;

constexpr struct stat kNothing = {};

std::optional<struct stat> statOf(const QByteArray& path)
{
    struct stat facts = {};
    const bool found = !path.isEmpty() && ::stat(path.constData(), &facts) == 0;
    return found ? std::optional(facts) : std::nullopt;
}

/// Of a link itself.
std::optional<struct stat> linkStatOf(const QByteArray& path)
{
    struct stat facts = {};
    const bool found = !path.isEmpty() && ::lstat(path.constData(), &facts) == 0;
    return found ? std::optional(facts) : std::nullopt;
}

qint64 nanoseconds(const timespec& time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

QDateTime moment(const timespec& time)
{
    return QDateTime::fromMSecsSinceEpoch(nanoseconds(time) / 1'000'000);
}

QList<QByteArray> rawNames(const QByteArray& folder)
{
    QList<QByteArray> names;
    DIR* const stream = folder.isEmpty() ? nullptr : ::opendir(folder.constData());
    if (stream == nullptr) {
        return names;
    }
    while (const dirent* entry = ::readdir(stream)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..") {
            names.append(name);
        }
    }
    ::closedir(stream);
    std::sort(names.begin(), names.end());
    return names;
}

/// The form in which spellings of one name are equal.
QString foldedName(const QString& name)
{
    QString result;
    for (const char32_t code : name.normalized(QString::NormalizationForm_D).toUcs4()) {
        result += QChar::fromUcs4(QChar::toCaseFolded(code));
    }
    return result.normalized(QString::NormalizationForm_C);
}

/// Opens a plain file for reading without ever waiting for a pipe. \throws IoError
Descriptor openPlain(const QByteArray& path, struct stat& facts)
{
    Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isValid() || ::fstat(file.number(), &facts) != 0) {
        failWithErrno(path);
    }
    if (!S_ISREG(facts.st_mode)) {
        errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
        failWithErrno(path);
    }
    return file;
}

/// Up to a block of bytes; empty at the end. \throws IoError
QByteArray readBlock(const Descriptor& file, const QByteArray& path)
{
    QByteArray block(kBlock, Qt::Uninitialized);
    ssize_t count = -1;
    do {
        count = ::read(file.number(), block.data(), size_t(block.size()));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        failWithErrno(path);
    }
    block.truncate(count);
    return block;
}

void writeBytes(const QByteArray& path, const QByteArray& bytes, TargetLink link)
{
    linuxfiles::Replacement replacement(path, link);
    linuxfiles::writeAll(replacement.descriptor(), bytes, replacement.target());
    replacement.commit();
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// True when both are one link, by whatever way to it.
bool isOneLink(const QByteArray& one, const QByteArray& other)
{
    struct stat first = {};
    struct stat second = {};
    return ::lstat(one.constData(), &first) == 0 && ::lstat(other.constData(), &second) == 0 &&
           S_ISLNK(first.st_mode) && isSame(first, second);
}

/// False when `step` gave up; without one nothing is asked, and synced at the end only.
bool copyBlocks(const QByteArray& from, const QByteArray& to, TargetLink link, const CopyStep& step)
{
    struct stat facts = {};
    const Descriptor file = openPlain(from, facts);
    linuxfiles::Replacement replacement(to, link);
    const struct stat& replaced = replacement.replaced();
    if ((replaced.st_mode != 0 && isSame(replaced, facts)) || isOneLink(from, to)) {
        return true;
    }
    qint64 copied = 0;
    qint64 unsynced = 0;
    for (QByteArray block = readBlock(file, from); !block.isEmpty();
         block = readBlock(file, from)) {
        linuxfiles::writeAll(replacement.descriptor(), block, replacement.target());
        copied += block.size();
        unsynced += block.size();
        if (step && unsynced >= kUnsynced) {
            unsynced = 0;
            linuxfiles::syncSoFar(replacement.descriptor(), replacement.target());
        }
        if (step && !step(copied)) {
            return false;
        }
    }
    replacement.keepFrom(facts);
    replacement.commit();
    return true;
}

} // namespace

LinuxFiles::LinuxFiles(VolumeSources sources)
    : m_sources(std::move(sources))
{}

bool LinuxFiles::fileExists(const QString& path) const
{
    const auto found = statOf(systemPath(path));
    return found && !S_ISDIR(found->st_mode);
}

bool LinuxFiles::folderExists(const QString& path) const
{
    const auto found = statOf(systemPath(path));
    return found && S_ISDIR(found->st_mode);
}

std::optional<FileFacts> LinuxFiles::facts(const QString& path) const
{
    const QByteArray name = systemPath(path);
    struct stat own = {};
    if (name.isEmpty() || ::lstat(name.constData(), &own) != 0) {
        return {};
    }
    const bool isLink = S_ISLNK(own.st_mode);
    const auto found = isLink ? statOf(name) : std::optional(own);
    if (!found) {
        return {};
    }
    return FileFacts{S_ISDIR(found->st_mode), found->st_size, moment(found->st_mtim),
                     found->st_dev,           found->st_ino,  isLink};
}

const LinuxFiles::Listing& LinuxFiles::listing(const QByteArray& folder) const
{
    const struct stat facts = statOf(folder).value_or(kNothing);
    const qint64 modified = nanoseconds(facts.st_mtim);
    const auto known = m_listings.constFind(folder);
    if (known != m_listings.cend() && known->device == facts.st_dev &&
        known->inode == facts.st_ino && known->modified == modified) {
        return *known;
    }
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (m_listings.size() >= kMaxListings) {
        m_listings.clear();
    }
    Listing& fresh = m_listings[folder];
    const bool settled = nanoseconds(now) - modified > kSettledNs;
    fresh = {facts.st_dev, facts.st_ino, settled ? modified : -1, {}};
    for (const QByteArray& name : rawNames(folder)) {
        fresh.names[foldedName(linuxnames::decode(name))].append(name);
    }
    return fresh;
}

QByteArray
LinuxFiles::resolveBelow(const QByteArray& folder, const QStringList& parts, qsizetype at) const
{
    if (at == parts.size()) {
        return folder;
    }
    const QByteArray base = folder.endsWith('/') || folder.isEmpty() ? folder : folder + '/';
    const QByteArray exact = base + linuxnames::encode(parts[at]);
    if (statOf(exact)) {
        const QByteArray end = resolveBelow(exact, parts, at + 1);
        if (!end.isEmpty()) {
            return end;
        }
    }
    const QByteArray listed = folder.isEmpty() ? QByteArray(".") : folder;
    // A copy: deeper look-ups may throw listings away.
    const QList<QByteArray> others = listing(listed).names.value(foldedName(parts[at]));
    for (const QByteArray& name : others) {
        const QByteArray candidate = base + name;
        if (candidate == exact || !statOf(candidate)) {
            continue;
        }
        const QByteArray end = resolveBelow(candidate, parts, at + 1);
        if (!end.isEmpty()) {
            return end;
        }
    }
    return {};
}

QString LinuxFiles::resolve(const QString& path) const
{
    const QByteArray exact = systemPath(path);
    if (exact.isEmpty()) {
        return {};
    }
    if (statOf(exact)) {
        return linuxnames::decode(exact);
    }
    QStringList parts = path::components(path::toSystem(path));
    QByteArray root;
    if (exact.startsWith('/')) {
        root = "/";
        parts.removeFirst();
    }
    return linuxnames::decode(resolveBelow(root, parts, 0));
}

QString LinuxFiles::canonical(const QString& path) const
{
    const QByteArray name = systemPath(path);
    const std::unique_ptr<char, decltype(&std::free)> real(
        name.isEmpty() ? nullptr : ::realpath(name.constData(), nullptr), &std::free);
    return real ? linuxnames::decode(QByteArray(real.get())) : QString();
}

bool LinuxFiles::canList(const QString& folder) const
{
    const QByteArray name = systemPath(folder);
    DIR* const stream = name.isEmpty() ? nullptr : ::opendir(name.constData());
    return stream != nullptr && ::closedir(stream) == 0;
}

QStringList LinuxFiles::names(const QString& folder) const
{
    QStringList result;
    for (const QByteArray& name : rawNames(systemPath(folder))) {
        result.append(linuxnames::decode(name));
    }
    return result;
}

QByteArray LinuxFiles::read(const QString& path, qint64 maxBytes) const
{
    const QByteArray name = systemPath(path);
    struct stat facts = {};
    const Descriptor file = openPlain(name, facts);
    const auto refuseIfTooLarge = [&](qint64 size) {
        if (size > maxBytes) {
            throw IoError(path, u"larger than %1 bytes"_s.arg(maxBytes));
        }
    };
    refuseIfTooLarge(facts.st_size);
    QByteArray bytes;
    bytes.reserve(facts.st_size);
    for (QByteArray block = readBlock(file, name); !block.isEmpty();
         block = readBlock(file, name)) {
        refuseIfTooLarge(bytes.size() + block.size());
        bytes += block;
    }
    return bytes;
}

void LinuxFiles::writeWhole(const QString& path, const QByteArray& bytes)
{
    m_unwritten.insert(path);
    writeBytes(systemPath(path), bytes, TargetLink::Followed);
    m_unwritten.remove(path);
}

void LinuxFiles::writeNamed(const QString& path, const QByteArray& bytes)
{
    writeBytes(systemPath(path), bytes, TargetLink::Replaced);
}

void LinuxFiles::append(const QString& path, const QByteArray& bytes)
{
    const QByteArray name = systemPath(path);
    const auto found = statOf(name);
    if (found && (!S_ISREG(found->st_mode) || (found->st_mode & 0222U) == 0)) {
        errno = S_ISREG(found->st_mode) ? EACCES : EINVAL;
        failWithErrno(name);
    }
    const Descriptor file(::open(name.constData(),
                                 O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                                 linuxfiles::kOwnMode));
    if (!file.isValid()) {
        failWithErrno(name);
    }
    linuxfiles::writeAll(file.number(), bytes, name);
}

void LinuxFiles::copy(const QString& source, const QString& target)
{
    copyBlocks(systemPath(source), systemPath(target), TargetLink::Followed, {});
}

bool LinuxFiles::copyInSteps(const QString& source, const QString& target, const CopyStep& step)
{
    return copyBlocks(systemPath(source), systemPath(target), TargetLink::Replaced, step);
}

bool LinuxFiles::makeFolder(const QString& path)
{
    const QByteArray name = systemPath(path);
    return !name.isEmpty() &&
           (::mkdir(name.constData(), linuxfiles::kOwnFolderMode) == 0 || folderExists(path));
}

bool LinuxFiles::makeFolders(const QString& path)
{
    if (folderExists(path)) {
        return true;
    }
    const QString above = path::parent(path);
    return (above.isEmpty() || above == path || makeFolders(above)) && makeFolder(path);
}

bool LinuxFiles::remove(const QString& path)
{
    const QByteArray name = systemPath(path);
    return !name.isEmpty() && ::unlink(name.constData()) == 0;
}

void LinuxFiles::rename(const QString& source, const QString& target)
{
    const QByteArray from = systemPath(source);
    const QByteArray to = systemPath(target);
    if (from.isEmpty() || to.isEmpty()) {
        throw IoError(from.isEmpty() ? source : target, u"Invalid argument"_s);
    }
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return;
    }
    const int fault = errno;
    const auto own = linkStatOf(from);
    const auto there = linkStatOf(to);
    const bool isItself = own && there && own->st_dev == there->st_dev &&
                          own->st_ino == there->st_ino && own->st_nlink == 1;
    // The second case is that of file systems that cannot tell.
    const bool mayTry = (fault == EEXIST && isItself) || (fault == EINVAL && !there);
    if (!mayTry || ::rename(from.constData(), to.constData()) != 0) {
        errno = mayTry ? errno : fault;
        failWithErrno(to);
    }
}

bool LinuxFiles::removeFolder(const QString& path)
{
    const QByteArray name = systemPath(path);
    return !name.isEmpty() && ::rmdir(name.constData()) == 0;
}

bool LinuxFiles::setModified(const QString& path, const QDateTime& moment)
{
    const QByteArray name = systemPath(path);
    const qint64 ms = moment.toMSecsSinceEpoch();
    // Seconds count down to the past, the fraction always counts up.
    const qint64 fraction = (ms % 1000 + 1000) % 1000;
    const timespec times[2] = {{0, UTIME_OMIT}, {(ms - fraction) / 1000, fraction * 1'000'000}};
    return moment.isValid() && !name.isEmpty() &&
           ::utimensat(AT_FDCWD, name.constData(), times, 0) == 0;
}

bool LinuxFiles::makeWritable(const QString& path)
{
    const QByteArray name = systemPath(path);
    const auto found = statOf(name);
    return found && S_ISREG(found->st_mode) &&
           ::chmod(name.constData(), (found->st_mode & 07777U) | S_IWUSR) == 0;
}

VolumeFacts LinuxFiles::volume(const QString& path) const
{
    QString nearest = path;
    while (!nearest.isEmpty() && !statOf(systemPath(nearest))) {
        nearest = path::parent(nearest);
    }
    const QByteArray name = nearest.isEmpty() ? QByteArray(".") : systemPath(nearest);
    char* const real = ::realpath(name.constData(), nullptr);
    const QByteArray place(real);
    ::free(real); // NOLINT(cppcoreguidelines-no-malloc): realpath gives it so
    return volumes::volumeOf(place, m_sources);
}

std::optional<VolumeSpace> LinuxFiles::space(const QString& path) const
{
    struct statvfs facts = {};
    const QByteArray name = systemPath(path);
    if (name.isEmpty() || ::statvfs(name.constData(), &facts) != 0 || facts.f_blocks == 0) {
        return {};
    }
    const qint64 block = qint64(qMax<unsigned long>(facts.f_frsize, 1));
    return VolumeSpace{qint64(facts.f_bavail) * block, block};
}

} // namespace melovane
