#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_files.h"
#include "support/temp_folder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kWrites = 300;

/// Runs a job in a process of its own; its number.
pid_t inProcess(const std::function<bool()>& job)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(job() ? 0 : 1);
    }
    return child;
}

int resultOf(pid_t child)
{
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

bool writeMany(const QString& file, const QString& prefix)
{
    LinuxFiles files;
    IniProfile profile(files, std::chrono::seconds(60));
    bool good = true;
    for (int i = 0; i < kWrites; ++i) {
        const QString number = QString::number(i);
        good = profile.write(file, u"Shared"_s, prefix + number, number) && good;
    }
    return good;
}

TEST(TwoPrograms, ThatWriteDifferentKeysAtOnceLoseNothing)
{
    const test::TempFolder folder;
    const QString file = folder.write(u"melovane.ini"_s, "; comment\r\n[Foreign]\r\nx=1\r\n");
    const pid_t first = inProcess([&] { return writeMany(file, u"first."_s); });
    const pid_t second = inProcess([&] { return writeMany(file, u"second."_s); });
    EXPECT_EQ(resultOf(first), 0);
    EXPECT_EQ(resultOf(second), 0);

    LinuxFiles files;
    const IniProfile profile(files);
    EXPECT_EQ(profile.section(file, u"Shared"_s).size(), 2 * kWrites);
    for (int i = 0; i < kWrites; ++i) {
        const QString number = QString::number(i);
        EXPECT_EQ(profile.value(file, u"Shared"_s, u"first."_s + number), number);
        EXPECT_EQ(profile.value(file, u"Shared"_s, u"second."_s + number), number);
    }
    EXPECT_EQ(profile.value(file, u"Foreign"_s, u"x"_s), u"1"_s);
    EXPECT_EQ(files.names(folder.path()), (QStringList{u"melovane.ini"_s, u"melovane.ini.lock"_s}));
}

TEST(TwoPrograms, AProgramKilledWhileWritingLeavesAWholeFileAndItsLockFree)
{
    const test::TempFolder folder;
    const QString file = folder.file(u"melovane.ini"_s);
    LinuxFiles files;
    IniProfile profile(files);
    ASSERT_TRUE(profile.write(file, u"Mine"_s, u"kept"_s, u"1"_s));
    for (int round = 0; round < 40; ++round) {
        const pid_t child = inProcess([&] {
            LinuxFiles own;
            IniProfile other(own);
            for (int i = 0;; ++i) {
                other.write(file, u"Other"_s, u"k"_s, QString(1000, QChar(u'a' + i % 26)));
            }
            return true;
        });
        const timespec moment = {0, 1'000'000 + round * 377'000L};
        ::nanosleep(&moment, nullptr);
        ::kill(child, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(resultOf(child)));
        ASSERT_TRUE(profile.write(file, u"Mine"_s, u"round"_s, QString::number(round)));
        ASSERT_EQ(profile.value(file, u"Mine"_s, u"kept"_s), u"1"_s);
        const QString other = profile.value(file, u"Other"_s, u"k"_s).value_or(QString());
        ASSERT_TRUE(other.isEmpty() || other == QString(1000, other.front()));
    }
}

} // namespace
} // namespace melovane
