#include "platform/linux/write_access.h"

#include "platform/linux/system_names.h"

#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool allows(const QString& path, int access)
{
    return ::faccessat(AT_FDCWD, linuxnames::encode(path).constData(), access, AT_EACCESS) == 0;
}

} // namespace

bool canWriteDatabase(const QString& file)
{
    if (!allows(file, F_OK)) {
        return true;
    }
    return allows(file, W_OK) &&
           (allows(file + u"-wal"_s, W_OK) || allows(QFileInfo(file).path(), W_OK));
}

} // namespace melovane
