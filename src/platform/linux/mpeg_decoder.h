#pragma once

#include "platform/linux/mpeg_audio.h"

namespace melovane::linux_media {

/// Measures a file by letting the decoder walk through it: exact, and some hundred times slower
/// than readAudio. For streams whose frames do not tell their own length.
///
/// \param bytes length of the sound without its tags, for the mean bit rate
[[nodiscard]] AudioReading decodeLength(const QString& path, qint64 bytes);

} // namespace melovane::linux_media
