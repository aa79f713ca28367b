#pragma once

#include <functional>

namespace melovane {

/// Work beside the window: it touches no control and no database that the window has open.
class Worker
{
public:
    virtual ~Worker() = default;

    /// Does one work after the other, each in the order of asking.
    /// \param work does not throw
    /// \param done called by the message loop when the work is over, on the thread of the window;
    ///             no more once the worker is gone
    virtual void run(std::function<void()> work, std::function<void()> done) = 0;
};

} // namespace melovane
