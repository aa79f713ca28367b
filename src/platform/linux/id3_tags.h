#pragma once

#include "platform/media/track_tags.h"

#include <optional>
#include <span>

namespace melovane::linux_media {

class MpegFile;
struct TagPlaces;

/// Reads ID3v2 tags (usually one) into `tags`; of equal fields the first with a text counts.
/// Versions 2.2, 2.3 and 2.4, unsynchronised and compressed frames included; encrypted frames are
/// skipped. Sizes are never trusted: no more is kept in memory than the longest text.
void readId3v2(MpegFile& file, const TagPlaces& places, TrackTags& tags);

/// Reads the ID3v1 tag in the last 128 bytes, if there is one, texts and track number of version
/// 1.1.
void readId3v1(MpegFile& file, TrackTags& tags);

/// "1" to "5" of a rating byte by bands 1-31, 32-95, 96-159, 160-223, 224-255; empty for 0.
[[nodiscard]] QString ratingOfByte(int byte);

/// The rating of a tag while its frames are read.
struct FoundRating
{
    std::optional<QString> own; ///< of the first frame of ours, empty for one without a rating
    QString foreign;            ///< the first one of another program

    /// \param content of a frame POPM
    void take(std::span<const quint8> content);

    [[nodiscard]] const QString& shown() const { return own ? *own : foreign; }
};

/// Address of the rating frame that this suite writes: it lies in the files, keep. Rating frames of
/// other addresses belong to other programs and are left alone; they are read where ours is
/// missing. Ours without a rating says that the user has taken it away.
inline constexpr char kRatingAddress[] = "rating@melovane";

} // namespace melovane::linux_media
