#include "siblings/melovanedj/night_watch.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <deque>

namespace melovane {

namespace {

using Clock = std::chrono::steady_clock;

/// So many crashes at one entry within that time are taken for its fault.
constexpr int kCrashesOfAnEntry = 3;
constexpr std::chrono::seconds kTimeOfAnEntry{10};
/// So many in a row that came at once are hopeless.
constexpr int kHopeless = 10;
constexpr std::chrono::seconds kAtOnce{1};
/// One that has played for longer had got over its start.
constexpr double kPlayedMs = 100;

struct Crash
{
    Clock::time_point moment;
    int entry = 0;
    bool cameAtOnce = false;
};

bool isFaultOfEntry(const std::deque<Crash>& crashes)
{
    const Crash& last = crashes.back();
    return std::count_if(crashes.begin(), crashes.end(), [&](const Crash& crash) {
               return crash.entry == last.entry && crash.moment + kTimeOfAnEntry > last.moment;
           }) >= kCrashesOfAnEntry;
}

bool isHopeless(const std::deque<Crash>& crashes)
{
    return int(crashes.size()) >= kHopeless &&
           std::all_of(crashes.begin(), crashes.end(),
                       [](const Crash& crash) { return crash.cameAtOnce; });
}

bool hasPlayed(const NightPlace& before, const NightPlace& after)
{
    const double from = after.entry == before.entry ? before.positionMs : 0;
    return after.positionMs > from + kPlayedMs;
}

/// Read by the handler below.
volatile pid_t player = 0;

void passOn(int number)
{
    if (player > 0) {
        ::kill(player, number);
    }
}

void handle(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(number, &action, nullptr);
}

/// The wait status of a process.
int waitFor(pid_t process)
{
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

[[noreturn]] void runAs(const std::function<int(const NightStart& start)>& run,
                        const NightStart& start,
                        pid_t watcher)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        handle(number, SIG_DFL);
    }
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != watcher) {
        ::_exit(1); // it died in between
    }
    std::exit(run(start));
}

} // namespace

int watchOver(const std::function<NightPlace()>& place,
              const std::function<int(const NightStart& start)>& run)
{
    const pid_t watcher = ::getpid();
    std::deque<Crash> crashes; ///< the last ones
    NightStart start;
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        handle(number, passOn);
    }
    while (true) {
        const Clock::time_point begun = Clock::now();
        const NightPlace before = place();
        const pid_t child = ::fork();
        if (child == 0) {
            runAs(run, start, watcher);
        }
        if (child < 0) {
            return run(start); // no second process to be had: without a watch
        }
        player = child;
        const int status = waitFor(child);
        player = 0;
        if (WIFEXITED(status)) {
            return WEXITSTATUS(status);
        }
        const int number = WTERMSIG(status);
        if (number == SIGTERM || number == SIGINT || number == SIGHUP) {
            return 0;
        }
        const Clock::time_point now = Clock::now();
        const NightPlace after = place();
        crashes.push_back({now, after.entry, now - begun < kAtOnce && !hasPlayed(before, after)});
        if (int(crashes.size()) > kHopeless) {
            crashes.pop_front();
        }
        if (isHopeless(crashes)) {
            return 1;
        }
        start.isRestart = true;
        start.skipsEntry = isFaultOfEntry(crashes);
    }
}

} // namespace melovane
