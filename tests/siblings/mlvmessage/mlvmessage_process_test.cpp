#include "bus/message_journal.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/system/clock.h"
#include "siblings/mlvmessage/message_tool.h"
#include "support/message_sibling.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The tool as a process, in an installation of its own.
class MlvMessage : public testing::Test
{
protected:
    MlvMessage()
    {
        EXPECT_TRUE(QFile::copy(QString::fromUtf8(MLV_MESSAGE_TOOL), folder.file(u"mlvmessage"_s)));
        control->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            seen.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return wParam + lParam;
        });
        control->setMessageText([this](qint32 id, qint32 number, const QString& text) {
            seen.append(u"%1 %2 %3"_s.arg(id).arg(number).arg(text));
            return qint32(text.size());
        });
    }

    std::unique_ptr<QProcess> start(const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& place :
             {u"XDG_RUNTIME_DIR"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s}) {
            environment.insert(place, folder.path());
        }
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->start(folder.file(u"mlvmessage"_s), arguments);
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    /// Runs it to its end while this program serves its messages; what it printed.
    QString run(const QStringList& arguments)
    {
        const auto process = start(arguments);
        EXPECT_TRUE(ended(*process));
        code = process->exitCode();
        errors = QString::fromUtf8(process->readAllStandardError());
        return QString::fromUtf8(process->readAllStandardOutput());
    }

    static bool ended(QProcess& process)
    {
        return test::waitFor([&] { return process.state() == QProcess::NotRunning; });
    }

    /// The next line that a running tool prints.
    static QString line(QProcess& process)
    {
        EXPECT_TRUE(test::waitFor([&] { return process.canReadLine(); }));
        return QString::fromUtf8(process.readLine()).chopped(1);
    }

    void publish(const QString& section, const QString& key, MessageHandle handle)
    {
        LinuxFiles files;
        IniProfile(files).write(folder.file(u"melovane.ini"_s), section, key,
                                QString::number(handle));
    }

    [[nodiscard]] QString handle() const { return QString::number(control->handle()); }

    static QString runtime(const test::TempFolder& base)
    {
        EnvironmentPlaces places;
        places.runtimeBase = base.path();
        return LinuxEnvironment(places).runtimeFolder();
    }

    test::TempFolder folder;
    LinuxMessages messages{MessagePlace(runtime(folder))};
    std::unique_ptr<KSMessage> control = messages.makeControl();
    QStringList seen;
    int code = -1;
    QString errors;
};

TEST_F(MlvMessage, ListsLiveControlsWithProcessProgramAndPublishedNames)
{
    const test::Sibling other(runtime(folder));
    publish(u"Message"_s, u"Handle.DJ"_s, other.handle());
    publish(u"Message.Handle"_s, u"Player.exe"_s, other.handle());
    publish(u"Message"_s, u"Handle.Kiv"_s, 4711000);
    const QStringList lines = run({u"list"_s}).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(code, 0);
    ASSERT_EQ(lines.size(), 2);
    const QString line = lines.filter(QString::number(other.handle())).value(0);
    EXPECT_EQ(
        line.simplified(),
        u"%1 %2 message_sibling Handle.DJ, Player.exe"_s.arg(other.handle()).arg(other.process()));
    EXPECT_EQ(lines.filter(handle()).size(), 1);
}

TEST_F(MlvMessage, HealthTellsTheProgramsThatLiveAndTheJournalThatTheConsoleKeeps)
{
    EXPECT_TRUE(
        run({u"health"_s}).contains(u"\n  Die Konsole läuft nicht oder antwortet nicht.\n"_s));
    EXPECT_EQ(code, 0);
    const SystemClock clock;
    JournalControl console(messages.makeControl(), clock);
    publish(u"Message"_s, u"Handle.DB"_s, console.handle());
    console.setTarget(control->handle());
    EXPECT_EQ(console.Send(1042, 40, 2), 42);
    const QString told = run({u"health"_s});
    EXPECT_TRUE(told.contains(u"\n  "_s + console.lines().constFirst() + u'\n'))
        << told.toStdString();
    EXPECT_TRUE(told.contains(
        QRegularExpression(u"Gegenstelle %1, Prozess [0-9]+  Handle.DB\n"_s.arg(console.handle()))))
        << told.toStdString();
    EXPECT_TRUE(told.contains(u"melovane.ini  ("_s)) << told.toStdString();
}

TEST_F(MlvMessage, SendsToAHandleAndPrintsTheAnswer)
{
    EXPECT_EQ(run({u"send"_s, handle(), u"1042"_s, u"40"_s, u"2"_s}), u"42\n"_s);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(seen, QStringList(u"1042 40 2"_s));
    EXPECT_EQ(run({u"send"_s, handle(), u"1"_s, u"-5"_s, u"5"_s}), u"0\n"_s);
    EXPECT_EQ(code, 0);
}

