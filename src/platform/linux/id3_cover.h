#pragma once

#include "platform/media/cover_reader.h"

namespace melovane::linux_media {

/// Reads the pictures of the ID3v2 tags of a file, of versions 2.2, 2.3 and 2.4. Sizes
/// are never trusted. Has no state.
class Id3CoverReader : public CoverReader
{
public:
    [[nodiscard]] QByteArray cover(const QString& path) const override;
    [[nodiscard]] bool hasFrontCover(const QString& path) const override;
    [[nodiscard]] QByteArray frontCover(const QString& path) const override;
};

} // namespace melovane::linux_media
