#include "bus/message_numbers.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "siblings/mediaintake/import_lock.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <cstdio>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// The importer as the console starts it: beside its settings and its database.
class IntakeProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_program = suite.file(u"mediaintake"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_MEDIAINTAKE), m_program));
    }

    void writeMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_music.write(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')),
                          simpleMp3(u"Title %1"_s.arg(i), u"Artist"_s));
        }
    }

    QStringList quietly() { return {u"1"_s, u"--folder"_s, m_music.path(), u"--quiet"_s}; }

    int rows() { return suite.value(u"select count(*) from db_all"_s).toLong(); }

    /// Ends the program with the given code and returns what it printed.
    QString run(const QStringList& arguments, int code)
    {
        QProcess process;
        process.start(m_program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), code);
        errors = QString::fromUtf8(process.readAllStandardError());
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    /// The lock of imports into this database, as another program sees it.
    OnlyCopy lock()
    {
        return {LinuxEnvironment().runtimeFolder(), importLockName(suite.files, suite.dbName())};
    }

    /// Ends a program as its user would not.
    static void kill(QProcess& process)
    {
        process.kill();
        EXPECT_TRUE(process.waitForFinished());
    }

    QString errors; ///< what the last one printed as such
    QString m_program;
    TempFolder m_music;
};

TEST_F(IntakeProcess, ImportsWithoutAWindowAndPrintsItsReport)
{
    writeMany(20);
    m_music.write(u"bad.mp3"_s, "x");
    const QString printed = run(quietly(), 0);
    EXPECT_TRUE(printed.startsWith(u"21 Dateien geprüft: 20 neu, 1 abgelehnt.\n"_s))
        << printed.toStdString();
    EXPECT_TRUE(printed.contains(m_music.file(u"bad.mp3"_s) + u": Fehlerhafte MP3"_s));
    EXPECT_EQ(rows(), 20);
}

TEST_F(IntakeProcess, NothingIsWrittenIntoALibraryThatTheConsoleHasLent)
{
    writeMany(1);
    LibraryLoan loan(suite.files, {LinuxEnvironment().runtimeFolder()});
    loan.begin(suite.dbName());
    EXPECT_EQ(run(quietly(), 1), QString());
    EXPECT_TRUE(errors.startsWith(u"Ein anderes Programm hat die Bibliothek gerade für sich"_s))
        << errors.toStdString();
    EXPECT_EQ(rows(), 0);
    loan.end();
    static_cast<void>(run(quietly(), 0));
    EXPECT_EQ(rows(), 1);
}

TEST_F(IntakeProcess, ANameThatIsNoUtf8GivesAReadableTitle)
{
    const QString made = m_music.write(u"made.mp3"_s, simpleMp3({}, {}));
    const QByteArray named = QFile::encodeName(m_music.path()) + "/J\xF6rg - Stra\xDF"
                                                                 "e \x80.mp3";
    ASSERT_EQ(::rename(QFile::encodeName(made).constData(), named.constData()), 0);
    static_cast<void>(run(quietly(), 0));
    EXPECT_EQ(suite.column(u"select Titel from db_all"_s), QStringList{u"Straße €"_s});
    EXPECT_EQ(suite.column(u"select Interpret from db_all"_s), QStringList{u"Jörg"_s});
}

TEST_F(IntakeProcess, AWrongCommandLineEndsWithTwo)
{
    static_cast<void>(run({u"7"_s}, 2));
}

TEST_F(IntakeProcess, AnEmptyFolderAndOneThatIsNotThereAreWrongCalls)
{
    writeMany(1);
    const QString file = m_music.file(u"00000.mp3"_s);
    for (const QString& folder : {QString(), m_music.file(u"nowhere"_s), file}) {
        EXPECT_EQ(run({u"1"_s, u"--folder"_s, folder, u"--quiet"_s}, 2), QString());
        // The same with a window, which then does not open.
        EXPECT_EQ(run({u"1"_s, u"--folder"_s, folder}, 2), QString());
    }
    EXPECT_EQ(rows(), 0);
}

TEST_F(IntakeProcess, WhenTheLibraryOfTheSettingsIsAwayItImportsIntoNoOther)
{
    writeMany(2);
    suite.write(u"melovane.ini"_s, "[Global]\nDBName=/away/club.mdb\n");
    QProcess process;
    process.start(m_program, quietly());
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(QString::fromUtf8(process.readAllStandardError()),
              u"Die Bibliothek der Einstellungen ist nicht vorhanden: /away/club.mdb. "
              u"Es wurde nichts getan.\n"_s);
    EXPECT_EQ(rows(), 0);
}

TEST_F(IntakeProcess, WhileOneImportsIntoADatabaseAnotherSaysSoAndEnds)
{
    writeMany(3);
    OnlyCopy other = lock();
    ASSERT_TRUE(other.claim());
    QProcess process;
    process.start(m_program, quietly());
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(QString::fromUtf8(process.readAllStandardError()),
              u"In diese Datenbank wird gerade schon importiert.\n"_s);
    EXPECT_EQ(rows(), 0);
}

