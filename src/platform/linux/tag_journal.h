#pragma once

#include "platform/linux/file_writing.h"

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

#include <vector>

namespace melovane::linux_media {

/// Bytes of a file that are written over by as many others.
struct TagRegion
{
    qint64 offset = 0;
    QByteArray before;
    QByteArray after;
};

/// What is about to be done to an audio file, so that it can be made whole when the program ends in
/// the middle of it.
class TagJournal
{
public:
    /// \param folder of journals, made when missing
    /// Nothing is opened before the first record.
    explicit TagJournal(QByteArray folder);
    ~TagJournal();
    TagJournal(const TagJournal&) = delete;
    TagJournal& operator=(const TagJournal&) = delete;

    /// Regions of a file will be written over. \throws TagFailure
    void addOverwrite(const QByteArray& path,
                      const struct stat& facts,
                      const std::vector<TagRegion>& regions);

    /// A file will be written anew from its beginning: `head`, then what stands in it from `begin`
    /// on, with `tail` over its last bytes. \param copy of the file as it is \throws TagFailure
    void addRewrite(const QByteArray& path,
                    const struct stat& facts,
                    const QByteArray& copy,
                    const QByteArray& head,
                    qint64 begin,
                    const QByteArray& tail);

    /// A file in that folder will be replaced by one that stands beside it for a moment. \throws
    /// TagFailure
    void addFolder(const QByteArray& folder);

    /// A path for a copy of a file; what has such a name goes with the journal. \throws TagFailure
    [[nodiscard]] QByteArray pathForCopy();

    /// Brings the records to the disc. \throws TagFailure
    void sync();

    /// All that was recorded is done, or undone.
    void clear();

    /// The records are of use to the next repair: they stay when this is destroyed.
    void keep() { m_kept = true; }

    /// Makes the files of all journals in the folder whole whose writers live no more: each is
    /// wholly the old or the new one, or what somebody else made of it since. A journal whose files
    /// cannot be reached now stays for the next time.
    static void repair(const QByteArray& folder);

private:
    void open();
    void add(const QByteArray& record);

    QByteArray m_folder;
    QByteArray m_path;
    linuxfiles::Descriptor m_file;
    int m_copies = 0;
    bool m_kept = false;
};

} // namespace melovane::linux_media
