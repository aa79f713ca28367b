#!/usr/bin/env bash
# Proves backups against kills at length: tools/prove_backups.sh [KILLS = 300]
#
# A program that makes or restores a backup is killed between two of its slices, again and again: every
# backup that stands must be whole, the library hold what it held or what was restored, and the next run
# come to its end. The test of the normal run, in number. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

kills=${1:-300}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug killed_backup_test

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR MLV_BACKUP_KILLS=$kills
build/debug/tests/killed_backup_test
