#include "platform/linux/beat_thread.h"

#include <gtest/gtest.h>

#include <future>
#include <semaphore>

namespace {

using namespace melovane::linux_media;
using namespace std::chrono_literals;

TEST(BeatThread, BeatsOnAThreadOfItsOwnAgainAndAgain)
{
    std::counting_semaphore<> beats(0);
    std::promise<std::thread::id> where;
    std::once_flag first;
    BeatThread thread;
    thread.start(1ms, [&] {
        std::call_once(first, [&] { where.set_value(std::this_thread::get_id()); });
        beats.release();
    });
    for (int i = 0; i < 5; ++i) {
        beats.acquire();
    }
    EXPECT_NE(std::this_thread::get_id(), where.get_future().get());
}

TEST(BeatThread, WhoeverHurriesNeedNotWaitForTheNextBeat)
{
    std::counting_semaphore<> beats(0);
    BeatThread thread;
    thread.start(24h, [&] { beats.release(); });
    beats.acquire();
    thread.hurry();
    beats.acquire();
}

TEST(BeatThread, AHurryDuringABeatIsNotLost)
{
    std::counting_semaphore<> begun(0);
    std::counting_semaphore<> goesOn(0);
    BeatThread thread;
    thread.start(24h, [&] {
        begun.release();
        goesOn.acquire();
    });
    begun.acquire();
    thread.hurry();
    goesOn.release();
    begun.acquire();
    goesOn.release();
}

TEST(BeatThread, AfterStopNothingBeats)
{
    std::atomic<int> beats = 0;
    BeatThread thread;
    std::counting_semaphore<> first(0);
    thread.start(1ms, [&] {
        ++beats;
        first.release();
    });
    first.acquire();
    thread.stop();
    const int before = beats;
    thread.hurry();
    EXPECT_EQ(before, beats);
    // And it can be started again.
    thread.start(24h, [&] { first.release(); });
    first.acquire();
}

} // namespace
