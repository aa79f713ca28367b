#include "platform/linux/audio_identity.h"

#include "platform/linux/mpeg_audio.h"
#include "platform/linux/mpeg_file.h"
#include "platform/linux/tag_places.h"

#include <xxhash.h>

#include <algorithm>
#include <memory>

namespace melovane::linux_media {

namespace {

/// Of each of the three pieces: what the tag reader has looked at there already lies in memory.
constexpr qint64 kPiece = qint64{16} * 1024;

struct Span
{
    qint64 begin = 0;
    qint64 end = 0;

    [[nodiscard]] qint64 length() const { return end - begin; }
};

std::optional<Span> soundOf(MpegFile& file)
{
    const TagPlaces places = tagPlaces(file);
    if (places.oversized) {
        return std::nullopt;
    }
    const qint64 end = places.soundEnd;
    const auto begin = soundBegin(file, places.soundBegin, end);
    return begin && *begin < end ? std::optional(Span{*begin, end}) : std::nullopt;
}

class Hash
{
public:
    Hash()
        : m_state(XXH3_createState(), &XXH3_freeState)
    {
        XXH3_128bits_reset(m_state.get());
    }

    /// False when the file ends before.
    bool add(MpegFile& file, qint64 begin, qint64 end)
    {
        while (begin < end) {
            const auto bytes = file.at(begin, end - begin);
            if (bytes.empty()) {
                return false;
            }
            XXH3_128bits_update(m_state.get(), bytes.data(), bytes.size());
            begin += qint64(bytes.size());
        }
        return true;
    }

    [[nodiscard]] QByteArray bytes() const
    {
        XXH128_canonical_t result;
        XXH128_canonicalFromHash(&result, XXH3_128bits_digest(m_state.get()));
        return {reinterpret_cast<const char*>(result.digest), sizeof result.digest};
    }

private:
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> m_state;
};

std::optional<AudioPrint> printOfAll(MpegFile& file, const Span& sound)
{
    Hash hash;
    return hash.add(file, sound.begin, sound.end)
               ? std::optional(AudioPrint{sound.length(), hash.bytes()})
               : std::nullopt;
}

} // namespace

std::optional<qint64> LinuxAudioIdentity::length(const QString& path) const
{
    MpegFile file(path);
    const auto sound = file.isOpen() ? soundOf(file) : std::nullopt;
    return sound ? std::optional(sound->length()) : std::nullopt;
}

std::optional<AudioPrint> LinuxAudioIdentity::sampled(const QString& path) const
{
    MpegFile file(path);
    if (file.isOpen() && file.size() <= 4 * kPiece) {
        // All of it is asked for below: one reading instead of one for each tag and the sound.
        static_cast<void>(file.at(0, file.size()));
    }
    const auto sound = file.isOpen() ? soundOf(file) : std::nullopt;
    if (!sound) {
        return std::nullopt;
    }
    const qint64 length = sound->length();
    if (length <= 4 * kPiece) {
        return printOfAll(file, *sound);
    }
    Hash hash;
    for (const qint64 place : {length / 4, length / 2, length / 4 * 3}) {
        const qint64 begin = sound->begin + place;
        if (!hash.add(file, begin, std::min(begin + kPiece, sound->end))) {
            return std::nullopt;
        }
    }
    return AudioPrint{length, hash.bytes()};
}

std::optional<AudioPrint> LinuxAudioIdentity::whole(const QString& path) const
{
    MpegFile file(path);
    const auto sound = file.isOpen() ? soundOf(file) : std::nullopt;
    return sound ? printOfAll(file, *sound) : std::nullopt;
}

} // namespace melovane::linux_media
