#pragma once

#include "platform/media/audio_identity.h"

namespace melovane::linux_media {

/// Sound between the tags of MPEG audio files, hashed with XXH3 of 128 bits.
class LinuxAudioIdentity : public AudioIdentity
{
public:
    [[nodiscard]] std::optional<qint64> length(const QString& path) const override;
    [[nodiscard]] std::optional<AudioPrint> sampled(const QString& path) const override;
    [[nodiscard]] std::optional<AudioPrint> whole(const QString& path) const override;
};

} // namespace melovane::linux_media
