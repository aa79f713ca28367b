#include "platform/linux/file_attributes.h"

#include "platform/linux/tag_file.h"

#include <QByteArray>
#include <QList>

#include <sys/xattr.h>

#include <cerrno>

namespace melovane::linux_media {

namespace {

bool isRefusedToUs()
{
    return errno == EPERM || errno == EACCES || errno == EOPNOTSUPP;
}

QByteArray attribute(int file, const QByteArray& name)
{
    const ssize_t size = ::fgetxattr(file, name.constData(), nullptr, 0);
    QByteArray value(size > 0 ? size : 0, '\0');
    if (size > 0 && ::fgetxattr(file, name.constData(), value.data(), size_t(size)) != size) {
        return {};
    }
    return value;
}

} // namespace

void copyAttributes(int from, int to)
{
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0) {
        return;
    }
    QByteArray names(size, '\0');
    names.truncate(std::max<ssize_t>(::flistxattr(from, names.data(), size_t(size)), 0));
    for (const QByteArray& name : names.split('\0')) {
        if (name.isEmpty()) {
            continue;
        }
        const QByteArray value = attribute(from, name);
        if (::fsetxattr(to, name.constData(), value.constData(), size_t(value.size()), 0) != 0 &&
            !isRefusedToUs()) {
            failTag(errno);
        }
    }
}

} // namespace melovane::linux_media
