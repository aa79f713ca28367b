// How long the care of a library takes: the scan for missing files over a warm disk, and the
// cleaning of ten thousand tracks with their list entries and statistics. Milliseconds, one run
// each, since each changes what it measures.
//
// Usage: care_bench [TRACKS]...   (100000 1000000)
// The files of the tracks, empty ones, stand in the folder "music" beside the running program and
// are kept for the next run.

#include "care/cleaning.h"
#include "care/library_scan.h"
#include "platform/db/sql_text.h"
#include "platform/linux/files_in.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/shipped_database.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Tracks of a folder: about as many as an album has.
constexpr int kInFolder = 12;
constexpr int kRemoved = 10'000;
constexpr qint64 kFirstFid = Q_INT64_C(826816000000);

QString folderOf(int track)
{
    const int folder = track / kInFolder;
    return QCoreApplication::applicationDirPath() +
           u"/music/%1/%2/"_s.arg(folder / 100).arg(folder);
}

QString nameOf(int track)
{
    return u"%1 Ein Titel.mp3"_s.arg(track);
}

void makeFiles(int size)
{
    if (QFile::exists(folderOf(size - 1) + nameOf(size - 1))) {
        return;
    }
    std::fprintf(stderr, "making %d files ...\n", size);
    for (int track = 0; track < size; ++track) {
        if (track % kInFolder == 0) {
            QDir().mkpath(folderOf(track));
        }
        QFile file(folderOf(track) + nameOf(track));
        static_cast<void>(file.open(QIODevice::WriteOnly));
    }
}

/// Ten thousand tracks are marked as deleted; each stands in a list twice and was played twice.
void fill(Database& database, int size)
{
    Transaction rows(database);
    const auto tracks = database.bulkInsert(
        u"db_all"_s, {u"FID"_s, u"Titel"_s, u"Path"_s, u"DName"_s, u"DriveTyp"_s, u"DEL"_s});
    for (int track = 0; track < size; ++track) {
        tracks->add({QString::number(kFirstFid + track), u"Ein Titel"_s, folderOf(track),
                     nameOf(track), 2, track < kRemoved ? -1 : 0});
    }
    tracks->finish();
    database.Execute(u"insert into pl_group (Name) values ('Gruppe')"_s);
    database.Execute(u"insert into pl_name (GRID, Name, anzahl, Activ) values (1, 'Liste', "_s +
                     sql::number(qint64{2} * kRemoved) + u", true)"_s);
    const auto entries = database.bulkInsert(u"pl_all"_s, {u"PNID"_s, u"SID"_s, u"FID"_s});
    const auto plays = database.bulkInsert(u"pl_stat"_s, {u"FID"_s, u"PLID"_s});
    for (int entry = 0; entry < 2 * kRemoved; ++entry) {
        const QString fid = QString::number(kFirstFid + entry % kRemoved);
        entries->add({1, entry, fid});
        plays->add({fid, entry});
    }
    entries->finish();
    plays->finish();
    rows.commit();
}

void measure(const char* name, const std::function<void()>& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    std::printf("  %-34s %9.1f ms\n", name, double(timer.nsecsElapsed()) / 1e6);
    std::fflush(stdout);
}

void benchLibrary(int size)
{
    makeFiles(size);
    const QTemporaryDir folder;
    const QString library = folder.filePath(u"melovane.mdb"_s);
    SystemClock clock;
    LinuxFiles files;
    const auto engine = sqlite::makeEngine(clock);
    buildShippedDatabase(*engine, files, QStringLiteral(MLV_SCHEMA_FOLDER), library);
    const auto database = engine->OpenDatabase(library);
    fill(*database, size);
    std::printf("%d tracks\n", size);
    const BesideTools tools{[&clock] { return sqlite::makeEngine(clock); },
                            [] { return std::make_unique<LinuxFiles>(); }, filesIn};
    for (const char* const name : {"scan, all there", "scan, all there, disk warm"}) {
        LibraryScan scan(tools, folder.path(), library);
        measure(name, [&scan] { scan.run(); });
        std::printf("    %lld missing\n", static_cast<long long>(scan.result().missing));
    }
    Cleaning cleaning(*database, clock);
    measure("count", [&cleaning] { static_cast<void>(cleaning.count()); });
    measure("clean 10000 tracks", [&cleaning] {
        std::printf("    %d removed\n", cleaning.removeTracks(CleaningBox::Deleted));
    });
    measure("their entries and statistics", [&cleaning] {
        const auto removed = cleaning.removeOrphans([](qint64, qint64) { return true; });
        std::printf("    %d entries, %d plays\n", removed.entries, removed.plays);
        cleaning.forgetRemoved();
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
