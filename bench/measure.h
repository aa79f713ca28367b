#pragma once

#include <functional>

namespace melovane::bench {

/// Milliseconds of a piece of work.
struct Cost
{
    double wall = 0;
    double cpu = 0; ///< of this process: what other programs do adds nothing to it
};

/// Time that this process has had of the processor since its start.
[[nodiscard]] double cpuMilliseconds();

[[nodiscard]] Cost measured(const std::function<void()>& work);

/// The least of some tries, wall and processor each for itself. \param tries at least 1
[[nodiscard]] Cost leastOf(int tries, const std::function<void()>& work);

/// Megabytes of this process that lie in memory.
[[nodiscard]] double residentMegabytes();

} // namespace melovane::bench
