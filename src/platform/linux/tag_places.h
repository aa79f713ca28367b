#pragma once

#include <QtGlobal>

#include <optional>
#include <vector>

namespace melovane::linux_media {

class MpegFile;

/// An ID3v2 tag in its file.
struct Id3Place
{
    qint64 begin = 0; ///< the first byte behind its header
    qint64 length = 0;
    int version = 0; ///< 2, 3 or 4
    unsigned flags = 0;

    [[nodiscard]] bool isUnsynchronised() const { return (flags & 0x80U) != 0; }

    /// In version 2 a compression that was never defined.
    [[nodiscard]] bool isExtended() const { return (flags & 0x40U) != 0; }
};

/// The items of an APE tag in their file.
struct ApePlace
{
    qint64 begin = 0;
    qint64 length = 0;
    bool isUtf8 = true; ///< false for version 1, whose texts are single bytes
};

/// Where the tags of an audio file stand, and the sound between them.
struct TagPlaces
{
    /// All that can be read and count, the one that goes before the others first: those at the
    /// beginning of the file, and that at its end where none stands at the beginning, or where the
    /// one there leads to it (frame SEEK).
    std::vector<Id3Place> id3v2;
    bool hasLeading = false;     ///< one of them stands at the beginning
    std::optional<ApePlace> ape; ///< at the end
    qint64 soundBegin = 0;       ///< the first byte behind the tags at the beginning
    qint64 soundEnd = 0;         ///< in front of ID3v1, Lyrics3, APE and ID3v2 at the end
    bool oversized = false;      ///< a tag at the beginning claims to reach beyond the file
};

/// Sizes are never trusted.
[[nodiscard]] TagPlaces tagPlaces(MpegFile& file);

} // namespace melovane::linux_media
