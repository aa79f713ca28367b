#include "bus/message_numbers.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/tag_reader.h"
#include "platform/system/window_start.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <unistd.h>

#include <chrono>
#include <random>

namespace melovane::test {
namespace {

using namespace demomusic;
using namespace linux_media;
using namespace Qt::Literals::StringLiterals;

/// The program as the console starts it: beside its settings and its database.
class WriteTagsProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_program = suite.file(u"Task.WriteTags"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_WRITETAGS), m_program));
        LinuxMessages messages(MessagePlace(LinuxEnvironment().runtimeFolder()));
        m_console = messages.makeControl();
        m_console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            m_heard.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
    }

    /// A file whose tag has that much room, and its row with another title.
    void add(int padding)
    {
        const QString name = u"%1.mp3"_s.arg(m_names.size());
        m_names.append(name);
        const QByteArray sound = m_sound + QByteArray(1, char(m_names.size()));
        music.write(name,
                    Id3v2Writer(3).text("TIT2", u"Old"_s).frame("PRIV", "x").tag(padding) + sound);
        m_fids.append(
            suite.library.add({.Titel = u"Title 0"_s, .Path = music.path() + u'/', .DName = name}));
        suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(m_fids.last()));
    }

    QString run(const QStringList& arguments, int code)
    {
        QProcess process;
        process.start(m_program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), code);
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    }

    [[nodiscard]] QString titleIn(const QString& name) const
    {
        return LinuxTagReader().read(music.file(name)).tags.id3v2.Titel;
    }

    [[nodiscard]] qint64 waiting() const
    {
        return suite.value(u"select count(*) from db_edit"_s).toLong();
    }

    QString m_program;
    TempFolder music;
    QByteArray m_sound = constantStream(FrameFormat(), 30);
    QStringList m_names;
    QStringList m_fids;
    std::unique_ptr<KSMessage> m_console;
    QStringList m_heard;
};

TEST_F(WriteTagsProcess, WritesWhatWaitsAndTellsTheConsoleHowMany)
{
    add(500);
    add(0);
    (void)run({QString::number(m_console->handle())}, 0);
    EXPECT_EQ(titleIn(u"0.mp3"_s), u"Title 0"_s);
    EXPECT_EQ(titleIn(u"1.mp3"_s), u"Title 0"_s);
    EXPECT_EQ(waiting(), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"1056 100 2"_s});
}

TEST_F(WriteTagsProcess, TellsTheConsoleOfTheSettingsThatThereWasNothing)
{
    suite.write(u"melovane.ini"_s,
                "[Message]\nHandle.DB=" + QByteArray::number(m_console->handle()) + "\n");
    (void)run({}, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"1056 100 0"_s});
}

TEST_F(WriteTagsProcess, StartedOutOfSightItEndsAndShowsNothingEvenWhenSomethingFails)
{
    add(500);
    add(500);
    ASSERT_TRUE(QFile::remove(music.file(u"0.mp3"_s)));
    qputenv(windowstart::kVariable, windowstart::kHidden);
    (void)run({QString::number(m_console->handle())}, 1);
    qunsetenv(windowstart::kVariable);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"1056 100 1"_s});
    EXPECT_EQ(waiting(), 1);
}

TEST_F(WriteTagsProcess, QuietlyItPrintsWhatFailedAndWhy)
{
    add(500);
    add(500);
    ASSERT_TRUE(QFile::remove(music.file(u"0.mp3"_s)));
    const QString told = run({u"--quiet"_s}, 1);
    EXPECT_EQ(told, u"1 Datei geschrieben\n"
                    "1 Datei wurde nicht geschrieben, ihre Änderungen warten weiter\n"_s +
                        music.file(u"0.mp3"_s) + u": die Datei ist nicht da\n"_s);
    EXPECT_EQ(waiting(), 1);
    EXPECT_EQ(m_heard, QStringList());
}

TEST_F(WriteTagsProcess, ASecondOneLeaves)
{
    add(500);
    const FileFacts facts = suite.files.facts(suite.dbName()).value();
    OnlyCopy other(LinuxEnvironment().runtimeFolder(),
                   u"writetags-%1-%2"_s.arg(facts.device, 0, 16).arg(facts.inode, 0, 16));
    ASSERT_TRUE(other.claim());
    EXPECT_TRUE(run({u"--quiet"_s}, 1).contains(u"schon"_s));
    EXPECT_EQ(waiting(), 1);
}

