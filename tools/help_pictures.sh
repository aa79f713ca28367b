#!/usr/bin/env bash
# Makes the pictures of the help from the running programs: tools/help_pictures.sh [PROGRAM_FOLDER]
#
# In both languages, on a display and with a library of its own. Writes resources/help/*/*.png.
# The folder is that of an installed or built suite; without one that of ./run.sh.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

install_missing ffmpeg xdotool xvfb
programs=$(readlink -f "${1:-build/release/stage/lib/melovane}")
place=$(mktemp -d)
XDG_RUNTIME_DIR=$place/run
export XDG_RUNTIME_DIR SDL_AUDIODRIVER=dummy QT_QPA_PLATFORM=xcb
few_colours="scale='min(iw,760)':-1:flags=area,split[a][b];[a]palettegen=max_colors=40:reserve_transparent=0[p];[b][p]paletteuse=dither=none"
running=()
cleanup() {
    for process in "${running[@]}"; do
        kill "$process" 2>/dev/null || true
    done
    wait
    rm -rf "$place"
}
trap cleanup EXIT
mkdir -m 700 "$XDG_RUNTIME_DIR"

# Starts a program and gives its window a size: open PROGRAM WIDTH HEIGHT [ARGUMENT]...
open() {
    "$suite/$1" "${@:4}" >/dev/null 2>&1 &
    process=$!
    running+=("$process")
    window=$(timeout 60 xdotool search --sync --onlyvisible --name "..." | tail -1)
    sleep 8
    window=$(xdotool search --onlyvisible --name "..." | tail -1)
    # Without a window manager: no frame, and the keyboard goes where it is told.
    xdotool windowmove "$window" 0 0 windowsize "$window" "$2" "$3" windowfocus "$window"
    sleep 4
}

# What stands in the window now, in few colours: take NAME
take() {
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
    ffmpeg -loglevel error -y -f x11grab -draw_mouse 0 -video_size "${WIDTH}x$HEIGHT" \
        -i "$DISPLAY+$X,$Y" -frames:v 1 -update 1 "$place/all.png" </dev/null
    ffmpeg -loglevel error -y -i "$place/all.png" -vf "$few_colours" -update 1 \
        "resources/help/$language/$1.png" </dev/null
}

close_program() {
    kill "$process" 2>/dev/null || true
    wait "$process" 2>/dev/null || true
}

pictures() {
    suite=$place/$language
    cp -rL "$programs" "$suite"
    printf '[Global]\nSkinFileName=melovane-light.skn\n' >"$suite/melovane.ini"
    if [ "$language" = en ]; then
        printf '[Value]\nSprach.Datei=lang_English.ini\n' >>"$suite/melovane.ini"
    fi
    "$suite/demomusic" "$place/Musik" 150 >/dev/null

    open mediaintake 720 520
    take import
    close_program

    "$suite/mediaintake" 1 --quiet --folder "$place/Musik" >/dev/null
    open MelovaneDJ 760 560
    take player
    close_program
    open tagbench 1000 640 import
    take bench
    close_program
    rm -rf "$suite"
}

if [ "${HELP_DISPLAY:-}" = "" ]; then
    HELP_DISPLAY=yes exec xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$programs"
fi
for language in de en; do
    pictures
done
ls -l resources/help/*/*.png
