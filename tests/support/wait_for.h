#pragma once

#include <QTest>

#include <utility>

namespace melovane::test {

/// How long a test waits for something that comes by itself, in milliseconds: longer than any
/// machine is busy with other things. Only a test that fails waits so long.
inline constexpr int kLongWaitMs = 60'000;

/// Turns the message loop until the condition holds. False when it never did.
template <typename Condition> [[nodiscard]] bool waitFor(Condition&& condition)
{
    return QTest::qWaitFor(std::forward<Condition>(condition), kLongWaitMs);
}

} // namespace melovane::test
