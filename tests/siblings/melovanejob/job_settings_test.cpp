#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_files.h"
#include "siblings/melovanejob/job_settings.h"
#include "support/temp_folder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class JobSettingsFile : public testing::Test
{
protected:
    [[nodiscard]] JobSettings read(const QByteArray& bytes)
    {
        return readJobSettings(m_profile, m_folder.write(u"MelovaneJob.ini"_s, bytes));
    }

private:
    TempFolder m_folder;
    LinuxFiles m_files;
    IniProfile m_profile{m_files};
};

TEST_F(JobSettingsFile, WithoutAFileAllJobsRunWhenTheConsoleIsIdleForAMinute)
{
    LinuxFiles files;
    const IniProfile profile(files);
    const JobSettings settings = readJobSettings(profile, u"/no/such/MelovaneJob.ini"_s);
    EXPECT_EQ(settings, JobSettings());
    EXPECT_EQ(settings.pause, 60s);
    EXPECT_EQ(settings.retry, 30min);
    for (const JobKind kind : kJobKinds) {
        EXPECT_TRUE(settings.rule(kind).whenIdle);
        EXPECT_EQ(settings.rule(kind).times, QList<QTime>());
    }
}

TEST_F(JobSettingsFile, EachJobHasItsOwnRule)
{
    const JobSettings settings = read("[Global]\nPause=90\nRetry=5\n"
                                      "[tags]\nidle=0\nTimes=17:30 5:00, 5:00;23:59\n"
                                      "[Trees]\nIdle=\" 1 \"\n");
    EXPECT_EQ(settings.pause, 90s);
    EXPECT_EQ(settings.retry, 5min);
    EXPECT_FALSE(settings.rule(JobKind::Tags).whenIdle);
    EXPECT_EQ(settings.rule(JobKind::Tags).times,
              (QList<QTime>{QTime(5, 0), QTime(17, 30), QTime(23, 59)}));
    EXPECT_TRUE(settings.rule(JobKind::Lists).whenIdle);
    EXPECT_TRUE(settings.rule(JobKind::Trees).whenIdle);
}

TEST_F(JobSettingsFile, TheShippedFileSaysWhatIsBuiltIn)
{
    QFile file(QString::fromUtf8(MLV_RESOURCES) + u"/MelovaneJob.ini"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    for (const char* key : {"Pause=60", "Retry=30", "[Tags]", "[Lists]", "[Trees]", "Times="}) {
        EXPECT_TRUE(bytes.contains(key)) << key;
    }
    EXPECT_EQ(read(bytes), JobSettings());
}

TEST_F(JobSettingsFile, ValuesThatMakeNoSenseAreTheBuiltInOnes)
{
    for (const char* bytes :
         {"[Global]\nPause=0\nRetry=0\n", "[Global]\nPause=-60\nRetry=99999999999999999999\n",
          "[Global]\nPause=1e5\nRetry=soon\n", "[Tags]\nIdle=2\nTimes=24:00 12:60 :30 7 7:5 x\n",
          "[Lists]\nIdle=\nTimes=\xFF\xFE:\x80\x81\n", "Idle=0\nTimes=05:00\n"}) {
        EXPECT_EQ(read(bytes), JobSettings()) << bytes;
    }
}

TEST_F(JobSettingsFile, AnyBytesAreSurvived)
{
    quint32 random = 20260314;
    const auto next = [&random] {
        random = random * 1664525 + 1013904223;
        return random >> 16;
    };
    const QByteArray words = "[Global]\n[Tags]\nIdle=Times=0:59 \"';\r\n\0\xEF\xBB\xBF\xFF=]";
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes;
        for (int i = 0; i < 300; ++i) {
            bytes.append(next() % 4 == 0 ? char(next()) : words[next() % words.size()]);
        }
        const JobSettings settings = read(bytes);
        EXPECT_GE(settings.pause, 5s);
        EXPECT_GE(settings.retry, 1min);
        for (const JobKind kind : kJobKinds) {
            EXPECT_LE(settings.rule(kind).times.size(), 48);
        }
    }
    EXPECT_EQ(read("[Tags]\nTimes=" + QByteArray(1'000'000, '9')), JobSettings());
}

TEST_F(JobSettingsFile, ADayHasNoMoreThanFortyEightTimes)
{
    QByteArray line = "[Tags]\nTimes=";
    for (int minute = 0; minute < 60; ++minute) {
        line += "7:" + QByteArray::number(minute).rightJustified(2, '0') + ' ';
    }
    EXPECT_EQ(read(line).rule(JobKind::Tags).times.size(), 48);
}

} // namespace
} // namespace melovane::test
