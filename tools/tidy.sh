#!/usr/bin/env bash
# Checks how the sources are written: clang-format over all of them, clang-tidy over some.
#
#   tools/tidy.sh           clang-tidy over what the last 20 commits touched, at most 20 files, newest
#                           first; a header counts as the source beside it
#   tools/tidy.sh all       clang-tidy over the whole tree; takes some two hours on two cores
#   tools/tidy.sh FILE...   both over these files alone
#
# Prints findings and nothing else; ends with 1 when there are any. A source without findings is
# not looked at again until it, a header that it includes or .clang-tidy changes.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
named=()
if [ $# -gt 0 ] && [ "$1" != all ]; then
    mapfile -t named < <(realpath --relative-to="$root" -- "$@")
fi
cd "$root"
. tools/packages.sh

# A source costs about 15 s of one core and a test 25 s, nearly all of it in the system's headers.
# With these bounds the check stays below five minutes on two cores.
commits=20
most=20

# sources: every source and header of ours, also one that is not added yet.
sources() {
    git ls-files --cached --others --exclude-standard -- src tests bench |
        grep -E '\.(cpp|h)$' | sort -u | existing
}

# existing: of the files on the input those that are there.
existing() {
    local file
    while IFS= read -r file; do
        if [ -f "$file" ]; then
            printf '%s\n' "$file"
        fi
    done
}

# units: of the files on the input the ones to compile, a header as the source beside it.
units() {
    sed 's/\.h$/.cpp/' | grep '\.cpp$' | existing | awk '!seen[$0]++'
}

# touched: what the last commits changed, newest first. Where the history is cut off before that,
# the other sources follow, in an order that each commit changes, so that all have their turn.
touched() {
    local range=(-n "$commits" --min-parents=1 --max-parents=1)
    git log "${range[@]}" --format= --name-only -- src tests bench
    if [ "$(git rev-list "${range[@]}" --count HEAD -- src tests bench)" -lt "$commits" ]; then
        sources | shuf --random-source=<(yes "$(git rev-parse HEAD)")
    fi
}

# keys UNITS: a line "KEY UNIT" for each source in that file. The key is made of all that decides
# about the findings: settings, compiler options, the source and the headers of ours below it.
keys() {
    local settings closure unit
    settings=$(cat .clang-tidy tools/tidy.sh CMakePresets.json cmake/*.cmake src/pch/*.h | sha1sum)
    closure=$(mktemp)
    sources | xargs grep -HoE '^#include "[^"]+"' | awk -v units="$1" '
        {
            colon = index($0, ":")
            from = substr($0, 1, colon - 1)
            name = substr($0, colon + 11, length($0) - colon - 11)
            folder = from
            sub(/[^\/]*$/, "", folder)
            wanted[from] = wanted[from] " " folder name " src/" name " tests/" name " " name
            known[from] = 1
        }
        function walk(file,    names, count, i) {
            if (file in seen)
                return
            seen[file] = 1
            line = line " " file
            count = split(wanted[file], names, " ")
            for (i = 1; i <= count; ++i)
                if (names[i] in known || (getline text < names[i]) > 0) {
                    close(names[i])
                    known[names[i]] = 1
                    walk(names[i])
                }
        }
        END {
            while ((getline unit < units) > 0) {
                split("", seen)
                line = ""
                walk(unit)
                print line
            }
        }' >"$closure"
    while read -r -a files; do
        unit=${files[0]}
        printf '%s %s\n' "$({ printf '%s' "$settings"; cat "${files[@]}"; } |
            sha1sum | cut -c1-40)" "$unit"
    done <"$closure"
    rm -f "$closure"
}

# unchecked: of the lines "KEY UNIT" on the input those of sources that were not found clean.
unchecked() {
    local key unit
    while read -r key unit; do
        if [ ! -e "build/tidy/clean/$key" ]; then
            printf '%s %s\n' "$key" "$unit"
        fi
    done
}

# check KEY UNIT: clang-tidy over one source; what is clean leaves its key behind.
check() {
    local clean=build/tidy/clean/$1 unit=$2 option told options=()
    case $unit in
    tests/* | bench/*)
        # Macros that assert fork the paths that the analyzer follows. Without this bound on the steps
        # in one function it takes up to a minute and a half for a file in place of some seconds, and
        # comes no further: a null pointer in the third statement is beyond both.
        for option in -Xclang -analyzer-config -Xclang max-nodes=10000; do
            options+=("--extra-arg=$option")
        done
        ;;
    esac
    told=$(mktemp)
    if clang-tidy -quiet -p build/tidy -warnings-as-errors='*' "${options[@]}" "$unit" \
        >"$told" 2>"$told.err"; then
        touch "$clean"
    else
        sed "s|$PWD/||g" "$told"
        # A crash says so here alone.
        grep -vE '^[0-9]+ (warnings?|errors?)|^$' "$told.err" | sed "s|$PWD/||g" || true
        rm -f "$told" "$told.err"
        return 1
    fi
    rm -f "$told" "$told.err"
}
export -f check

install_missing "${build_packages[@]}" "${test_packages[@]}" "${tidy_packages[@]}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

case ${1:-} in
"")
    sources >"$work/format"
    touched | units | head -n "$most" >"$work/units" || true
    ;;
all)
    sources >"$work/format"
    units <"$work/format" >"$work/units"
    ;;
*)
    printf '%s\n' "${named[@]}" >"$work/format"
    units <"$work/format" >"$work/units"
    ;;
esac

status=0
xargs -r -a "$work/format" -n 50 -P "$(nproc)" clang-format --dry-run -Werror 2>&1 || status=1

keys "$work/units" | unchecked >"$work/keys"
if [ -s "$work/keys" ]; then
    cmake --preset tidy >"$work/log" 2>&1 &&
        cmake --build build/tidy --target mlv_pch_core mlv_pch_widgets mlv_pch_tests \
            >>"$work/log" 2>&1 || {
        cat "$work/log"
        exit 1
    }
    mkdir -p build/tidy/clean
    while read -r _ unit; do
        if ! grep -qF "\"file\": \"$PWD/$unit\"" build/tidy/compile_commands.json; then
            echo "$unit: error: no target compiles it"
            status=1
        fi
    done <"$work/keys"
    xargs -a "$work/keys" -P "$(nproc)" -L 1 bash -c 'check "$@"' -- || status=1
fi
exit "$status"
