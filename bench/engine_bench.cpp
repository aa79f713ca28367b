// What the engine costs beside plain SQLite on the same file. Each line runs both in turn and
// prints the median processor time of either in microseconds and their ratio; the bar is 1.5 where
// both do the same.
//
//   engine_bench [tracks = 1000000] [--benchmark_filter=...]

#include "bench/libraries.h"
#include "platform/db/database.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/sqlite/functions/functions.h"
#include "platform/system/clock.h"

#include <QCoreApplication>
#include <QFile>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <ctime>
#include <random>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kInserts = 10'000;
constexpr int kPage = 50;
constexpr int kRounds = 21;
const QString kColumns = u"FID, Titel, Interpret, Album, Genre, Jahr, Track, Path, DName, DTime, "
                         "DLen, DTimeMsec, DKhz, DBit, DTSDatei, DTSImport"_s;
constexpr int kColumnCount = 16;
constexpr int kTexts = 10;     ///< the first columns are texts
constexpr int kFirstDate = 14; ///< the last ones dates

int tracks = 1'000'000;

/// The connection of somebody who writes SQLite's own language.
class Plain
{
public:
    explicit Plain(const QString& file)
    {
        sqlite3_open_v2(QFile::encodeName(file).constData(), &m_handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite::registerFunctions(m_handle, [] { return QDateTime::currentDateTime(); });
        run("PRAGMA cache_size=-16384");
        run("PRAGMA synchronous=FULL");
    }

    ~Plain() { sqlite3_close_v2(m_handle); }

    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void run(const char* sql) { check(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr)); }

    [[nodiscard]] sqlite3_stmt* prepare(const QByteArray& sql)
    {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(m_handle, sql.constData(), int(sql.size()), &statement, nullptr));
        return statement;
    }

    void check(int code)
    {
        if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
            std::fprintf(stderr, "plain: %s\n", sqlite3_errmsg(m_handle));
            std::abort();
        }
    }

private:
    sqlite3* m_handle = nullptr;
};

class Fixture
{
public:
    Fixture()
        : m_engine(sqlite::makeEngine(m_clock))
        , m_file(libraryFile(tracks))
        , m_database(m_engine->OpenDatabase(m_file))
        , m_plain(m_file)
    {}

    [[nodiscard]] DBEngine& engine() { return *m_engine; }

    [[nodiscard]] const QString& file() const { return m_file; }

    [[nodiscard]] Database& db() { return *m_database; }

    [[nodiscard]] Plain& plain() { return m_plain; }

private:
    SystemClock m_clock;
    std::unique_ptr<DBEngine> m_engine;
    QString m_file;
    std::unique_ptr<Database> m_database;
    Plain m_plain;
};

double median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + std::ptrdiff_t(times.size() / 2), times.end());
    return times[times.size() / 2];
}

/// Time of this thread alone: what other programs do meanwhile does not count.
double threadMicroseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e6 + double(time.tv_nsec) / 1e3;
}

template <typename Work> double microseconds(Work&& work)
{
    const double begin = threadMicroseconds();
    work();
    return threadMicroseconds() - begin;
}

/// Runs both in turn, so that a busy machine hits both alike.
template <typename Ours, typename Theirs>
void compare(benchmark::State& state, Ours&& ours, Theirs&& theirs)
{
    std::vector<double> us;
    std::vector<double> them;
    for ([[maybe_unused]] auto round : state) {
        us.push_back(microseconds(ours));
        them.push_back(microseconds(theirs));
    }
    state.counters["engine_us"] = median(us);
    state.counters["sqlite_us"] = median(them);
    state.counters["ratio"] = median(us) / median(them);
}

// -- Statements --

QString trackStatement(const QString& fid)
{
    return u"select %1 from db_all where FID='%2'"_s.arg(kColumns, fid);
}

void readRow(sqlite3_stmt* statement)
{
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < kColumnCount; ++i) {
            if (i < kTexts) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                benchmark::DoNotOptimize(
                    QString::fromUtf8(text, sqlite3_column_bytes(statement, i)));
            } else {
                benchmark::DoNotOptimize(sqlite3_column_double(statement, i));
            }
        }
    }
    sqlite3_reset(statement);
}