TEST_F(WriteTagsProcess, ALentLibraryIsLeftAlone)
{
    add(500);
    LibraryLoan loan(suite.files, {LinuxEnvironment().runtimeFolder()});
    loan.begin(suite.dbName());
    EXPECT_FALSE(run({u"--quiet"_s}, 1).isEmpty());
    EXPECT_EQ(titleIn(u"0.mp3"_s), u"Old"_s);
    EXPECT_EQ(waiting(), 1);
}

TEST_F(WriteTagsProcess, ACallThatMakesNoSenseEndsWithTwo)
{
    EXPECT_FALSE(run({u"seven"_s}, 2).isEmpty());
    EXPECT_FALSE(run({u"1"_s, u"2"_s}, 2).isEmpty());
}

/// Writers that die at any moment.
class KilledWriter : public WriteTagsProcess
{
protected:
    /// Kills of a run: a few as a rule, more for tools/prove_tag_kills.sh.
    [[nodiscard]] static int rounds()
    {
        const int asked = qEnvironmentVariableIntValue("MLV_TAG_KILLS");
        return asked > 0 ? asked : 8;
    }

    /// Every track gets the title of the round and waits; every fourth needs more room than before.
    void change(int round)
    {
        const auto database = suite.open();
        Transaction transaction(*database);
        for (qsizetype i = 0; i < m_fids.size(); ++i) {
            const QString more = i % 4 == round % 4 ? QString((round % 7 + 1) * 700, u'n') : u""_s;
            database->Execute(
                u"update db_all set titel='Title %1', kommentar='%2' where fid='%3'"_s.arg(round)
                    .arg(more, m_fids[i]));
            database->Execute(u"insert into db_edit (fid) values ('%1')"_s.arg(m_fids[i]));
        }
        transaction.commit();
    }

    /// Each file is whole: its tag of this round or of the one before, its sound untouched, and the
    /// row of one that lacks the new title still waits.
    void check(int round)
    {
        const QStringList waitingFids = suite.column(u"select fid from db_edit"_s);
        for (qsizetype i = 0; i < m_names.size(); ++i) {
            const QByteArray bytes = music.read(m_names[i]);
            EXPECT_TRUE(bytes.endsWith(m_sound + QByteArray(1, char(i + 1)))) << i;
            EXPECT_TRUE(bytes.contains(QByteArray("PRIV\0\0\0\1\0\0x", 11))) << i;
            const MediaReading reading = LinuxTagReader().read(music.file(m_names[i]));
            EXPECT_EQ(reading.fault, MediaFault::None);
            const QString title = reading.tags.id3v2.Titel;
            const bool isNew = title == u"Title %1"_s.arg(round);
            EXPECT_TRUE(isNew || title == u"Title %1"_s.arg(round - 1)) << title.toStdString();
            EXPECT_TRUE(isNew || waitingFids.contains(m_fids[i])) << i;
        }
    }

    [[nodiscard]] QStringList leftovers() const
    {
        const auto hidden = QDir::Files | QDir::Hidden | QDir::System;
        return QDir(music.path()).entryList({u".mlv-*"_s}, hidden) +
               QDir(suite.file(u"tagjournal"_s)).entryList(hidden);
    }

    std::mt19937 m_random{20261122};
};

TEST_F(KilledWriter, NoFileIsHalfWrittenNoRowIsLostAndNothingIsLeft)
{
    constexpr int kFiles = 60;
    for (int i = 0; i < kFiles; ++i) {
        add(i % 2 == 0 ? 3000 : 0);
    }
    ASSERT_EQ(::link(QFile::encodeName(music.file(u"1.mp3"_s)).constData(),
                     QFile::encodeName(music.file(u"twin"_s)).constData()),
              0);
    run({u"--quiet"_s}, 0);
    QElapsedTimer whole;
    change(1);
    whole.start();
    run({u"--quiet"_s}, 0);
    const qint64 usual = std::max<qint64>(whole.nsecsElapsed() / 1000, 1000);
    int killed = 0;
    for (int round = 2; killed < rounds() && round < 4 * rounds() + 2; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        change(round);
        QProcess process;
        process.start(m_program, {u"--quiet"_s});
        ASSERT_TRUE(process.waitForStarted());
        const auto wait =
            std::chrono::microseconds(std::uniform_int_distribution<qint64>(0, usual)(m_random));
        const bool ended = process.waitForFinished(int(wait.count() / 1000));
        process.kill();
        process.waitForFinished();
        killed += ended ? 0 : 1;
        check(round);
        run({u"--quiet"_s}, 0);
        EXPECT_EQ(waiting(), 0);
        check(round);
        EXPECT_EQ(leftovers(), QStringList());
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_EQ(killed, rounds());
}

} // namespace
} // namespace melovane::test
