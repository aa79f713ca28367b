#!/usr/bin/env bash
# Proves that edits stay in the library on the screen: tools/prove_walk.sh [ACTIONS = 1000] [SEED = 1]
#
# Two users at two consoles do what chance says, beside an importer, a program that takes the
# library for itself and gives it back or dies, and settings that change between two libraries: real
# processes, real keys and clicks. Nothing may be written to a file that is not on the screen or is
# lent, and every step of the lists can be taken back to the first state and done again. The test of
# the normal run, in length. Takes some minutes; a seed that failed fails again.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug console_proof_test

export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy
export MLV_WALK_ACTIONS=${1:-1000} MLV_WALK_SEED=${2:-1}
exec build/debug/tests/console_proof_test --gtest_filter='ConsoleWalk.*'
