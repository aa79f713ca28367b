#!/usr/bin/env bash
# Proves the care of the library against kills at length: tools/prove_care.sh [KILLS = 300]
#
# A process that scans, cleans, brings back what was cleaned, gives tracks their new places, merges doubles,
# makes a backup or restores one is killed again and again, each of the seven at moments of its own: the
# library must be whole, each file at its place or in the recycle folder with its record, every backup good,
# and the next run come to its end. The tests of the normal run, in number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

kills=${1:-300}
each=$(((kills + 6) / 7))
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug killed_care_test killed_backup_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR
MLV_CARE_KILLS=$each build/debug/tests/killed_care_test
MLV_BACKUP_KILLS=$((2 * each)) build/debug/tests/killed_backup_test
