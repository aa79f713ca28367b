// How long a user waits for lists: 10,000 tracks appended, inserted, moved, deleted and undone, a
// long list opened, thousands of lists read for the tree.
//
//   playlist_bench --benchmark_filter=Undo

#include "bench/libraries.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/data_control.h"
#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlists/list_history.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "store/check_database.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

constexpr int kTracks = 20'000;
constexpr int kEntries = 10'000;
constexpr int kLists = 5'000;

/// A suite in a folder of its own: a generated library, its side files, an empty list.
class Suite
{
public:
    Suite()
    {
        QFile::copy(bench::libraryFile(kTracks), m_db);
        CheckDatabase check(*engine, files, clock, {m_db, m_folder.path(), u"Bench"_s}, {});
        check.checkTempTables();
        settings.SetDbName(m_db);
        edits.SetDbName(m_db);
        const auto database = open();
        database->Execute(u"insert into pl_group (grid,name,sid,activ) values (1,'G',1,true)"_s);
        database->Execute(
            u"insert into pl_name (nid,grid,name,sid,anzahl) values (1,1,'Liste',1,0)"_s);
        QStringList fids;
        const auto rows = database->OpenRecordset(u"select fid from db_all order by fid"_s);
        for (; !rows->Eof(); rows->MoveNext()) {
            fids.append(rows->value(0).toText());
        }
        first = u"DRAG_TYP_FID_MP3DB:"_s + fids.first(kEntries).join(u',');
        second = u"DRAG_TYP_FID_MP3DB:"_s + fids.last(kEntries).join(u',');
    }

    [[nodiscard]] std::unique_ptr<Database> open() { return engine->OpenDatabase(m_db); }

    [[nodiscard]] const QString& dbName() const { return m_db; }

    void empty()
    {
        history.clear();
        open()->Execute(u"delete from pl_all"_s);
    }

    void fill()
    {
        empty();
        edits.AppendFromMP3DB(first, list, kAktionMix);
        history.clear();
        require(kEntries);
    }

    /// A measurement of something that did not happen is none.
    void require(int entries)
    {
        if (open()->OpenRecordset(u"select count(*) as anz from pl_all"_s)->value(0).toLong() !=
            entries) {
            std::fprintf(stderr, "the list does not hold %d entries\n", entries);
            std::abort();
        }
    }

    [[nodiscard]] QString entries(int from, int count)
    {
        QStringList ids;
        const auto database = open();
        const auto rows =
            database->OpenRecordset(u"select plid from pl_all where pnid=1 order by sid, plid"_s);
        for (rows->SetAbsolutePosition(from); !rows->Eof() && ids.size() < count;
             rows->MoveNext()) {
            ids.append(rows->value(0).toText());
        }
        return u"DRAG_TYP_PLID:"_s + ids.join(u',');
    }

    [[nodiscard]] static EnvironmentPlaces places(const QString& folder)
    {
        EnvironmentPlaces result;
        result.programFolder = folder;
        result.programName = u"Bench"_s;
        return result;
    }

    const Pnid list{1};
    QString first;
    QString second;

private:
    QTemporaryDir m_folder{QCoreApplication::applicationDirPath() + u"/playlist_bench_XXXXXX"_s};
    QString m_db = m_folder.filePath(u"melovane.mdb"_s);

public:
    SystemClock clock;
    LinuxFiles files;
    std::unique_ptr<DBEngine> engine = sqlite::makeEngine(clock);
    LinuxEnvironment environment{places(m_folder.path())};
    IniProfile profile{files};
    Mod_API paths{environment, files};
    GlobalSettings settings{paths, profile, files, *engine};
    ModUndoRedo snapshots{files, m_folder.path()};
    ListHistory history{*engine, files, clock, settings,
                        [](const QString& where, const QString& what) {
                            std::fprintf(stderr, "%s: %s\n", qPrintable(where), qPrintable(what));
                        }};
    cls_PLInsertMoveDel edits{*engine, snapshots, history};
};

Suite& suite()
{
    static Suite made;
    return made;
}

template <typename Prepare, typename Work>
void measure(benchmark::State& state, Prepare&& prepare, Work&& work)
{
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        prepare();
        state.ResumeTiming();
        work();
    }
}

void AppendTracks(benchmark::State& state)
{
    const int count = int(state.range(0));
    const QString text = suite().first.left(suite().first.indexOf(u':') + qsizetype{count} * 13);
    measure(
        state, [] { suite().empty(); },
        [&] { suite().edits.AppendFromMP3DB(text, suite().list, kAktionMix); });
    suite().require(count);
}

