#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "shell/console.h"
#include "shell/real_display.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using test::RealDisplay;
using test::runBeside;

TEST_F(RealDisplay, KeysOfTheKeyboardFilterTheListAndSortingAndFocusFollow)
{
    ASSERT_EQ(QGuiApplication::platformName(), u"xcb"_s);
    test::TestLibrary library;
    library.add({{u"Lichtspiel"_s, u"Ostwind"_s, {}, {}, 0},
                 {u"Licht aus"_s, u"Kanalratten"_s, {}, {}, 0},
                 {u"Brandung"_s, u"Trio"_s, {}, {}, 0}});
    test::Console console(library);
    console.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    DataGrid& grid = console.grid();
    // Whoever opens the window wants to search: the first letter needs no click.
    EXPECT_TRUE(console.searchLine().hasFocus());

    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"30"_s, u"licht"_s}));
    ASSERT_TRUE(test::waitFor([&] { return console.searchLine().text() == "licht"_L1; }));
    EXPECT_EQ(grid.model()->rowCount(), 2);
    EXPECT_EQ(console.control<QLabel>(u"MatchCount"_s).text(), u"2 Titel"_s);

    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"key"_s, u"Down"_s}));
    EXPECT_TRUE(test::waitFor([&grid] { return grid.hasFocus() && grid.currentRow() == 0; }));
    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"key"_s, u"ctrl+f"_s}));
    EXPECT_TRUE(test::waitFor([&console] { return console.searchLine().hasFocus(); }));
}

/// A console with an installation of its own in a folder, started and killed as processes.
class StartedConsole
{
public:
    explicit StartedConsole(const QStringList& files)
    {
        for (const QString& file : files) {
            EXPECT_TRUE(QFile::copy(m_shipped.filePath(file), m_folder.file(file)));
        }
    }

    /// A process of it, with folders of the user that nobody else has.
    std::unique_ptr<QProcess> start()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& place :
             {u"XDG_RUNTIME_DIR"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s}) {
            environment.insert(place, m_folder.path());
        }
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->start(m_folder.file(u"MelovaneDB"_s), {});
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    /// Puts a track into its library, before the start.
    void addTrack(const QString& title)
    {
        const SystemClock clock;
        const auto engine = sqlite::makeEngine(clock);
        engine->OpenDatabase(m_folder.file(u"melovane.mdb"_s))
            ->Execute(
                u"insert into db_all (FID,Titel,DEL) values ('900000000001','%1',0)"_s.arg(title));
    }

    void setSettings(const QByteArray& text) { m_folder.write(u"melovane.ini"_s, text); }

    [[nodiscard]] QByteArray settings() { return m_folder.read(m_folder.file(u"melovane.ini"_s)); }

    [[nodiscard]] const test::TempFolder& folder() const { return m_folder; }

private:
    test::TempFolder m_folder;
    QDir m_shipped = QFileInfo(QString::fromUtf8(MLV_CONSOLE)).dir();
};

void killAndWait(QProcess& process)
{
    process.kill();
    process.waitForFinished();
}

