#include "bench/libraries.h"
#include "bench/library_generator.h"
#include "bench/measure.h"
#include "library/create_sql_find.h"
#include "platform/db/data_control.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Words typed in a run.
constexpr int kWords = 6;

/// Common ones.
const QString kUmlauts[] = {u"ä"_s, u"kö"_s, u"ß"_s, u"vär"_s, u"ö"_s, u"bü"_s};
static_assert(std::size(kUmlauts) == kWords);

/// What follows them in each round.
const QString kBehindUmlauts[] = {u""_s, u"n"_s, u"r"_s, u"s"_s, u"t"_s, u"l"_s, u"d"_s, u"m"_s};

/// Tracks that the words of a round are drawn from.
constexpr int kTracksOfRound = 300;

/// Rows on a large screen.
constexpr int kFirstPage = 50;

struct SortOrder
{
    const char16_t* column;
    const char16_t* direction;
};

constexpr SortOrder kOrders[] = {
    {u"Titel", u"ASC"}, {u"Titel", u"DESC"}, {u"Interpret", u"ASC"}, {u"Interpret", u"DESC"},
    {u"Album", u"ASC"}, {u"Album", u"DESC"}, {u"BPM", u"ASC"},       {u"BPM", u"DESC"},
};

static_assert(std::size(kBehindUmlauts) == std::size(kOrders));

/// What a user types, by class: each text of a class is one key press.
enum class Texts
{
    TypedPrefixes,
    Contains,
    Two,
    Umlauts,
    Patterns,
    Broad,
    Narrow
};

QStringList typedPrefixes(const QString& word)
{
    QStringList result;
    for (int length = 1; length <= std::min<int>(8, int(word.size())); ++length) {
        result.append(word.left(length));
    }
    return result;
}

/// \param round other words in each: what was looked for before is kept by the index, and a search
/// that finds its answer there says nothing about searching
QStringList textsOf(Texts kind, int size, int round)
{
    // Words of the library itself, drawn with another seed than the tracks, so that they are met
    // but not in the order of the table.
    LibraryGenerator library(kSeed, size);
    for (int skip = 0; skip < kTracksOfRound * round; ++skip) {
        (void)library.next();
    }
    const QString behind = kBehindUmlauts[round];
    QStringList result;
    for (int i = 0; i < kWords; ++i) {
        GeneratedTrack track;
        for (int skip = 0; skip < 37; ++skip) {
            track = library.next();
        }
        switch (kind) {
        case Texts::TypedPrefixes:
            result += typedPrefixes(i % 2 == 0 ? track.Titel : track.Interpret);
            break;
        case Texts::Contains:
            result.append(u'*' + track.Titel.section(u' ', -1));
            break;
        case Texts::Two:
            result.append(u'*' + track.Titel.mid(i, 2));
            break;
        case Texts::Umlauts:
            result.append(u'*' + kUmlauts[i] + behind);
            break;
        case Texts::Patterns:
            result.append(u'?' + track.Titel.mid(1, 1));
            result.append(u'*' + track.Titel.left(2) + u'*' + track.Titel.mid(3, 2));
            break;
        case Texts::Broad:
            result.append(track.Titel.left(1));
            result.append(u'*' + track.Titel.mid(1, 1));
            break;
        case Texts::Narrow:
            result.append(track.Titel);
            result.append(track.Interpret + u"zz"_s);
            break;
        }
    }
    return result;
}

/// Milliseconds of each step of one key press.
struct Times
{
    double keys = 0;  ///< statement to complete key set
    double page = 0;  ///< statement to first page
    double count = 0; ///< the count alone
    double all = 0;
    double cpu = 0; ///< of all, in use of the processor: what others do counts little
};

