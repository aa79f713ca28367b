// How long the tables of the trees take to be refilled: each operation, then all of them as the job
// behind the console does it. Best of three runs each, in milliseconds.
//
// Usage: tree_bench [TRACKS]... [NAME]...   (100000 1000000, everything)

#include "bench/libraries.h"
#include "bench/measure.h"
#include "platform/db/database.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/check_database.h"
#include "trees/rebuild_trees.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

constexpr int kRuns = 3;

/// What is measured; everything while it is empty.
QStringList g_chosen;

void measure(const char* name, const std::function<void()>& work)
{
    if (!g_chosen.isEmpty() && !g_chosen.contains(QLatin1StringView(name))) {
        return;
    }
    const bench::Cost least = bench::leastOf(kRuns, work);
    std::printf("  %-22s %9.1f ms, of the processor %9.1f\n", name, least.wall, least.cpu);
    std::fflush(stdout);
}

qint64 count(Database& database, const QString& table)
{
    return database.OpenRecordset(u"select count(*) as anz from "_s + table)->value(0).toInt64();
}

void benchLibrary(int size)
{
    SystemClock clock;
    LinuxFiles files;
    const auto engine = sqlite::makeEngine(clock);
    const QString library = bench::libraryFile(size);
    const QString folder = QFileInfo(library).absolutePath();
    const auto complain = [](const QString& where, const QString& what) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(where), qPrintable(what));
    };
    CheckDatabase check(*engine, files, clock, {library, folder, {}}, complain);
    static_cast<void>(check.checkTreeTables());
    const RefreshDB::Parts parts{
        .engine = *engine, .files = files, .clock = clock, .dataFolder = folder, .sink = complain};
    RefreshDB trees(parts);
    trees.SetDbName(library);
    std::printf("%d tracks\n", size);
    measure("TreeDir", [&] { trees.TreeDir(); });
    measure("TreeGenre", [&] { trees.TreeGenre(); });
    measure("TreeAlbum", [&] { trees.TreeAlbum(); });
    measure("TreeInterpret", [&] { trees.TreeInterpret(); });
    measure("TreeTable(Stimmung)", [&] { trees.TreeTable(u"Stimmung"_s); });
    measure("TreeTableImportDate", [&] { trees.TreeTableImportDate(); });
    measure("PlnameCount", [&] { trees.PlnameCount(); });
    measure("MusicMatch", [&] { trees.MusicMatch(); });
    measure("all", [&] {
        const auto result = RebuildTrees(parts, library).run(RebuildTrees::Scope::All);
        for (const QString& failure : result.failures) {
            complain(u"all"_s, failure);
        }
    });
    const auto database = engine->OpenDatabase(library);
    std::printf("  %lld folders, %lld genres, %lld artists by genre, %lld albums, %lld artists\n",
                count(*database, u"tree_dir"_s), count(*database, u"tree_genre"_s),
                count(*database, u"tree_genre_interpret"_s), count(*database, u"tree_album"_s),
                count(*database, u"tree_interpret"_s));
}

} // namespace

int main(int argc, char** argv)
{
    // As the program that rebuilds the trees does.
    qputenv("TZ", qEnvironmentVariable("TZ", u":/etc/localtime"_s).toUtf8());
    const QCoreApplication application(argc, argv);
    QStringList sizes;
    for (const QString& word : QCoreApplication::arguments().mid(1)) {
        (word.toInt() > 0 ? sizes : g_chosen).append(word);
    }
    if (sizes.isEmpty()) {
        sizes = {u"100000"_s, u"1000000"_s};
    }
    for (const QString& size : sizes) {
        benchLibrary(size.toInt());
    }
}
