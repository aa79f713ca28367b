#!/usr/bin/env bash
# Proves the player against kills at length: tools/prove_player_kills.sh [KILLS = 200]
#
# MelovaneDJ is killed while it plays, again and again: each time it must be back, play the same entry at
# its place within three seconds, and tell the console so. The test of the normal run, in number. Takes
# some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

kills=${1:-200}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug player_process_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy XDG_RUNTIME_DIR MLV_PLAYER_KILLS=$kills
build/debug/tests/player_process_test --gtest_filter='*WhereItWasKilled'
