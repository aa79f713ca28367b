#!/usr/bin/env bash
# Proves the list rules at length: tools/prove_playlists.sh [SEQUENCES = 10000] [KILLS = 1000]
#
# Random sequences of edits, undone and redone in between, against a plain list in memory that
# follows the same rules; then an editing program is killed again and again at random moments, and
# the lists must be whole and hold the last edit that it confirmed. The tests of the normal run, in
# number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

sequences=${1:-10000}
kills=${2:-1000}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug playlists_test

# In memory where there is room: whether a disk keeps what it was given is not the question here.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
export QT_QPA_PLATFORM=offscreen MLV_LIST_SEQUENCES=$sequences MLV_LIST_KILLS=$kills
exec build/debug/tests/playlists_test --gtest_filter='ListModelProof.*'
