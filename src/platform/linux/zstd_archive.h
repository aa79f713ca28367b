#pragma once

#include "platform/system/archive.h"

namespace melovane {

/// Archives that any Linux can open: "tar --zstd -xf". The first member is a frame of its own, the
/// others share the second; each frame ends with its checksum.
class ZstdArchives : public Archives
{
public:
    [[nodiscard]] bool write(const QString& archive,
                             const std::vector<ArchiveMember>& members,
                             const CopyStep& step) override;
    [[nodiscard]] QByteArray first(const QString& archive) override;
    [[nodiscard]] bool unpack(const QString& archive,
                              const std::function<QString(const QString& name)>& placeOf,
                              const CopyStep& step) override;
};

} // namespace melovane
