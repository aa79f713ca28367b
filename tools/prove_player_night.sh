#!/usr/bin/env bash
# Proves that the player lasts a night: tools/prove_player_night.sh [PARTS = 48] [TRACKS = 1000000]
#
# Each part are ten minutes of real time with SDL's dummy driver, beside a program that searches a library
# of so many tracks (10000, 100000 or 1000000) without a rest: each second of sound must come in time, and
# the player's memory must stay flat. 48 parts are eight hours. NIGHT_SECONDS makes parts of another length.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

parts=${1:-48}
tracks=${2:-1000000}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
cmake --preset bench >/dev/null
ninja -C build/debug player_process_test
ninja -C build/bench search_bench

XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
searcher=
trap '[ -z "$searcher" ] || kill "$searcher" 2>/dev/null || true; rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy XDG_RUNTIME_DIR
export MLV_PLAYER_SECONDS=${NIGHT_SECONDS:-600}
search=$(find build/bench -type f -name search_bench -perm -u+x)

# The neighbour: searches one library after the other, as long as the night lasts.
(
    while true; do
        "$search" --benchmark_filter="/$tracks" >/dev/null 2>&1 || sleep 1
    done
) &
searcher=$!

for ((part = 1; part <= parts; ++part)); do
    echo "part $part of $parts"
    build/debug/tests/player_process_test --gtest_filter='*PlaysOnWithoutAGap*' |
        grep -E '^night:|FAILED|PASSED'
done
