#pragma once

#include "platform/system/files.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace melovane {

/// Something that goes into an archive.
struct ArchiveMember
{
    QString name;      ///< inside the archive, without a separator at its ends
    QString file = {}; ///< path of the file that is packed; empty: the bytes are
    QByteArray bytes = {};
};

/// Many files packed into one, with a checksum over all of them. Nothing is shared between two
/// calls, so they may come from different threads.
///
/// `step` is asked between two blocks with the bytes done so far; false gives the work up.
class Archives
{
public:
    virtual ~Archives() = default;

    /// Writes a new archive and has the disk take it. The first member can be read without the
    /// others. False when `step` gave it up; then, and after a failure, there is no file.
    /// \throws IoError also for a target that is there
    [[nodiscard]] virtual bool write(const QString& archive,
                                     const std::vector<ArchiveMember>& members,
                                     const CopyStep& step) = 0;

    /// The first member alone. Reads little of the archive, so that a damage further on is not
    /// seen. \throws IoError
    [[nodiscard]] virtual QByteArray first(const QString& archive) = 0;

    /// Reads all of it and writes out each member to the place that `placeOf` gives its name; one
    /// with an empty place is only checked. Places must not be there. False when `step` gave it up.
    /// \throws IoError for an archive that is damaged or cut off
    [[nodiscard]] virtual bool unpack(const QString& archive,
                                      const std::function<QString(const QString& name)>& placeOf,
                                      const CopyStep& step) = 0;
};

} // namespace melovane
