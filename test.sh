#!/usr/bin/env bash
# Installs what is missing, builds, and passes all tests. PRESET=asan ./test.sh runs them under the
# address and undefined behaviour sanitizers.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
. tools/packages.sh
install_missing "${build_packages[@]}" "${display_packages[@]}" "${test_packages[@]}"

preset=${PRESET:-debug}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"

# Tests leave nothing behind and meet nothing of the user's.
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
# For the programs that tests start; what leaks there is not ours.
export LSAN_OPTIONS=suppressions=$PWD/tests/support/leaks_of_others.txt:print_suppressions=0

ctest --test-dir "build/$preset" -j"$(nproc)" --output-on-failure -LE x11
# Read to its end: a reader that leaves early would make ctest fail, and the tests be left out.
if ctest --test-dir "build/$preset" -N -L x11 | grep 'Test *#' >/dev/null; then
    # A window manager gives the windows their focus; without one no key arrives.
    xvfb-run -a -s "-screen 0 1600x1000x24" bash -c '
        openbox >/dev/null 2>&1 &
        manager=$!
        status=0
        ctest --test-dir "build/$1" --output-on-failure -L x11 || status=$?
        kill "$manager"
        exit "$status"' -- "$preset"
fi
