#pragma once

#include "platform/media/track_tags.h"

#include <memory>

namespace melovane::linux_media {

/// Reads MPEG audio files (Layer I to III) with their ID3v2, ID3v1, APE and Lyrics3 tags.
///
/// Looks at a few kilobytes of a file: its beginning, its end, and some places between. Frames are
/// counted one by one only where the bit rate varies and no header tells the length; frames of free
/// format are left to a decoder. Has no state: several threads may share one.
class LinuxTagReader : public TagReader
{
public:
    [[nodiscard]] MediaReading read(const QString& path) const override;
};

[[nodiscard]] std::unique_ptr<TagReader> makeTagReader();

} // namespace melovane::linux_media
