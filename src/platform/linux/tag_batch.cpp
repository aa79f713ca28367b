#include "platform/linux/tag_batch.h"

#include "platform/linux/file_attributes.h"
#include "platform/linux/system_names.h"
#include "platform/linux/tag_repair.h"
#include "platform/linux/tag_splice.h"
#include "platform/system/io_error.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>

namespace melovane::linux_media {

namespace {

/// Files that are written together.
constexpr size_t kMaxFiles = 64;
/// Bytes that are: what a killed program must undo, and what its copies take up on the volume.
constexpr qint64 kMaxBytes = qint64{64} * 1024 * 1024;
/// The sound moves by whole blocks, so that a file system can share them between two files.
constexpr qint64 kBlock = 4096;
/// Free room that a new tag has at least.
constexpr qint64 kLeastPadding = 1024;

Bytes viewOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()), size_t(bytes.size())};
}

qint64 roomFor(qint64 needed, qint64 oldRoom)
{
    const qint64 missing = std::max<qint64>(needed + kLeastPadding - oldRoom, 0);
    return oldRoom + (missing + kBlock - 1) / kBlock * kBlock;
}

/// Takes the blocks of a file before its first byte is written.
void reserve(int file, qint64 size)
{
    if (::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) != 0 && errno != EOPNOTSUPP &&
        errno != ENOSYS && errno != EINVAL) {
        failTag(errno);
    }
}

void syncFile(int file)
{
    if (::fsync(file) != 0) {
        failTag(errno);
    }
}

/// Brings files to the disc: one by itself, several by their volume. Those whose volume failed are
/// handed to `failed`.
template <typename Item, typename Number>
void syncAll(const std::vector<Item>& items,
             const Number& number,
             const std::function<void(const Item&, int)>& failed)
{
    std::map<dev_t, int> errors;
    for (const Item& item : items) {
        const dev_t volume = item.file->facts().st_dev;
        if (!errors.contains(volume)) {
            const int result = items.size() == 1 ? ::fsync(number(item)) : ::syncfs(number(item));
            errors[volume] = result == 0 ? 0 : errno;
        }
    }
    for (const Item& item : items) {
        if (const int error = errors[item.file->facts().st_dev]; error != 0) {
            failed(item, error);
        }
    }
}

} // namespace

TagBatch::TagBatch(const QByteArray& folder, std::span<const TagWork> work)
    : m_folder(folder)
    , m_work(work)
    , m_results(work.size())
    , m_journal(std::make_unique<TagJournal>(folder))
{}

void TagBatch::fail(const Item& item, const TagFailure& failure)
{
    m_results[item.index] = {failure.fault, failure.detail, false};
}

void TagBatch::take(size_t index)
{
    // Two names of one file, or the same work twice: the second begins when the first is done.
    struct stat facts = {};
    if (::stat(linuxnames::systemPath(m_work[index].path).constData(), &facts) == 0 &&
        m_taken.contains({facts.st_dev, facts.st_ino})) {
        flush();
    }
    try {
        prepare(index);
    } catch (const TagFailure& failure) {
        m_results[index] = {failure.fault, failure.detail, false};
    }
    if (m_overwrites.size() + m_copies.size() >= kMaxFiles || m_bytes >= kMaxBytes) {
        flush();
    }
}

std::vector<TagWriting> TagBatch::finish()
{
    flush();
    return std::move(m_results);
}

void TagBatch::prepare(size_t index)
{
    Item item;
    item.index = index;
    item.file = std::make_unique<TagFile>(m_work[index].path);
    const TagChanges& changes = m_work[index].changes;
    const TagSplice splice(viewOf(item.file->front()), changes);
    if (!splice.isPossible()) {
        throw TagFailure{TagWriteFault::TagSize, {}};
    }
    if (!item.file->oldTag().isEmpty()) {
        item.oldTag = changedId3v1(item.file->oldTag(), changes).value_or(QByteArray());
    }
    const qint64 oldRoom = item.file->front().size();
    const bool fits = splice.needed() <= oldRoom;
    const qint64 room = fits ? oldRoom : roomFor(splice.needed(), oldRoom);
    if (splice.isChanged()) {
        if (room >= TagParts::kLargest) {
            throw TagFailure{TagWriteFault::TagSize, {}};
        }
        item.head = splice.front(room);
    }
    if (item.head.isEmpty() && item.oldTag.isEmpty()) {
        return;
    }
    if (item.head.isEmpty() || fits) {
        overwriteLater(std::move(item));
    } else {
        copyOrRewrite(std::move(item));
    }
}

