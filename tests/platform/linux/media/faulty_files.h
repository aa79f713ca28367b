#pragma once

#include <functional>

/// The system's operations on files, failing on demand. Linked in front of the real ones.
namespace melovane::test::faultyfiles {

enum class Kind
{
    Fails, ///< the operation fails, those behind it work
    Dies,  ///< it and all behind it do nothing, as if the program had been killed there; a write
           ///< stops in its middle
};

/// Counts operations from 1 on and lets the `at`th fail. 0 lets none fail.
void arm(int at, Kind kind, int error);

/// Runs something in front of the `at`th operation, which then works.
void interrupt(int at, std::function<void()> between);

/// Back to the system's own ways; returns how many operations there were since arm().
int disarm();

} // namespace melovane::test::faultyfiles
