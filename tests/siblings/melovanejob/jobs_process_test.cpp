#include "bus/message_numbers.h"
#include "platform/linux/job_locks.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/tag_reader.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>

#include <csignal>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The program as the console starts it, beside its settings, its library and the other programs;
/// this test is the console.
class JobsProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        for (const auto& [name, file] : {std::pair(u"MelovaneJob"_s, MLV_MELOVANEJOB),
                                         {u"Task.RebuildTree"_s, MLV_REBUILDTREE},
                                         {u"Task.StorePlaylists"_s, MLV_STOREPLAYLISTS}}) {
            ASSERT_TRUE(QFile::copy(QString::fromUtf8(file), suite.file(name)));
        }
        m_console = m_messages.makeControl();
        m_console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            m_heard.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        suite.write(u"melovane.ini"_s,
                    "[Message]\nHandle.DB=" + QByteArray::number(m_console->handle()) +
                        "\n[Global]\nPlaylistVerzeichnis=" + suite.file(u"Lists"_s).toUtf8() +
                        "\n");
        // Long enough for a look at what others do, as short as it may be.
        suite.write(u"MelovaneJob.ini"_s, "[Global]\nPause=5\n");
    }

    void start(QProcess& process)
    {
        process.start(suite.file(u"MelovaneJob"_s), QStringList());
        ASSERT_TRUE(process.waitForStarted());
    }

    [[nodiscard]] MessageHandle published()
    {
        return suite.makeSettings()->GetKeyValueLong(u"Global"_s, u"MessageHandleJobs"_s, 0);
    }

    void startAndWait(QProcess& process)
    {
        start(process);
        ASSERT_TRUE(waitFor([this] { return m_messages.IsMsgWindow(published()); }));
    }

    void tell(qint32 id)
    {
        m_console->setTarget(published());
        EXPECT_TRUE(m_console->SendWithin(std::chrono::seconds(10), id, 0, m_console->handle()));
    }

    static void expectEnd(QProcess& process)
    {
        EXPECT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
    }

    /// A job that works until it is ended, and leaves its number and its arguments behind.
    void installEndlessJob()
    {
        const QString job =
            suite.write(u"Task.WriteTags"_s, "#!/bin/sh\ncd \"$(dirname \"$0\")\"\n"
                                             "echo \"$$ $* $MELOVANE_WINDOW\" >> started\n"
                                             "exec sleep 1000\n");
        QFile::setPermissions(job, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        suite.execute(u"insert into db_edit (FID) values ('000000000001')"_s);
    }

    [[nodiscard]] QList<QByteArray> started() const
    {
        return QFile::exists(suite.file(u"started"_s))
                   ? suite.read(u"started"_s).trimmed().split('\n')
                   : QList<QByteArray>();
    }

    [[nodiscard]] QString jobLock()
    {
        return jobLockFile(suite.files, {LinuxEnvironment().runtimeFolder()}, u"job"_s,
                           suite.dbName());
    }

    LinuxMessages m_messages{MessagePlace(LinuxEnvironment().runtimeFolder())};
    std::unique_ptr<KSMessage> m_console;
    QStringList m_heard;
};

TEST_F(JobsProcess, WhenTheConsoleIsIdleListsAreWrittenAndTreesRebuilt)
{
    suite.library.add({.Interpret = u"Anna"_s, .Album = u"Eins"_s});
    suite.execute(u"insert into ChangeTree ( TreeName ) values ( 'Album' )"_s);
    suite.execute(u"insert into pl_group (grid, name) values (77, 'Club')"_s);
    suite.execute(u"insert into pl_name (nid, grid, name, sicherung) "
                  "values (77, 77, 'Abend', true)"_s);
    QProcess jobs;
    startAndWait(jobs);
    EXPECT_TRUE(waitFor([this] {
        return suite.column(u"select Name from tree_album"_s) == QStringList{u"Eins"_s};
    }));
    EXPECT_TRUE(waitFor([this] { return m_heard.contains(u"1056 200 1111111"_s); }));
    EXPECT_TRUE(QFile::exists(suite.file(u"Lists/Club/Abend.m3u"_s)));
    EXPECT_EQ(suite.value(u"select count(*) from pl_name where sicherung"_s).toLong(), 0);
    tell(message::kEndJobs);
    expectEnd(jobs);
    EXPECT_EQ(published(), 0);
}

