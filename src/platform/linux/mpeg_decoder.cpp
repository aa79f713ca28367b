#include "platform/linux/mpeg_decoder.h"

#include "platform/linux/system_names.h"

#include <mpg123.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace melovane::linux_media {

namespace {

struct Closer
{
    void operator()(mpg123_handle* handle) const
    {
        mpg123_close(handle);
        mpg123_delete(handle);
    }
};

AudioReading noAudio()
{
    return {MediaFault::NoAudio, QStringLiteral("media.noaudio"), {}, false};
}

} // namespace

AudioReading decodeLength(const QString& path, qint64 bytes)
{
    const std::unique_ptr<mpg123_handle, Closer> handle(mpg123_new(nullptr, nullptr));
    if (!handle) {
        return noAudio();
    }
    mpg123_param(handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET, 0);
    // With gapless on the encoder's delay would be taken off the length.
    mpg123_param(handle.get(), MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_open(handle.get(), linuxnames::systemPath(path).constData()) != MPG123_OK ||
        mpg123_getformat(handle.get(), &rate, &channels, &encoding) != MPG123_OK ||
        mpg123_scan(handle.get()) != MPG123_OK) {
        return noAudio();
    }
    const auto samples = static_cast<double>(mpg123_length(handle.get()));
    if (samples <= 0 || rate <= 0) {
        return noAudio();
    }
    AudioReading reading;
    const double milliseconds = samples * 1000.0 / static_cast<double>(rate);
    reading.facts.milliseconds = static_cast<int>(
        std::lround(std::min(milliseconds, static_cast<double>(std::numeric_limits<int>::max()))));
    reading.facts.sampleRate = static_cast<int>(rate);
    reading.facts.channels = channels;
    // Bits per millisecond are KBit/s.
    const auto bits = static_cast<double>(bytes) * 8;
    reading.facts.bitRate = std::max(1, static_cast<int>(std::lround(bits / milliseconds)));
    return reading;
}

} // namespace melovane::linux_media
