#include "platform/linux/tag_journal.h"

#include "platform/linux/tag_file.h"
#include "platform/linux/tag_repair.h"

#include <QDataStream>
#include <QIODevice>
#include <QRandomGenerator>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <vector>

namespace melovane::linux_media {

namespace {

/// Name of a journal: keep, journals are found by it. The copies of a journal have its name and
/// more behind it.
constexpr char kPrefix[] = "tags-";
constexpr char kSuffix[] = ".journal";
constexpr char kCopySuffix[] = ".copy-";
/// Attempts to find a free name.
constexpr int kMaxNames = 100;
/// Longest journal that a repair reads: far above what a batch writes.
constexpr qint64 kLongestJournal = qint64{1024} * 1024 * 1024;

void put(QDataStream& stream, const struct stat& facts)
{
    stream << quint64{facts.st_ino} << qint64{facts.st_size} << qint64{facts.st_mtim.tv_sec}
           << qint64{facts.st_mtim.tv_nsec};
}

QList<QByteArray> namesIn(const QByteArray& folder, const QByteArray& prefix)
{
    QList<QByteArray> names;
    DIR* const stream = ::opendir(folder.constData());
    if (stream == nullptr) {
        return names;
    }
    while (const dirent* entry = ::readdir(stream)) {
        if (QByteArray(entry->d_name).startsWith(prefix)) {
            names.append(entry->d_name);
        }
    }
    ::closedir(stream);
    return names;
}

/// Removes a journal and its copies.
void removeJournal(const QByteArray& folder, const QByteArray& name)
{
    const QList<QByteArray> copies = namesIn(folder, name + kCopySuffix);
    for (const QByteArray& copy : copies) {
        ::unlink((folder + '/' + copy).constData());
    }
    ::unlink((folder + '/' + name).constData());
}

/// A copy outlives its journal when it could not be removed in time; it is of no use then.
void removeWithoutJournal(const QByteArray& folder, const QByteArray& name)
{
    const qsizetype suffix = name.indexOf(kCopySuffix);
    const QByteArray path = folder + '/' + name;
    if (suffix >= 0 && ::access(path.chopped(name.size() - suffix).constData(), F_OK) != 0) {
        ::unlink(path.constData());
    }
}

/// False when it may be of use the next time.
bool repairJournal(const QByteArray& path, int file)
{
    struct stat facts = {};
    if (::fstat(file, &facts) != 0 || facts.st_size > kLongestJournal) {
        return false;
    }
    bool done = true;
    const auto guarded = [&](const std::function<void()>& work) {
        try {
            work();
        } catch (const TagFailure& failure) {
            qWarning("%s: %s", path.constData(), qUtf8Printable(failure.detail));
            done = false;
        }
    };
    std::vector<tagrepair::Record> records;
    guarded([&] { records = tagrepair::recordsOf(readAt(file, 0, facts.st_size)); });
    for (const auto& record : records) {
        // A file that cannot be made whole keeps no other one from it.
        guarded([&] { done = tagrepair::makeWhole(record) && done; });
    }
    return done;
}

} // namespace

TagJournal::TagJournal(QByteArray folder)
    : m_folder(std::move(folder))
{}

TagJournal::~TagJournal()
{
    if (m_file.isValid() && !m_kept) {
        ::unlink(m_path.constData());
    }
}

void TagJournal::open()
{
    if (m_file.isValid()) {
        return;
    }
    if (::mkdir(m_folder.constData(), linuxfiles::kOwnFolderMode) != 0 && errno != EEXIST) {
        failTag(errno);
    }
    for (int attempt = 0; attempt < kMaxNames; ++attempt) {
        m_path = m_folder + '/' + kPrefix +
                 QByteArray::number(QRandomGenerator::system()->generate64(), 36) + kSuffix;
        m_file.reset(::open(m_path.constData(), O_CREAT | O_EXCL | O_RDWR | O_APPEND | O_CLOEXEC,
                            linuxfiles::kOwnMode));
        if (!m_file.isValid() && errno != EEXIST) {
            failTag(errno);
        }
        // A repair may have taken it for a dead writer's in the moment before the lock.
        struct stat facts = {};
        if (m_file.isValid() && ::flock(m_file.number(), LOCK_EX) == 0 &&
            ::fstat(m_file.number(), &facts) == 0 && facts.st_nlink > 0) {
            linuxfiles::syncFolder(m_folder);
            return;
        }
        m_file.reset();
    }
    failTag(EEXIST);
}

void TagJournal::add(const QByteArray& record)
{
    open();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << record << tagrepair::checksumOf(record);
    struct stat facts = {};
    if (::fstat(m_file.number(), &facts) != 0) {
        failTag(errno);
    }
    writeAt(m_file.number(), facts.st_size, bytes);
}

void TagJournal::addOverwrite(const QByteArray& path,
                              const struct stat& facts,
                              const std::vector<TagRegion>& regions)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream << quint8(tagrepair::Kind::Overwrite) << path;
    put(stream, facts);
    stream << qint32(regions.size());
    for (const TagRegion& region : regions) {
        stream << region.offset << region.before << region.after;
    }
    add(record);
}

void TagJournal::addRewrite(const QByteArray& path,
                            const struct stat& facts,
                            const QByteArray& copy,
                            const QByteArray& head,
                            qint64 begin,
                            const QByteArray& tail)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream << quint8(tagrepair::Kind::Rewrite) << path;
    put(stream, facts);
    stream << copy << head << begin << tail;
    add(record);
}

void TagJournal::addFolder(const QByteArray& folder)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream << quint8(tagrepair::Kind::Folder) << folder;
    add(record);
}

QByteArray TagJournal::pathForCopy()
{
    open();
    return m_path + kCopySuffix + QByteArray::number(++m_copies);
}

void TagJournal::sync()
{
    if (m_file.isValid() && ::fdatasync(m_file.number()) != 0) {
        failTag(errno);
    }
}

void TagJournal::clear()
{
    if (m_file.isValid() && !m_kept) {
        (void)::ftruncate(m_file.number(), 0);
    }
}

void TagJournal::repair(const QByteArray& folder)
{
    const QList<QByteArray> names = namesIn(folder, kPrefix);
    for (const QByteArray& name : names) {
        if (!name.endsWith(kSuffix)) {
            removeWithoutJournal(folder, name);
            continue;
        }
        const QByteArray path = folder + '/' + name;
        const linuxfiles::Descriptor file(
            ::open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        const bool isMine = file.isValid() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
        if (isMine && repairJournal(path, file.number())) {
            removeJournal(folder, name);
        }
    }
}

} // namespace melovane::linux_media