/// What xdotool prints; empty when it fails.
QString asked(const QStringList& question)
{
    QProcess process;
    process.start(u"xdotool"_s, question);
    EXPECT_TRUE(test::waitFor([&process] { return process.state() == QProcess::NotRunning; }));
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString consoleWindow()
{
    return asked({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Melovane DB "_s});
}

TEST_F(RealDisplay, ASecondStartBringsTheFirstCopyToTheFrontAlsoFromTheTaskBar)
{
    StartedConsole console({u"MelovaneDB"_s, u"melovane.mdb"_s, u"melovane.ini"_s});
    const auto first = console.start();
    QString window;
    ASSERT_TRUE(test::waitFor([&] { return !(window = consoleWindow()).isEmpty(); }));
    QWidget other;
    other.showMaximized();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other, test::kLongWaitMs));
    for (const bool minimised : {false, true}) {
        if (minimised) {
            asked({u"windowminimize"_s, window});
            ASSERT_TRUE(test::waitFor([] { return consoleWindow().isEmpty(); }));
        }
        const auto second = console.start();
        EXPECT_TRUE(test::waitFor([&] { return second->state() == QProcess::NotRunning; }));
        EXPECT_EQ(second->exitCode(), 0);
        EXPECT_TRUE(test::waitFor([&] { return asked({u"getactivewindow"_s}) == window; }));
        EXPECT_EQ(consoleWindow(), window);
    }
    killAndWait(*first);
}

TEST_F(RealDisplay, AfterAKillTheNextStartIsTheOnlyCopy)
{
    StartedConsole console({u"MelovaneDB"_s, u"melovane.mdb"_s, u"melovane.ini"_s});
    for (int round = 0; round < 2; ++round) {
        const auto copy = console.start();
        EXPECT_TRUE(test::waitFor([] { return !consoleWindow().isEmpty(); }));
        killAndWait(*copy);
        EXPECT_TRUE(test::waitFor([] { return consoleWindow().isEmpty(); }));
    }
}

/// Left, top, width and height of a window on the screen.
QString placeOf(const QString& window)
{
    return asked({u"getwindowgeometry"_s, window}).section(u'\n', 1);
}

/// Ends a console as its user does.
void quit(QProcess& process, const QString& window)
{
    asked({u"windowactivate"_s, u"--sync"_s, window, u"key"_s, u"ctrl+q"_s});
    EXPECT_TRUE(test::waitFor([&process] { return process.state() == QProcess::NotRunning; }));
}

QString shownConsole()
{
    QString window;
    EXPECT_TRUE(test::waitFor([&] { return !(window = consoleWindow()).isEmpty(); }));
    EXPECT_TRUE(test::waitFor([&] { return asked({u"getactivewindow"_s}) == window; }));
    return window;
}

TEST_F(RealDisplay, PlaceAndSearchComeBackWithoutDriftUnderAWindowManager)
{
    StartedConsole console({u"MelovaneDB"_s, u"melovane.mdb"_s, u"melovane.ini"_s});
    console.addTrack(u"Brandung"_s);
    auto process = console.start();
    QString window = shownConsole();
    asked({u"windowsize"_s, u"--sync"_s, window, u"900"_s, u"640"_s});
    asked({u"windowmove"_s, u"--sync"_s, window, u"150"_s, u"90"_s});
    asked({u"type"_s, u"brand"_s});
    ASSERT_TRUE(test::waitFor([&] { return placeOf(window).contains(u"900x640"_s); }));
    QStringList places;
    for (int round = 0; round < 3; ++round) {
        places.append(placeOf(window));
        quit(*process, window);
        EXPECT_TRUE(console.settings().contains("LastDbSearch=brand"));
        process = console.start();
        window = shownConsole();
    }
    EXPECT_EQ(places[1], places[0]);
    EXPECT_EQ(places[2], places[0]);
    killAndWait(*process);
}

TEST_F(RealDisplay, AStoredPlaceOutsideTheScreenIsIgnored)
{
    StartedConsole console({u"MelovaneDB"_s, u"melovane.mdb"_s, u"melovane.ini"_s});
    console.addTrack(u"Brandung"_s);
    console.setSettings("[DBPosition]\nLeft=3000\nTop=2000\nWhidth=640\nHeight=400\n");
    const auto process = console.start();
    const QString place = placeOf(shownConsole());
    EXPECT_FALSE(place.contains(u"640x400"_s)) << place.toStdString();
    EXPECT_FALSE(place.contains(u"3000"_s)) << place.toStdString();
    killAndWait(*process);
}

TEST_F(RealDisplay, ADatabaseThatIsDestroyedUnderTheWindowEndsNothing)
{
    StartedConsole console({u"MelovaneDB"_s, u"melovane.mdb"_s, u"melovane.ini"_s});
    console.addTrack(u"Brandung"_s);
    const auto process = console.start();
    const QString window = shownConsole();
    asked({u"type"_s, u"b"_s});
    // Whoever did this wrote over the file in place: its pages are there and mean nothing.
    QFile database(console.folder().file(u"melovane.mdb"_s));
    ASSERT_TRUE(database.open(QIODevice::ReadWrite));
    database.write(QByteArray(database.size(), 'x'));
    database.close();
    for (const QString& key : {u"Down"_s, u"5"_s, u"Delete"_s, u"F5"_s, u"ctrl+a"_s, u"ctrl+c"_s,
                               u"Return"_s, u"Menu"_s, u"Escape"_s, u"ctrl+f"_s}) {
        asked({u"key"_s, key});
    }
    asked({u"type"_s, u"rand*"_s});
    // It still answers: the keys have all been heard when the program ends by one of them.
    quit(*process, window);
    EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process->exitCode(), 0);
}