void readRow(Recordset& set)
{
    for (int i = 0; i < kColumnCount; ++i) {
        benchmark::DoNotOptimize(set.value(i));
    }
}

QStringList someFids(Fixture& fixture)
{
    QStringList fids;
    const auto set = fixture.db().OpenRecordset(u"select top 2000 FID from db_all"_s);
    for (; !set->Eof(); set->MoveNext()) {
        fids.append(set->value(0).toText());
    }
    return fids;
}

/// A row by its key, with the value pasted in: a new text each time.
void newStatement(benchmark::State& state)
{
    Fixture fixture;
    const QStringList fids = someFids(fixture);
    qsizetype next = 0;
    qsizetype theirs = 0;
    compare(
        state,
        [&] {
            for (int i = 0; i < 50; ++i) {
                const auto set =
                    fixture.db().OpenRecordset(trackStatement(fids[next++ % fids.size()]));
                if (!set->Eof()) {
                    readRow(*set);
                }
            }
        },
        [&] {
            for (int i = 0; i < 50; ++i) {
                sqlite3_stmt* statement =
                    fixture.plain().prepare(trackStatement(fids[theirs++ % fids.size()]).toUtf8());
                readRow(statement);
                sqlite3_finalize(statement);
            }
        });
}

void knownStatement(benchmark::State& state)
{
    Fixture fixture;
    const QString text = trackStatement(someFids(fixture).first());
    sqlite3_stmt* statement = fixture.plain().prepare(text.toUtf8());
    compare(
        state,
        [&] {
            for (int i = 0; i < 50; ++i) {
                const auto set = fixture.db().OpenRecordset(text);
                readRow(*set);
            }
        },
        [&] {
            for (int i = 0; i < 50; ++i) {
                readRow(statement);
            }
        });
    sqlite3_finalize(statement);
}

void openWorkClose(benchmark::State& state)
{
    Fixture fixture;
    const QString text = u"select Version from db_version where id='DB.Version'"_s;
    compare(
        state,
        [&] {
            const auto database = fixture.engine().OpenDatabase(fixture.file());
            benchmark::DoNotOptimize(database->OpenRecordset(text)->value(0));
        },
        [&] {
            Plain plain(fixture.file());
            sqlite3_stmt* statement = plain.prepare(text.toUtf8());
            sqlite3_step(statement);
            benchmark::DoNotOptimize(sqlite3_column_text(statement, 0));
            sqlite3_finalize(statement);
        });
}

// -- Sets --

qint64 residentKb()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            return line.mid(6).simplified().split(' ').first().toLongLong();
        }
    }
    return 0;
}

/// All keys in order; plain SQLite reads them into a vector.
void openSet(benchmark::State& state)
{
    Fixture fixture;
    const QString text = u"select * from db_all order by DTimeMsec"_s;
    sqlite3_stmt* statement =
        fixture.plain().prepare("select _rowid_ from db_all order by DTimeMsec");
    (void)fixture.db().OpenRecordset(u"select top 100000 * from db_all order by DTimeMsec"_s);
    std::unique_ptr<Recordset> kept;
    qint64 bytes = 0;
    compare(
        state,
        [&] {
            kept.reset();
            const qint64 before = residentKb();
            kept = fixture.db().OpenRecordset(text);
            bytes = (residentKb() - before) * 1024;
        },
        [&] {
            std::vector<qint64> keys;
            while (sqlite3_step(statement) == SQLITE_ROW) {
                keys.push_back(sqlite3_column_int64(statement, 0));
            }
            sqlite3_reset(statement);
            benchmark::DoNotOptimize(keys.data());
        });
    sqlite3_finalize(statement);
    // A walk through all of it must not keep what it has seen.
    const qint64 before = residentKb();
    for (kept->MoveFirst(); !kept->Eof(); kept->MoveNext()) {
        benchmark::DoNotOptimize(kept->value(0));
    }
    state.counters["rows"] = double(kept->rowCount());
    state.counters["bytes_per_row"] = double(bytes) / double(kept->rowCount());
    state.counters["walk_kb"] = double(residentKb() - before);
}

