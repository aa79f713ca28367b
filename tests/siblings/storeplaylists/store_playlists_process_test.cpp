#include "platform/linux/job_locks.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_file_lock.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The program as the console starts it: beside its settings and its database.
class StorePlaylistsProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_program = suite.file(u"Task.StorePlaylists"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_STOREPLAYLISTS), m_program));
        m_list = suite.library.addPlaylist({.Name = u"Größte Hits"_s,
                                            .GRID = suite.library.addGroup(u"Rock"_s),
                                            .tracks = {suite.library.add({})},
                                            .Sicherung = true});
    }

    QString run(int code)
    {
        QProcess process;
        process.start(m_program, {u"--quiet"_s});
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), code);
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    }

    QString m_program;
    int m_list = 0;
};

TEST_F(StorePlaylistsProcess, WritesTheChangedListsOfTheSettingsAndTellsThem)
{
    const TempFolder folder;
    suite.write(u"melovane.ini"_s,
                "[Global]\nPlaylistVerzeichnis=" + folder.path().toUtf8() + "/Listen/\n");
    const QString file = folder.file(u"Listen/Rock/Größte Hits.m3u"_s);
    EXPECT_TRUE(run(0).startsWith(file + u"\n1 Playliste in "_s));
    EXPECT_TRUE(folder.read(file).startsWith("#Melovane-M3U "));
    EXPECT_EQ(suite.value(u"select sicherung from pl_name"_s).toLong(), 0);
    EXPECT_TRUE(run(0).startsWith(u"0 Playlisten in "_s));
}

TEST_F(StorePlaylistsProcess, WhatFailsIsToldAndEndsWithOne)
{
    const TempFolder folder;
    folder.write(u"Listen"_s, "no folder");
    suite.write(u"melovane.ini"_s,
                "[Global]\nPlaylistVerzeichnis=" + folder.path().toUtf8() + "/Listen/\n");
    EXPECT_TRUE(run(1).contains(u"1 Playliste wurde nicht gespeichert:\n\nGrößte Hits: "_s));
    EXPECT_EQ(suite.value(u"select sicherung from pl_name"_s).toLong(), -1);
}

TEST_F(StorePlaylistsProcess, WhenTheLibraryOfTheSettingsIsAwayItLeavesTheDefaultOneAlone)
{
    const TempFolder folder;
    suite.write(u"melovane.ini"_s, "[Global]\nDBName=/away/club.mdb\nPlaylistVerzeichnis=" +
                                       folder.path().toUtf8() + "/Listen/\n");
    const QString told = run(1);
    EXPECT_TRUE(told.contains(u"/away/club.mdb"_s)) << told.toStdString();
    EXPECT_FALSE(QFile::exists(folder.file(u"Listen"_s)));
    EXPECT_EQ(suite.value(u"select sicherung from pl_name"_s).toLong(), -1);
}

TEST_F(StorePlaylistsProcess, WithoutItsDatabaseItSaysSo)
{
    suite.engine->Release(suite.dbName());
    QFile::remove(suite.dbName());
    EXPECT_TRUE(run(1).contains(u"nicht gespeichert"_s));
}

TEST_F(StorePlaylistsProcess, ASecondOneWaitsForTheFirstOfItsLibrary)
{
    suite.write(u"melovane.ini"_s,
                "[Global]\nPlaylistVerzeichnis=" + suite.file(u"Listen"_s).toUtf8() + "/\n");
    const QString path = jobLockFile(suite.files, {LinuxEnvironment().runtimeFolder()},
                                     u"storeplaylists"_s, suite.dbName());
    auto first = lockFile(path, std::chrono::milliseconds::zero());
    ASSERT_TRUE(first);
    QProcess second;
    second.start(m_program, {u"--quiet"_s});
    ASSERT_TRUE(second.waitForStarted());
    const QDir open(u"/proc/%1/fd"_s.arg(second.processId()));
    const auto isAtTheLock = [&] {
        const QStringList files = open.entryList(QDir::Files | QDir::System);
        return std::any_of(files.begin(), files.end(), [&](const QString& file) {
            return QFile::symLinkTarget(open.filePath(file)) == path;
        });
    };
    ASSERT_TRUE(waitFor(isAtTheLock));
    EXPECT_EQ(second.state(), QProcess::Running);
    EXPECT_FALSE(QFile::exists(suite.file(u"Listen/Rock/Größte Hits.m3u"_s)));
    first.reset();
    EXPECT_TRUE(second.waitForFinished(60'000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(QFile::exists(suite.file(u"Listen/Rock/Größte Hits.m3u"_s)));
}

} // namespace
} // namespace melovane::test
