#!/usr/bin/env bash
# Proves the writing of tags against kills at length: tools/prove_tag_kills.sh [KILLS = 500]
#
# Task.WriteTags is killed at a random moment, again and again, while it writes sixty files in its three
# ways: no file may be half written, no track that was not written may leave its table, and the next run
# leaves no file behind. The test of the normal run, in number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

kills=${1:-500}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug write_tags_process_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR MLV_TAG_KILLS=$kills
build/debug/tests/write_tags_process_test --gtest_filter='KilledWriter.*'
