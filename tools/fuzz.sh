#!/usr/bin/env bash
# Gives a part of the program random input for a while, under the address and undefined behaviour
# sanitizers: tools/fuzz.sh TARGET SECONDS, for instance tools/fuzz.sh dialect 600. A target is a
# folder of tests/fuzz/corpus: a file format, a message, a text that other programs hand over.
#
# Starts from the kept inputs in that folder, for the dialect from the statements of the test table
# too, for the others from what the program's own writers make. Ends with 0 when nothing was found;
# an input that breaks something stays in build/fuzz/found and is printed. One that broke something
# and was mended belongs into tests/fuzz/corpus: the replay tests read it ever after.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

targets=$(cd tests/fuzz/corpus && echo *)
target=${1:?one of: $targets}
seconds=${2:?seconds}
if [ ! -d "tests/fuzz/corpus/$target" ]; then
    echo "fuzz: no target $target; one of: $targets" >&2
    exit 2
fi
install_missing "${build_packages[@]}" "${fuzz_packages[@]}"

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${target}_fuzz"

grown=build/fuzz/corpus/$target
seeds=build/fuzz/seeds/$target
found=build/fuzz/found/$target
mkdir -p "$grown" "$found"
rm -rf "$seeds"
mkdir -p "$seeds"
if [ "$target" = dialect ]; then
    number=0
    while IFS= read -r statement; do
        number=$((number + 1))
        printf '%s' "${statement//↵/$'\n'}" >"$seeds/$number"
    done < <(sed -n 's/^? //p' tests/platform/sqlite/dialect/statements/*.txt)
fi

# Files with sound and a snapshot do not fit into less.
case $target in
dialect | m3u | template) length=1500 ;;
*) length=4096 ;;
esac

# Short-lived files of the readers go into memory where there is room.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
export MLV_SEEDS=$seeds
exec nice -n 10 "build/fuzz/bin/${target}_fuzz" -max_total_time="$seconds" -max_len="$length" \
    -timeout=60 -rss_limit_mb=3000 -artifact_prefix="$found/" -print_final_stats=1 \
    "$grown" "$seeds" "tests/fuzz/corpus/$target"