void InsertTracksInTheMiddle(benchmark::State& state)
{
    measure(
        state, [] { suite().fill(); },
        [] {
            suite().edits.InsertFromMP3DB(Sid{kEntries / 2}, suite().list, suite().second,
                                          kAktionMix);
        });
    suite().require(2 * kEntries);
}

void InsertCopiesInTheMiddle(benchmark::State& state)
{
    QString all;
    measure(
        state,
        [&] {
            suite().fill();
            all = suite().entries(0, kEntries);
        },
        [&] {
            suite().edits.InsertORMoveFromPlaylist(1, Sid{kEntries / 2}, suite().list, all, 0);
        });
    suite().require(2 * kEntries);
}

void MoveEntriesToTheFront(benchmark::State& state)
{
    QString half;
    measure(
        state,
        [&] {
            suite().fill();
            half = suite().entries(0, kEntries);
        },
        [&] { suite().edits.InsertORMoveFromPlaylist(2, Sid{0}, suite().list, half, 0); });
    suite().require(kEntries);
}

void DeleteEntries(benchmark::State& state)
{
    QString all;
    measure(
        state,
        [&] {
            suite().fill();
            all = suite().entries(0, kEntries);
        },
        [&] { suite().edits.DeletePlaylistRecords(all, suite().list); });
    suite().require(0);
}

void UndoAnInsert(benchmark::State& state)
{
    measure(
        state,
        [] {
            suite().fill();
            suite().edits.InsertFromMP3DB(Sid{kEntries / 2}, suite().list, suite().second,
                                          kAktionMix);
        },
        [] { suite().history.undo(); });
    suite().require(kEntries);
}

void UndoADelete(benchmark::State& state)
{
    measure(
        state,
        [] {
            suite().fill();
            suite().edits.DeletePlaylistRecords(suite().entries(0, kEntries), suite().list);
        },
        [] { suite().history.undo(); });
    suite().require(kEntries);
}

void UndoAMove(benchmark::State& state)
{
    measure(
        state,
        [] {
            suite().fill();
            suite().edits.InsertORMoveFromPlaylist(2, Sid{0}, suite().list,
                                                   suite().entries(0, kEntries), 0);
        },
        [] { suite().history.undo(); });
    suite().require(kEntries);
}

void MoveOneOfALongList(benchmark::State& state)
{
    suite().fill();
    const QString one = suite().entries(kEntries / 2, 1).mid(int(sizeof("DRAG_TYP_PLID:")) - 1);
    for ([[maybe_unused]] auto round : state) {
        suite().edits.swapWithNeighbour(Plid(one.toInt()), suite().list, 1);
    }
}

void OpenALongList(benchmark::State& state)
{
    suite().fill();
    for ([[maybe_unused]] auto round : state) {
        const auto database = suite().open();
        const auto rows = database->OpenRecordset(u"select * from vpl_all where pnid=1"_s);
        for (int row = 0; row < 50; ++row, rows->MoveNext()) {
            benchmark::DoNotOptimize(rows->value(u"Titel"));
        }
    }
}

void ReadListsForTheTree(benchmark::State& state)
{
    {
        const auto database = suite().open();
        Transaction all(*database);
        for (int list = 2; list <= kLists; ++list) {
            database->Execute(u"insert into pl_name (nid,grid,name,sid,activ) values "
                              "(%1,1,'Liste %1',%1,true)"_s.arg(list));
        }
        all.commit();
    }
    for ([[maybe_unused]] auto round : state) {
        const auto database = suite().open();
        const auto rows = database->OpenRecordset(u"select * from VPL_GROUPNAME"_s);
        int read = 0;
        for (; !rows->Eof(); rows->MoveNext(), ++read) {
            for (int column = 0; column < rows->fieldCount(); ++column) {
                benchmark::DoNotOptimize(rows->value(column));
            }
        }
        if (read != kLists) {
            std::abort();
        }
    }
}

BENCHMARK(AppendTracks)->Arg(1000)->Arg(kEntries)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(InsertTracksInTheMiddle)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(InsertCopiesInTheMiddle)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(MoveEntriesToTheFront)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(DeleteEntries)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(UndoAnInsert)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(UndoADelete)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(UndoAMove)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(MoveOneOfALongList)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(OpenALongList)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(ReadListsForTheTree)->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
