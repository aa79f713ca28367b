#include "platform/linux/mpeg_audio.h"

#include "platform/linux/mpeg_file.h"
#include "platform/linux/mpeg_frame.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace melovane::linux_media {

namespace {

/// How far behind the tag the first frame is looked for. Encoders and editors leave at most a few
/// kilobytes of padding there.
constexpr qint64 kSearchRange = qint64{128} * 1024;
/// Frames that must follow one another before a place found by searching counts.
constexpr int kConfirmingFrames = 3;
/// A shorter stream is counted frame by frame rather than probed.
constexpr qint64 kCountedStream = qint64{32} * 1024;
/// A header frame may disagree with the file by so many bytes (less in short files) before it is
/// not believed: some encoders leave the header frame itself out of the sum.
constexpr qint64 kHeaderSlack = 4096;
/// Counting gives up when so many bytes in all were no frames: no player goes on there.
constexpr qint64 kLargestDamage = qint64{16} * 1024 * 1024;
/// DBit of files whose bit rate varies: keep.
constexpr int kVariableBitRate = -99;

struct Found
{
    MpegFrame frame;
    qint64 place = 0;
};

std::optional<MpegFrame> frameAt(MpegFile& file, qint64 place, qint64 end)
{
    return place + 4 <= end ? parseFrame(file.at(place, 4)) : std::nullopt;
}

/// What may follow a frame besides frames of its stream.
enum class Ending
{
    Allowed, ///< the stream may end behind it
    Refused, ///< somebody searches: one frame at the very end proves nothing
};

/// True when `count` frames of the stream follow, or the stream ends behind one of them.
bool followed(MpegFile& file, const Found& found, qint64 end, int count, Ending ending)
{
    qint64 next = found.place + found.frame.length;
    for (int i = 0; i < count; ++i) {
        if (next + 4 > end) {
            return i > 0 || ending == Ending::Allowed;
        }
        const auto other = frameAt(file, next, end);
        if (!other || !other->fits(found.frame) || other->length == 0) {
            return false;
        }
        next += other->length;
    }
    return true;
}

/// The place of the next 0xFF in [place, limit), or limit.
qint64 nextMark(MpegFile& file, qint64 place, qint64 limit)
{
    while (place < limit) {
        const auto piece = file.at(place, std::min<qint64>(limit - place, 4096));
        if (piece.empty()) {
            return limit;
        }
        if (const void* mark = std::memchr(piece.data(), 0xFF, piece.size())) {
            return place + (static_cast<const quint8*>(mark) - piece.data());
        }
        place += static_cast<qint64>(piece.size());
    }
    return limit;
}

struct Search
{
    std::optional<Found> found;
    bool freeFormat = false; ///< frames without a bit rate were met at the beginning
    bool cutShort = false;   ///< the first frame stands there but runs beyond the end
};

/// Two headers of free format at one place are enough to hand the file to the decoder.
bool looksFreeFormat(const MpegFrame& frame)
{
    return frame.bitRate == 0 && frame.layer == 3;
}

Search findFirstFrame(MpegFile& file, qint64 begin, qint64 end)
{
    Search search;
    const qint64 limit = std::min(end, begin + kSearchRange);
    for (qint64 place = nextMark(file, begin, limit); place < limit;
         place = nextMark(file, place + 1, limit)) {
        const auto frame = frameAt(file, place, end);
        if (!frame) {
            continue;
        }
        const bool expected = place == begin;
        if (frame->length == 0) {
            search.freeFormat = search.freeFormat || (expected && looksFreeFormat(*frame));
            continue;
        }
        if (place + frame->length > end) {
            search.cutShort = search.cutShort || expected;
            continue;
        }
        const Found found{*frame, place};
        if (expected ? followed(file, found, end, 1, Ending::Allowed)
                     : followed(file, found, end, kConfirmingFrames, Ending::Refused)) {
            search.found = found;
            return search;
        }
    }
    return search;
}

/// Result of walking over all frames.
struct Count
{
    qint64 frames = 0;
    bool variable = false;
};

/// Walks over the frames from `place`; behind a damaged place frames are looked for anew.
Count countFrames(MpegFile& file, const MpegFrame& first, qint64 place, qint64 end)
{
    Count count;
    int bitRate = 0;
    bool inStep = true;
    qint64 damaged = 0;
    while (place + 4 <= end && damaged < kLargestDamage) {
        const auto frame = frameAt(file, place, end);
        const bool good = frame && frame->length > 0 && frame->fits(first) &&
                          place + frame->length <= end &&
                          (inStep || followed(file, {*frame, place}, end, 1, Ending::Refused));
        if (good) {
            count.variable = count.variable || (bitRate != 0 && bitRate != frame->bitRate);
            bitRate = frame->bitRate;
            ++count.frames;
            place += frame->length;
        } else {
            const qint64 next = nextMark(file, place + 1, end);
            damaged += next - place;
            place = next;
        }
        inStep = good;
    }
    return count;
}

/// Mean length of a frame in bytes at the frame's bit rate.
double meanLength(const MpegFrame& frame)
{
    return frame.samples / 8.0 * frame.bitRate * 1000.0 / frame.sampleRate;
}

/// True when a frame of the same bit rate starts within one frame's length from `place`.
bool sameRateNear(MpegFile& file, const MpegFrame& first, qint64 place, qint64 end)
{
    const qint64 limit = std::min(end, place + first.length + 4);
    for (qint64 mark = nextMark(file, place, limit); mark < limit;
         mark = nextMark(file, mark + 1, limit)) {
        const auto frame = frameAt(file, mark, end);
        if (frame && frame->fits(first) && frame->length > 0 &&
            followed(file, {*frame, mark}, end, 2, Ending::Allowed)) {
            return frame->bitRate == first.bitRate;
        }
    }
    return false;
}

/// Probes the beginning and four places of the stream.
bool looksConstant(MpegFile& file, const Found& first, qint64 end)
{
    constexpr int kFirstFrames = 8;
    qint64 place = first.place;
    for (int i = 0; i < kFirstFrames; ++i) {
        const auto frame = frameAt(file, place, end);
        if (!frame || !frame->fits(first.frame) || frame->bitRate != first.frame.bitRate) {
            return false;
        }
        place += frame->length;
    }
    const qint64 length = end - first.place;
    const qint64 nearEnd = end - std::min<qint64>(length, 8 * qint64{first.frame.length});
    return sameRateNear(file, first.frame, first.place + length / 4, end) &&
           sameRateNear(file, first.frame, first.place + length / 2, end) &&
           sameRateNear(file, first.frame, first.place + length / 4 * 3, end) &&
           sameRateNear(file, first.frame, nearEnd, end);
}

/// True when the header's numbers can be true for a stream of that many bytes.
bool believable(const StreamHeaderFacts& header, const MpegFrame& frame, qint64 bytes)
{
    if (header.frames == 0) {
        return false;
    }
    const qint64 slack = frame.length + std::min(kHeaderSlack, bytes / 32);
    if (header.bytes != 0 && std::abs(qint64{header.bytes} - bytes) > slack) {
        return false;
    }
    // Smallest and largest frames of Layer III at this sample rate.
    const int smallest =
        frame.samples / 8 * (frame.version == 1 ? 32 : 8) * 1000 / frame.sampleRate;
    const int largest =
        frame.samples / 8 * (frame.version == 1 ? 320 : 160) * 1000 / frame.sampleRate + 1;
    return qint64{header.frames} * smallest <= bytes &&
           (qint64{header.frames} + 1) * largest + kHeaderSlack >= bytes;
}

AudioFacts factsOf(const MpegFrame& frame, qint64 frames, bool variable)
{
    AudioFacts facts;
    const double milliseconds =
        static_cast<double>(frames) * frame.samples * 1000.0 / frame.sampleRate;
    facts.milliseconds = static_cast<int>(
        std::min(milliseconds + 0.5, static_cast<double>(std::numeric_limits<int>::max())));
    facts.bitRate = variable ? kVariableBitRate : frame.bitRate;
    facts.sampleRate = frame.sampleRate;
    facts.channels = frame.channels;
    return facts;
}

AudioFacts measure(MpegFile& file, const Found& first, qint64 end)
{
    const MpegFrame& frame = first.frame;
    const auto header = parseStreamHeader(frame, file.at(first.place, frame.length));
    if (header && believable(*header, frame, end - first.place)) {
        return factsOf(frame, header->frames, header->variable);
    }
    const qint64 begin = header ? first.place + frame.length : first.place;
    const qint64 bytes = end - begin;
    if (!header && bytes > kCountedStream && looksConstant(file, first, end)) {
        const qint64 frames = std::llround(static_cast<double>(bytes) / meanLength(frame));
        return factsOf(frame, frames, false);
    }
    const Count count = countFrames(file, frame, begin, end);
    return factsOf(frame, count.frames, count.variable || (header && header->variable));
}

AudioReading refused(MediaFault fault, const char16_t* detail)
{
    return {fault, QString::fromUtf16(detail), {}, false};
}

} // namespace

std::optional<qint64> soundBegin(MpegFile& file, qint64 begin, qint64 end)
{
    const Search search = findFirstFrame(file, begin, end);
    if (!search.found) {
        return search.freeFormat ? std::optional(begin) : std::nullopt;
    }
    const auto& [frame, place] = *search.found;
    return parseStreamHeader(frame, file.at(place, frame.length)) ? place + frame.length : place;
}

AudioReading readAudio(MpegFile& file, qint64 begin, qint64 end)
{
    const Search search = findFirstFrame(file, begin, end);
    if (search.found) {
        AudioReading reading;
        reading.facts = measure(file, *search.found, end);
        if (reading.facts.milliseconds <= 0) {
            return refused(MediaFault::Truncated, u"media.noframe");
        }
        return reading;
    }
    if (search.freeFormat) {
        AudioReading reading;
        reading.needsDecoder = true;
        return reading;
    }
    if (search.cutShort) {
        return refused(MediaFault::Truncated, u"media.cutshort");
    }
    return refused(MediaFault::NoAudio, begin >= end ? u"media.onlytags" : u"media.noaudio");
}

} // namespace melovane::linux_media
