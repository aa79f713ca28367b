#pragma once

#include "platform/system/timers.h"

namespace melovane {

/// The message loop of the running application.
class QtMessageLoop : public MessageLoop
{
public:
    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds interval,
                                                   std::function<void()> handler) override;
    void turn() override;
};

} // namespace melovane