void TagBatch::overwriteLater(Item item)
{
    const TagFile& file = *item.file;
    if (!item.head.isEmpty()) {
        item.regions.push_back({0, file.front(), item.head});
    }
    if (!item.oldTag.isEmpty()) {
        item.regions.push_back(
            {file.facts().st_size - file.oldTag().size(), file.oldTag(), item.oldTag});
    }
    for (const TagRegion& region : item.regions) {
        m_bytes += region.before.size() + region.after.size();
    }
    m_taken.insert({file.facts().st_dev, file.facts().st_ino});
    m_overwrites.push_back(std::move(item));
}

void TagBatch::copyOrRewrite(Item item)
{
    const struct stat& facts = item.file->facts();
    if (facts.st_nlink == 1 && makeCopy(item)) {
        m_bytes += facts.st_size;
        m_taken.insert({facts.st_dev, facts.st_ino});
        m_copies.push_back(std::move(item));
        return;
    }
    item.copy.reset();
    flush();
    rewrite(item);
}

/// False when no file of the same rights can take the place of this one.
bool TagBatch::makeCopy(Item& item)
{
    const TagFile& file = *item.file;
    m_journal->addFolder(linuxfiles::folderOf(file.path()));
    try {
        item.copy = std::make_unique<linuxfiles::Replacement>(file.path(),
                                                              linuxfiles::TargetLink::Replaced);
    } catch (const IoError& error) {
        if (error.number() == EACCES || error.number() == EPERM) {
            return false;
        }
        failTag(error.number());
    }
    const struct stat& facts = file.facts();
    const int copy = item.copy->descriptor();
    if (::fchown(copy, facts.st_uid, facts.st_gid) != 0) {
        return false;
    }
    const qint64 begin = file.front().size();
    const qint64 shift = item.head.size() - begin;
    const qint64 soundEnd = facts.st_size - item.oldTag.size();
    reserve(copy, facts.st_size + shift);
    writeAt(copy, 0, item.head);
    copyPart(file.descriptor(), begin, soundEnd, copy, item.head.size());
    writeAt(copy, soundEnd + shift, item.oldTag);
    comparePart(file.descriptor(), begin, soundEnd, copy, item.head.size());
    if (readAt(copy, 0, item.head.size()) != item.head) {
        failTag(EIO);
    }
    copyAttributes(file.descriptor(), copy);
    try {
        item.copy->takeRights();
    } catch (const IoError& error) {
        failTag(error.number());
    }
    setDate(copy, facts.st_mtim);
    return true;
}

void TagBatch::rewrite(const Item& item)
{
    const TagFile& file = *item.file;
    const struct stat& facts = file.facts();
    const QByteArray path = m_journal->pathForCopy();
    const linuxfiles::Descriptor copy(
        ::open(path.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, linuxfiles::kOwnMode));
    if (!copy.isValid()) {
        failTag(errno);
    }
    bool begun = false;
    try {
        reserve(copy.number(), facts.st_size);
        copyPart(file.descriptor(), 0, facts.st_size, copy.number(), 0);
        comparePart(file.descriptor(), 0, facts.st_size, copy.number(), 0);
        syncFile(copy.number());
        const qint64 begin = file.front().size();
        m_journal->addRewrite(file.path(), facts, path, item.head, begin, item.oldTag);
        m_journal->sync();
        const qint64 shift = item.head.size() - begin;
        const qint64 soundEnd = facts.st_size - item.oldTag.size();
        file.checkUnchanged();
        begun = true;
        reserve(file.descriptor(), facts.st_size + shift);
        writeAt(file.descriptor(), 0, item.head);
        copyPart(copy.number(), begin, soundEnd, file.descriptor(), item.head.size());
        writeAt(file.descriptor(), soundEnd + shift, item.oldTag);
        comparePart(copy.number(), begin, soundEnd, file.descriptor(), item.head.size());
        setDate(file.descriptor(), facts.st_mtim);
        syncFile(file.descriptor());
        m_results[item.index].changed = true;
    } catch (const TagFailure& failure) {
        fail(item, failure);
    }
    if (begun && !m_results[item.index].changed) {
        try {
            tagrepair::restore(file.descriptor(), copy.number(), facts.st_size, facts.st_mtim);
        } catch (const TagFailure&) {
            m_journal->keep();
            m_journal = std::make_unique<TagJournal>(m_folder);
            return;
        }
    }
    m_journal->clear();
    ::unlink(path.constData());
}