TEST_F(JobsProcess, WhenTheConsoleIsIdleAChangedTrackIsInItsFile)
{
    ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_WRITETAGS), suite.file(u"Task.WriteTags"_s)));
    const QString file = suite.write(u"a.mp3"_s, simpleMp3(u"Old"_s, u"Anna"_s));
    const QString fid = suite.library.add({.Titel = u"Neu"_s,
                                           .Interpret = u"Anna"_s,
                                           .Path = suite.dataFolder() + u'/',
                                           .DName = u"a.mp3"_s});
    suite.execute(u"insert into db_edit (FID) values ('%1')"_s.arg(fid));
    QProcess jobs;
    startAndWait(jobs);
    EXPECT_TRUE(
        waitFor([this] { return suite.value(u"select count(*) from db_edit"_s).toLong() == 0; }));
    EXPECT_EQ(linux_media::makeTagReader()->read(file).tags.id3v2.Titel, u"Neu"_s);
    tell(message::kEndJobs);
    expectEnd(jobs);
    EXPECT_EQ(m_heard, QStringList()) << "nobody has asked the console to tell what was done";
}

TEST_F(JobsProcess, ASecondOneLeavesTheLibraryToTheFirst)
{
    QProcess first;
    startAndWait(first);
    const MessageHandle handle = published();
    QProcess second;
    start(second);
    expectEnd(second);
    EXPECT_EQ(published(), handle);
    EXPECT_EQ(first.state(), QProcess::Running);
    tell(message::kEndJobs);
    expectEnd(first);
}

TEST_F(JobsProcess, AskedForTheLibraryItEndsItsJobAnswersAndEnds)
{
    installEndlessJob();
    QProcess jobs;
    startAndWait(jobs);
    ASSERT_TRUE(waitFor([this] { return !started().isEmpty(); }));
    EXPECT_TRUE(isLocked(jobLock()));
    const QList<QByteArray> words = started().first().split(' ');
    ASSERT_EQ(words.size(), 4);
    EXPECT_EQ(words[1].toInt(), published());
    EXPECT_EQ(words[2], "--quiet");
    EXPECT_EQ(words[3], "hidden");
    tell(message::kReleaseDatabase);
    EXPECT_EQ(m_heard, QStringList{u"1037 0 2"_s});
    EXPECT_NE(::kill(words[0].toInt(), 0), 0) << "the job has let go before the answer";
    EXPECT_FALSE(isLocked(jobLock()));
    expectEnd(jobs);
}

TEST_F(JobsProcess, OneThatWasKilledLeavesItsJobAloneAndTheNextStartsNoOther)
{
    installEndlessJob();
    QProcess killed;
    startAndWait(killed);
    ASSERT_TRUE(waitFor([this] { return !started().isEmpty(); }));
    killed.kill();
    ASSERT_TRUE(killed.waitForFinished());
    const pid_t job = started().first().split(' ').first().toInt();
    EXPECT_TRUE(isLocked(jobLock()));

    // Two more things to do: they come behind the job that is still running.
    suite.execute(u"insert into ChangeTree ( TreeName ) values ( 'Album' )"_s);
    QProcess next;
    startAndWait(next);
    ::kill(job, SIGKILL);
    EXPECT_TRUE(waitFor([this] { return started().size() == 2; }));
    EXPECT_EQ(suite.value(u"select count(*) from ChangeTree"_s).toLong(), 1);
    next.terminate();
    expectEnd(next);
    EXPECT_FALSE(isLocked(jobLock()));
}

TEST_F(JobsProcess, ALibraryThatIsLentIsLeftAlone)
{
    LibraryLoan loan(suite.files, {LinuxEnvironment().runtimeFolder()});
    loan.begin(suite.dbName());
    QProcess jobs;
    start(jobs);
    expectEnd(jobs);
}

} // namespace
} // namespace melovane::test
