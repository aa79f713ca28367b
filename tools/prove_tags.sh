#!/usr/bin/env bash
# Proves the writing of tags at length: tools/prove_tags.sh [CHANGES = 10000]
#
# The test of the normal run, in number: random changes of hundreds of differently made files; sound and
# frames of other programs stay byte for byte, and our reader and the tag library see what was written. In
# the end two readers of other makers look at the files, too. Takes some minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

changes=${1:-10000}
install_missing "${build_packages[@]}" "${test_packages[@]}" python3-mutagen ffmpeg
cmake --preset debug >/dev/null
ninja -C build/debug tag_corpus_test

files=$(mktemp -d)
trap 'rm -rf "$files"' EXIT
export QT_QPA_PLATFORM=offscreen MLV_TAG_EDITS=$changes MLV_TAG_FILES=$files
build/debug/tests/tag_corpus_test
/usr/bin/python3 tools/read_tags.py "$files"