void TagBatch::flush()
{
    flushOverwrites();
    flushCopies();
    m_taken.clear();
    m_bytes = 0;
    m_journal->clear();
}

void TagBatch::flushOverwrites()
{
    const std::vector<Item> items = std::exchange(m_overwrites, {});
    if (items.empty()) {
        return;
    }
    try {
        for (const Item& item : items) {
            m_journal->addOverwrite(item.file->path(), item.file->facts(), item.regions);
        }
        m_journal->sync();
    } catch (const TagFailure& failure) {
        for (const Item& item : items) {
            fail(item, failure);
        }
        return;
    }
    for (const Item& item : items) {
        overwrite(item);
    }
    syncAll<Item>(
        items, [](const Item& item) { return item.file->descriptor(); },
        [this](const Item& item, int error) {
            if (m_results[item.index].changed) {
                fail(item, {TagWriteFault::Failed, linuxfiles::systemWords(error)});
                undo(item);
            }
        });
}

void TagBatch::overwrite(const Item& item)
{
    const TagFile& file = *item.file;
    bool begun = false;
    try {
        file.checkUnchanged();
        begun = true;
        for (const TagRegion& region : item.regions) {
            writeAt(file.descriptor(), region.offset, region.after);
        }
        for (const TagRegion& region : item.regions) {
            if (readAt(file.descriptor(), region.offset, region.after.size()) != region.after) {
                throw TagFailure{TagWriteFault::Changed, {}};
            }
        }
        file.checkSound();
        setDate(file.descriptor(), file.facts().st_mtim);
        m_results[item.index].changed = true;
    } catch (const TagFailure& failure) {
        fail(item, failure);
        if (begun) {
            undo(item);
        }
    }
}

void TagBatch::undo(const Item& item)
{
    bool done = false;
    try {
        done = tagrepair::undoOverwrite(item.file->descriptor(), item.file->facts().st_mtim,
                                        item.regions);
    } catch (const TagFailure&) {
        // The journal has the old bytes: the next repair tries again.
    }
    if (!done) {
        m_journal->keep();
        m_journal = std::make_unique<TagJournal>(m_folder);
    }
}

void TagBatch::flushCopies()
{
    std::vector<Item> items = std::exchange(m_copies, {});
    if (items.empty()) {
        return;
    }
    std::set<size_t> failed;
    syncAll<Item>(
        items, [](const Item& item) { return item.copy->descriptor(); },
        [&](const Item& item, int error) {
            fail(item, {TagWriteFault::Failed, linuxfiles::systemWords(error)});
            failed.insert(item.index);
        });
    std::set<QByteArray> folders;
    for (Item& item : items) {
        if (failed.contains(item.index)) {
            continue;
        }
        try {
            item.file->checkUnchanged();
            item.copy->takePlace();
            m_results[item.index].changed = true;
            folders.insert(linuxfiles::folderOf(item.file->path()));
        } catch (const TagFailure& failure) {
            fail(item, failure);
        } catch (const IoError& error) {
            fail(item, {TagWriteFault::Failed, error.reason()});
        }
    }
    // The names that are removed by them must be gone before the journal forgets the folders.
    items.clear();
    std::for_each(folders.begin(), folders.end(), linuxfiles::syncFolder);
}

} // namespace melovane::linux_media
