#pragma once

#include "platform/sqlite/engine/database_care.h"
#include "support/suite_fixture.h"

#include <QElapsedTimer>

#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <random>

namespace melovane::test {

/// Does works in processes of their own that die at any moment.
class KilledWork
{
public:
    explicit KilledWork(Suite& suite)
        : m_suite(suite)
    {}

    /// Kills of one kind of work: a few as a rule, more for tools/prove_care.sh.
    [[nodiscard]] static int rounds()
    {
        const int asked = qEnvironmentVariableIntValue("MLV_CARE_KILLS");
        return asked > 0 ? asked : 4;
    }

    /// Does a work to its end in another process.
    void finish(const std::function<void()>& work)
    {
        QElapsedTimer whole;
        whole.start();
        const int status = start(work, 0);
        m_usual = std::max<qint64>(whole.nsecsElapsed() / 1000, 1000);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
    }

    /// Begins it in another process that dies on the way, at a moment that nobody can foresee.
    void kill(const std::function<void()>& work)
    {
        const auto moment = std::uniform_int_distribution<qint64>(1, m_usual)(m_random);
        runUntil(work, moment);
    }

    /// Does one in another process that may kill itself.
    void run(const std::function<void()>& work) { runUntil(work, 0); }

    /// How many have died before their end.
    [[nodiscard]] int killed() const { return m_killed; }

    /// What holds at every moment: the file is whole, lists have as many entries as they say, and
    /// no entry is without its list, nor without its track unless a cleaning knows of it.
    void expectWhole() const
    {
        const auto care = sqlite::makeDatabaseCare(m_suite.clock);
        EXPECT_EQ(care->check(m_suite.dbName(), DatabaseCare::Depth::Indexes,
                              [](qint64, qint64) { return true; }),
                  QStringList());
        const auto count = [&](const char* from) {
            return m_suite.value(QStringLiteral("select count(*) from ") + QLatin1String(from))
                .toInt64();
        };
        EXPECT_EQ(count("pl_name where anzahl<>(select count(*) from pl_all where pnid=nid)"), 0);
        EXPECT_EQ(count("pl_all where pnid not in (select nid from pl_name)"), 0);
        EXPECT_EQ(count("pl_name where grid<>-1 and grid not in (select grid from pl_group)"), 0);
        EXPECT_EQ(count("pl_all where fid not in (select fid from db_all) and fid not in "
                        "(select fid from todo where id=1)"),
                  0);
    }

private:
    void runUntil(const std::function<void()>& work, qint64 moment)
    {
        const int status = start(work, moment);
        m_killed += WIFSIGNALED(status) ? 1 : 0;
        ASSERT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "status " << status;
    }

    /// \param moment microseconds from its beginning; 0 lets it live
    [[nodiscard]] int start(const std::function<void()>& work, qint64 moment)
    {
        // The other process opens files of its own and has nobody beside it.
        m_suite.engine->Release(m_suite.dbName());
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(SIGALRM, [](int) { ::kill(::getpid(), SIGKILL); });
            itimerval timer = {};
            timer.it_value.tv_sec = moment / 1'000'000;
            timer.it_value.tv_usec = moment % 1'000'000;
            ::setitimer(ITIMER_REAL, &timer, nullptr);
            work();
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return status;
    }

    Suite& m_suite;
    std::mt19937 m_random{20261122};
    qint64 m_usual = 1000; ///< microseconds of a whole work
    int m_killed = 0;
};

} // namespace melovane::test
