#pragma once

#include "platform/media/cue_finder.h"

namespace melovane::linux_media {

/// Reads the ends of MP3 files.
class Mp3CueFinder : public CueFinder
{
public:
    [[nodiscard]] std::optional<CueRange>
    find(const QString& file, int withinMs, int loudness) override;
};

} // namespace melovane::linux_media
