#pragma once

#include "platform/system/live_wait.h"

#include <chrono>

namespace melovane {

/// Each work gets a thread of its own. The wait takes no input of the user: `goesOn` gives it its
/// turn.
class QtLiveWait : public LiveWait
{
public:
    /// \param patience with work that is to end
    explicit QtLiveWait(std::chrono::milliseconds patience = std::chrono::seconds(1));

    [[nodiscard]] bool run(std::function<void()> work,
                           const std::function<bool()>& goesOn) override;

private:
    std::chrono::milliseconds m_patience;
};

} // namespace melovane
