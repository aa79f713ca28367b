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
    [[nodiscard]] bool isNested() const override;

private:
    int m_turns = 0; ///< that are going on
};

} // namespace melovane
