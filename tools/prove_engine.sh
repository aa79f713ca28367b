#!/usr/bin/env bash
# The database engine on a failing system, in full: every fault of files, memory and power under
# every operation that changes data, every page of a file damaged in every manner, four programs
# that make 10,000 changes each at once, 1,000 kills. Takes about half an hour. PRESET=asan runs it
# under the sanitizers, which takes several times as long.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

preset=${PRESET:-debug}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target engine_fault_test engine_process_test >/dev/null

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
export MLV_PROOF=full QT_QPA_PLATFORM=offscreen

status=0
for test in engine_fault_test engine_process_test; do
    "build/$preset/tests/$test" --gtest_brief=1 >"$results/$test" 2>&1 || status=1
    if grep -q '^\[  FAILED' "$results/$test" || ! grep -q '^\[  PASSED' "$results/$test"; then
        status=1
        cat "$results/$test"
    fi
done

cat "$results"/* | awk '
    /^proof: faults / { # proof: faults KIND OPERATION OCCURRED TOLD WHOLE
        sub(/^Change\//, "", $3)
        operations[$3]++; occurred[$3] += $5; told[$3] += $6; whole[$3] += $7; next }
    /^proof: / { sub(/^proof: /, ""); lines[++count] = $0 }
    END {
        for (kind in operations)
            printf "%s: %d faults in %d operations, %d told as an error (%d of them with the change whole), all others passed\n",
                   kind, occurred[kind], operations[kind], told[kind], whole[kind]
        for (i = 1; i <= count; ++i) print lines[i]
    }' | sort
grep -h '^\[==========\].*ran\|^\[  PASSED' "$results"/*
if [ "$status" -eq 0 ]; then
    echo "The engine keeps every change whole or absent."
else
    echo "The proof FAILED." >&2
fi
exit "$status"
