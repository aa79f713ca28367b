#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/linux/mp3_cue_finder.h"
#include "platform/linux/mp3_stream.h"
#include "siblings/demomusic/mp3_frames.h"

#include <array>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

using linux_media::Mp3Stream;

/// Samples of one channel up to the end.
qint64 readToTheEnd(Mp3Stream& stream)
{
    std::array<qint16, 4096> samples = {};
    const auto channels = size_t(stream.format().channels);
    qint64 count = 0;
    while (const size_t got =
               stream.read(std::span(samples).first(samples.size() / channels * channels))) {
        count += qint64(got / channels);
    }
    return count;
}

QString check(const QByteArray& bytes)
{
    static const Scratch scratch;
    const QString file = scratch.file(u"a.mp3"_s, bytes);
    Mp3Stream stream;
    const PlayFault fault = stream.open(file);
    if (stream.isOpen() != (fault == PlayFault::None)) {
        return u"open with a fault"_s;
    }
    const auto range = linux_media::Mp3CueFinder().find(file, 1000, 100);
    if (!stream.isOpen()) {
        return range ? u"a beginning in what is no music"_s : QString();
    }
    const qint64 whole = readToTheEnd(stream);
    if (whole > stream.length()) {
        return u"%1 samples of %2"_s.arg(whole).arg(stream.length());
    }
    for (const qint64 place : {stream.length() - 1, stream.length() / 2, qint64(0)}) {
        if (stream.seek(place) && readToTheEnd(stream) > stream.length() - place) {
            return u"more samples than are left"_s;
        }
    }
    return {};
}

std::vector<QByteArray> seeds()
{
    using demomusic::FrameFormat;
    const FrameFormat low{demomusic::MpegVersion::V25, 8, 8000, true};
    const FrameFormat both{demomusic::MpegVersion::V2, 16, 22050, false};
    return {demomusic::constantStream(low, 8), demomusic::constantStream(both, 4),
            demomusic::withHeader(demomusic::StreamHeader::Info, low,
                                  demomusic::constantStream(low, 4), 4),
            demomusic::constantStream(low, 3) + "damage" + demomusic::constantStream(low, 3)};
}

} // namespace

Format sound()
{
    return {"sound", check, seeds};
}

} // namespace melovane::fuzz
