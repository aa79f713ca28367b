#pragma once

#include <QtGlobal>

#include <optional>
#include <span>

namespace melovane::linux_media {

/// What the four header bytes of an MPEG audio frame say.
struct MpegFrame
{
    int version = 1; ///< 1, 2, or 25 for 2.5
    int layer = 3;
    int bitRate = 0; ///< KBit/s; 0 when the frame names none (free format)
    int sampleRate = 0;
    int channels = 2;
    int length = 0;  ///< bytes with the header; 0 in free format
    int samples = 0; ///< sound that the frame stands for
    bool hasChecksum = false;

    /// True when both can be frames of one stream.
    [[nodiscard]] bool fits(const MpegFrame& other) const
    {
        return version == other.version && layer == other.layer && sampleRate == other.sampleRate;
    }
};

/// Nothing when the bytes are no frame header.
[[nodiscard]] std::optional<MpegFrame> parseFrame(std::span<const quint8> bytes);

/// What a Xing, Info or VBRI header in the first frame tells about the frames behind it.
struct StreamHeaderFacts
{
    bool variable = false; ///< Xing or VBRI: the bit rate varies
    quint32 frames = 0;    ///< 0 when it doesn't say
    quint32 bytes = 0;     ///< 0 when it doesn't say; counts this frame too
};

/// \param bytes the whole first frame
[[nodiscard]] std::optional<StreamHeaderFacts> parseStreamHeader(const MpegFrame& frame,
                                                                 std::span<const quint8> bytes);

} // namespace melovane::linux_media
