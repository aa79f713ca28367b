#include "platform/db/db_error.h"
#include "siblings/melovanejob/job_loop.h"
#include "support/fake_clock.h"
#include "support/fake_passing_time.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <set>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// A jobs program over a library, a console and a day that the test makes up.
class Jobs : public testing::Test
{
protected:
    /// The program looks every five seconds for so long.
    void pass(std::chrono::seconds time)
    {
        for (auto left = time; left > 0s; left -= 5s) {
            passing.pause(5s);
            clock.addSeconds(5);
            loop.look();
        }
    }

    void change() { library = QString::number(++m_changes); }

    [[nodiscard]] QString name(JobKind kind) const
    {
        return QStringList{u"tags"_s, u"lists"_s, u"trees"_s}[int(kind)];
    }

    /// What was done since the last call.
    [[nodiscard]] QStringList taken() { return std::exchange(done, {}); }

    FakeClock clock;
    FakePassingTime passing;
    JobSettings settings;
    QString library = u"0"_s;
    bool isConsoleAlive = true;
    bool isTaken = false;
    bool isBusy = false;
    bool isBroken = false;
    std::set<JobKind> work;
    QStringList done;
    int asked = 0;

    JobLoop loop{{.clock = clock,
                  .passing = passing,
                  .settings = [this] { return settings; },
                  .library = [this] { return library; },
                  .consoleIsAlive = [this] { return isConsoleAlive; },
                  .isTaken = [this] { return isTaken; },
                  .hasWork =
                      [this](JobKind kind) {
                          ++asked;
                          if (isBroken) {
                              throw DbError(dberror::kLocked, u"locked"_s);
                          }
                          return work.count(kind) != 0;
                      },
                  .start =
                      [this](JobKind kind) {
                          if (!isBusy) {
                              done.append(name(kind));
                          }
                          return !isBusy;
                      },
                  .stopJob = [this] { done.append(u"stop"_s); },
                  .endProgram = [this] { done.append(u"end"_s); }}};

private:
    int m_changes = 0;
};

