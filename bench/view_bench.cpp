// The library view as the user meets it: key press to painted page, sorting, selecting, the end of
// the list, and the start, with and without the index that a former run kept.
//
//   view_bench [tracks = 100000] [storm]
//
// With "storm" another process adds tracks all the while (write_storm beside this program).
// Wall time and, beside it, the CPU time of this process, in milliseconds.

#include "bench/libraries.h"
#include "bench/library_generator.h"
#include "bench/measure.h"
#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "library/mp3db.h"
#include "library/ui/mp3db_widget.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/search_line.h"
#include "platform/qt/skin.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlists/list_history.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kWords = 6;

/// Milliseconds that a turn of the message loop may take while the index is built.
constexpr double kLongTurn = 8;

double percentile(const std::vector<Cost>& costs, double Cost::*part, double share)
{
    std::vector<double> times;
    times.reserve(costs.size());
    for (const Cost& cost : costs) {
        times.push_back(cost.*part);
    }
    std::sort(times.begin(), times.end());
    return times[std::min(times.size() - 1, std::size_t(share * double(times.size())))];
}

void report(const char* what, const std::vector<Cost>& costs)
{
    std::printf("%-34s n=%4zu  wall p50 %8.2f  p99 %8.2f  max %8.2f   cpu p50 %8.2f  p99 %8.2f\n",
                what, costs.size(), percentile(costs, &Cost::wall, 0.5),
                percentile(costs, &Cost::wall, 0.99), percentile(costs, &Cost::wall, 1),
                percentile(costs, &Cost::cpu, 0.5), percentile(costs, &Cost::cpu, 0.99));
    std::fflush(stdout);
}

void report(const char* what, const Cost& cost)
{
    std::printf("%-34s         wall %8.1f   cpu %8.1f\n", what, cost.wall, cost.cpu);
    std::fflush(stdout);
}

/// The view with everything below it, as a start of the program makes it.
class View
{
public:
    View(const QString& folder, const QString& file)
        : m_environment(placesBelow(folder))
        , m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(
              m_clock,
              {.searchIndex = figures,
               .whenIdle =
                   [this](std::function<bool()> work) { m_idle.push_back(std::move(work)); },
               .snapshotFolder = m_environment.cacheFolder()}))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_texts(m_paths, m_profile, m_files)
        , m_bus(m_paths, m_files, m_clock)
        , m_icons(m_skin)
        , m_widget(m_skin, m_icons)
        , m_logic(
              {*m_engine, m_settings, m_texts, m_paths, m_files, m_clock, m_loop, m_bus, m_history},
              m_widget.controls(),
              {[] {}, [](const QString&, const QString&) {}, [](const QString& f) { return f; }})
    {
        MelovaneConfiguration::fill(m_texts);
        m_settings.SetDbName(file);
        m_settings.SetLiveSuche(1);
        m_widget.attach(m_logic, m_texts);
        m_widget.resize(1600, 1000);
        m_widget.show();
        m_grid = m_widget.findChild<DataGrid*>(u"TDBGrid1"_s);
        m_search = m_widget.findChild<SearchLine*>(u"Text1"_s);
    }

    void start() { m_logic.start(); }

    void end() { m_logic.end(); }

    void type(const QString& text) { m_search->setText(text); }

    void paint() { m_grid->viewport()->repaint(); }

    void sortBy(const QString& field) { m_logic.headerClicked(m_grid->columnOf(field)); }

    void selectAll() { m_logic.toolPressed(u"all.data.select"_s); }

    void pressEnd()
    {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_End, Qt::NoModifier);
        QCoreApplication::sendEvent(m_grid, &press);
    }

    [[nodiscard]] qint64 rows() const { return m_logic.matchCount(); }

    /// A turn of the message loop and of the work for idle moments. False when there is none.
    bool idle()
    {
        QCoreApplication::processEvents();
        std::vector<std::function<bool()>> work = std::move(m_idle);
        m_idle.clear();
        for (std::function<bool()>& next : work) {
            if (next()) {
                m_idle.push_back(std::move(next));
            }
        }
        return !m_idle.empty();
    }

    std::shared_ptr<sqlite::IndexFigures> figures = std::make_shared<sqlite::IndexFigures>();

private:
    std::vector<std::function<bool()>> m_idle;
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    ListHistory m_history{*m_engine, m_files, m_clock, m_settings, {}};
    ConfigObjects m_texts;
    MLVMessageBus m_bus;
    QtMessageLoop m_loop;
    Skin m_skin{*qApp};
    IconSet m_icons;
    Mp3dbWidget m_widget;
    ctl_MP3DB m_logic;
    DataGrid* m_grid = nullptr;
    SearchLine* m_search = nullptr;
};

/// What a user types, letter by letter, behind a star or from the beginning; other words in each
/// round.
QStringList typed(int size, bool inside, int round)
{
    LibraryGenerator library(kSeed, size);
    for (int skip = 0; skip < 300 * round; ++skip) {
        (void)library.next();
    }
    QStringList result;
    for (int i = 0; i < kWords; ++i) {
        GeneratedTrack track;
        for (int skip = 0; skip < 37; ++skip) {
            track = library.next();
        }
        const QString text = i % 2 == 0 ? track.Titel : track.Interpret;
        const QString word = inside ? text.section(u' ', -1) : text;
        for (int length = 1; length <= std::min<int>(8, int(word.size())); ++length) {
            result.append((inside ? u"*"_s : QString()) + word.left(length));
        }
    }
    return result;
}

