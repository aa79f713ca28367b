#pragma once

#include "tagbench/bench_session.h"

namespace melovane {

/// Opens the tag tool and works until it is closed. The program's result: 0, or 1 when the library
/// may not be changed.
[[nodiscard]] int runBench(int argc, char** argv, BenchMode mode);

} // namespace melovane
