#!/usr/bin/env bash
# Proves the tree tables against kills at length: tools/prove_rebuilds.sh [KILLS = 200]
#
# Two rebuilds at once work in one library that is edited meanwhile, and one of them is killed at a
# random moment, again and again: no tree may lose a row or a favourite, and the other rebuild must
# come to its end. The test of the normal run, in number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

kills=${1:-200}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug rebuild_tree_process_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR MLV_REBUILD_KILLS=$kills
build/debug/tests/rebuild_tree_process_test --gtest_filter='KilledRebuild.*'
