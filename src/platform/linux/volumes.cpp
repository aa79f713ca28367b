#include "platform/linux/volumes.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/system_names.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace melovane::volumes {

namespace {

using linuxfiles::Descriptor;

/// Devices upon devices (encryption, volume groups) that are followed down to the hardware.
constexpr int kMaxDepth = 8;
/// A mount table of a machine with thousands of containers is still below this.
constexpr qsizetype kMaxTable = 16LL * 1024 * 1024;
/// Place of the first volume descriptor of a disc, "\1CD001", and of the name in it.
constexpr off_t kDiscHeader = 0x8000;
constexpr off_t kDiscName = 0x8028;
constexpr size_t kDiscNameLength = 32;

bool isNetwork(const QByteArray& type)
{
    static const QSet<QByteArray> kTypes = {"nfs",           "nfs4",           "cifs",
                                            "smb3",          "smbfs",          "9p",
                                            "afs",           "ceph",           "ncpfs",
                                            "davfs",         "fuse.sshfs",     "fuse.davfs2",
                                            "gfs2",          "fuse.rclone",    "fuse.gvfsd-fuse",
                                            "fuse.smbnetfs", "fuse.curlftpfs", "virtiofs"};
    return kTypes.contains(type);
}

bool isDisc(const Mount& mount)
{
    return mount.type == "iso9660" || mount.type == "udf" || mount.source.startsWith("/dev/sr");
}

QByteArray realPath(const QByteArray& path)
{
    char* const real = ::realpath(path.constData(), nullptr);
    const QByteArray result(real);
    ::free(real); // NOLINT(cppcoreguidelines-no-malloc): realpath gives it so
    return result;
}

/// Bytes of a small file of the kernel; empty when it cannot be read.
QByteArray readKernelFile(const QByteArray& path)
{
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    QByteArray bytes;
    std::array<char, 65536> block = {};
    ssize_t count = 0;
    while (file.isValid() && bytes.size() < kMaxTable &&
           (count = ::read(file.number(), block.data(), block.size())) > 0) {
        bytes.append(block.data(), count);
    }
    return bytes;
}

/// "\040" and the like, by which the table writes blanks and line ends.
QByteArray unescaped(const QByteArray& field)
{
    QByteArray result;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool octal = false;
        const int code = field.mid(i + 1, 3).toInt(&octal, 8);
        if (field[i] == '\\' && octal && i + 3 < field.size()) {
            result += char(code);
            i += 3;
        } else {
            result += field[i];
        }
    }
    return result;
}

std::vector<QByteArray> entriesOf(const QByteArray& folder)
{
    std::vector<QByteArray> names;
    if (DIR* const stream = ::opendir(folder.constData())) {
        while (const dirent* entry = ::readdir(stream)) {
            if (entry->d_name[0] != '.') {
                names.emplace_back(entry->d_name);
            }
        }
        ::closedir(stream);
    }
    return names;
}

bool isRemovable(const QByteArray& device, int depth)
{
    if (device.isEmpty() || depth > kMaxDepth) {
        return false;
    }
    const QByteArray disk = device.first(qMax<qsizetype>(device.lastIndexOf('/'), 0));
    if (device.contains("/usb") || readKernelFile(device + "/removable").trimmed() == "1" ||
        readKernelFile(disk + "/removable").trimmed() == "1") {
        return true;
    }
    for (const QByteArray& below : entriesOf(device + "/slaves")) {
        if (isRemovable(realPath(device + "/slaves/" + below), depth + 1)) {
            return true;
        }
    }
    return false;
}

/// The folder of the device tree that describes a mounted block device; empty when there is none.
QByteArray deviceFolder(const Mount& mount, const QByteArray& sys)
{
    const QByteArray byNumber = realPath(sys + "/dev/block/" + mount.device);
    if (!byNumber.isEmpty() || !mount.source.startsWith("/dev/")) {
        return byNumber;
    }
    // Some file systems mount under a number of their own and name the device only.
    const QByteArray source = realPath(mount.source);
    const QByteArray device = source.isEmpty() ? mount.source : source;
    return realPath(sys + "/class/block/" + device.sliced(device.lastIndexOf('/') + 1));
}

