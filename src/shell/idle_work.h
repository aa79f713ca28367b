#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class MessageLoop;
class Timer;

/// Long work in slices between the events of the window, so that keys and paints come first.
class IdleWork
{
public:
    /// A few milliseconds of the work; false when there is nothing left to do.
    using Slice = std::function<bool()>;

    explicit IdleWork(MessageLoop& loop);
    ~IdleWork();

    /// Runs a slice again and again until it returns false. Works take turns; a slice may add
    /// others. One that throws is not run again.
    void add(Slice slice);

private:
    void runSlices();

    std::vector<Slice> m_work;
    std::unique_ptr<Timer> m_timer;
};

} // namespace melovane
