#include "platform/linux/tag_reader.h"

#include "platform/linux/ape_tag.h"
#include "platform/linux/id3_tags.h"
#include "platform/linux/mpeg_audio.h"
#include "platform/linux/mpeg_decoder.h"
#include "platform/linux/mpeg_file.h"
#include "platform/linux/tag_places.h"

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
    const TagPlaces places = tagPlaces(file);
    if (places.oversized) {
        return refused(MediaFault::TagSize, QStringLiteral("media.tagsize"));
    }
    readId3v2(file, places, reading.tags);
    if (places.id3v2.empty() && places.ape) {
        readApe(file, *places.ape, reading.tags.id3v2);
    }
    AudioReading audio = readAudio(file, places.soundBegin, places.soundEnd);
    if (audio.needsDecoder) {
        audio = decodeLength(path, places.soundEnd - places.soundBegin);
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
