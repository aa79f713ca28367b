#!/usr/bin/env bash
# Proves what becomes of damaged libraries at length: tools/prove_damage.sh [COUNT = 1000]
#
# Bits, pages, heads, ends and whole files are damaged, one way for each number: the check must tell it or
# every row be readable, and the last backup must bring all of it back. The test of the normal run, in
# number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

count=${1:-1000}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug damage_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR MLV_DAMAGES=$count
build/debug/tests/damage_test