struct Presses
{
    std::vector<Cost> keys; ///< to the complete key set and its count
    std::vector<Cost> page; ///< to the painted page
};

Presses press(View& view, const QStringList& texts)
{
    Presses result;
    for (const QString& text : texts) {
        Cost keys;
        result.page.push_back(measured([&] {
            keys = measured([&] { view.type(text); });
            view.paint();
        }));
        result.keys.push_back(keys);
        view.idle();
    }
    return result;
}

void append(std::vector<Cost>& to, const std::vector<Cost>& from)
{
    to.insert(to.end(), from.begin(), from.end());
}

void measureStart(const char* what, const QString& folder, const QString& file, const QString& text)
{
    std::unique_ptr<View> view;
    std::printf("-- %s\n", what);
    const Cost made = measured([&] {
        view = std::make_unique<View>(folder, file);
        view->start();
        view->paint();
    });
    report("start to painted view", made);
    const Cost first = measured([&] {
        view->type(text);
        view->paint();
    });
    report("first search", first);
    std::printf("   answered from memory: %s\n", view->figures->answers > 0 ? "yes" : "no");
    std::vector<Cost> turns;
    const Cost rest = measured([&] {
        bool more = true;
        while (more) {
            turns.push_back(measured([&] { more = view->idle(); }));
        }
    });
    report("idle work", rest);
    report("a turn of it", turns);
    const auto slow = std::count_if(turns.begin(), turns.end(),
                                    [](const Cost& turn) { return turn.cpu > kLongTurn; });
    std::printf("   turns above %.0f ms of cpu: %lld, the longest %.1f\n", kLongTurn,
                static_cast<long long>(slow), percentile(turns, &Cost::cpu, 1));
    std::printf("   index kept: %lld, resident %.0f MB, index %.0f MB\n",
                static_cast<long long>(view->figures->kept), residentMegabytes(),
                double(view->figures->bytes) / 1e6);
    view->end();
}

void measureKeys(View& view, int size)
{
    const char* const classes[] = {"typed from the beginning", "typed behind a star",
                                   "short forms"};
    const QStringList forms = {u"N=1"_s, u"N<2"_s, u"C>1"_s, u"B>90"_s, u"BPM=128"_s, u"Count>5"_s};
    std::vector<Cost> fresh;
    std::vector<Cost> seen;
    std::vector<Presses> costs(std::size(classes));
    view.type(u"s"_s);
    int round = 0;
    // A second round finds every order and column known.
    for (const bool again : {false, true}) {
        for (const QString& column :
             {u"Titel"_s, u"Interpret"_s, u"Album"_s, u"BPM"_s, u"Genre"_s}) {
            (again ? seen : fresh).push_back(measured([&] {
                view.sortBy(column);
                view.paint();
            }));
            for (std::size_t i = 0; i < std::size(classes); ++i) {
                const Presses presses = press(view, i == 2 ? forms : typed(size, i == 1, round));
                append(costs[i].keys, presses.keys);
                append(costs[i].page, presses.page);
            }
            view.type(u"s"_s);
            ++round;
        }
    }
    for (std::size_t i = 0; i < std::size(classes); ++i) {
        std::printf("-- %s\n", classes[i]);
        report("press to key set and count", costs[i].keys);
        report("press to painted page", costs[i].page);
    }
    std::printf("-- the list\n");
    report("header click, new order", fresh);
    report("header click, turned", seen);
    view.type(u"*"_s);
    std::printf("   rows %lld\n", static_cast<long long>(view.rows()));
    report("jump to the end", measured([&] {
               view.pressEnd();
               view.paint();
           }));
    report("select all", measured([&] {
               view.selectAll();
               view.paint();
           }));
    report("sort with all selected", measured([&] {
               view.sortBy(u"Jahr"_s);
               view.paint();
           }));
    std::printf("   left to SQLite %lld of %lld, resident %.0f MB, index %.0f MB\n",
                static_cast<long long>(view.figures->left),
                static_cast<long long>(view.figures->answers + view.figures->left),
                residentMegabytes(), double(view.figures->bytes) / 1e6);
}

int run(int size, bool storm)
{
    const QTemporaryDir folder(
        QDir(QCoreApplication::applicationDirPath()).filePath(u"view-XXXXXX"_s));
    const QString file = folder.filePath(u"melovane.mdb"_s);
    if (!QFile::copy(libraryFile(size), file)) {
        return 1;
    }
    std::printf("%d tracks%s\n", size, storm ? ", while another process adds tracks" : "");
    measureStart("start without a kept index", folder.path(), file, u"mond"_s);
    measureStart("start with a kept index", folder.path(), file, u"sonne"_s);
    View view(folder.path(), file);
    view.start();
    view.type(u"a"_s);
    while (view.idle()) {
    }
    QProcess writer;
    if (storm) {
        writer.start(QCoreApplication::applicationDirPath() + u"/write_storm"_s,
                     {u"--writer"_s, file, u"1"_s, u"600"_s});
        writer.waitForStarted();
    }
    measureKeys(view, size);
    view.end();
    writer.kill();
    writer.waitForFinished();
    return 0;
}

} // namespace
} // namespace melovane::bench

int main(int argc, char** argv)
{
    using namespace Qt::Literals::StringLiterals;
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    return melovane::bench::run(arguments.value(1, u"100000"_s).toInt(),
                                arguments.value(2) == "storm"_L1);
}
