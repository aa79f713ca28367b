#!/usr/bin/env bash
# Proves that messages cannot bring the console down: tools/prove_floods.sh [POSTS = 100000]
#
# Two programs post numbers and texts of every kind, known and unknown, with values of every size,
# to all message controls of a console as fast as they can, a quarter of them while it is stopped.
# It must live, keep no memory of it, and show what it showed. The test of the normal run, in
# number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug console_proof_test

export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy MLV_FLOOD_POSTS=${1:-100000}
exec build/debug/tests/console_proof_test --gtest_filter='ConsoleFlood.*'
