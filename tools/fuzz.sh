#!/usr/bin/env bash
# Gives a part of the program random input for a while, under the address and undefined behaviour
# sanitizers: tools/fuzz.sh TARGET SECONDS, for instance tools/fuzz.sh dialect 600.
#
# Starts from the kept inputs in tests/fuzz/corpus and, for the dialect, from the statements of the
# test table. Ends with 0 when nothing was found; an input that breaks something stays in
# build/fuzz/found and is printed.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

target=${1:?target, such as dialect}
seconds=${2:?seconds}
install_missing "${build_packages[@]}" "${fuzz_packages[@]}"

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${target}_fuzz"

grown=build/fuzz/corpus/$target
seeds=build/fuzz/seeds/$target
found=build/fuzz/found/$target
mkdir -p "$grown" "$found" "tests/fuzz/corpus/$target"
rm -rf "$seeds"
mkdir -p "$seeds"
if [ "$target" = dialect ]; then
    number=0
    while IFS= read -r statement; do
        number=$((number + 1))
        printf '%s' "${statement//↵/$'\n'}" >"$seeds/$number"
    done < <(sed -n 's/^? //p' tests/platform/sqlite/dialect/statements/*.txt)
fi

exec nice -n 10 "build/fuzz/bin/${target}_fuzz" -max_total_time="$seconds" -max_len=1500 \
    -timeout=60 -rss_limit_mb=3000 -artifact_prefix="$found/" -print_final_stats=1 \
    "$grown" "$seeds" "tests/fuzz/corpus/$target"
