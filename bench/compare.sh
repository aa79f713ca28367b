#!/usr/bin/env bash
# How fast the search is beside the last release: bench/compare.sh [--keep] [TRACKS = 1000000]
#
# Each figure is processor time, told as a ratio to one pass over the letters of such a library in
# memory and to the same search by SQLite alone, both measured in the same run: so runs on different
# machines can be compared. Beside it stands the ratio that bench/figures.txt keeps; what takes more
# than a tenth longer is marked, and then this ends with 1. With --keep the figures of this run
# become those that are kept. Only an idle machine gives figures worth keeping.
# Without kept ones it prints those of this run alone.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

keep=no
if [ "${1:-}" = --keep ]; then
    keep=yes
    shift
fi
tracks=${1:-1000000}

cmake --preset bench >/dev/null
ninja -C build/bench search_bench >/dev/null
result=$(mktemp)
trap 'rm -f "$result"' EXIT
QT_QPA_PLATFORM=offscreen build/bench/bin/search_bench --benchmark_format=json \
    --benchmark_filter="(yardstick|search|header_click|one_change).*/$tracks/" >"$result"
python3 bench/compare.py "$result" bench/figures.txt "$tracks" "$keep"
