#!/usr/bin/env bash
# Proves the search at length: tools/prove_search.sh [COMPARISONS = 10000000] [STATEMENTS = 5000]
#
# Random pieces and patterns against random and hostile texts, each text by each vector width that
# this machine has; then random statements, asked of the index in memory and of SQLite between
# changes of two programs, once with each width. The tests of the normal run, in number. Takes some
# minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

comparisons=${1:-10000000}
statements=${2:-5000}
install_missing "${build_packages[@]}" "${test_packages[@]}"
cmake --preset debug >/dev/null
ninja -C build/debug column_index_test

# In memory where there is room: the disk has no part in what is proved.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
export QT_QPA_PLATFORM=offscreen MLV_SEARCH_COMPARISONS=$comparisons MLV_SEARCH_STATEMENTS=$statements
for width in plain sse2 ''; do
    echo "== ${width:-the widest}"
    MLV_VECTOR=$width build/debug/tests/column_index_test --gtest_brief=1 \
        --gtest_filter='IndexTextsProof.*:ColumnIndexGuard.*'
done