TEST_F(RealDisplay, ATitleStandsOnTheScreenAsItIsWithoutTheProgramsName)
{
    // Without a database beside it the program says so, in a dialog of its own.
    StartedConsole console({u"MelovaneDB"_s});
    const auto process = console.start();
    EXPECT_TRUE(test::waitFor([] {
        return runBeside(u"xdotool"_s,
                         {u"search"_s, u"--name"_s, uR"(^Melovane 3\.4 build\(150\)$)"_s});
    }));
    killAndWait(*process);
}

TEST_F(RealDisplay, TheDockedWindowComesOutOfTheTaskBarAndFillsTheLowerHalfWithItsFrame)
{
    test::TestLibrary library;
    library.add({{u"Brandung"_s, u"Trio"_s, {}, {}, 0}});
    test::Console console(library);
    console.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    console.window.setGeometry(60, 80, 640, 400);
    ASSERT_TRUE(test::waitFor([&] { return console.window.geometry().top() == 80; }));
    console.window.showMinimized();
    ASSERT_TRUE(test::waitFor([&] { return console.window.isMinimized(); }));
    console.message->setTarget(console.message->handle());
    console.message->Send(1049, 0, 0);
    const QRect area = console.window.screenArea();
    const QRect half = area.adjusted(0, area.height() / 2, 0, 0);
    EXPECT_TRUE(test::waitFor([&] {
        return !console.window.isMinimized() && console.window.frameGeometry() == half;
    })) << console.window.frameGeometry().top()
        << ' ' << console.window.frameGeometry().height();
    console.message->Send(1051, 0, 0);
    EXPECT_TRUE(
        test::waitFor([&] { return console.window.geometry() == QRect(60, 80, 640, 400); }));
}

TEST_F(RealDisplay, OverAnEmptyLibraryTheTitleBarIsPartOfTheFirstPlace)
{
    test::TestLibrary library;
    test::Console console(library);
    console.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    const QRect area = console.window.screenArea();
    const QSize wanted = (area.size() * 2 / 3).expandedTo({800, 600}).boundedTo(area.size());
    EXPECT_TRUE(test::waitFor([&] {
        const QRect outer = console.window.frameGeometry();
        return outer.top() < console.window.geometry().top() && outer.size() == wanted;
    })) << console.window.frameGeometry().top()
        << ' ' << console.window.frameGeometry().height() << ' ' << wanted.height();
    EXPECT_EQ(console.window.frameGeometry().center(), area.center());
}

TEST_F(RealDisplay, AMaximisedWindowIsDockedWithTheFrameThatItThenHas)
{
    test::TestLibrary library;
    library.add({{u"Brandung"_s, u"Trio"_s, {}, {}, 0}});
    test::Console console(library);
    console.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    console.window.setGeometry(60, 80, 640, 400);
    ASSERT_TRUE(test::waitFor([&] { return console.window.frameGeometry().top() < 80; }));
    const QRect outer = console.window.frameGeometry();
    const QRect inner = console.window.geometry();
    console.window.showMaximized();
    ASSERT_TRUE(test::waitFor([&] { return console.window.width() > 900; }));
    console.message->setTarget(console.message->handle());
    console.message->Send(1049, 0, 0);
    const QRect area = console.window.screenArea();
    const QRect half = area.adjusted(0, area.height() / 2, 0, 0);
    const QString id = QString::number(console.window.winId());
    const QString width = u"WIDTH=%1\n"_s.arg(half.width() - outer.width() + inner.width());
    const QString height = u"HEIGHT=%1\n"_s.arg(half.height() - outer.height() + inner.height());
    QString seen;
    EXPECT_TRUE(test::waitFor([&] {
        seen = asked({u"getwindowgeometry"_s, u"--shell"_s, id});
        return seen.contains(width) && seen.contains(height) &&
               console.window.frameGeometry() == half;
    })) << seen.toStdString()
        << "\nwanted " << (width + height).toStdString();
}

} // namespace
} // namespace melovane