TEST_F(Jobs, WhatIsDueRunsOneBehindTheOtherOnceTheConsoleIsIdle)
{
    work = {JobKind::Tags, JobKind::Trees};
    pass(60s);
    EXPECT_EQ(taken(), QStringList());
    pass(5s);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
    pass(600s);
    EXPECT_EQ(taken(), QStringList()) << "the first job is still running";
    loop.jobEnded(true);
    EXPECT_EQ(taken(), QStringList{u"trees"_s});
    loop.jobEnded(true);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(Jobs, EveryChangeOfTheLibraryBeginsThePauseAnew)
{
    work = {JobKind::Lists};
    for (int i = 0; i < 20; ++i) {
        change();
        pass(55s);
    }
    EXPECT_EQ(taken(), QStringList());
    pass(10s);
    EXPECT_EQ(taken(), QStringList{u"lists"_s});
}

TEST_F(Jobs, ALibraryThatNobodyChangesIsAskedOnce)
{
    pass(24h);
    EXPECT_EQ(asked, 3);
    change();
    pass(24h);
    EXPECT_EQ(asked, 6);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(Jobs, AJobThatFailedIsTriedAgainLater)
{
    settings.retry = 10min;
    work = {JobKind::Tags};
    pass(65s);
    loop.jobEnded(false);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
    change();
    pass(590s);
    EXPECT_EQ(taken(), QStringList());
    pass(10s);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
    loop.jobEnded(true);
    pass(24h);
    EXPECT_EQ(taken(), QStringList()) << "it says that it has done everything";
}

TEST_F(Jobs, AJobOfWhichOneFailsDoesNotHoldBackTheOthers)
{
    work = {JobKind::Tags, JobKind::Lists};
    pass(65s);
    loop.jobEnded(false);
    EXPECT_EQ(taken(), (QStringList{u"tags"_s, u"lists"_s}));
}

TEST_F(Jobs, AtItsTimeOfDayAJobRunsThoughTheConsoleIsBusy)
{
    clock.set(QDateTime(QDate(2026, 3, 14), QTime(4, 59, 0)));
    settings.rules[size_t(JobKind::Lists)] = {.whenIdle = false, .times = {QTime(5, 0)}};
    work = {JobKind::Tags, JobKind::Lists};
    for (int i = 0; i < 11; ++i) {
        change();
        pass(5s);
    }
    EXPECT_EQ(taken(), QStringList());
    change();
    pass(5s);
    EXPECT_EQ(taken(), QStringList{u"lists"_s});
    loop.jobEnded(true);
    settings.rules[size_t(JobKind::Tags)].whenIdle = false;
    pass(23h);
    EXPECT_EQ(taken(), QStringList());
    pass(1h);
    EXPECT_EQ(taken(), QStringList{u"lists"_s}) << "the next morning";
}

TEST_F(Jobs, ATimeThatWasSleptThroughIsMadeUpForOnce)
{
    settings.rules[size_t(JobKind::Trees)] = {.whenIdle = false, .times = {QTime(3, 0)}};
    work = {JobKind::Trees};
    pass(5s);
    clock.set(clock.now().addDays(3));
    pass(5s);
    EXPECT_EQ(taken(), QStringList{u"trees"_s});
    loop.jobEnded(true);
    pass(1h);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(Jobs, AClockThatIsSetBackRunsNothingTwiceAndNothingAtOnce)
{
    settings.rules[size_t(JobKind::Trees)] = {.whenIdle = false, .times = {QTime(3, 0)}};
    work = {JobKind::Trees};
    pass(5s);
    clock.set(clock.now().addDays(-400));
    pass(5s);
    EXPECT_EQ(taken(), QStringList());
    pass(13h);
    EXPECT_EQ(taken(), QStringList{u"trees"_s});
}

TEST_F(Jobs, AJobThatIsSwitchedOffNeverRuns)
{
    for (JobRule& rule : settings.rules) {
        rule.whenIdle = false;
    }
    work = {JobKind::Tags, JobKind::Lists, JobKind::Trees};
    pass(24h);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(asked, 0);
}

TEST_F(Jobs, WhileAnotherProgramWorksInTheLibraryNoneIsStarted)
{
    work = {JobKind::Tags};
    isBusy = true;
    pass(10min);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_LE(asked, 3 + 10) << "asked once a pause, not at every look";
    isBusy = false;
    pass(65s);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
}

TEST_F(Jobs, ATimeOfDayWaitsForTheProgramThatWorksInTheLibrary)
{
    settings.rules[size_t(JobKind::Tags)] = {.whenIdle = false, .times = {QTime(15, 10)}};
    work = {JobKind::Tags};
    isBusy = true;
    pass(10min);
    isBusy = false;
    pass(65s);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
}

TEST_F(Jobs, ALibraryThatCannotBeReadIsAskedAgain)
{
    work = {JobKind::Lists};
    isBroken = true;
    pass(5min);
    EXPECT_EQ(taken(), QStringList());
    isBroken = false;
    pass(65s);
    EXPECT_EQ(taken(), QStringList{u"lists"_s});
}

TEST_F(Jobs, WithoutALibraryNothingIsAsked)
{
    library.clear();
    settings.rules[size_t(JobKind::Tags)].times = {QTime(16, 0)};
    pass(2h);
    EXPECT_EQ(asked, 0);
}

TEST_F(Jobs, AskedToEndItStopsItsJobFirstAndStartsNoOther)
{
    work = {JobKind::Tags, JobKind::Lists};
    pass(65s);
    loop.end();
    loop.jobEnded(false);
    loop.end();
    pass(10min);
    EXPECT_EQ(taken(), (QStringList{u"tags"_s, u"stop"_s, u"end"_s}));
}

TEST_F(Jobs, ALentLibraryEndsIt)
{
    work = {JobKind::Tags};
    isTaken = true;
    pass(65s);
    EXPECT_EQ(taken(), QStringList{u"end"_s});
    EXPECT_EQ(asked, 0);
}

TEST_F(Jobs, WithoutAConsoleForAWhileItEnds)
{
    pass(1h);
    isConsoleAlive = false;
    pass(25s);
    isConsoleAlive = true;
    pass(5s);
    isConsoleAlive = false;
    pass(25s);
    EXPECT_EQ(taken(), QStringList());
    pass(5s);
    EXPECT_EQ(taken(), QStringList{u"end"_s});
}

TEST_F(Jobs, WithoutAConsoleTheJobThatRunsIsLeftToEndAndNoneIsStarted)
{
    work = {JobKind::Tags};
    pass(65s);
    isConsoleAlive = false;
    pass(1h);
    EXPECT_EQ(taken(), QStringList{u"tags"_s});
    loop.jobEnded(true);
    change();
    settings.pause = 5s;
    pass(30s);
    EXPECT_EQ(taken(), QStringList{u"end"_s});
}

} // namespace
} // namespace melovane::test
