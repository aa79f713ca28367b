#include "config/global_settings.h"
#include "shell/day_counts.h"
#include "shell/fakes.h"
#include "support/suite_fixture.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A console that was started at half past nine in the evening.
struct DayCountsTest : public testing::Test
{
    DayCountsTest()
    {
        settings->SetDbName(suite.dbName());
        suite.clock.set(QDateTime(QDate(2026, 3, 14), QTime(21, 30)));
        counts.start();
    }

    /// A track that was played now, with its day count.
    void play(const QString& fid)
    {
        suite.library.add({.FID = fid});
        suite.execute(u"update db_all set PlayCountDay=1, play=now where fid='%1'"_s.arg(fid));
    }

    /// The tracks that count for the day.
    [[nodiscard]] QStringList counted() const
    {
        return suite.column(
            u"select fid from db_all where PlayCountDay is not null order by fid"_s);
    }

    void pass(int hours) { suite.clock.addSeconds(qint64{hours} * 3600); }

    /// The next look at the clock.
    void tick() { ASSERT_TRUE(loop.fire(60'000)); }

    test::Suite suite;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    test::SteppedLoop loop;
    bool mayWrite = true;
    int painted = 0;
    DayCounts counts{{.settings = *settings,
                      .clock = suite.clock,
                      .loop = loop,
                      .mayWrite = [this] { return mayWrite; },
                      .changed = [this] { ++painted; }}};
};

TEST_F(DayCountsTest, ThatHaveEndedGoAtMidnightInAConsoleThatStaysOpen)
{
    suite.clock.set(QDateTime(QDate(2026, 3, 14), QTime(11, 0)));
    play(u"800000000001"_s);
    suite.clock.set(QDateTime(QDate(2026, 3, 14), QTime(23, 0)));
    play(u"800000000002"_s);
    tick();
    EXPECT_EQ(counted().size(), 2) << "the day has not ended yet";
    EXPECT_EQ(painted, 0);
    pass(1);
    tick();
    EXPECT_EQ(counted(), QStringList(u"800000000002"_s)) << "the other was played an hour ago";
    EXPECT_EQ(painted, 1);
    tick();
    EXPECT_EQ(painted, 1);
}

TEST_F(DayCountsTest, ThoseOfTheNightGoByNoonOrWhenTheUserComesBack)
{
    pass(1);
    play(u"800000000001"_s);
    pass(2);
    tick();
    EXPECT_EQ(counted().size(), 1);
    pass(11);
    counts.look();
    EXPECT_EQ(counted().size(), 1) << "not due before half a day is over";
    pass(1);
    counts.look();
    EXPECT_EQ(counted(), QStringList());
    EXPECT_EQ(painted, 2);
}

TEST_F(DayCountsTest, WaitForALibraryThatCannotBeWrittenNow)
{
    play(u"800000000001"_s);
    mayWrite = false;
    pass(14);
    tick();
    EXPECT_EQ(counted().size(), 1);
    EXPECT_EQ(painted, 0);
    mayWrite = true;
    tick();
    EXPECT_EQ(counted(), QStringList());
    EXPECT_EQ(painted, 1);
}

} // namespace
} // namespace melovane
