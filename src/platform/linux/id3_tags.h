#pragma once

#include "platform/media/track_tags.h"

namespace melovane::linux_media {

class MpegFile;

/// What the tags at the beginning of a file told about the place of the sound.
struct LeadingTags
{
    qint64 end = 0;         ///< the first byte behind them
    bool oversized = false; ///< a tag claims to reach beyond the file
};

/// Reads the ID3v2 tags at the beginning of the file (usually one) into `tags`; of equal fields the
/// first with a text counts. Versions 2.2, 2.3 and 2.4, unsynchronised and compressed frames
/// included; encrypted frames and unknown versions are skipped. Sizes are never trusted: no more is
/// kept in memory than the longest text.
[[nodiscard]] LeadingTags readId3v2(MpegFile& file, TrackTags& tags);

/// Reads the ID3v1 tag in the last 128 bytes, if there is one, texts and track number of version
/// 1.1.
void readId3v1(MpegFile& file, TrackTags& tags);

/// "1" to "5" of a rating byte by bands 1-31, 32-95, 96-159, 160-223, 224-255; empty for 0.
[[nodiscard]] QString ratingOfByte(int byte);

/// Address of the rating frame that this suite reads and writes: it lies in the files, keep. Rating
/// frames of other addresses belong to other programs and are left alone.
inline constexpr char kRatingAddress[] = "rating@melovane";

} // namespace melovane::linux_media
