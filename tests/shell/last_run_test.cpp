#include "platform/linux/linux_files.h"
#include "shell/last_run.h"
#include "support/fake_clock.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class LastRunTest : public testing::Test
{
protected:
    std::optional<QString> begin() { return LastRun(files, clock, mark).begin(); }

    test::TempFolder folder;
    test::FakeClock clock;
    LinuxFiles files;
    QString mark = folder.file(u"MelovaneDB.running"_s);
};

TEST_F(LastRunTest, ARunThatCameToItsEndLeavesNoMark)
{
    EXPECT_EQ(begin(), std::nullopt);
    LastRun(files, clock, mark).end();
    EXPECT_FALSE(files.fileExists(mark));
    EXPECT_EQ(begin(), std::nullopt);
}

TEST_F(LastRunTest, ARunThatDiedIsToldToTheNextOneWithItsBeginning)
{
    EXPECT_EQ(begin(), std::nullopt);
    EXPECT_EQ(begin(), clock.now().toString(u"dd.MM.yyyy HH:mm"_s));
    EXPECT_TRUE(files.fileExists(mark)) << "this run may die, too";
}

TEST_F(LastRunTest, AMarkThatCannotBeReadIsOneAllTheSameAndOneThatCannotBeWrittenStopsNobody)
{
    folder.write(u"MelovaneDB.running"_s, QByteArray(1000, 'x'));
    EXPECT_EQ(begin(), QString());
    mark = u"/proc/no/such/mark"_s;
    EXPECT_EQ(begin(), std::nullopt);
}

} // namespace
} // namespace melovane
