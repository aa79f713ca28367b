#include "platform/linux/tag_reader.h"

#include "platform/linux/id3_tags.h"
#include "platform/linux/mpeg_audio.h"
#include "platform/linux/mpeg_decoder.h"
#include "platform/linux/mpeg_file.h"

namespace melovane::linux_media {

namespace {

MediaReading refused(MediaFault fault, const QString& detail)
{
    MediaReading reading;
    reading.fault = fault;
    reading.detail = detail;
    return reading;
}

} // namespace

MediaReading LinuxTagReader::read(const QString& path) const
{
    MpegFile file(path);
    if (!file.isOpen()) {
        return refused(MediaFault::NotFound, file.reason());
    }
    if (file.size() == 0) {
        return refused(MediaFault::Empty, QStringLiteral("media.empty"));
    }
    MediaReading reading;
    const LeadingTags leading = readId3v2(file, reading.tags);
    if (leading.oversized) {
        return refused(MediaFault::TagSize, QStringLiteral("media.tagsize"));
    }
    const qint64 end = audioEnd(file, leading.end);
    AudioReading audio = readAudio(file, leading.end, end);
    if (audio.needsDecoder) {
        audio = decodeLength(path, end - leading.end);
    }
    if (audio.fault != MediaFault::None) {
        return refused(audio.fault, audio.detail);
    }
    readId3v1(file, reading.tags);
    reading.audio = audio.facts;
    return reading;
}

std::unique_ptr<TagReader> makeTagReader()
{
    return std::make_unique<LinuxTagReader>();
}

} // namespace melovane::linux_media
