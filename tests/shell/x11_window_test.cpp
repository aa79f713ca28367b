#include "shell/console.h"
#include "support/temp_folder.h"

#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Runs a program while the window goes on handling events.
bool runBeside(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; },
                           20'000) &&
           process.exitCode() == 0;
}

TEST(RealDisplay, KeysOfTheKeyboardFilterTheListAndSortingAndFocusFollow)
{
    ASSERT_EQ(QGuiApplication::platformName(), u"xcb"_s);
    test::TestLibrary library;
    library.add({{u"Lichtspiel"_s, u"Ostwind"_s, {}, {}, 0},
                 {u"Licht aus"_s, u"Kanalratten"_s, {}, {}, 0},
                 {u"Brandung"_s, u"Trio"_s, {}, {}, 0}});
    test::Console console(library);
    console.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, 10'000));
    DataGrid& grid = console.grid();

    console.searchLine().focus();
    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"30"_s, u"licht"_s}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return console.searchLine().text() == "licht"_L1; }));
    EXPECT_EQ(grid.model()->rowCount(), 2);
    EXPECT_EQ(console.control<QLabel>(u"MatchCount"_s).text(), u"2 Titel"_s);

    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"key"_s, u"Down"_s}));
    EXPECT_TRUE(QTest::qWaitFor([&grid] { return grid.hasFocus() && grid.currentRow() == 0; }));
    ASSERT_TRUE(runBeside(u"xdotool"_s, {u"key"_s, u"ctrl+f"_s}));
    EXPECT_TRUE(QTest::qWaitFor([&console] { return console.searchLine().hasFocus(); }));
}

TEST(RealDisplay, ATitleStandsOnTheScreenAsItIsWithoutTheProgramsName)
{
    // Without a database beside it the program says so, under the caption of its dialogs.
    const test::TempFolder folder;
    const QString program = folder.file(u"MelovaneDB"_s);
    ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_CONSOLE), program));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& place : {u"XDG_RUNTIME_DIR"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s}) {
        environment.insert(place, folder.path());
    }
    QProcess console;
    console.setProcessEnvironment(environment);
    console.start(program, {});
    ASSERT_TRUE(console.waitForStarted());
    EXPECT_TRUE(QTest::qWaitFor(
        [] {
            return runBeside(u"xdotool"_s,
                             {u"search"_s, u"--name"_s, u"^Melovane 3[.]4 build[(]150[)]$"_s});
        },
        20'000));
    console.kill();
    console.waitForFinished();
}

} // namespace
} // namespace melovane
