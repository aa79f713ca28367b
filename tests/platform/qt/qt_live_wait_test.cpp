#include "platform/qt/qt_live_wait.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace melovane;

TEST(QtLiveWait, TheWindowsEventsHaveTheirTurnWhileTheWorkGoesOn)
{
    // The work ends only when the window's thread has handled an event.
    const auto turn = std::make_shared<QSemaphore>();
    QTimer::singleShot(0, [turn] { turn->release(); });
    bool isDone = false;
    QtLiveWait wait;
    EXPECT_TRUE(wait.run(
        [&isDone, turn] {
            turn->acquire();
            isDone = true;
        },
        [] { return true; }));
    EXPECT_TRUE(isDone);
}

TEST(QtLiveWait, TheWorkRunsBesideTheWindow)
{
    QThread* worker = nullptr;
    QtLiveWait wait;
    EXPECT_TRUE(wait.run([&worker] { worker = QThread::currentThread(); }, [] { return true; }));
    EXPECT_NE(worker, QThread::currentThread());
}

TEST(QtLiveWait, ItAsksOnTheWindowsThreadWhetherItGoesOn)
{
    const auto asked = std::make_shared<QSemaphore>();
    QThread* asker = nullptr;
    QtLiveWait wait;
    EXPECT_TRUE(wait.run([asked] { asked->acquire(); },
                         [&asker, asked] {
                             asker = QThread::currentThread();
                             asked->release();
                             return true;
                         }));
    EXPECT_EQ(asker, QThread::currentThread());
}

TEST(QtLiveWait, WorkThatDoesNotAnswerIsLeftAloneWhenTheUserWantsAnEnd)
{
    const auto disk = std::make_shared<QSemaphore>();
    const auto ended = std::make_shared<QSemaphore>();
    QtLiveWait wait(std::chrono::milliseconds(0));
    EXPECT_FALSE(wait.run(
        [disk, ended] {
            disk->acquire();
            ended->release();
        },
        [] { return false; }));
    disk->release();
    ended->acquire();
    QCoreApplication::processEvents(); // what it has posted finds nobody
}

TEST(QtLiveWait, AFailureOnTheWindowsThreadEndsTheWait)
{
    const auto disk = std::make_shared<QSemaphore>();
    const auto ended = std::make_shared<QSemaphore>();
    QtLiveWait wait;
    EXPECT_THROW(static_cast<void>(wait.run(
                     [disk, ended] {
                         disk->acquire();
                         ended->release();
                     },
                     []() -> bool { throw std::runtime_error("no"); })),
                 std::runtime_error);
    disk->release();
    ended->acquire();
}
