#pragma once

#include "platform/linux/file_writing.h"
#include "platform/media/tag_writer.h"

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

namespace melovane::linux_media {

/// Why a tag cannot be written; ends at TagWriter::write and at the repair.
struct TagFailure
{
    TagWriteFault fault = TagWriteFault::Failed;
    QString detail;
};

/// The failure that a system error means. \throws TagFailure
[[noreturn]] void failTag(int error);

/// Exactly `length` bytes from `offset` on; a file that ends before has been changed. \throws
/// TagFailure
[[nodiscard]] QByteArray readAt(int descriptor, qint64 offset, qint64 length);

/// \throws TagFailure
void writeAt(int descriptor, qint64 offset, const QByteArray& bytes);

/// Copies a part of a file behind or in front of where it stood. \throws TagFailure
void copyPart(int from, qint64 begin, qint64 end, int to, qint64 place);

/// Fails unless that part stands in both files. \throws TagFailure
void comparePart(int from, qint64 begin, qint64 end, int to, qint64 place);

/// Sets the date of the last change; nothing happens where that is not allowed.
void setDate(int descriptor, const timespec& modified);

/// An audio file that is open for a change of its tags, with what stands around its sound.
///
/// Locked, so that two writers of the suite never work in one file. Its tags are checked: none
/// reaches beyond the file, and sound stands behind them.
class TagFile
{
public:
    /// Links are followed. \throws TagFailure
    explicit TagFile(const QString& path);

    [[nodiscard]] int descriptor() const { return m_file.number(); }

    /// Of the file itself, where a link led to it.
    [[nodiscard]] const QByteArray& path() const { return m_path; }

    /// As they were when it was opened.
    [[nodiscard]] const struct stat& facts() const { return m_facts; }

    /// All ID3v2 tags at the beginning; empty for none.
    [[nodiscard]] const QByteArray& front() const { return m_front; }

    /// The 128 bytes of the ID3v1 tag at the end; empty for none.
    [[nodiscard]] const QByteArray& oldTag() const { return m_oldTag; }

    /// Fails when somebody has changed the file since it was opened, or put another one in its
    /// place. \throws TagFailure
    void checkUnchanged() const;

    /// Fails when the sound right behind the tags is not what it was. \throws TagFailure
    void checkSound() const;

private:
    void open();
    void lock();
    void readFront();
    void findSound();

    QByteArray m_path;
    linuxfiles::Descriptor m_file;
    struct stat m_facts = {};
    QByteArray m_front;
    QByteArray m_sound; ///< the first bytes behind the tags
    QByteArray m_oldTag;
};

} // namespace melovane::linux_media
