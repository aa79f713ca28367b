#include "support/suite_fixture.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

/// The program itself, as a user starts it.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ConsoleFolder : public SuiteFixture
{
protected:
    void SetUp() override
    {
        suite.library.add({.Titel = u"Brandung"_s});
        suite.engine->Release(suite.dbName());
        // Beside it stands no other program of the suite that it could start.
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_CONSOLE), suite.file(u"MelovaneDB"_s)));
    }

    /// Runs it in a home of its own until its window stands.
    void start(QProcess& console, const QStringList& arguments, const QString& mark)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const QString& variable :
             {u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_STATE_HOME"_s}) {
            environment.remove(variable);
        }
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
        console.setProcessEnvironment(environment);
        console.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        console.start(suite.file(u"MelovaneDB"_s), arguments);
        ASSERT_TRUE(waitFor(
            [&] { return QFile::exists(mark) || console.state() == QProcess::NotRunning; }));
        ASSERT_EQ(console.state(), QProcess::Running);
    }

    static void end(QProcess& console, int signal)
    {
        ASSERT_EQ(::kill(pid_t(console.processId()), signal), 0);
        EXPECT_TRUE(waitFor([&] { return console.state() == QProcess::NotRunning; }));
    }

    TempFolder home;
    TempFolder runtime;
};

TEST_F(ConsoleFolder, WithADataFolderOfItsOwnEverythingOfTheUserLiesThere)
{
    const TempFolder data;
    const QStringList before = QDir(suite.dataFolder()).entryList(QDir::Files);
    QProcess console;
    start(console, {u"--data-dir"_s, data.path()}, data.file(u"Melovane/MelovaneDB.running"_s));
    // A second one with another folder is no second copy of it.
    const TempFolder other;
    QProcess second;
    start(second, {u"--data-dir="_s + other.path()}, other.file(u"Melovane/MelovaneDB.running"_s));
    end(second, SIGTERM);
    end(console, SIGTERM);
    EXPECT_EQ(console.exitCode(), 0);
    EXPECT_TRUE(QFile::exists(data.file(u"Melovane/melovane.mdb"_s)));
    EXPECT_TRUE(QFile::exists(data.file(u"Melovane/melovane.ini"_s)));
    EXPECT_EQ(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
    EXPECT_EQ(QDir(suite.dataFolder()).entryList(QDir::Files), before);
}

TEST_F(ConsoleFolder, AFaultLeavesAReportBesideTheSettings)
{
    QProcess console;
    start(console, {}, suite.file(u"MelovaneDB.running"_s));
    EXPECT_FALSE(QFile::exists(suite.file(u"MelovaneDB.crash"_s)));
    end(console, SIGSEGV);
    EXPECT_EQ(console.exitStatus(), QProcess::CrashExit);
    const QString report = QString::fromUtf8(suite.read(u"MelovaneDB.crash"_s));
    EXPECT_TRUE(report.startsWith(u"MelovaneDB (Melovane) "_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u"\nSignal 11\n"_s));
    EXPECT_TRUE(report.contains(u"libQt6Core.so.6+0x"_s));
    EXPECT_FALSE(report.contains(u'/'));
}

} // namespace
} // namespace melovane::test
