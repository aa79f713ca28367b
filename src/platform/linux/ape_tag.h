#pragma once

#include "platform/media/track_tags.h"

namespace melovane::linux_media {

class MpegFile;
struct ApePlace;

/// Takes title, artist, album, year, genre, track and comment out of an APE tag into `fields`; of
/// equal ones the first counts, several artists and genres are joined. Sizes are never trusted.
void readApe(MpegFile& file, const ApePlace& place, TagFields& fields);

} // namespace melovane::linux_media
