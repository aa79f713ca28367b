#include "platform/linux/crash_file.h"
#include "support/temp_folder.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <stdexcept>
#include <thread>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class CrashFileTest : public testing::Test
{
protected:
    /// A process that dies of it. \return the signal that it has died by; 0 for none
    int die(const std::function<void()>& work)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit noCore{0, 0};
            ::setrlimit(RLIMIT_CORE, &noCore);
            const CrashFile crash(path, u"Program 1.2.3"_s);
            work();
            ::_exit(0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    [[nodiscard]] QString report() const
    {
        return QString::fromUtf8(folder.read(u"Program.crash"_s));
    }

    TempFolder folder;
    QString path = folder.file(u"Program.crash"_s);
};

/// Uses the whole stack: each call keeps a kilobyte, and work to do behind the next one.
int fillStack(int depth)
{
    volatile char room[1024] = {};
    room[depth % 1024] = char(depth);
    return depth < 0 ? 0 : fillStack(depth + 1) + room[depth % 1024];
}

TEST_F(CrashFileTest, AFaultIsWrittenDownAndEndsTheProcessAsWithoutIt)
{
    EXPECT_EQ(die([] { std::raise(SIGSEGV); }), SIGSEGV);
    EXPECT_TRUE(report().startsWith(u"Program 1.2.3\n"_s));
    EXPECT_TRUE(report().contains(u"\nSignal 11\n\n"_s));
    EXPECT_TRUE(report().contains(
        QRegularExpression(u"\n20\\d\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d UTC\n"_s)));
    EXPECT_TRUE(report().contains(QRegularExpression(u"\nprogram\\+0x[0-9a-f]+\n"_s)))
        << report().toStdString();
    EXPECT_TRUE(report().contains(u"\nlibc.so.6+0x"_s));
}

TEST_F(CrashFileTest, NoPathStandsInIt)
{
    die([] { std::raise(SIGABRT); });
    EXPECT_FALSE(report().isEmpty());
    EXPECT_FALSE(report().contains(u'/')) << report().toStdString();
}

TEST_F(CrashFileTest, SoIsAnErrorThatNobodyHasCaught)
{
    EXPECT_EQ(die([] { std::thread([] { throw std::runtime_error("lost"); }).join(); }), SIGABRT);
    EXPECT_TRUE(report().contains(u"Signal 6"_s));
}

TEST_F(CrashFileTest, AFullStackIsWrittenDownToo)
{
    EXPECT_EQ(die([] { ::_exit(fillStack(0) == 7 ? 1 : 0); }), SIGSEGV);
    EXPECT_TRUE(report().contains(u"Signal 11"_s));
}

TEST_F(CrashFileTest, AProcessThatEndsLeavesNothing)
{
    EXPECT_EQ(die([] {}), 0);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(CrashFileTest, WhereNoFileCanBeMadeTheProcessDiesAllTheSame)
{
    path = u"/proc/none/Program.crash"_s;
    EXPECT_EQ(die([] { std::raise(SIGSEGV); }), SIGSEGV);
}

} // namespace
} // namespace melovane::test
