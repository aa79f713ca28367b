#include "platform/linux/mpeg_frame.h"

#include "platform/linux/mpeg_file.h"

#include <array>
#include <cstring>

namespace melovane::linux_media {

namespace {

using RateTable = std::array<short, 15>;

/// Bit rates in KBit/s by index: version 1 layer I, II, III; versions 2 and 2.5 layer I, then II
/// and III.
constexpr RateTable kV1L1 = {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
constexpr RateTable kV1L2 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
constexpr RateTable kV1L3 = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr RateTable kV2L1 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
constexpr RateTable kV2L23 = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr std::array<int, 3> kSampleRates = {44100, 48000, 32000};

int bitRate(int version, int layer, unsigned index)
{
    if (version == 1) {
        return (layer == 1 ? kV1L1 : layer == 2 ? kV1L2 : kV1L3)[index];
    }
    return (layer == 1 ? kV2L1 : kV2L23)[index];
}

int frameSamples(int version, int layer)
{
    if (layer == 1) {
        return 384;
    }
    return layer == 3 && version != 1 ? 576 : 1152;
}

int frameLength(const MpegFrame& frame, int padding)
{
    if (frame.bitRate == 0) {
        return 0;
    }
    if (frame.layer == 1) {
        return (12 * frame.bitRate * 1000 / frame.sampleRate + padding) * 4;
    }
    return frame.samples / 8 * frame.bitRate * 1000 / frame.sampleRate + padding;
}

std::optional<StreamHeaderFacts> parseXing(std::span<const quint8> bytes, size_t place)
{
    if (bytes.size() < place + 8) {
        return std::nullopt;
    }
    const quint8* at = bytes.data() + place;
    const bool xing = std::memcmp(at, "Xing", 4) == 0;
    if (!xing && std::memcmp(at, "Info", 4) != 0) {
        return std::nullopt;
    }
    StreamHeaderFacts facts;
    facts.variable = xing;
    const quint32 flags = bigEndian32(at + 4);
    size_t next = place + 8;
    if ((flags & 1U) != 0 && bytes.size() >= next + 4) {
        facts.frames = bigEndian32(bytes.data() + next);
        next += 4;
    }
    if ((flags & 2U) != 0 && bytes.size() >= next + 4) {
        facts.bytes = bigEndian32(bytes.data() + next);
    }
    return facts;
}

std::optional<StreamHeaderFacts> parseVbri(std::span<const quint8> bytes)
{
    constexpr size_t kPlace = 4 + 32;
    if (bytes.size() < kPlace + 18 || std::memcmp(bytes.data() + kPlace, "VBRI", 4) != 0) {
        return std::nullopt;
    }
    return StreamHeaderFacts{true, bigEndian32(bytes.data() + kPlace + 14),
                             bigEndian32(bytes.data() + kPlace + 10)};
}

} // namespace

std::optional<MpegFrame> parseFrame(std::span<const quint8> bytes)
{
    if (bytes.size() < 4 || bytes[0] != 0xFF || (bytes[1] & 0xE0U) != 0xE0U) {
        return std::nullopt;
    }
    const unsigned versionBits = bytes[1] >> 3U & 3U;
    const unsigned layerBits = bytes[1] >> 1U & 3U;
    const unsigned rateIndex = bytes[2] >> 4U;
    const unsigned sampleIndex = bytes[2] >> 2U & 3U;
    if (versionBits == 1 || layerBits == 0 || rateIndex == 15 || sampleIndex == 3) {
        return std::nullopt;
    }
    MpegFrame frame;
    frame.version = versionBits == 3 ? 1 : versionBits == 2 ? 2 : 25;
    frame.layer = 4 - static_cast<int>(layerBits);
    frame.bitRate = bitRate(frame.version, frame.layer, rateIndex);
    const int divisor = frame.version == 1 ? 1 : frame.version == 2 ? 2 : 4;
    frame.sampleRate = kSampleRates[sampleIndex] / divisor;
    frame.channels = bytes[3] >> 6U == 3U ? 1 : 2;
    frame.hasChecksum = (bytes[1] & 1U) == 0;
    frame.samples = frameSamples(frame.version, frame.layer);
    frame.length = frameLength(frame, static_cast<int>(bytes[2] >> 1U & 1U));
    return frame;
}

std::optional<StreamHeaderFacts> parseStreamHeader(const MpegFrame& frame,
                                                   std::span<const quint8> bytes)
{
    if (frame.layer != 3) {
        return std::nullopt;
    }
    const bool mono = frame.channels == 1;
    const size_t sideInfo = frame.version == 1 ? (mono ? 17 : 32) : (mono ? 9 : 17);
    for (const size_t place : {4 + sideInfo, 6 + sideInfo}) {
        if (const auto xing = parseXing(bytes, place)) {
            return xing;
        }
    }
    return parseVbri(bytes);
}

} // namespace melovane::linux_media
