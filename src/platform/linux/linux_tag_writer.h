#pragma once

#include "platform/media/tag_writer.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace melovane::linux_media {

/// Writes the tags of MPEG audio files.
///
/// A tag that fits into the room of the old ones is written over them, after a journal of old and
/// new bytes has reached the disc: the sound is not moved. Else the file is written beside with
/// room for later changes, its sound compared, and renamed; a file with several names, of another
/// owner, or in a folder that may not be written is written anew in its place, after a copy of it
/// has reached the disc. Rights, owner, attributes and the date of the last change stay, links are
/// followed. A program that plays the file may hold it open.
class LinuxTagWriter : public TagWriter
{
public:
    /// \param stateFolder where journals and safety copies are kept; made when missing, the same
    /// for
    ///                    every program of the suite
    explicit LinuxTagWriter(const QString& stateFolder);

    [[nodiscard]] std::vector<TagWriting> write(std::span<const TagWork> work) override;

    /// Also safe while another writer works: its journal is left alone.
    void repair() override;

private:
    QByteArray m_folder;
};

[[nodiscard]] std::unique_ptr<TagWriter> makeTagWriter(const QString& stateFolder);

} // namespace melovane::linux_media
