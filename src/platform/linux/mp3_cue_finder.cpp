#include "platform/linux/mp3_cue_finder.h"

#include "platform/linux/mp3_stream.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace melovane::linux_media {

namespace {

/// Samples of one channel.
struct Span
{
    qint64 first = -1; ///< the first that is sound; -1 for none
    qint64 last = -1;
};

/// The sound among `count` samples from `begin`. \param firstOnly the first one is enough
Span soundIn(Mp3Stream& stream, qint64 begin, qint64 count, int loudness, bool firstOnly)
{
    Span result;
    std::array<qint16, 8192> samples{};
    const auto channels = std::size_t(std::max(1, stream.format().channels));
    if (!stream.seek(begin)) {
        return result;
    }
    for (qint64 at = begin; at < begin + count;) {
        const auto wanted =
            std::min(samples.size() / channels, std::size_t(begin + count - at)) * channels;
        const std::size_t got = stream.read(std::span(samples).first(wanted));
        for (std::size_t i = 0; i < got; ++i) {
            if (std::abs(int(samples[i])) > loudness) {
                result.last = at + qint64(i / channels);
                result.first = result.first < 0 ? result.last : result.first;
                if (firstOnly) {
                    return result;
                }
            }
        }
        if (got < wanted) {
            break;
        }
        at += qint64(got / channels);
    }
    return result;
}

} // namespace

std::optional<CueRange> Mp3CueFinder::find(const QString& file, int withinMs, int loudness)
{
    Mp3Stream stream;
    if (stream.open(file) != PlayFault::None) {
        return {};
    }
    const double perMs = stream.format().sampleRate / 1000.0;
    const qint64 window = std::min(stream.length(), qint64(std::max(0, withinMs) * perMs));
    const auto frames = [perMs](qint64 sample) { return double(sample) / perMs / kFrameMs; };
    const Span front = soundIn(stream, 0, window, loudness, true);
    const Span back = soundIn(stream, stream.length() - window, window, loudness, false);
    CueRange result{0, int(std::lround(frames(stream.length())))};
    if (front.first >= 0) {
        result.start = int(std::floor(frames(front.first)));
    }
    if (back.last >= 0) {
        result.stop = std::min(result.stop, int(std::ceil(frames(back.last + 1))));
    }
    return result;
}

} // namespace melovane::linux_media
