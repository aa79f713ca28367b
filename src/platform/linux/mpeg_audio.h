#pragma once

#include "platform/media/track_tags.h"

#include <optional>

namespace melovane::linux_media {

class MpegFile;

/// What was found between the tags of a file.
struct AudioReading
{
    MediaFault fault = MediaFault::None;
    QString detail;
    AudioFacts facts;
    /// The frames name no bit rate; only a decoder can tell the length.
    bool needsDecoder = false;
};

/// Where the sound begins: at the first frame from `begin` on, behind it when that one is a header
/// (Xing, Info, VBRI), which programs rewrite while the sound stays. Nothing without a frame; where
/// frames name no bit rate, `begin` itself.
[[nodiscard]] std::optional<qint64> soundBegin(MpegFile& file, qint64 begin, qint64 end);

/// Finds the first frame from `begin` on and measures the stream up to `end`.
///
/// The length comes from the header in the first frame when that agrees with the size of the file,
/// from bit rate and size when frames all through the file have one bit rate, and from counting all
/// frames otherwise. Counted are complete frames; a header frame is none of them.
[[nodiscard]] AudioReading readAudio(MpegFile& file, qint64 begin, qint64 end);

} // namespace melovane::linux_media