/// Of this thread.
double cpuMilliseconds()
{
    timespec used{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return double(used.tv_sec) * 1e3 + double(used.tv_nsec) / 1e6;
}

double percentile(std::vector<double> times, double share)
{
    std::sort(times.begin(), times.end());
    return times[std::min(times.size() - 1, std::size_t(share * double(times.size())))];
}

/// The road of one key press: statement, set, first page, count.
class KeyPress
{
public:
    /// \param figures of the index; null leaves all searches to SQLite
    explicit KeyPress(
        const QString& file,
        std::shared_ptr<sqlite::IndexFigures> figures = std::make_shared<sqlite::IndexFigures>())
        : m_figures(std::move(figures))
        , m_engine(sqlite::makeEngine(m_clock, {.searchIndex = m_figures}))
        , m_find(*m_engine)
        , m_data(*m_engine)
    {
        m_data.SetDatabaseName(file);
        m_find.SetDataBaseName(file);
        m_find.SetTableName(u"db_all"_s);
        m_find.SetFieldsFromTable(u"db_all"_s);
        m_find.ViewDEL(u" and del in (0,-1) "_s);
        for (const char16_t* column : {u"Titel", u"Interpret", u"Album", u"Kommentar", u"Dname"}) {
            m_find.AddFieldFind(QString::fromUtf16(column));
        }
        for (const char16_t* column : {u"Track", u"Interpret", u"Titel"}) {
            m_find.AddOrderBy(QString::fromUtf16(column), cls_CreateSqlFind::kAscending);
        }
        QElapsedTimer timer;
        timer.start();
        run(u"Melovane"_s, kOrders[0]);
        m_first = elapsed(timer);
    }

    /// What the first search took, with making the index.
    [[nodiscard]] double first() const { return m_first; }

    [[nodiscard]] const sqlite::IndexFigures& figures() const { return *m_figures; }

    Times run(const QString& text, const SortOrder& order)
    {
        QElapsedTimer timer;
        timer.start();
        m_cpu = cpuMilliseconds();
        m_find.SetFind(text);
        m_find.SetOrderBy(QString::fromUtf16(order.column));
        m_find.SetSortRichtung(QString::fromUtf16(order.direction));
        m_data.SetRecordSource(m_find.GetSql(2));
        return show(timer);
    }

    /// A click on a header: the same search in another order.
    Times sort(const SortOrder& order)
    {
        QElapsedTimer timer;
        timer.start();
        m_cpu = cpuMilliseconds();
        m_find.SetOrderBy(QString::fromUtf16(order.column));
        m_find.SetSortRichtung(QString::fromUtf16(order.direction));
        m_data.SetRecordSource(m_find.GetLastSQL());
        return show(timer);
    }

private:
    [[nodiscard]] static double elapsed(const QElapsedTimer& timer)
    {
        return double(timer.nsecsElapsed()) / 1e6;
    }

    Times show(const QElapsedTimer& timer)
    {
        Times times;
        m_data.Refresh();
        times.keys = elapsed(timer);
        const qint64 rows = std::min<qint64>(kFirstPage, m_data.rowCount());
        for (qint64 row = 0; row < rows; ++row) {
            for (int column = 0; column < m_data.columnCount(); ++column) {
                benchmark::DoNotOptimize(m_data.cell(row, column));
            }
        }
        times.page = elapsed(timer);
        benchmark::DoNotOptimize(m_find.GetCount(2));
        times.all = elapsed(timer);
        times.cpu = cpuMilliseconds() - m_cpu;
        times.count = times.all - times.page;
        return times;
    }

    SystemClock m_clock;
    std::shared_ptr<sqlite::IndexFigures> m_figures;
    std::unique_ptr<DBEngine> m_engine;
    cls_CreateSqlFind m_find;
    DataControl m_data;
    double m_first = 0;
    double m_cpu = 0; ///< when the key was pressed
};

void report(benchmark::State& state, const std::vector<Times>& times, const KeyPress& key)
{
    const std::pair<const char*, double Times::*> steps[] = {{"keys", &Times::keys},
                                                             {"page", &Times::page},
                                                             {"count", &Times::count},
                                                             {"all", &Times::all},
                                                             {"cpu", &Times::cpu}};
    for (const auto& [name, step] : steps) {
        std::vector<double> values;
        values.reserve(times.size());
        for (const Times& one : times) {
            values.push_back(one.*step);
        }
        state.counters[std::string(name) + "_p50"] = percentile(values, 0.50);
        state.counters[std::string(name) + "_p99"] = percentile(values, 0.99);
    }
    state.counters["n"] = double(times.size());
    state.counters["left"] = double(key.figures().left);
    state.counters["first_ms"] = key.first();
    state.counters["index_MB"] = double(key.figures().bytes) / 1e6;
    state.counters["resident_MB"] = residentMegabytes();
}

void search(benchmark::State& state, Texts kind)
{
    const int size = int(state.range(0));
    KeyPress key(libraryFile(size));
    std::vector<Times> times;
    for ([[maybe_unused]] auto run : state) {
        int round = 0;
        for (const SortOrder& order : kOrders) {
            // The order itself is measured by headerClick.
            benchmark::DoNotOptimize(key.run(u"zzz"_s, order).all);
            for (const QString& text : textsOf(kind, size, round)) {
                times.push_back(key.run(text, order));
            }
            ++round;
        }
    }
    report(state, times, key);
}

void reportCpu(benchmark::State& state, const std::vector<double>& times)
{
    state.counters["cpu_p50"] = percentile(times, 0.50);
    state.counters["cpu_p99"] = percentile(times, 0.99);
}

/// One look at every letter of the texts of such a library: no search behind a star takes less.
void memoryPass(benchmark::State& state)
{
    constexpr std::size_t kLettersOfTrack = 54;
    constexpr int kPasses = 21;
    const std::vector<char> letters(std::size_t(state.range(0)) * kLettersOfTrack, 'a');
    std::vector<double> times;
    for ([[maybe_unused]] auto round : state) {
        for (int i = 0; i < kPasses; ++i) {
            const double begin = cpuMilliseconds();
            benchmark::DoNotOptimize(std::memchr(letters.data(), 'b', letters.size()));
            times.push_back(cpuMilliseconds() - begin);
        }
    }
    reportCpu(state, times);
}

/// The same search without the index.
void sqliteAlone(benchmark::State& state)
{
    KeyPress key(libraryFile(int(state.range(0))), nullptr);
    std::vector<double> times;
    for ([[maybe_unused]] auto round : state) {
        for (const char16_t* text : {u"*mond", u"*er", u"nacht"}) {
            times.push_back(key.run(QString::fromUtf16(text), kOrders[0]).cpu);
        }
    }
    reportCpu(state, times);
}

/// A wide result in every order, each once.
void headerClick(benchmark::State& state)
{
    KeyPress key(libraryFile(int(state.range(0))));
    std::vector<Times> times;
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(key.run(u"s"_s, {u"FID", u"ASC"}).all);
        for (const SortOrder& order : kOrders) {
            times.push_back(key.sort(order));
        }
    }
    report(state, times, key);
}

