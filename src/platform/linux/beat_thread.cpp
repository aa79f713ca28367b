#include "platform/linux/beat_thread.h"

#include <utility>

namespace melovane::linux_media {

BeatThread::~BeatThread()
{
    stop();
}

void BeatThread::start(std::chrono::milliseconds interval, std::function<void()> beat)
{
    stop();
    m_stops = false;
    m_thread = std::thread([this, interval, beat = std::move(beat)] { run(interval, beat); });
}

void BeatThread::hurry()
{
    const std::scoped_lock lock(m_mutex);
    m_hurries = true;
    m_wake.notify_one();
}

void BeatThread::stop()
{
    if (!m_thread.joinable()) {
        return;
    }
    {
        const std::scoped_lock lock(m_mutex);
        m_stops = true;
        m_wake.notify_one();
    }
    m_thread.join();
}

void BeatThread::run(std::chrono::milliseconds interval, const std::function<void()>& beat)
{
    std::unique_lock lock(m_mutex);
    while (!m_stops) {
        m_hurries = false;
        lock.unlock();
        beat();
        lock.lock();
        m_wake.wait_for(lock, interval, [this] { return m_hurries || m_stops; });
    }
}

} // namespace melovane::linux_media
