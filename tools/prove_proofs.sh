#!/usr/bin/env bash
# Shows that the tests notice faults: plants each fault of tools/planted_faults.txt by itself, builds
# the test program that should notice it, and demands that it fails.
#
#   tools/prove_proofs.sh             all faults
#   tools/prove_proofs.sh 3 7-12      some, by their numbers
#   tools/prove_proofs.sh redo        those whose name holds the word
#   tools/prove_proofs.sh --list      tells numbers and names
#
# Works in a copy of the last commit in a folder of its own; your files stay as they are. That folder
# is removed at the end, unless PROOF_TREE names one, which is then kept for the next time. Ends with
# 0 when every fault was noticed, with 1 when one was not, could not be planted, or was to be noticed
# by a test that fails without it, too.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

table=tools/planted_faults.txt
names=() programs=() filters=() files=() olds=() news=()

# One block a fault; its lines begin with what they hold.
read_table() {
    local line
    while IFS= read -r line || [ -n "$line" ]; do
        case $line in
        'fault: '*) names+=("${line#fault: }") ;;
        'test: '*)
            line=${line#test: }
            programs+=("${line%% *}")
            filters+=("${line#* }")
            ;;
        'file: '*) files+=("${line#file: }") ;;
        '-'*) olds+=("${line#-}") ;;
        '+'*) news+=("${line#+}") ;;
        '' | '#'*) ;;
        *)
            echo "$table: what is this: $line" >&2
            exit 1
            ;;
        esac
    done <"$table"
    local count=${#names[@]}
    for part in ${#programs[@]} ${#files[@]} ${#olds[@]} ${#news[@]}; do
        if [ "$part" -ne "$count" ]; then
            echo "$table: a fault lacks a line, or has one too many" >&2
            exit 1
        fi
    done
}

# True when the fault of this number is asked for by one of the words.
is_wanted() {
    local number=$1 word
    shift
    [ $# -gt 0 ] || return 0
    for word in "$@"; do
        case $word in
        *[!0-9-]*) [[ ${names[number - 1]} == *"$word"* ]] && return 0 ;;
        *) [ "$number" -ge "${word%%-*}" ] && [ "$number" -le "${word##*-}" ] && return 0 ;;
        esac
    done
    return 1
}

# Puts the second text in the place of the first, which must stand in the file exactly once.
plant() {
    OLD=$2 NEW=$3 perl -0777 -i -pe '
        my ($old, $new) = @ENV{qw(OLD NEW)};
        my $count = () = /\Q$old\E/g;
        die "found $count times\n" if $count != 1;
        s/\Q$old\E/$new/;' "$1"
}

build() {
    nice -n 5 ninja -j2 -C "$tree/build/debug" "$@" >"$work/build.log" 2>&1
}

# Ends with 0 when the tests pass; a filter that chooses none is an error, not a pass.
passes() {
    local runtime result=0
    runtime=$(mktemp -d "$work/run.XXXXXX")
    chmod 700 "$runtime"
    XDG_RUNTIME_DIR=$runtime TMPDIR=$runtime QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy \
        GTEST_FAIL_FAST=1 timeout 600 "$tree/build/debug/tests/$1" --gtest_filter="$2" \
        </dev/null >"$work/test.log" 2>&1 || result=$?
    rm -rf "$runtime"
    if [ "$result" -eq 0 ] && grep -q '^\[==========\] 0 tests' "$work/test.log"; then
        return 2
    fi
    return "$result"
}

read_table
if [ "${1:-}" = --list ]; then
    for number in $(seq ${#names[@]}); do
        printf '%3d  %s\n' "$number" "${names[number - 1]}"
    done
    exit 0
fi
wanted=()
for number in $(seq ${#names[@]}); do
    if is_wanted "$number" "$@"; then
        wanted+=("$number")
    fi
done
if [ ${#wanted[@]} -eq 0 ]; then
    echo "prove_proofs: no such fault; --list tells them" >&2
    exit 2
fi
install_missing "${build_packages[@]}" "${test_packages[@]}"

# Short-lived files go into memory where there is room.
base=${TMPDIR:-/tmp}
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    base=/dev/shm
fi
work=$(mktemp -d "$base/prove.XXXXXX")
tree=${PROOF_TREE:-}
leave() {
    rm -rf "$work"
    if [ -z "${PROOF_TREE:-}" ] && [ -n "$tree" ]; then
        git worktree remove --force "$tree" || true
    fi
}
trap leave EXIT
if [ -z "$tree" ]; then
    tree=$(mktemp -d "${TMPDIR:-/tmp}/proofs.XXXXXX")
fi
if [ ! -e "$tree/.git" ]; then
    git worktree add --quiet --detach --force "$tree" HEAD
fi
git -C "$tree" checkout --quiet --force --detach "$(git rev-parse HEAD)"
# What was compiled elsewhere serves here, too.
export CCACHE_BASEDIR=$tree CCACHE_NOHASHDIR=1

needed=()
for number in "${wanted[@]}"; do
    needed+=("${programs[number - 1]}")
done
mapfile -t needed < <(printf '%s\n' "${needed[@]}" | sort -u)
echo "builds ${needed[*]} in $tree"
if ! { (cd "$tree" && cmake --preset debug) >"$work/build.log" 2>&1 && build "${needed[@]}"; }; then
    tail -n 30 "$work/build.log"
    echo "prove_proofs: the last commit does not build" >&2
    exit 1
fi

declare -A clean
missed=0
row() {
    printf '%3d  %-62s %-22s %s\n' "$1" "${names[$1 - 1]}" "${programs[$1 - 1]}" "$2"
}

try() {
    local number=$1
    local program=${programs[number - 1]} filter=${filters[number - 1]} file=${files[number - 1]}
    local told
    if [ -z "${clean[$program $filter]:-}" ]; then
        clean[$program $filter]=fails
        # What stands there may still hold the fault before this one.
        if build "$program" && passes "$program" "$filter"; then
            clean[$program $filter]=passes
        fi
    fi
    if [ "${clean[$program $filter]}" = fails ]; then
        row "$number" "NOT TRIED: its test fails without it"
        return 1
    fi
    if ! told=$(plant "$tree/$file" "${olds[number - 1]}" "${news[number - 1]}" 2>&1); then
        row "$number" "NOT PLANTED: $(head -n 1 <<<"$told")"
        return 1
    fi
    local result=0
    if ! build "$program"; then
        row "$number" "NOT PLANTED: $(grep -m 1 'error' "$work/build.log" | cut -c 1-120)"
        result=1
    elif passes "$program" "$filter"; then
        row "$number" GREEN
        result=1
    else
        row "$number" "red: $(grep -m 1 '^\[  FAILED  \]' "$work/test.log" | sed 's/^\[  FAILED  \] //; s/[ ,(].*//')"
    fi
    git -C "$tree" checkout --quiet -- "$file"
    return "$result"
}

for number in "${wanted[@]}"; do
    try "$number" || missed=$((missed + 1))
done
# So that the next run finds what it needs.
build "${needed[@]}" || true
echo "${#wanted[@]} faults, $((${#wanted[@]} - missed)) noticed"
[ "$missed" -eq 0 ]
