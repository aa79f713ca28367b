#pragma once

#include "platform/linux/tag_journal.h"

#include <QByteArray>

#include <vector>

/// What the journal of a writer of tags holds, and how a file is made whole by it.
namespace melovane::linux_media::tagrepair {

/// They lie in files: keep.
enum class Kind : quint8
{
    Overwrite = 1,
    Rewrite = 2,
    Folder = 3,
};

struct Record
{
    Kind kind = Kind::Folder;
    QByteArray path;
    quint64 inode = 0;
    qint64 size = 0;
    timespec modified = {};
    std::vector<TagRegion> regions; ///< Overwrite
    QByteArray copy;                ///< Rewrite: path of the old file's copy
    QByteArray head;
    qint64 begin = 0;
    QByteArray tail;
};

[[nodiscard]] quint32 checksumOf(const QByteArray& record);

/// The records up to the first that was not written to its end: what it tells of was not begun.
[[nodiscard]] std::vector<Record> recordsOf(const QByteArray& journal);

/// Brings the old bytes back unless all of the new ones stand there, or something that nobody of
/// the suite wrote. False when the file cannot be reached or written now. \throws TagFailure
[[nodiscard]] bool makeWhole(const Record& record);

/// Writes the old bytes back where new ones stand, be it in part; a file that somebody else has
/// changed since is left alone. False when the system refuses it. \throws TagFailure
[[nodiscard]] bool
undoOverwrite(int file, const timespec& modified, const std::vector<TagRegion>& regions);

/// Writes a file back from its copy. \throws TagFailure
void restore(int file, int copy, qint64 size, const timespec& modified);

} // namespace melovane::linux_media::tagrepair
