#include "platform/linux/tag_repair.h"

#include "platform/linux/tag_file.h"

#include <QDataStream>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>

namespace melovane::linux_media::tagrepair {

namespace {

using linuxfiles::Descriptor;

/// Nothing that a disk or the kernel writes is torn within so many bytes.
constexpr qint64 kBlock = 512;
constexpr qint64 kPiece = qint64{1024} * 1024; ///< a multiple of kBlock
constexpr qint32 kMaxRegions = 16;

/// Fewer bytes where there are not so many.
QByteArrayView part(const QByteArray& bytes, qint64 at, qint64 length)
{
    const qint64 begin = std::min<qint64>(at, bytes.size());
    return QByteArrayView(bytes).sliced(begin, std::min<qint64>(length, bytes.size() - begin));
}

/// What stands in a file where old bytes were being replaced by new ones.
struct Found
{
    bool allOld = true;
    bool allNew = true;
    bool isForeign = false; ///< a block that is neither
};

/// \param place of the bytes in the file
void look(Found& found,
          qint64 place,
          const QByteArray& present,
          const QByteArray& before,
          const QByteArray& after)
{
    qint64 at = 0;
    while (at < present.size()) {
        // Where the old file ended, an old block may go on with new bytes.
        const qint64 end = at < before.size() ? before.size() : present.size();
        const qint64 length = std::min(kBlock - (place + at) % kBlock, end - at);
        const QByteArrayView now = part(present, at, length);
        const bool isOld = now == part(before, at, length);
        const bool isNew = now == part(after, at, length);
        found.allOld = found.allOld && isOld;
        found.allNew = found.allNew && isNew;
        found.isForeign = found.isForeign || (!isOld && !isNew);
        at += length;
    }
}

bool hasAllNew(int file, qint64 size, const Record& record)
{
    return std::all_of(record.regions.begin(), record.regions.end(), [&](const auto& region) {
        return region.offset + region.after.size() <= size &&
               readAt(file, region.offset, region.after.size()) == region.after;
    });
}

/// The bytes that the new file has at a place.
QByteArray newBytes(const Record& record, int copy, qint64 place, qint64 length)
{
    const qint64 shift = record.head.size() - record.begin;
    const qint64 tail = record.size + shift - record.tail.size();
    QByteArray bytes;
    while (bytes.size() < length) {
        const qint64 at = place + bytes.size();
        const qint64 left = length - bytes.size();
        if (at < record.head.size()) {
            bytes += record.head.mid(at, left);
        } else if (at < tail) {
            bytes += readAt(copy, at - shift, std::min(left, tail - at));
        } else {
            bytes += record.tail.mid(at - tail, left);
        }
    }
    return bytes;
}

bool rewriteUndone(const Record& record, int file, qint64 size)
{
    const Descriptor copy(::open(record.copy.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!copy.isValid()) {
        return errno == ENOENT;
    }
    const qint64 newSize = record.size + record.head.size() - record.begin;
    Found found;
    found.isForeign = size < record.size || size > newSize;
    found.allNew = size == newSize;
    for (qint64 at = 0; at < size && !found.isForeign; at += kPiece) {
        const qint64 length = std::min(kPiece, size - at);
        const qint64 old = std::clamp<qint64>(record.size - at, 0, length);
        look(found, at, readAt(file, at, length), readAt(copy.number(), at, old),
             newBytes(record, copy.number(), at, length));
    }
    if (found.isForeign || found.allNew) {
        return true;
    }
    restore(file, copy.number(), record.size, record.modified);
    return true;
}

/// True when a file that cannot be opened will not come back: its folder is there.
bool isGone(const QByteArray& path)
{
    return errno == ENOENT && ::access(linuxfiles::folderOf(path).constData(), F_OK) == 0;
}

bool read(QDataStream& stream, Record& record)
{
    quint8 kind = 0;
    stream >> kind >> record.path;
    record.kind = Kind(kind);
    if (record.kind == Kind::Folder) {
        return stream.status() == QDataStream::Ok;
    }
    qint64 seconds = 0;
    qint64 nanoseconds = 0;
    stream >> record.inode >> record.size >> seconds >> nanoseconds;
    record.modified = {seconds, nanoseconds};
    if (record.kind == Kind::Rewrite) {
        stream >> record.copy >> record.head >> record.begin >> record.tail;
        return stream.status() == QDataStream::Ok && record.begin >= 0 &&
               record.begin <= record.size && record.tail.size() <= record.size - record.begin;
    }
    qint32 count = 0;
    stream >> count;
    if (record.kind != Kind::Overwrite || count > kMaxRegions) {
        return false;
    }
    for (qint32 i = 0; i < count; ++i) {
        TagRegion region;
        stream >> region.offset >> region.before >> region.after;
        record.regions.push_back(region);
    }
    return stream.status() == QDataStream::Ok;
}

} // namespace

quint32 checksumOf(const QByteArray& record)
{
    return quint32(
        ::crc32(0, reinterpret_cast<const Bytef*>(record.constData()), uInt(record.size())));
}

std::vector<Record> recordsOf(const QByteArray& journal)
{
    std::vector<Record> records;
    QDataStream stream(journal);
    while (!stream.atEnd()) {
        QByteArray bytes;
        quint32 checksum = 0;
        stream >> bytes >> checksum;
        Record record;
        QDataStream content(bytes);
        if (stream.status() != QDataStream::Ok || checksum != checksumOf(bytes) ||
            !read(content, record)) {
            break;
        }
        records.push_back(record);
    }
    return records;
}

bool makeWhole(const Record& record)
{
    if (record.kind == Kind::Folder) {
        linuxfiles::sweepLeftovers(record.path);
        return true;
    }
    const Descriptor file(
        ::open(record.path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    if (!file.isValid()) {
        return isGone(record.path);
    }
    struct stat facts = {};
    if (::fstat(file.number(), &facts) != 0) {
        return false;
    }
    if (!S_ISREG(facts.st_mode) || quint64{facts.st_ino} != record.inode) {
        return true; // somebody has put another file in its place
    }
    if (record.kind == Kind::Rewrite) {
        return rewriteUndone(record, file.number(), facts.st_size);
    }
    return hasAllNew(file.number(), facts.st_size, record) ||
           undoOverwrite(file.number(), record.modified, record.regions);
}

bool undoOverwrite(int file, const timespec& modified, const std::vector<TagRegion>& regions)
{
    struct stat facts = {};
    if (::fstat(file, &facts) != 0) {
        return false;
    }
    Found found;
    for (const TagRegion& region : regions) {
        if (region.offset + region.before.size() > facts.st_size) {
            return true; // somebody has cut the file short
        }
        look(found, region.offset, readAt(file, region.offset, region.before.size()), region.before,
             region.after);
    }
    if (found.allOld || found.isForeign) {
        return true;
    }
    for (const TagRegion& region : regions) {
        writeAt(file, region.offset, region.before);
    }
    setDate(file, modified);
    return ::fsync(file) == 0;
}

void restore(int file, int copy, qint64 size, const timespec& modified)
{
    copyPart(copy, 0, size, file, 0);
    if (::ftruncate(file, size) != 0 || ::fsync(file) != 0) {
        failTag(errno);
    }
    comparePart(copy, 0, size, file, 0);
    setDate(file, modified);
}

} // namespace melovane::linux_media::tagrepair
