#pragma once

#include "platform/linux/mpeg_audio.h"

namespace melovane::linux_media {

/// Measures a file by letting the decoder walk through it: exact, and some hundred times slower
/// than readAudio. For streams whose frames do not tell their own length.
[[nodiscard]] AudioReading decodeLength(const QString& path);

} // namespace melovane::linux_media
