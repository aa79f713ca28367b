#include "fuzz/formats/formats.h"
#include "platform/linux/volumes.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString check(const QByteArray& bytes)
{
    const std::vector<volumes::Mount> mounts = volumes::parseMounts(bytes);
    if (qsizetype(mounts.size()) > bytes.count('\n') + 1) {
        return u"more mounts than lines"_s;
    }
    for (const volumes::Mount& mount : mounts) {
        const volumes::Mount* const found = volumes::mountOf(mounts, mount.point);
        if (mount.point.startsWith('/') && (found == nullptr || found->point != mount.point)) {
            return u"a mount that does not lie on itself: "_s + QString::fromUtf8(mount.point);
        }
        // Devices that nobody has: what the table says must not lead anywhere else.
        (void)volumes::kindOf(mount, "/nowhere");
    }
    (void)volumes::mountOf(mounts, "/music/Rock");
    return {};
}

std::vector<QByteArray> seeds()
{
    return {"22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
            "36 22 11:0 / /media/DISC\\0401 ro - iso9660 /dev/sr0 ro\n"
            "40 22 0:45 / /srv rw - nfs4 server:/music rw,vers=4.2\n"};
}

} // namespace

Format mounts()
{
    return {"mounts", check, seeds};
}

} // namespace melovane::fuzz
