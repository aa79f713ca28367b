#include "platform/qt/qt_live_wait.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QMutex>
#include <QTimer>

#include <memory>
#include <thread>

namespace melovane {

namespace {

/// Between two questions whether it goes on.
constexpr std::chrono::milliseconds kTick{50};

/// What the work and the wait know of each other; the later one of them removes it.
class Meeting
{
public:
    void wait(QEventLoop* loop)
    {
        const QMutexLocker lock(&m_mutex);
        m_loop = loop;
    }

    void end()
    {
        const QMutexLocker lock(&m_mutex);
        m_isOver = true;
        if (m_loop != nullptr) {
            QMetaObject::invokeMethod(m_loop, &QEventLoop::quit, Qt::QueuedConnection);
        }
    }

    [[nodiscard]] bool isOver()
    {
        const QMutexLocker lock(&m_mutex);
        return m_isOver;
    }

private:
    QMutex m_mutex;
    QEventLoop* m_loop = nullptr;
    bool m_isOver = false;
};

/// The wait's side of a meeting, for as long as there is a loop to be woken.
class Waiting
{
public:
    Waiting(Meeting& meeting, QEventLoop& loop)
        : m_meeting(meeting)
    {
        m_meeting.wait(&loop);
    }

    ~Waiting() { m_meeting.wait(nullptr); }

    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    Meeting& m_meeting;
};

} // namespace

QtLiveWait::QtLiveWait(std::chrono::milliseconds patience)
    : m_patience(patience)
{}

bool QtLiveWait::run(std::function<void()> work, const std::function<bool()>& goesOn)
{
    const auto meeting = std::make_shared<Meeting>();
    QEventLoop loop;
    const Waiting waiting(*meeting, loop);
    std::thread([meeting, work = std::move(work)] {
        work();
        meeting->end();
    }).detach();
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &loop, &QEventLoop::quit);
    tick.start(kTick);
    QElapsedTimer sinceAskedToEnd;
    while (!meeting->isOver()) {
        // A program that is told to end leaves its loops at once, this one too.
        const bool isEnding = loop.exec(QEventLoop::ExcludeUserInputEvents) != 0;
        if (meeting->isOver()) {
            break;
        }
        if (!goesOn() && !sinceAskedToEnd.isValid()) {
            sinceAskedToEnd.start();
        }
        if (isEnding ||
            (sinceAskedToEnd.isValid() && sinceAskedToEnd.elapsed() >= m_patience.count())) {
            return false;
        }
    }
    return true;
}

} // namespace melovane
