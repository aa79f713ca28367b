#pragma once

#include <functional>

namespace melovane {

/// Waits for long work while the window lives: its thread draws and hears, the work is done on
/// another one.
class LiveWait
{
public:
    virtual ~LiveWait() = default;

    /// \param work   does not throw and touches no control. It owns all that it uses: it may
    /// outlive
    ///               this call, when a disk does not answer
    /// \param goesOn asked some twenty times a second on the window's thread, where it may give the
    ///               user his turn; false when he wants an end. The work has to hear of that by
    ///               itself; after a second more it is left alone. What it throws ends the wait,
    ///               too
    /// False when the work was left alone.
    [[nodiscard]] virtual bool run(std::function<void()> work,
                                   const std::function<bool()>& goesOn) = 0;
};

} // namespace melovane
