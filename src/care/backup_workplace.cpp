#include "care/backup_workplace.h"

#include "platform/system/path_text.h"

namespace melovane {

void removeTree(Files& files, const QString& folder)
{
    for (const QString& name : files.names(folder)) {
        const QString item = path::join(folder, name);
        if (files.folderExists(item)) {
            removeTree(files, item);
        } else {
            files.remove(item);
        }
    }
    files.removeFolder(folder);
}

BackupWorkplace::BackupWorkplace(Files& files,
                                 const QString& dataFolder,
                                 std::unique_ptr<FileLock> lock)
    : m_files(files)
    , m_folder(path::join(dataFolder, kBackupWork))
    , m_lock(std::move(lock))
{
    if (m_lock) {
        removeTree(m_files, m_folder);
        m_files.makeFolder(m_folder);
    }
}

BackupWorkplace::~BackupWorkplace()
{
    if (m_lock) {
        removeTree(m_files, m_folder);
    }
}

} // namespace melovane
