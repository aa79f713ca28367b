#pragma once

#include "platform/system/files.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace melovane {

/// Where the kernel describes mounts and devices. Tests point these at folders of their own.
struct VolumeSources
{
    QByteArray mountTable = "/proc/self/mountinfo";
    QByteArray sys = "/sys";
    QByteArray labels = "/dev/disk/by-label";
};

namespace volumes {

/// One line of the mount table.
struct Mount
{
    QByteArray device; ///< "8:1", major and minor number
    QByteArray point;
    QByteArray type;   ///< of the file system
    QByteArray source; ///< "/dev/sda1", "server:/music", "overlay" ...
};

/// Reads the text of a mount table in the kernel's "mountinfo" form; lines of another form are
/// skipped.
[[nodiscard]] std::vector<Mount> parseMounts(const QByteArray& table);

/// The mount that a path (absolute, links resolved) lies on: the longest mount point above it, of
/// equal ones the last, since it hides the others. Null when there is none.
[[nodiscard]] const Mount* mountOf(const std::vector<Mount>& mounts, const QByteArray& path);

/// Network file systems by their name, discs by their file system or device, removable media by
/// what the device tree below `sys` says, other block devices fixed, the rest unknown.
[[nodiscard]] VolumeKind kindOf(const Mount& mount, const QByteArray& sys);

/// The label of a mounted device: the name of the link in `labels` that leads to it, else for a
/// disc the volume name in its header. Empty when there is none.
[[nodiscard]] QString labelOf(const Mount& mount, const QByteArray& labels);

/// The volume name in the header of a disc image or device of the ISO 9660 form; empty for others.
[[nodiscard]] QString discLabel(const QByteArray& device);

[[nodiscard]] VolumeFacts volumeOf(const QByteArray& path, const VolumeSources& sources);

} // namespace volumes
} // namespace melovane
