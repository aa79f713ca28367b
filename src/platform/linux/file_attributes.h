#pragma once

namespace melovane::linux_media {

/// Gives a file the extended attributes of another one, access lists included. Attributes that only
/// the system may set are left out, and all of them where the target cannot hold any. \throws
/// TagFailure
void copyAttributes(int from, int to);

} // namespace melovane::linux_media
