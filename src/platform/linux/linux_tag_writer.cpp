#include "platform/linux/linux_tag_writer.h"

#include "platform/linux/system_names.h"
#include "platform/linux/tag_batch.h"
#include "platform/linux/tag_journal.h"

namespace melovane::linux_media {

LinuxTagWriter::LinuxTagWriter(const QString& stateFolder)
    : m_folder(linuxnames::systemPath(stateFolder))
{}

std::vector<TagWriting> LinuxTagWriter::write(std::span<const TagWork> work)
{
    TagBatch batch(m_folder, work);
    for (size_t i = 0; i < work.size(); ++i) {
        batch.take(i);
    }
    return batch.finish();
}

void LinuxTagWriter::repair()
{
    TagJournal::repair(m_folder);
}

std::unique_ptr<TagWriter> makeTagWriter(const QString& stateFolder)
{
    return std::make_unique<LinuxTagWriter>(stateFolder);
}

} // namespace melovane::linux_media
