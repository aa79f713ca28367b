// Makes or restores a backup and dies at the n-th step: backup_hand LIBRARY FOLDER make|NAME N
#include "care/backups.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "platform/system/clock.h"

#include <QFile>

#include <csignal>

using namespace melovane;

namespace {

struct Free : FileLock
{};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        return 2;
    }
    const QString work = QFile::decodeName(argv[3]);
    int left = QByteArray(argv[4]).toInt();
    const SystemClock clock;
    LinuxFiles files;
    ZstdArchives archives;
    const auto care = sqlite::makeDatabaseCare(clock);
    Backups backups({*care, archives, files, clock, [] { return std::make_unique<Free>(); }},
                    {QFile::decodeName(argv[1]), QFile::decodeName(argv[2]), 34150});
    const auto step = [&left](int) {
        if (--left < 0) {
            (void)std::raise(SIGKILL);
        }
        return true;
    };
    const BackupOutcome outcome = work == QStringLiteral("make")
                                      ? backups.make(BackupOccasion::ByHand, step)
                                      : backups.restore(work, true, step);
    return outcome == BackupOutcome::Done ? 0 : 1;
}
