// How long backups of generated libraries take: copying, checking, packing and proving them, and
// the way back. backup_bench [SIZE]...
#include "bench/libraries.h"
#include "care/backups.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "platform/system/clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

struct Free : FileLock
{};

template <typename Work> void measure(const char* name, const Work& work)
{
    QElapsedTimer timer;
    timer.start();
    const bool isDone = work();
    std::printf("  %-10s %8.2f s%s\n", name, double(timer.elapsed()) / 1000,
                isDone ? "" : "  FAILED");
}

void benchLibrary(int size)
{
    const QString generated = bench::libraryFile(size);
    const QTemporaryDir folder(generated + u".backup"_s);
    const QString library = folder.filePath(u"melovane.mdb"_s);
    const SystemClock clock;
    LinuxFiles files;
    ZstdArchives archives;
    const auto care = sqlite::makeDatabaseCare(clock);
    const auto goOn = [](qint64, qint64) { return true; };
    const auto percent = [](int) { return true; };
    Backups backups({*care, archives, files, clock, [] { return std::make_unique<Free>(); }},
                    {library, folder.path(), 1});
    std::printf("%d tracks\n", size);
    measure("copy", [&] { return care->copy(generated, library, goOn); });
    measure("quick", [&] {
        const auto found = care->check(library, DatabaseCare::Depth::Pages, goOn);
        return found && found->isEmpty();
    });
    measure("backup",
            [&] { return backups.make(BackupOccasion::ByHand, percent) == BackupOutcome::Done; });
    const std::vector<Backup> made = backups.list();
    if (made.empty()) {
        return;
    }
    std::printf("  %lld MB of %lld MB\n", made.front().bytes >> 20,
                files.facts(library)->size >> 20);
    measure("check",
            [&] { return backups.check(made.front().name, percent) == BackupOutcome::Done; });
    measure("restore", [&] {
        return backups.restore(made.front().name, true, percent) == BackupOutcome::Done;
    });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QStringList sizes = QCoreApplication::arguments().mid(1);
    if (sizes.isEmpty()) {
        sizes = {u"100000"_s, u"1000000"_s};
    }
    for (const QString& size : sizes) {
        benchLibrary(size.toInt());
    }
}