TEST_F(IntakeProcess, TheLockBelongsToTheDatabaseAndNotToTheProgram)
{
    writeMany(3);
    OnlyCopy other(LinuxEnvironment().runtimeFolder(), importLockName(suite.files, m_program));
    ASSERT_TRUE(other.claim());
    static_cast<void>(run(quietly(), 0));
    EXPECT_EQ(rows(), 3);
}

TEST_F(IntakeProcess, ASecondWindowGivesWayToTheFirst)
{
    QProcess first;
    first.start(m_program, {u"1"_s});
    ASSERT_TRUE(first.waitForStarted());
    ASSERT_TRUE(QTest::qWaitFor([this] { return lock().runningCopy() != 0; }, 30'000));
    QProcess second;
    second.start(m_program, {u"1"_s});
    ASSERT_TRUE(second.waitForFinished(60'000)); // no box that waits for an answer
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_EQ(first.state(), QProcess::Running);
    kill(first);
    EXPECT_TRUE(lock().claim());
}

TEST_F(IntakeProcess, TwoThatStartAtOnceGiveEachFileOneRow)
{
    constexpr int kFiles = 600;
    writeMany(kFiles);
    QProcess one;
    QProcess two;
    one.start(m_program, quietly());
    two.start(m_program, quietly());
    ASSERT_TRUE(one.waitForFinished(60'000));
    ASSERT_TRUE(two.waitForFinished(60'000));
    EXPECT_TRUE(one.exitCode() == 0 || two.exitCode() == 0);
    EXPECT_EQ(rows(), kFiles);
    EXPECT_EQ(suite.column(u"select distinct DName from db_all"_s).size(), kFiles);
    EXPECT_EQ(suite.column(u"select distinct FID from db_all"_s).size(), kFiles);
}

TEST_F(IntakeProcess, TheConsoleIsToldOnceWhenTracksHaveCome)
{
    writeMany(3);
    LinuxMessages messages(MessagePlace(LinuxEnvironment().runtimeFolder()));
    const auto console = messages.makeControl();
    int told = 0;
    console->setMessageNumber([&](qint32 id, qint32 wParam, qint32 lParam) {
        EXPECT_EQ(id, message::kDatabaseChanged);
        EXPECT_EQ(wParam, 0);
        EXPECT_EQ(lParam, 0);
        EXPECT_EQ(rows(), 3);
        ++told;
        return 0;
    });
    suite.makeSettings()->SetMessageHandleDB(console->handle());
    for (int round = 0; round < 2; ++round) { // nothing is new in the second one
        QProcess process;
        process.start(m_program, quietly());
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 60'000));
        EXPECT_EQ(process.exitCode(), 0);
    }
    EXPECT_EQ(told, 1);
}

TEST_F(IntakeProcess, TheTreesAreFilledAtOnceAndTheConsoleIsToldWhenTheyStand)
{
    ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_REBUILDTREE), suite.file(u"Task.RebuildTree"_s)));
    writeMany(3);
    LinuxMessages messages(MessagePlace(LinuxEnvironment().runtimeFolder()));
    const auto console = messages.makeControl();
    QList<qint32> told;
    console->setMessageNumber([&told](qint32 id, qint32 wParam, qint32) {
        told.append(id == message::kJobResult ? wParam : id);
        return 0;
    });
    suite.makeSettings()->SetMessageHandleDB(console->handle());
    QProcess process;
    process.start(m_program, quietly());
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.contains(message::kJobTree); }, 60'000));
    EXPECT_EQ(told, (QList<qint32>{message::kDatabaseChanged, message::kJobTree}));
    EXPECT_EQ(suite.value(u"select count(*) from ChangeTree"_s).toLong(), 0);
    EXPECT_EQ(suite.column(u"select Name from TREE_INTERPRET"_s), QStringList{u"Artist"_s});
    ASSERT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 60'000));
}

TEST_F(IntakeProcess, KilledInMidImportItLeavesADatabaseThatOpensWithTheRowsItHadCommitted)
{
    constexpr int kFiles = 4000;
    writeMany(kFiles);
    QProcess process;
    process.start(m_program, quietly());
    ASSERT_TRUE(process.waitForStarted());
    int seen = 0;
    QElapsedTimer timer;
    timer.start();
    while (seen == 0 && timer.elapsed() < 30'000 && process.state() == QProcess::Running) {
        seen = rows();
        process.waitForFinished(1);
    }
    ASSERT_EQ(process.state(), QProcess::Running) << "ended before it could be killed";
    process.kill();
    ASSERT_TRUE(process.waitForFinished());
    ASSERT_EQ(process.exitStatus(), QProcess::CrashExit);
    suite.engine->Release(suite.dbName());
    const int kept = rows();
    EXPECT_GE(kept, seen);
    EXPECT_LT(kept, kFiles);
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(suite.column(u"select distinct FID from db_all"_s).size(), kept);
    EXPECT_EQ(suite.value(u"select count(*) from db_all where Titel like 'Title *'"_s).toLong(),
              kept);
    const QString rest = run(quietly(), 0);
    EXPECT_TRUE(rest.contains(u"%1 schon in der Datenbank"_s.arg(kept))) << rest.toStdString();
    EXPECT_EQ(rows(), kFiles);
}

} // namespace
