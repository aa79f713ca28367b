#pragma once

#include "platform/system/passing_time.h"

namespace melovane::test {

/// Time that stands still, except for pauses and what a test adds.
class FakePassingTime : public PassingTime
{
public:
    [[nodiscard]] std::chrono::microseconds passed() override
    {
        m_passed += m_perLook;
        return m_passed;
    }

    void pause(std::chrono::microseconds time) override
    {
        m_passed += time;
        m_paused += time;
    }

    /// So much passes between two looks at it, as if work took that long.
    void setPerLook(std::chrono::microseconds time) { m_perLook = time; }

    /// Spent in pauses so far.
    [[nodiscard]] std::chrono::microseconds paused() const { return m_paused; }

private:
    std::chrono::microseconds m_passed{0};
    std::chrono::microseconds m_paused{0};
    std::chrono::microseconds m_perLook{0};
};

} // namespace melovane::test
