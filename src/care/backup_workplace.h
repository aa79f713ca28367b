#pragma once

#include "platform/system/files.h"

#include <QString>

#include <memory>

namespace melovane {

/// A folder below the data folder; what a killed program leaves in it is swept by the next.
inline constexpr QStringView kBackupWork = u"Melovane.Backup.work";

/// Removes a folder with all that is in it; what cannot be removed stays.
void removeTree(Files& files, const QString& folder);

/// The folder in which a backup is made or unpacked, empty at its beginning and gone at its end.
class BackupWorkplace
{
public:
    /// \param lock null when another program has it; then nothing is touched
    BackupWorkplace(Files& files, const QString& dataFolder, std::unique_ptr<FileLock> lock);
    ~BackupWorkplace();

    BackupWorkplace(const BackupWorkplace&) = delete;
    BackupWorkplace& operator=(const BackupWorkplace&) = delete;

    [[nodiscard]] bool isMine() const { return m_lock != nullptr; }

private:
    Files& m_files;
    QString m_folder;
    std::unique_ptr<FileLock> m_lock;
};

} // namespace melovane