/// A page anywhere in a set of all tracks; plain SQLite reads the same rows by their row ids.
void page(benchmark::State& state)
{
    Fixture fixture;
    const auto set =
        fixture.db().OpenRecordset(u"select %1 from db_all order by DTimeMsec"_s.arg(kColumns));
    const qint64 rows = set->rowCount();
    sqlite3_stmt* keysOf = fixture.plain().prepare("select _rowid_ from db_all order by DTimeMsec");
    std::vector<qint64> keys;
    while (sqlite3_step(keysOf) == SQLITE_ROW) {
        keys.push_back(sqlite3_column_int64(keysOf, 0));
    }
    sqlite3_finalize(keysOf);
    sqlite3_stmt* statement =
        fixture.plain().prepare(u"select %1 from db_all where _rowid_=?1"_s.arg(kColumns).toUtf8());
    std::mt19937 random(1);
    qint64 first = 0;
    compare(
        state,
        [&] {
            first = qint64(random() % std::uint32_t(rows - qint64{2} * kPage));
            set->SetAbsolutePosition(first);
            for (int i = 0; i < kPage; ++i, set->MoveNext()) {
                readRow(*set);
            }
        },
        [&] {
            // Another page, so that neither profits from what the other has read.
            first = qint64(random() % std::uint32_t(rows - qint64{2} * kPage));
            fixture.plain().run("BEGIN");
            for (int i = 0; i < kPage; ++i) {
                sqlite3_bind_int64(statement, 1, keys[std::size_t(first + i)]);
                readRow(statement);
            }
            fixture.plain().run("COMMIT");
        });
    sqlite3_finalize(statement);
}

// -- Inserts --

