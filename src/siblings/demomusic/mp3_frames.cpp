#include "siblings/demomusic/mp3_frames.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <random>

namespace melovane::demomusic {

namespace {

/// Bit rates of Layer III in KBit/s by index; 0 names no rate.
constexpr std::array<int, 15> kRates1 = {0,   32,  40,  48,  56,  64,  80, 96,
                                         112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> kRates2 = {0,  8,  16, 24,  32,  40,  48, 56,
                                         64, 80, 96, 112, 128, 144, 160};
constexpr std::array<int, 3> kSampleRates1 = {44100, 48000, 32000};

const std::array<int, 15>& rates(MpegVersion version)
{
    return version == MpegVersion::V1 ? kRates1 : kRates2;
}

int sampleRateDivisor(MpegVersion version)
{
    switch (version) {
    case MpegVersion::V1:
        return 1;
    case MpegVersion::V2:
        return 2;
    case MpegVersion::V25:
        return 4;
    }
    return 1;
}

int sampleRateIndex(const FrameFormat& format)
{
    const auto* found = std::find(kSampleRates1.begin(), kSampleRates1.end(),
                                  format.sampleRate * sampleRateDivisor(format.version));
    return found == kSampleRates1.end() ? 0 : static_cast<int>(found - kSampleRates1.begin());
}

int trueSampleRate(const FrameFormat& format)
{
    return kSampleRates1.at(static_cast<size_t>(sampleRateIndex(format))) /
           sampleRateDivisor(format.version);
}

int bitRateIndex(const FrameFormat& format)
{
    const auto& table = rates(format.version);
    const auto* found = std::find(table.begin() + 1, table.end(), format.bitRate);
    return found == table.end() ? 1 : static_cast<int>(found - table.begin());
}

int trueBitRate(const FrameFormat& format)
{
    return rates(format.version).at(static_cast<size_t>(bitRateIndex(format)));
}

/// Bits of side information that follow the header.
int sideInfoLength(const FrameFormat& format)
{
    if (format.version == MpegVersion::V1) {
        return format.mono ? 17 : 32;
    }
    return format.mono ? 9 : 17;
}

void putHeader(QByteArray& frame, const FrameFormat& format, int rateIndex, bool padded)
{
    unsigned versionBits = 0;
    switch (format.version) {
    case MpegVersion::V1:
        versionBits = 3;
        break;
    case MpegVersion::V2:
        versionBits = 2;
        break;
    case MpegVersion::V25:
        versionBits = 0;
        break;
    }
    constexpr unsigned kLayer3 = 1;
    constexpr unsigned kNoChecksum = 1;
    frame[0] = static_cast<char>(0xFF);
    frame[1] = static_cast<char>(0xE0U | versionBits << 3U | kLayer3 << 1U | kNoChecksum);
    frame[2] = static_cast<char>(static_cast<unsigned>(rateIndex) << 4U |
                                 static_cast<unsigned>(sampleRateIndex(format)) << 2U |
                                 (padded ? 2U : 0U));
    frame[3] = static_cast<char>(format.mono ? 0xC0 : 0x00);
}

void putNumber(QByteArray& bytes, int offset, quint32 number)
{
    for (int i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<char>(number >> (24U - 8U * static_cast<unsigned>(i)));
    }
}

/// The format with a bit rate at which a frame has room for a header's numbers.
FrameFormat roomy(FrameFormat format)
{
    constexpr int kNeeded = 80;
    for (const int rate : rates(format.version)) {
        if (frameLength(format) >= kNeeded) {
            break;
        }
        format.bitRate = std::max(rate, trueBitRate(format));
    }
    return format;
}

} // namespace

int samplesPerFrame(const FrameFormat& format)
{
    return format.version == MpegVersion::V1 ? 1152 : 576;
}

int frameLength(const FrameFormat& format, bool padded)
{
    return samplesPerFrame(format) / 8 * trueBitRate(format) * 1000 / trueSampleRate(format) +
           (padded ? 1 : 0);
}

QByteArray silentFrame(const FrameFormat& format, bool padded)
{
    QByteArray frame(frameLength(format, padded), '\0');
    putHeader(frame, format, bitRateIndex(format), padded);
    return frame;
}

QByteArray constantStream(const FrameFormat& format, int frames)
{
    const QByteArray plain = silentFrame(format);
    const QByteArray padded = silentFrame(format, true);
    const qint64 bitsPerSecond = qint64{samplesPerFrame(format)} / 8 * trueBitRate(format) * 1000;
    const int rate = trueSampleRate(format);
    QByteArray stream;
    stream.reserve(static_cast<qsizetype>(frames) * padded.size());
    qint64 remainder = 0;
    for (int i = 0; i < frames; ++i) {
        remainder += bitsPerSecond % rate;
        const bool pad = remainder >= rate;
        remainder -= pad ? rate : 0;
        stream += pad ? padded : plain;
    }
    return stream;
}

QByteArray variableStream(const FrameFormat& format, int frames, quint32 seed)
{
    std::mt19937 random(seed);
    QByteArray stream;
    FrameFormat frame = format;
    constexpr int kEqualFrames = 8;
    for (int i = 0; i < frames; ++i) {
        if (i >= kEqualFrames) {
            frame.bitRate = rates(format.version).at(1 + random() % 6);
        }
        stream += silentFrame(frame);
    }
    return stream;
}

QByteArray headerFrame(StreamHeader kind, const FrameFormat& format, quint32 frames, quint32 bytes)
{
    const FrameFormat own = roomy(format);
    QByteArray frame = silentFrame(own);
    if (kind == StreamHeader::Vbri) {
        constexpr int kPlace = 4 + 32;
        frame.replace(kPlace, 4, "VBRI");
        frame[kPlace + 5] = 1; // version of the header
        putNumber(frame, kPlace + 10, bytes);
        putNumber(frame, kPlace + 14, frames);
        return frame;
    }
    const int place = 4 + sideInfoLength(own);
    constexpr quint32 kFramesAndBytes = 3;
    frame.replace(place, 4, kind == StreamHeader::Xing ? "Xing" : "Info");
    putNumber(frame, place + 4, kFramesAndBytes);
    putNumber(frame, place + 8, frames);
    putNumber(frame, place + 12, bytes);
    return frame;
}

QByteArray
withHeader(StreamHeader kind, const FrameFormat& format, const QByteArray& stream, int frames)
{
    const auto length = static_cast<quint32>(stream.size() + frameLength(roomy(format)));
    return headerFrame(kind, format, static_cast<quint32>(frames), length) + stream;
}

QByteArray freeFormatStream(const FrameFormat& format, int frames, int length)
{
    QByteArray frame(std::max(length, 4 + sideInfoLength(format)), '\0');
    putHeader(frame, format, 0, false);
    return frame.repeated(frames);
}

} // namespace melovane::demomusic
