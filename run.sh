#!/usr/bin/env bash
# Installs what is missing, builds the console and starts it.
#
#   ./run.sh        the console with your own library; without a display the demo tour instead
#   ./run.sh demo   the demo tour in a window that stays open
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
. tools/packages.sh

demo=no
if [ "${1:-}" = demo ] || [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    demo=yes
fi
install_missing "${build_packages[@]}"

echo "Building ..."
cmake --preset release >/dev/null
cmake --build --preset release
stage=$PWD/build/release/stage
cmake --install build/release --prefix "$stage" >/dev/null
program=$stage/lib/melovane

if [ "$demo" = no ]; then
    exec "$program/MelovaneDB"
fi

# The tour works on a portable copy of the program in a folder of its own: the copy lies outside an
# installed layout, so it keeps settings and library beside itself, and the user's stay untouched.
tour=$PWD/build/demo
rm -rf "$tour"
mkdir -p "$tour"
cp -r "$program" "$tour/Melovane"
echo "Making a demo library of real MP3 files in $tour/Musik"
"$tour/Melovane/demomusic" "$tour/Musik" 400
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$tour/Melovane/demotour" "$tour/Musik" "$tour/screenshot.png" --stay
fi
install_missing "${display_packages[@]}"
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
chmod 700 "$XDG_RUNTIME_DIR"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
xvfb-run -a -s "-screen 0 1440x900x24" bash -c '
    openbox >/dev/null 2>&1 &
    manager=$!
    status=0
    "$1/Melovane/demotour" "$1/Musik" "$1/screenshot.png" || status=$?
    kill "$manager"
    exit "$status"' -- "$tour"
echo
echo "Program:     $tour/Melovane/MelovaneDB"
echo "Music:       $tour/Musik"
echo "Database:    $tour/Melovane/melovane.mdb"
echo "Settings:    $tour/Melovane/melovane.ini"
echo "Playlist:    $tour/Wilde Nacht.m3u"
echo "Export:      $tour/Export, its window in $tour/export.png"
echo "Screenshot:  $tour/screenshot.png"
