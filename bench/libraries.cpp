#include "bench/libraries.h"

#include "bench/library_generator.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/shipped_database.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

namespace melovane::bench {

using namespace Qt::Literals::StringLiterals;

QString libraryFile(int size)
{
    const QDir folder(QCoreApplication::applicationDirPath() + u"/libraries"_s);
    QDir().mkpath(folder.path());
    const QString file = folder.filePath(u"tracks-%1-%2.mdb"_s.arg(kShape).arg(size));
    if (QFile::exists(file)) {
        return file;
    }
    std::fprintf(stderr, "making a library of %d tracks ...\n", size);
    QElapsedTimer timer;
    timer.start();
    LinuxFiles files;
    SystemClock clock;
    const auto engine = sqlite::makeEngine(clock);
    const QString unfinished = file + u".part"_s;
    QFile::remove(unfinished);
    buildShippedDatabase(*engine, files, QStringLiteral(MLV_SCHEMA_FOLDER), unfinished);
    fillLibrary(*engine->OpenDatabase(unfinished), size, kSeed);
    engine->Release(unfinished);
    QFile::rename(unfinished, file);
    std::fprintf(stderr, "... in %lld ms\n", static_cast<long long>(timer.elapsed()));
    return file;
}

EnvironmentPlaces placesBelow(const QString& folder)
{
    EnvironmentPlaces places;
    places.programFolder = folder;
    places.userFile = folder + u"/user.conf"_s;
    places.cacheBase = folder + u"/cache"_s;
    places.runtimeBase = folder;
    return places;
}

} // namespace melovane::bench
