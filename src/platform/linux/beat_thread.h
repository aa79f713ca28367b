#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace melovane::linux_media {

/// Calls a function again and again on a thread of its own, whatever the message loop does.
class BeatThread
{
public:
    BeatThread() = default;
    ~BeatThread();
    BeatThread(const BeatThread&) = delete;
    BeatThread& operator=(const BeatThread&) = delete;

    /// The first call comes at once, each other so long after the one before has returned. What
    /// was started before is stopped.
    /// \param beat does not throw
    void start(std::chrono::milliseconds interval, std::function<void()> beat);

    /// The next call comes as soon as the running one has returned. From any thread.
    void hurry();

    /// Returns when the last call has.
    void stop();

private:
    void run(std::chrono::milliseconds interval, const std::function<void()>& beat);

    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_hurries = false; ///< under the mutex, as the next
    bool m_stops = false;
};

} // namespace melovane::linux_media