bool liesBelow(const QByteArray& path, const QByteArray& point)
{
    return point == "/" || path == point || path.startsWith(point + '/');
}

/// "My\x20Disc" in a link name is "My Disc".
QByteArray unescapedLabel(const QByteArray& name)
{
    QByteArray result;
    for (qsizetype i = 0; i < name.size(); ++i) {
        bool hexadecimal = false;
        const int code = name.mid(i + 2, 2).toInt(&hexadecimal, 16);
        if (name.mid(i, 2) == "\\x" && hexadecimal && i + 3 < name.size()) {
            result += char(code);
            i += 3;
        } else {
            result += name[i];
        }
    }
    return result;
}

} // namespace

std::vector<Mount> parseMounts(const QByteArray& table)
{
    std::vector<Mount> mounts;
    for (const QByteArray& line : table.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-");
        // Optional fields stand between the sixth and the dash.
        if (dash >= 6 && fields.size() > dash + 2) {
            mounts.push_back(
                {fields[2], unescaped(fields[4]), fields[dash + 1], unescaped(fields[dash + 2])});
        }
    }
    return mounts;
}

const Mount* mountOf(const std::vector<Mount>& mounts, const QByteArray& path)
{
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        if (liesBelow(path, mount.point) &&
            (best == nullptr || mount.point.size() >= best->point.size())) {
            best = &mount;
        }
    }
    return best;
}

VolumeKind kindOf(const Mount& mount, const QByteArray& sys)
{
    if (isNetwork(mount.type)) {
        return VolumeKind::Network;
    }
    if (isDisc(mount)) {
        return VolumeKind::Optical;
    }
    const QByteArray device = deviceFolder(mount, sys);
    if (isRemovable(device, 0)) {
        return VolumeKind::Removable;
    }
    const bool block = !device.isEmpty() || mount.source.startsWith("/dev/");
    return block ? VolumeKind::Fixed : VolumeKind::Unknown;
}

QString discLabel(const QByteArray& device)
{
    const Descriptor file(::open(device.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 6> head = {};
    std::array<char, kDiscNameLength> name = {};
    const bool read =
        file.isValid() &&
        ::pread(file.number(), head.data(), head.size(), kDiscHeader) == ssize_t(head.size()) &&
        ::pread(file.number(), name.data(), name.size(), kDiscName) == ssize_t(name.size());
    if (!read || QByteArrayView(head.data(), head.size()) != QByteArrayView("\1CD001", 6)) {
        return {};
    }
    QByteArray text(name.data(), name.size());
    text.truncate(qMax<qsizetype>(text.indexOf('\0'), 0) > 0 ? text.indexOf('\0') : text.size());
    return trimBlanks(textfile::decode(text));
}

QString labelOf(const Mount& mount, const QByteArray& labels)
{
    const QByteArray device = realPath(mount.source);
    if (device.isEmpty() || !mount.source.startsWith('/')) {
        return {};
    }
    for (const QByteArray& name : entriesOf(labels)) {
        if (realPath(labels + '/' + name) == device) {
            return linuxnames::decode(unescapedLabel(name));
        }
    }
    return isDisc(mount) ? discLabel(device) : QString();
}

VolumeFacts volumeOf(const QByteArray& path, const VolumeSources& sources)
{
    const std::vector<Mount> mounts = parseMounts(readKernelFile(sources.mountTable));
    const Mount* const mount = mountOf(mounts, path);
    if (mount == nullptr) {
        return {};
    }
    return {kindOf(*mount, sources.sys), labelOf(*mount, sources.labels),
            linuxnames::decode(mount->point)};
}

} // namespace melovane::volumes