TEST_F(MlvMessage, SendsATextToANameWhoseHandleIsAliveWithoutRegardToCase)
{
    publish(u"Message"_s, u"Handle.DB"_s, 4711000);
    publish(u"Message.Handle"_s, u"MelovaneDB.exe"_s, control->handle());
    for (const QString& name : {u"MelovaneDB"_s, u"melovanedb.exe"_s}) {
        EXPECT_EQ(run({u"send"_s, name, u"3075"_s, u"11011"_s, u"--text"_s, u"Björk"_s}), u"5\n"_s);
    }
    EXPECT_EQ(seen, QStringList({u"3075 11011 Björk"_s, u"3075 11011 Björk"_s}));
    EXPECT_EQ(run({u"alive"_s, u"DB"_s}), QString());
    EXPECT_EQ(code, 1);
    EXPECT_EQ(run({u"alive"_s, u"MELOVANEDB"_s}), handle() + u'\n');
    EXPECT_EQ(code, 0);
}

TEST_F(MlvMessage, WhatIsPostedArrivesAfterTheToolHasEnded)
{
    publish(u"Message"_s, u"Handle.DJ"_s, control->handle());
    const auto process = start({u"post"_s, u"DJ"_s, u"1042"_s, u"7"_s});
    ASSERT_TRUE(process->waitForFinished());
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_TRUE(seen.isEmpty());
    EXPECT_TRUE(test::waitFor([this] { return !seen.isEmpty(); }));
    EXPECT_EQ(seen, QStringList(u"1042 7 0"_s));
}

TEST_F(MlvMessage, ADeadTargetEndsWith1AndAHungOneWith3)
{
    run({u"send"_s, u"4711000"_s, u"1"_s});
    EXPECT_EQ(code, 1);
    run({u"post"_s, u"Nobody"_s, u"1"_s});
    EXPECT_EQ(code, 1);
    const test::Sibling other(runtime(folder));
    const QString target = QString::number(other.handle());
    other.stop();
    EXPECT_EQ(run({u"send"_s, target, u"1"_s, u"--wait"_s, u"0.1"_s}), QString());
    EXPECT_EQ(code, 3);
    other.goOn();
    EXPECT_EQ(run({u"send"_s, target, QString::number(test::sibling::kDie)}), QString());
    EXPECT_EQ(code, 1);
}

TEST_F(MlvMessage, AWrongCallPrintsOneLineThatLeadsToTheHelpAndEndsWith2)
{
    EXPECT_EQ(run({u"send"_s}), QString());
    EXPECT_EQ(code, 2);
    EXPECT_TRUE(errors.contains(u"mlvmessage --help"_s));
    EXPECT_TRUE(run({u"--help"_s}).contains(u"mlvmessage list"_s));
    EXPECT_EQ(code, 0);
}

TEST_F(MlvMessage, ListenPrintsWhatArrivesAnswersAndEndsAfterItsCount)
{
    const auto process =
        start({u"listen"_s, u"--answer"_s, u"7"_s, u"--count"_s, u"3"_s, u"--as"_s, u"dj"_s});
    const QString first = line(*process);
    ASSERT_TRUE(first.startsWith(u"handle "_s));
    const MessageHandle other = first.mid(7).toInt();
    LinuxFiles files;
    EXPECT_EQ(IniProfile(files).value(folder.file(u"melovane.ini"_s), u"Message"_s, u"Handle.DJ"_s),
              QString::number(other));
    control->setTarget(other);
    EXPECT_EQ(control->Send(1042, -1, 2), 7);
    EXPECT_EQ(control->SendText(3075, 11011, u"zwei\nZeilen \u001b[2J \\"_s), 7);
    EXPECT_EQ(control->SendText(3078, 0, {}), 7);
    ASSERT_TRUE(ended(*process));
    EXPECT_EQ(process->exitCode(), 0);
    const QStringList lines =
        QString::fromUtf8(process->readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    const QRegularExpression time(u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  "_s);
    for (const QString& entry : lines) {
        EXPECT_TRUE(time.match(entry).hasMatch()) << entry.toStdString();
    }
    EXPECT_TRUE(lines[0].endsWith(u"  number 1042 -1 2"_s));
    EXPECT_TRUE(lines[1].endsWith(u"  text 3075 11011 zwei\\nZeilen \\x1b[2J \\\\"_s));
    EXPECT_TRUE(lines[2].endsWith(u"  text 3078 0 "_s));
}

TEST_F(MlvMessage, ListenEndsWhenItsTimeIsOverWith3WhenMessagesAreMissing)
{
    run({u"listen"_s, u"--seconds"_s, u"0.05"_s});
    EXPECT_EQ(code, 0);
    run({u"listen"_s, u"--seconds"_s, u"0.05"_s, u"--count"_s, u"1"_s});
    EXPECT_EQ(code, 3);
}

TEST_F(MlvMessage, AProgramNameIsPublishedAsItsExecutable)
{
    const auto process = start({u"listen"_s, u"--as"_s, u"Script"_s, u"--count"_s, u"1"_s});
    line(*process);
    EXPECT_EQ(run({u"send"_s, u"Script"_s, u"1"_s}), u"0\n"_s);
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(ended(*process));
    EXPECT_TRUE(folder.read(folder.file(u"melovane.ini"_s)).contains("Script.exe="));
}

} // namespace
} // namespace melovane
