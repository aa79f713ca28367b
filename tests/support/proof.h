#pragma once

#include <QtGlobal>

namespace melovane::test {

/// True when the long form of a test was asked for, see tools/prove_engine.sh.
inline bool isFullProof()
{
    return qgetenv("MLV_PROOF") == "full";
}

/// How often a test repeats something: a few times among all tests, often in the full proof.
inline int repetitions(int bounded, int full)
{
    return isFullProof() ? full : bounded;
}

} // namespace melovane::test
