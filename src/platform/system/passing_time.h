#pragma once

#include <chrono>
#include <thread>

namespace melovane {

/// How time passes for somebody who waits: a stopwatch and a pause. Has nothing to do with the time
/// of day, which a user may set back. Asked on the thread that waits.
class PassingTime
{
public:
    virtual ~PassingTime() = default;

    /// Since a moment of its own; never goes back.
    [[nodiscard]] virtual std::chrono::microseconds passed() = 0;

    /// Comes back when so much time has passed.
    virtual void pause(std::chrono::microseconds time) = 0;
};

/// The machine's.
class SystemPassingTime : public PassingTime
{
public:
    [[nodiscard]] std::chrono::microseconds passed() override
    {
        return std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }

    void pause(std::chrono::microseconds time) override { std::this_thread::sleep_for(time); }
};

} // namespace melovane
