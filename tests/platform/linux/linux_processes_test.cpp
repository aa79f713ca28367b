#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_processes.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList programs(const QString& commandLine)
{
    QStringList result;
    for (const CommandLine& reading : readingsOf(commandLine)) {
        result.append(reading.program);
    }
    return result;
}

TEST(CommandLines, TheProgramMayHoldBlanks)
{
    EXPECT_EQ(programs(u"/a b/x.exe 1 2"_s),
              (QStringList{u"/a b/x.exe 1 2"_s, u"/a b/x.exe 1"_s, u"/a b/x.exe"_s, u"/a"_s}));
    EXPECT_EQ(readingsOf(u"/x.exe  a  b "_s).at(1).arguments, QStringList{u"b"_s});
    EXPECT_EQ(readingsOf(u"/x.exe  a  b "_s).at(2).arguments, (QStringList{u"a"_s, u"b"_s}));
}

TEST(CommandLines, AQuotedProgramIsTakenSo)
{
    const auto readings = readingsOf(u"\"/a b/x.exe\" \"c d\" e"_s);
    ASSERT_EQ(readings.size(), 1U);
    EXPECT_EQ(readings[0].program, u"/a b/x.exe"_s);
    EXPECT_EQ(readings[0].arguments, (QStringList{u"c d"_s, u"e"_s}));
    EXPECT_EQ(readingsOf(u"\"/open"_s).at(0).program, u"/open"_s);
}

TEST(CommandLines, QuotesHoldAnArgumentTogether)
{
    const auto arguments = readingsOf(u"\"x\" a\"b c\"d \"\" \"say \"\"hi\"\"\" C:\\x\\ 'q r'"_s);
    EXPECT_EQ(arguments.at(0).arguments, (QStringList{u"ab cd"_s, QString(), u"say \"hi\""_s,
                                                      u"C:\\x\\"_s, u"'q"_s, u"r'"_s}));
}

TEST(CommandLines, NothingGivesNothing)
{
    EXPECT_TRUE(readingsOf(u"   "_s).empty());
    EXPECT_TRUE(readingsOf(u"/x"_s + QChar(u'\0')).empty());
}

class Starting : public testing::Test
{
protected:
    /// A program that writes its arguments, one a line, and where its input and output lead.
    QString install(const QString& name)
    {
        const QString path =
            folder.write(name, "#!/bin/sh\nexec >" + quoted(u"out.tmp"_s) +
                                   "\nprintf '%s\\n' \"$0\" \"$@\"\nls -l /proc/$$/fd\n"
                                   "echo \"window ${MELOVANE_WINDOW-normal}\"\nmv " +
                                   quoted(u"out.tmp"_s) + " " + quoted(u"out"_s) + "\n");
        EXPECT_EQ(::chmod(path.toUtf8().constData(), 0755), 0);
        return path;
    }

    [[nodiscard]] QByteArray quoted(const QString& name) const
    {
        return "'" + folder.file(name).toUtf8() + "'";
    }

    /// Lines that the started program wrote; waits for it.
    [[nodiscard]] QStringList output() const
    {
        EXPECT_TRUE(test::waitFor([this] { return files.fileExists(folder.file(u"out"_s)); }));
        return QString::fromUtf8(folder.read(u"out"_s)).split(u'\n');
    }

    bool start(const QString& commandLine)
    {
        return LinuxProcesses().start(commandLine, Processes::WindowStyle::Normal);
    }

    test::TempFolder folder;
    LinuxFiles files;
};

TEST_F(Starting, AProgramGetsItsArgumentsAndNoShellReadsThem)
{
    const QString program = install(u"tagbench"_s);
    EXPECT_TRUE(start(program + u" $HOME `id` ;x *"_s));
    EXPECT_EQ(output().first(6),
              (QStringList{program, u"$HOME"_s, u"`id`"_s, u";x"_s, u"*"_s, output().at(5)}));
    EXPECT_EQ(files.names(folder.path()), (QStringList{u"out"_s, u"tagbench"_s}));
}

TEST_F(Starting, AProgramNamedExeIsFoundWithoutIt)
{
    const QString program = install(u"mediaintake"_s);
    EXPECT_TRUE(start(program + u".exe 1"_s));
    EXPECT_EQ(output().first(2), (QStringList{program, u"1"_s}));
}

TEST_F(Starting, AProgramNamedExeAsItStandsGoesFirst)
{
    install(u"x"_s);
    const QString program = install(u"x.exe"_s);
    EXPECT_TRUE(start(program));
    EXPECT_EQ(output().front(), program);
}

TEST_F(Starting, AForeignProgramOfThatNameGivesWayToOurs)
{
    const QString foreign = folder.write(u"x.exe"_s, QByteArray("MZ\0\0", 4));
    ASSERT_EQ(::chmod(foreign.toUtf8().constData(), 0755), 0);
    const QString program = install(u"x"_s);
    EXPECT_TRUE(start(foreign + u" 7"_s));
    EXPECT_EQ(output().first(2), (QStringList{program, u"7"_s}));
}

