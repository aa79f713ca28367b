// The line that finds everything, with as many names of tree rows behind it: how long a key press
// holds the window, and how long the user waits for the rows. Milliseconds, wall time and, beside
// it, the processor's; a key press is a turn of the window's thread with the painting.
//
// Usage: quick_bench [names = 1000000]
// Needs no screen (QT_QPA_PLATFORM=offscreen) and keeps nothing.

#include "bench/measure.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/qt_worker.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "settings/setting_pages.h"
#include "shell/ui/quick_open_dialog.h"
#include "store/check_database.h"
#include "store/shipped_database.h"
#include "trees/row_search.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What a press may hold the window: a frame.
constexpr double kBar = 16;
constexpr size_t kRows = 100;
constexpr int kCommands = 400;

const QString kTyped = u"sommer nacht am fluss"_s;

void fill(Database& library, int names)
{
    static const QStringList kWords{u"Sommer"_s, u"Nacht"_s, u"Fluss"_s, u"Licht"_s,
                                    u"Hafen"_s,  u"am"_s,    u"Regen"_s, u"Welle"_s};
    Transaction rows(library);
    const auto albums = library.bulkInsert(u"tree_album"_s, {u"Name"_s, u"anzahl"_s});
    for (int i = 0; i < names; ++i) {
        albums->add(
            {u"%1 %2 %3 %4"_s.arg(kWords[i % 8], kWords[i / 8 % 8], kWords[i / 64 % 8]).arg(i), 1});
    }
    albums->finish();
    rows.commit();
}

class Bench
{
public:
    Bench(Worker& worker, const QString& library, const ConfigObjects& texts)
        : m_search(
              worker,
              [library](const std::function<void(Database&)>& work) {
                  const SystemClock clock;
                  work(*sqlite::makeEngine(clock)->OpenDatabase(library));
              },
              kRows)
        , m_dialog(texts, commands(), [this](const QString& typed, const auto& answer) {
            m_search.find(typed, [this, answer](const std::vector<NamedRowPlace>& found) {
                std::vector<QuickEntry> entries;
                entries.reserve(found.size());
                for (const NamedRowPlace& row : found) {
                    entries.push_back({.title = row.name, .kind = u"Album"_s});
                }
                m_longestAnswer =
                    std::max(m_longestAnswer, measured([&] { answer(std::move(entries)); }).wall);
                ++m_answers;
            });
        })
    {
        m_dialog.show();
        QApplication::processEvents();
    }

    void run()
    {
        QElapsedTimer reading;
        reading.start();
        press(kTyped[0]);
        // Keys that are typed while the names are still read.
        press(kTyped[1]);
        waitForAnswer();
        std::printf("  rows of the first letters   %8.1f\n", double(reading.nsecsElapsed()) / 1e6);
        double slowest = 0;
        for (const QChar letter : kTyped.mid(2)) {
            QElapsedTimer waiting;
            waiting.start();
            press(letter);
            waitForAnswer();
            slowest = std::max(slowest, double(waiting.nsecsElapsed()) / 1e6);
        }
        std::ranges::sort(m_presses);
        std::printf("  rows of a letter, longest   %8.1f\n", slowest);
        std::printf("  key press, median           %8.1f\n", m_presses[m_presses.size() / 2]);
        std::printf("  key press, longest          %8.1f   bar %.0f, %s\n", m_presses.back(), kBar,
                    m_presses.back() <= kBar ? "met" : "MISSED");
        std::printf("  rows put before the user    %8.1f   bar %.0f, %s\n", m_longestAnswer, kBar,
                    m_longestAnswer <= kBar ? "met" : "MISSED");
    }

private:
    static std::vector<QuickEntry> commands()
    {
        std::vector<QuickEntry> entries;
        entries.reserve(kCommands);
        for (int i = 0; i < kCommands; ++i) {
            entries.push_back({.title = u"Ansicht: Spalten %1 der Sommerliste ..."_s.arg(i),
                               .kind = u"Befehl"_s,
                               .key = u"Strg+%1"_s.arg(i)});
        }
        return entries;
    }

    void press(QChar letter)
    {
        m_seen = m_answers;
        auto* const line = m_dialog.findChild<QLineEdit*>(u"txtQuick"_s);
        const Cost cost = measured([&] {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(line, &key);
            QApplication::sendPostedEvents();
            m_dialog.repaint();
        });
        m_presses.push_back(cost.wall);
    }

    void waitForAnswer()
    {
        while (m_answers == m_seen) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    RowSearch m_search;
    QuickOpenDialog m_dialog;
    std::vector<double> m_presses;
    double m_longestAnswer = 0;
    int m_answers = 0;
    int m_seen = 0;
};

int runBench(int names)
{
    const QTemporaryDir folder;
    const SystemClock clock;
    const QString library = folder.filePath(u"melovane.mdb"_s);
    const auto engine = sqlite::makeEngine(clock);
    LinuxFiles files;
    buildShippedDatabase(*engine, files, QStringLiteral(MLV_SCHEMA_FOLDER), library);
    const ErrorSink none = [](const QString&, const QString&) {};
    CheckDatabase check(*engine, files, clock, {library, folder.path(), {}}, none);
    static_cast<void>(check.checkTreeTables());
    fill(*engine->OpenDatabase(library), names);
    LinuxEnvironment environment;
    IniProfile profile(files);
    Mod_API paths(environment, files);
    ConfigObjects texts(paths, profile, files);
    MelovaneConfiguration::fill(texts);
    std::printf("%d names\n", names);
    Cost end;
    {
        QtWorker worker; // of the whole program, as in the console
        auto bench = std::make_unique<Bench>(worker, library, texts);
        bench->run();
        end = measured([&] { bench.reset(); });
    }
    std::printf("  closed                      %8.1f   bar %.0f, %s\n", end.wall, kBar,
                end.wall <= kBar ? "met" : "MISSED");
    std::printf("  resident                    %8.1f MB\n", residentMegabytes());
    return 0;
}

} // namespace
} // namespace melovane::bench

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    constexpr int kNames = 1'000'000;
    return melovane::bench::runBench(argc > 1 ? QByteArray(argv[1]).toInt() : kNames);
}
