// The tag tool for new files, a process of its own, beside a real console in another one.
#include "shell/console_process.h"
#include "support/mp3_maker.h"
#include "support/wait_for.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class BenchBesideConsole : public SuiteFixture
{
protected:
    void SetUp() override
    {
        suite.library.add({.Titel = u"Alt"_s, .Interpret = u"Wer"_s});
        suite.folders.makeSettings()->SetDbName(suite.dbName());
        suite.engine->Release(suite.dbName());
        for (const QString& name : {u"eins.mp3"_s, u"zwei.mp3"_s}) {
            music.write(name, simpleMp3(name, u"Anna"_s));
        }
        const QString program = suite.file(u"tagbench"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_BENCH_HAND), program));
        console = std::make_unique<ConsoleProcess>(suite, u"MelovaneDB"_s,
                                                   suite.folders.places().runtimeBase);
        console->act({u"search"_s, u"A"_s}); // begins the old title and the artist of the new ones
        m_tool.setProcessEnvironment(console->environment());
        m_tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_tool.start(program, QStringList());
        ASSERT_TRUE(waitFor([this] { return tool({u"state"_s}).contains(u"rows"_s); }));
    }

    void TearDown() override
    {
        m_tool.closeWriteChannel();
        EXPECT_TRUE(ended(m_tool));
    }

    /// Has the tool's user do something, and gives what stands on its screen then.
    QJsonObject tool(const QStringList& words)
    {
        m_tool.write(
            QJsonDocument(QJsonArray::fromStringList(words)).toJson(QJsonDocument::Compact) + '\n');
        const bool isAnswered = waitFor(
            [this] { return m_tool.canReadLine() || m_tool.state() == QProcess::NotRunning; });
        EXPECT_TRUE(isAnswered && m_tool.canReadLine()) << words.join(u' ').toStdString();
        return QJsonDocument::fromJson(m_tool.readLine()).object();
    }

    [[nodiscard]] bool consoleShows(int tracks)
    {
        return waitFor([&] { return console->state()[u"tracks"_s].toInt() == tracks; });
    }

    /// Of the two new files.
    [[nodiscard]] QStringList cells(const QString& column)
    {
        const QStringList result = suite.column(
            u"select %1 from db_all where Interpret='Anna' order by DName"_s.arg(column));
        suite.engine->Release(suite.dbName());
        return result;
    }

    TempFolder music;
    std::unique_ptr<ConsoleProcess> console;

private:
    QProcess m_tool;
};

TEST_F(BenchBesideConsole, WhatIsImportedIsInTheRunningConsoleAtOnce)
{
    EXPECT_EQ(tool({u"folder"_s, music.path()})[u"rows"_s].toInt(), 2);
    tool({u"type"_s, u"txtAlbum"_s, u"Neuland"_s});
    EXPECT_TRUE(consoleShows(1)) << "nothing is applied yet";
    EXPECT_EQ(tool({u"apply"_s})[u"said"_s].toString(), u"2 Titel geschrieben."_s);
    EXPECT_TRUE(consoleShows(3));
    console->act({u"search"_s, u"Neuland"_s});
    EXPECT_TRUE(consoleShows(2));
    EXPECT_EQ(cells(u"Album"_s), (QStringList{u"Neuland"_s, u"Neuland"_s}));
    // A file that the library knows now is no new one, whichever program asks.
    EXPECT_EQ(tool({u"folder"_s, music.path()})[u"rows"_s].toInt(), 2);
}

TEST_F(BenchBesideConsole, AFieldThatTheConsoleChangesMeanwhileIsOverwrittenOnlyKnowingly)
{
    tool({u"folder"_s, music.path()});
    tool({u"apply"_s});
    ASSERT_TRUE(consoleShows(3));
    tool({u"type"_s, u"txtNote"_s, u"3"_s});
    console->act({u"search"_s, u"eins"_s});
    ASSERT_TRUE(consoleShows(1));
    console->act({u"rate"_s, u"0"_s, u"1"_s, u"2"_s});
    // Digits are school marks: the second best of five.
    EXPECT_EQ(cells(u"Note"_s), (QStringList{u"4"_s, QString()}));
    const QJsonArray told = tool({u"apply"_s})[u"told"_s].toArray();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[1].toString().endsWith(u"eins.mp3: Inzwischen anderswo geändert"_s));
    EXPECT_EQ(cells(u"Note"_s), (QStringList{u"4"_s, u"3"_s}));
    // Who has read it may do so all the same.
    tool({u"apply"_s});
    EXPECT_EQ(cells(u"Note"_s), (QStringList{u"3"_s, u"3"_s}));
}

TEST_F(BenchBesideConsole, AConsoleThatHangsHoldsNoImportUpAndShowsItWhenItGoesOn)
{
    tool({u"folder"_s, music.path()});
    console->stop();
    EXPECT_EQ(tool({u"apply"_s})[u"rows"_s].toInt(), 2);
    EXPECT_EQ(cells(u"FID"_s).size(), 2);
    console->goOn();
    EXPECT_TRUE(consoleShows(3));
}

TEST_F(BenchBesideConsole, AnImportIsTakenBackByTheConsoleInOneStep)
{
    tool({u"folder"_s, music.path()});
    tool({u"type"_s, u"txtAlbum"_s, u"Neuland"_s});
    tool({u"apply"_s});
    ASSERT_TRUE(consoleShows(3));
    EXPECT_EQ(console->act({u"undo"_s, u"1"_s})[u"done"_s].toInt(), 1);
    EXPECT_EQ(cells(u"Album"_s), (QStringList{QString(), QString()}));
    EXPECT_EQ(console->act({u"redo"_s, u"1"_s})[u"done"_s].toInt(), 1);
    EXPECT_EQ(cells(u"Album"_s), (QStringList{u"Neuland"_s, u"Neuland"_s}));
}

} // namespace
} // namespace melovane::test