TEST_F(Starting, AFolderWithBlanksAndBackslashesIsUnderstood)
{
    const QString program = install(u"my suite/Task.WriteTags"_s);
    EXPECT_TRUE(start(folder.path() + u"\\my suite\\Task.WriteTags.exe 65536"_s));
    EXPECT_EQ(output().first(2), (QStringList{program, u"65536"_s}));
}

TEST_F(Starting, ANamedProgramInAFolderWithABlankNeverStartsTheFileBeforeTheBlank)
{
    install(u"My"_s);
    LinuxProcesses processes;
    EXPECT_FALSE(processes.startProgram(folder.file(u"My Programs/Task.WriteTags.exe"_s), u" 7"_s,
                                        Processes::WindowStyle::Normal));
    const QString program = install(u"My Programs/Task.WriteTags"_s);
    EXPECT_TRUE(processes.startProgram(folder.file(u"My Programs/Task.WriteTags.exe"_s),
                                       u" 7 \"a b\""_s, Processes::WindowStyle::Normal));
    EXPECT_EQ(output().first(3), (QStringList{program, u"7"_s, u"a b"_s}));
}

TEST_F(Starting, WhatIsMissingOrMayNotBeRunGivesFalse)
{
    const QString text = folder.write(u"text"_s, "#!/bin/sh\n");
    const QString broken = folder.write(u"broken"_s, "neither script nor program");
    ASSERT_EQ(::chmod(text.toUtf8().constData(), 0644), 0);
    ASSERT_EQ(::chmod(broken.toUtf8().constData(), 0755), 0);
    EXPECT_FALSE(start(folder.file(u"missing.exe 1"_s)));
    EXPECT_FALSE(start(text));
    EXPECT_FALSE(start(broken));
    EXPECT_FALSE(start(folder.path()));
    EXPECT_FALSE(start(QString()));
}

TEST_F(Starting, AStartedProgramInheritsNoFileAndNoLock)
{
    const QString lock = folder.file(u"lock"_s);
    auto held = lockFile(lock, std::chrono::milliseconds(0));
    // A descriptor without the flag that libraries forget.
    const int careless = ::open(lock.toUtf8().constData(), O_RDONLY);
    ASSERT_GE(careless, 0);
    EXPECT_TRUE(start(install(u"x"_s)));
    const QString list = output().join(u'\n');
    ::close(careless);
    EXPECT_FALSE(list.contains(u"lock"_s)) << list.toStdString();
    EXPECT_TRUE(list.contains(u" 0 -> /dev/null"_s)) << list.toStdString();
}

TEST_F(Starting, AProgramIsToldHowItsWindowIsToComeUpAndInheritsNothingOfThat)
{
    using Style = Processes::WindowStyle;
    const QString program = install(u"x"_s);
    ::setenv("MELOVANE_WINDOW", "hidden", 1);
    for (const auto& [style, told] : {std::pair(Style::Minimised, u"window minimised"_s),
                                      {Style::Hidden, u"window hidden"_s},
                                      {Style::Normal, u"window normal"_s}}) {
        EXPECT_TRUE(LinuxProcesses().startProgram(program, {}, style));
        EXPECT_TRUE(output().contains(told)) << qPrintable(told);
        ASSERT_TRUE(files.remove(folder.file(u"out"_s)));
        EXPECT_TRUE(LinuxProcesses().start(program, style));
        EXPECT_TRUE(output().contains(told)) << qPrintable(told);
        ASSERT_TRUE(files.remove(folder.file(u"out"_s)));
    }
    ::unsetenv("MELOVANE_WINDOW");
}

TEST_F(Starting, AnEditorOfTheDesktopStandsForItsOpener)
{
    const QString opener = install(u"opener"_s);
    LinuxProcesses processes(opener);
    EXPECT_TRUE(processes.start(u"notepad.exe "_s + folder.file(u"a b.log"_s),
                                Processes::WindowStyle::Normal));
    EXPECT_EQ(output().first(2), (QStringList{opener, folder.file(u"a b.log"_s)}));
    ASSERT_TRUE(files.remove(folder.file(u"out"_s)));
    EXPECT_TRUE(processes.start(u"Explorer.exe \""_s + folder.path() + u"\\a b\""_s,
                                Processes::WindowStyle::Normal));
    EXPECT_EQ(output().at(1), folder.file(u"a b"_s));
}

TEST_F(Starting, WithoutAnOpenerOrAPathNothingStarts)
{
    EXPECT_FALSE(LinuxProcesses(folder.file(u"missing"_s))
                     .start(u"notepad.exe /x"_s, Processes::WindowStyle::Normal));
    EXPECT_FALSE(LinuxProcesses(install(u"opener"_s))
                     .start(u"notepad.exe "_s, Processes::WindowStyle::Normal));
}

} // namespace
} // namespace melovane
