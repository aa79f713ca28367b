#include "siblings/melovanedj/night_watch.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace melovane {
namespace {

/// What the player's processes and the test see together.
struct Shared
{
    int starts = 0;
    NightPlace place;
    NightStart last;
};

class NightWatchTest : public testing::Test
{
protected:
    NightWatchTest()
        : m_shared(static_cast<Shared*>(::mmap(nullptr,
                                               sizeof(Shared),
                                               PROT_READ | PROT_WRITE,
                                               MAP_SHARED | MAP_ANONYMOUS,
                                               -1,
                                               0)))
    {
        *m_shared = {};
    }

    ~NightWatchTest() override { ::munmap(m_shared, sizeof(Shared)); }

    /// Watches in a process of its own, which the signals of a watch are for.
    /// \param play what each player does before it crashes; true when it ends instead
    /// \return the exit code of the watch
    int watch(const std::function<bool(Shared& shared)>& play)
    {
        const pid_t watcher = ::fork();
        if (watcher == 0) {
            ::_exit(watchOver([this] { return m_shared->place; },
                              [&](const NightStart& start) {
                                  ++m_shared->starts;
                                  m_shared->last = start;
                                  if (!play(*m_shared)) {
                                      ::raise(SIGKILL);
                                  }
                                  ::_exit(7);
                                  return 0;
                              }));
        }
        int state = 0;
        ::waitpid(watcher, &state, 0);
        return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    }

    Shared* m_shared;
};

TEST_F(NightWatchTest, APlayerThatCrashesTenTimesAtItsStartIsGivenUp)
{
    EXPECT_EQ(watch([](Shared&) { return false; }), 1);
    EXPECT_EQ(m_shared->starts, 10);
    EXPECT_TRUE(m_shared->last.isRestart);
    EXPECT_TRUE(m_shared->last.skipsEntry) << "it may have been the entry";
}

TEST_F(NightWatchTest, APlayerThatPlayedBeforeEachCrashIsStartedAgainHoweverOften)
{
    EXPECT_EQ(watch([](Shared& shared) {
                  shared.place = {shared.starts, 250};
                  return shared.starts == 30;
              }),
              7);
    EXPECT_EQ(m_shared->starts, 30);
    EXPECT_FALSE(m_shared->last.skipsEntry) << "another one each time";
}

TEST_F(NightWatchTest, AnEntryAtWhichThePlayerCrashesThreeTimesIsSkipped)
{
    EXPECT_EQ(watch([](Shared& shared) {
                  shared.place.positionMs += 250;
                  return shared.starts == 4;
              }),
              7);
    EXPECT_TRUE(m_shared->last.skipsEntry);
}

} // namespace
} // namespace melovane
