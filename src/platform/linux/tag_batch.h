#pragma once

#include "platform/linux/file_writing.h"
#include "platform/linux/tag_file.h"
#include "platform/linux/tag_journal.h"
#include "platform/media/tag_writer.h"

#include <QByteArray>

#include <memory>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace melovane::linux_media {

/// Writes files together, so that the disc is waited for once for many of them.
class TagBatch
{
public:
    /// \param folder of journals \param work outlives this
    TagBatch(const QByteArray& folder, std::span<const TagWork> work);

    /// Prepares one file; writes what was prepared when that is enough.
    void take(size_t index);

    /// Writes what was prepared and tells about every file.
    [[nodiscard]] std::vector<TagWriting> finish();

private:
    /// A file and what shall stand in it.
    struct Item
    {
        size_t index = 0;
        std::unique_ptr<TagFile> file;
        QByteArray head;                ///< the tags at the beginning; empty when they stay
        QByteArray oldTag;              ///< the tag at the end; empty when it stays
        std::vector<TagRegion> regions; ///< of one that is written over
        std::unique_ptr<linuxfiles::Replacement> copy;
    };

    void prepare(size_t index);
    void overwriteLater(Item item);
    void copyOrRewrite(Item item);
    [[nodiscard]] bool makeCopy(Item& item);
    void rewrite(const Item& item);
    void flush();
    void flushOverwrites();
    void overwrite(const Item& item);
    void undo(const Item& item);
    void flushCopies();
    void fail(const Item& item, const TagFailure& failure);

    QByteArray m_folder;
    std::span<const TagWork> m_work;
    std::vector<TagWriting> m_results;
    std::unique_ptr<TagJournal> m_journal;
    std::vector<Item> m_overwrites;
    std::vector<Item> m_copies;
    std::set<std::pair<dev_t, ino_t>> m_taken;
    qint64 m_bytes = 0; ///< that wait to be written or synced
};

} // namespace melovane::linux_media
