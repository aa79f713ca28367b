#!/usr/bin/env bash
# Exchanges lists with other programs: tools/prove_list_exchange.sh [--install]
#
# A list of six tracks with difficult names is written by the suite and read by players that run
# without a display; then each of them writes it and the suite reads it back into an empty library.
# Ends with 0 when every list arrived with all tracks, with 1 when one did not. Takes a minute.
#
# The players are programs that nobody else here needs: --install installs what is missing, without
# it the script only names it and ends with 2.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

needed=("${build_packages[@]}" "${test_packages[@]}" mpd mpc moc mpg123)
case "$*" in
--install) install_missing "${needed[@]}" ;;
"") require_packages "${needed[@]}" ;;
*)
    echo "$0: \"$*\" makes no sense; the call is: $0 [--install]" >&2
    exit 2
    ;;
esac
cmake --preset debug >/dev/null
ninja -C build/debug list_exchange >/dev/null
exchange=$PWD/build/debug/tests/list_exchange
export QT_QPA_PLATFORM=offscreen TERM=xterm

work=$(mktemp -d)
started=()
end() {
    local process
    for process in "${started[@]}"; do
        kill "$process" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap end EXIT
export HOME=$work/home XDG_RUNTIME_DIR=$work/run
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" "$work/from"
chmod 700 "$XDG_RUNTIME_DIR"
"$exchange" write "$work"
ours=$work/ours.m3u
relative=$work/Musik/ours-relative.m3u
tracks=6
failed=0

# tell WHO COUNT: what a program made of a list of ours.
tell() {
    echo "$1: $2 of $tracks tracks"
    if [ "$2" -ne "$tracks" ]; then
        failed=1
    fi
}

# until_true COMMAND...: waits up to ten seconds for it.
until_true() {
    local tries=0
    until "$@" >/dev/null 2>&1; do
        tries=$((tries + 1))
        if [ "$tries" -gt 100 ]; then
            return 1
        fi
        sleep 0.1
    done
}

echo "Lists of the suite in other programs:"

# mpg123 opens each entry of a list; what it cannot open it tells.
opened() {
    mpg123 --quiet --test --list "$1" 2>&1 | grep -c -i 'error\|fail\|No such' || true
}
tell "mpg123, full names" $((tracks - $(opened "$ours")))
tell "mpg123, relative names" $((tracks - $(opened "$relative")))

mkdir -p "$work/mpd"
cat >"$work/mpd/conf" <<CONF
music_directory "$work/Musik"
playlist_directory "$work/from"
db_file "$work/mpd/db"
state_file "$work/mpd/state"
bind_to_address "$work/mpd/socket"
filesystem_charset "UTF-8"
save_absolute_paths_in_playlists "yes"
audio_output {
    type "null"
    name "none"
}
CONF
LC_ALL=C.UTF-8 mpd --no-daemon --stderr "$work/mpd/conf" 2>"$work/mpd/log" &
started+=($!)
export MPD_HOST=$work/mpd/socket
until_true mpc status
mpc --quiet --wait update >/dev/null
cp "$ours" "$work/from/ours.m3u"
mpc --quiet load ours
tell "mpd, full names" "$(mpc playlist | wc -l)"
cp "$relative" "$work/from/relative.m3u"
mpc --quiet clear
mpc --quiet load relative
tell "mpd, relative names" "$(mpc playlist | wc -l)"
mpc --quiet save absolute

mkdir -p "$HOME/.moc"
printf 'SoundDriver = NULL\nSavePlaylist = yes\n' >"$HOME/.moc/config"
chmod 600 "$HOME/.moc/config"
LC_ALL=C.UTF-8 mocp --server >/dev/null 2>&1 || true
LC_ALL=C.UTF-8 mocp --append "$ours" >/dev/null 2>&1 || true
if [ -f "$HOME/.moc/playlist.m3u" ]; then
    cp "$HOME/.moc/playlist.m3u" "$work/from/moc.m3u"
    tell "moc, full names" "$(grep -vc '^#' "$work/from/moc.m3u")"
else
    echo "moc: wrote no list"
    failed=1
fi
LC_ALL=C.UTF-8 mocp --exit >/dev/null 2>&1 || true

# A daemon that names files below its music folder, where the list then has to lie.
sed -i 's/"yes"/"no"/' "$work/mpd/conf"
kill "${started[0]}"
wait "${started[0]}" 2>/dev/null || true
LC_ALL=C.UTF-8 mpd --no-daemon --stderr "$work/mpd/conf" 2>"$work/mpd/log" &
started=($!)
until_true mpc status
mpc --quiet clear
mpc --quiet load relative
mpc --quiet save below
mv "$work/from/below.m3u" "$work/Musik/below.m3u"

echo "Lists of other programs in the suite:"
for list in from/absolute Musik/below from/moc; do
    "$exchange" read "$work/$list.m3u" || failed=1
done
exit "$failed"
