#include "platform/linux/files_in.h"

#include "platform/linux/system_names.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>

namespace melovane {

namespace {

struct CloseFolder
{
    void operator()(DIR* stream) const { ::closedir(stream); }
};

bool isFile(DIR* folder, const dirent& entry)
{
    if (entry.d_type == DT_REG) {
        return true;
    }
    if (entry.d_type == DT_DIR) {
        return false;
    }
    // A link counts for what it leads to; some file systems tell no kinds.
    struct stat facts = {};
    return ::fstatat(::dirfd(folder), entry.d_name, &facts, 0) == 0 && !S_ISDIR(facts.st_mode);
}

} // namespace

QSet<QString> filesIn(const QString& folder)
{
    QSet<QString> names;
    const QByteArray path = linuxnames::systemPath(folder);
    const std::unique_ptr<DIR, CloseFolder> stream(path.isEmpty() ? nullptr
                                                                  : ::opendir(path.constData()));
    if (!stream) {
        return names;
    }
    while (const dirent* entry = ::readdir(stream.get())) {
        if (isFile(stream.get(), *entry)) {
            names.insert(linuxnames::decode(QByteArray(entry->d_name)));
        }
    }
    return names;
}

} // namespace melovane
