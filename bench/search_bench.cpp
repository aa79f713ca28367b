#include "bench/libraries.h"
#include "bench/library_generator.h"
#include "library/create_sql_find.h"
#include "platform/db/data_control.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/system/clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Words typed in a run. Fewer in a large library, so that a run takes minutes, not an hour.
constexpr int kWords = 6;
constexpr int kWordsInALarge = 2;
constexpr int kLarge = 500'000;

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

/// What a user types, by class: each text of a class is one key press.
enum class Texts
{
    TypedPrefixes,
    Contains,
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

QStringList textsOf(Texts kind, int size)
{
    // Words of the library itself, drawn with another seed than the tracks, so that they are met
    // but not in the order of the table.
    LibraryGenerator library(kSeed, size);
    QStringList result;
    for (int i = 0; i < (size < kLarge ? kWords : kWordsInALarge); ++i) {
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

/// The road of one key press: statement, set, first page, count.
class KeyPress
{
public:
    explicit KeyPress(const QString& file)
        : m_engine(sqlite::makeEngine(m_clock))
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
    }

    void run(const QString& text, const SortOrder& order)
    {
        m_find.SetFind(text);
        m_find.SetOrderBy(QString::fromUtf16(order.column));
        m_find.SetSortRichtung(QString::fromUtf16(order.direction));
        m_data.SetRecordSource(m_find.GetSql(2));
        m_data.Refresh();
        const qint64 rows = std::min<qint64>(kFirstPage, m_data.rowCount());
        for (qint64 row = 0; row < rows; ++row) {
            for (int column = 0; column < m_data.columnCount(); ++column) {
                benchmark::DoNotOptimize(m_data.cell(row, column));
            }
        }
        benchmark::DoNotOptimize(m_find.GetCount(2));
    }

private:
    SystemClock m_clock;
    std::unique_ptr<DBEngine> m_engine;
    cls_CreateSqlFind m_find;
    DataControl m_data;
};

double percentile(const std::vector<double>& sorted, double share)
{
    return sorted[std::min(sorted.size() - 1, std::size_t(share * double(sorted.size())))];
}

void search(benchmark::State& state, Texts kind)
{
    const int size = int(state.range(0));
    KeyPress key(libraryFile(size));
    const QStringList texts = textsOf(kind, size);
    std::vector<double> times;
    for (auto round : state) {
        for (const SortOrder& order : kOrders) {
            for (const QString& text : texts) {
                QElapsedTimer timer;
                timer.start();
                key.run(text, order);
                times.push_back(double(timer.nsecsElapsed()) / 1e6);
            }
        }
    }
    std::sort(times.begin(), times.end());
    state.counters["keys"] = double(times.size());
    state.counters["p50_ms"] = percentile(times, 0.50);
    state.counters["p99_ms"] = percentile(times, 0.99);
    state.counters["max_ms"] = times.back();
}

void registerAll()
{
    const std::pair<const char*, Texts> kinds[] = {
        {"search/prefixes", Texts::TypedPrefixes},
        {"search/contains", Texts::Contains},
        {"search/broad", Texts::Broad},
        {"search/narrow", Texts::Narrow},
    };
    for (const auto& [name, kind] : kinds) {
        for (const int size : {50'000, 100'000, 1'000'000}) {
            benchmark::RegisterBenchmark(name, search, kind)
                ->Arg(size)
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
        }
    }
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
