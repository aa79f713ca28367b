#pragma once

#include <QByteArray>

/// Makes MPEG audio frames (Layer III) of digital silence, byte by byte, without an encoder.
///
/// Players accept them like any other file: the frames carry true headers and side information that
/// says "no data". The demo library and the tests are made of them.
namespace melovane::demomusic {

enum class MpegVersion
{
    V1,  ///< 32, 44.1 and 48 kHz
    V2,  ///< 16, 22.05 and 24 kHz
    V25, ///< 8, 11.025 and 12 kHz
};

/// What a frame's header says. Rates outside the version's table are taken as its first one.
struct FrameFormat
{
    MpegVersion version = MpegVersion::V1;
    int bitRate = 128;      ///< KBit/s
    int sampleRate = 44100; ///< Hz
    bool mono = false;
};

/// Length of a frame in bytes, header included.
[[nodiscard]] int frameLength(const FrameFormat& format, bool padded = false);

/// Samples that a frame stands for: 1152, in versions 2 and 2.5 half of it.
[[nodiscard]] int samplesPerFrame(const FrameFormat& format);

[[nodiscard]] QByteArray silentFrame(const FrameFormat& format, bool padded = false);

/// Frames of one bit rate, padded so that their mean length is exact.
[[nodiscard]] QByteArray constantStream(const FrameFormat& format, int frames);

/// Frames whose bit rates go up and down through the version's table; the same seed gives the same
/// stream. The first eight frames have the rate of `format`.
[[nodiscard]] QByteArray variableStream(const FrameFormat& format, int frames, quint32 seed);

/// The frame in front of a stream that tells its length.
enum class StreamHeader
{
    Xing, ///< variable bit rate
    Info, ///< constant bit rate
    Vbri, ///< variable bit rate, the other form
};

/// \param frames frames that follow
/// \param bytes  length of this frame and all that follow
[[nodiscard]] QByteArray
headerFrame(StreamHeader kind, const FrameFormat& format, quint32 frames, quint32 bytes);

/// A whole stream with its header frame in front.
[[nodiscard]] QByteArray
withHeader(StreamHeader kind, const FrameFormat& format, const QByteArray& stream, int frames);

/// Frames that name no bit rate, each `length` bytes long.
[[nodiscard]] QByteArray freeFormatStream(const FrameFormat& format, int frames, int length);

} // namespace melovane::demomusic
