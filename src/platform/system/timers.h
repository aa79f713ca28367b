#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace melovane {

/// A timer of the message loop. Stopped when destroyed.
class Timer
{
public:
    virtual ~Timer() = default;

    virtual void start() = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isActive() const = 0;
};

/// Where timers and turns of the message loop come from.
class MessageLoop
{
public:
    virtual ~MessageLoop() = default;

    /// A repeating timer, stopped at first.
    [[nodiscard]] virtual std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds interval,
                                                           std::function<void()> handler) = 0;

    /// Gives pending events their turn. Anything may have changed afterwards.
    virtual void turn() = 0;

    /// True while the loop turns within the work of an event: a dialog is open, a row is dragged,
    /// a long work gives the window its turns.
    [[nodiscard]] virtual bool isNested() const { return false; }
};

} // namespace melovane