QString fidOf(int number)
{
    return QString::number(900'000'000'000LL + number);
}

std::vector<Value> trackValues(int number)
{
    const QString n = QString::number(number);
    return {Value(fidOf(number)),
            Value(u"Ein neuer Titel "_s + n),
            Value(u"Interpret "_s + QString::number(number % 300)),
            Value(u"Das Album "_s + QString::number(number % 900)),
            Value(u"House"_s),
            Value(u"2019"_s),
            Value(QString::number(number % 20)),
            Value(u"/home/dj/Musik/Ordner "_s + QString::number(number % 900) + u'/'),
            Value(n + u" - Ein neuer Titel.mp3"_s),
            Value(u"03:45"_s),
            Value(5'400'000 + number),
            Value(225'000 + number),
            Value(44100),
            Value(192),
            Value(Value::Day{45'000.25 + number}),
            Value(Value::Day{46'000.5})};
}

/// What the program has in hand before it writes.
const std::vector<std::vector<Value>>& newTracks()
{
    static const std::vector<std::vector<Value>> kTracks = [] {
        std::vector<std::vector<Value>> made;
        made.reserve(kInserts);
        for (int i = 0; i < kInserts; ++i) {
            made.push_back(trackValues(i));
        }
        return made;
    }();
    return kTracks;
}

QString insertText(const std::vector<Value>& values)
{
    QString text = u"insert into db_all ("_s + kColumns + u") values ("_s;
    for (int i = 0; i < kColumnCount; ++i) {
        text += i == 0 ? u""_s : u", "_s;
        if (values[std::size_t(i)].isText()) {
            text += u'\'' + values[std::size_t(i)].toText() + u'\'';
        } else {
            text += QString::number(values[std::size_t(i)].toDouble(), 'g', 15);
        }
    }
    return text + u')';
}

void bindTrack(sqlite3_stmt* statement, const std::vector<Value>& values)
{
    for (int i = 0; i < kColumnCount; ++i) {
        const Value& value = values[std::size_t(i)];
        if (value.isText()) {
            const QByteArray bytes = value.toText().toUtf8();
            sqlite3_bind_text(statement, i + 1, bytes.constData(), int(bytes.size()),
                              SQLITE_TRANSIENT);
        } else if (value.isLong()) {
            sqlite3_bind_int64(statement, i + 1, value.toInt64());
        } else {
            sqlite3_bind_double(statement, i + 1, value.toDouble());
        }
    }
}

void plainPreparedInserts(Fixture& fixture)
{
    fixture.plain().run("BEGIN IMMEDIATE");
    sqlite3_stmt* statement = fixture.plain().prepare(
        u"insert into db_all (%1) values (?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12,?13,?14,?15,?16)"_s
            .arg(kColumns)
            .toUtf8());
    for (const std::vector<Value>& track : newTracks()) {
        bindTrack(statement, track);
        fixture.plain().check(sqlite3_step(statement));
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    fixture.plain().run("ROLLBACK");
}

void insertByRecordset(benchmark::State& state)
{
    Fixture fixture;
    const QStringList names = kColumns.split(u", "_s);
    compare(
        state,
        [&] {
            const Transaction undone(fixture.db());
            const auto set = fixture.db().OpenRecordset(u"select * from db_all where fid=''"_s);
            for (const std::vector<Value>& track : newTracks()) {
                set->AddNew();
                for (int i = 0; i < kColumnCount; ++i) {
                    set->setValue(names[i], track[std::size_t(i)]);
                }
                set->Update();
            }
        },
        [&] { plainPreparedInserts(fixture); });
}

void insertByParameters(benchmark::State& state)
{
    Fixture fixture;
    const QStringList names = kColumns.split(u", "_s);
    QStringList declared;
    for (int i = 0; i < kColumnCount; ++i) {
        const char16_t* type = i < kTexts ? u"text" : i < kFirstDate ? u"long" : u"datetime";
        declared.append(u"[p%1] %2"_s.arg(names[i], QString::fromUtf16(type)));
    }
    const auto query = fixture.db().CreateQueryDef(
        {},
        u"parameters "_s + declared.join(u", "_s) +
            u"; insert into db_all (%1) values ([p%2])"_s.arg(kColumns, names.join(u"], [p"_s)));
    QStringList parameters;
    for (const QString& name : names) {
        parameters.append(u'p' + name);
    }
    compare(
        state,
        [&] {
            const Transaction undone(fixture.db());
            for (const std::vector<Value>& track : newTracks()) {
                for (int i = 0; i < kColumnCount; ++i) {
                    query->SetParameter(parameters[i], track[std::size_t(i)]);
                }
                query->Execute();
            }
        },
        [&] { plainPreparedInserts(fixture); });
}

void insertByStatement(benchmark::State& state)
{
    Fixture fixture;
    QStringList texts;
    for (const std::vector<Value>& track : newTracks()) {
        texts.append(insertText(track));
    }
    compare(
        state,
        [&] {
            const Transaction undone(fixture.db());
            for (const QString& text : texts) {
                fixture.db().Execute(text);
            }
        },
        [&] {
            fixture.plain().run("BEGIN IMMEDIATE");
            for (const QString& text : texts) {
                sqlite3_stmt* statement = fixture.plain().prepare(text.toUtf8());
                fixture.plain().check(sqlite3_step(statement));
                sqlite3_finalize(statement);
            }
            fixture.plain().run("ROLLBACK");
        });
}

void registerAll()
{
    const auto add = [](const char* name, void (*run)(benchmark::State&), int rounds) {
        benchmark::RegisterBenchmark(name, run)->Iterations(rounds)->Unit(benchmark::kMillisecond);
    };
    add("statement/new_50", newStatement, kRounds);
    add("statement/known_50", knownStatement, kRounds);
    add("open_work_close", openWorkClose, 10 * kRounds);
    add("set/open", openSet, 5);
    add("set/page_of_50", page, 20 * kRounds);
    add("insert/recordset_10000", insertByRecordset, 5);
    add("insert/parameters_10000", insertByParameters, 5);
    add("insert/statement_10000", insertByStatement, 5);
}

} // namespace
} // namespace melovane::bench

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc > 1) {
        melovane::bench::tracks = std::max(1000, std::atoi(argv[1]));
    }
    melovane::bench::registerAll();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