/// Another program changes one row; the next search knows it.
void oneChange(benchmark::State& state)
{
    constexpr int kChanges = 200;
    const QString file = libraryFile(int(state.range(0)));
    KeyPress key(file);
    SystemClock clock;
    const auto sibling = sqlite::makeEngine(clock);
    const auto database = sibling->OpenDatabase(file);
    std::vector<Times> times;
    for ([[maybe_unused]] auto round : state) {
        for (int i = 0; i < kChanges; ++i) {
            // Its own value, so that the library stays what it is.
            database->Execute(u"update db_all set Titel=Titel where FID='%1'"_s.arg(
                157'766'400'000LL + qint64{i} * 37 * 500));
            times.push_back(key.run(u"mond"_s, kOrders[0]));
        }
    }
    report(state, times, key);
}

/// An importer's work: 20,000 new rows, with (1) and without (0) the list of changes that a search
/// has put into the file.
void insertRows(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"melovane.mdb"_s);
    QFile::copy(libraryFile(0), file);
    if (state.range(0) == 1) {
        const KeyPress key(file);
    }
    SystemClock clock;
    const auto importer = sqlite::makeEngine(clock);
    const auto database = importer->OpenDatabase(file);
    for ([[maybe_unused]] auto round : state) {
        fillLibrary(*database, 20'000, kSeed);
    }
}

void registerAll()
{
    const std::pair<std::string, std::function<void(benchmark::State&)>> measured[] = {
        {"yardstick/memory", memoryPass},
        {"yardstick/sqlite", sqliteAlone},
        {"search/prefixes", [](auto& state) { search(state, Texts::TypedPrefixes); }},
        {"search/contains", [](auto& state) { search(state, Texts::Contains); }},
        {"search/two", [](auto& state) { search(state, Texts::Two); }},
        {"search/umlauts", [](auto& state) { search(state, Texts::Umlauts); }},
        {"search/patterns", [](auto& state) { search(state, Texts::Patterns); }},
        {"search/broad", [](auto& state) { search(state, Texts::Broad); }},
        {"search/narrow", [](auto& state) { search(state, Texts::Narrow); }},
        {"header_click", headerClick},
        {"one_change", oneChange},
    };
    for (const auto& [name, run] : measured) {
        for (const int size : {50'000, 100'000, 1'000'000}) {
            benchmark::RegisterBenchmark(name.c_str(), run)
                ->Arg(size)
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::RegisterBenchmark("insert_20000", insertRows)
        ->Arg(0)
        ->Arg(1)
        ->Iterations(1)
        ->Repetitions(5)
        ->Unit(benchmark::kMillisecond);
}

} // namespace
} // namespace melovane::bench

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    melovane::bench::registerAll();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
