#!/usr/bin/env bash
# Proves the package on a bare system: tools/prove_package.sh [PACKAGE.deb]
#
# A small Debian in a folder of its own: the package is installed with what it needs, the console
# makes its library and imports real music as an ordinary user, the package is upgraded over it,
# removed and purged. The library has to stay as it is, and nothing else may. Needs root, a network
# and five minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

install_missing debootstrap dpkg-dev fakeroot zstd
package=${1:-$(ls build/package/melovane_*.deb)}
portable=$(ls build/package/melovane-*.tar.zst)
root=$(mktemp -d)
chmod 755 "$root"
cleanup() {
    umount "$root/proc" 2>/dev/null || true
    rm -rf --one-file-system "$root"
}
trap cleanup EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive \
    LC_ALL=C.UTF-8 "$@"; }
as_user() { inside setpriv --reuid=1000 --regid=1000 --clear-groups env HOME=/home/dj \
    XDG_RUNTIME_DIR=/run/dj QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy "$@"; }
# What the user has made, and what it holds.
library=/home/dj/.local/share/Melovane/melovane.mdb
sum_of_library() { sha256sum "$root$library" | cut -d' ' -f1; }

echo "== a bare system"
read -r mirror release < <(apt-get indextargets --format '$(SITE) $(CODENAME)' 'Created-By: Packages' |
    grep -v security | head -1)
debootstrap --variant=minbase "$release" "$root" "$mirror" >"$root.log"
rm -f "$root.log"
# Without it no program knows its own folder.
mount -t proc proc "$root/proc"
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
chmod +x "$root/usr/sbin/policy-rc.d"
inside useradd --uid 1000 --create-home dj
install -d -o 1000 -g 1000 -m 700 "$root/run/dj"

echo "== install"
cp "$package" "$root/root/first.deb"
inside apt-get update -qq
inside apt-get install -y -qq --no-install-recommends /root/first.deb >/dev/null
inside dpkg -V melovane
for program in melovane MelovaneDJ mediaintake tagbench mlvconfig mlvmessage MelovaneCheck; do
    as_user "$program" --version
    test -e "$root/usr/share/man/man1/$program.1.gz" || fail "no manual page of $program"
done

for language in de en; do
    test -s "$root/usr/lib/melovane/help/$language/start.html" || fail "no help in $language"
done

echo "== use it"
mkdir "$root/home/dj/Musik"
# Real files, made by the demo program of the same build; it is not part of the package.
build/package/melovane/obj-*/bin/demomusic "$root/home/dj/Musik" 20 >/dev/null
chown -R 1000:1000 "$root/home/dj"
as_user timeout 20 melovane >"$root/melovane.log" 2>&1 &
console=$!
for _ in $(seq 100); do
    test -s "$root$library" && as_user mlvmessage alive MelovaneDB >/dev/null 2>&1 && break
    sleep 0.2
done
as_user mlvmessage alive MelovaneDB || fail "the console does not live"
as_user mediaintake 1 --quiet --folder /home/dj/Musik
wait "$console" || test $? -eq 124 || fail "the console has died"
as_user MelovaneCheck || fail "the library is not whole"
before=$(sum_of_library)

echo "== upgrade"
rm -rf build/package/next
dpkg-deb -R "$package" build/package/next
sed -i 's/^Version: .*/&+1/' build/package/next/DEBIAN/control
dpkg-deb --root-owner-group -b build/package/next "$root/root/next.deb" >/dev/null
rm -rf build/package/next
inside apt-get install -y -qq --no-install-recommends /root/next.deb >/dev/null
inside dpkg -V melovane
test "$before" = "$(sum_of_library)" || fail "the upgrade has changed the library"
as_user MelovaneCheck || fail "the library is not whole behind the upgrade"

echo "== remove and purge"
inside apt-get remove -y -qq melovane >/dev/null
inside dpkg --purge melovane
test "$before" = "$(sum_of_library)" || fail "purge has touched the library"
left=$(find "$root" -xdev -iname '*melovane*' -not -path "$root/home/*" -not -path "$root/root/*" \
    -not -path "$root/run/*" -not -path "$root/melovane.log" -not -path "$root/var/*")
test -z "$left" || fail "left behind: $left"

echo "== the portable archive"
tar --zstd -xf "$portable" -C "$root/home/dj"
chown -R 1000:1000 "$root/home/dj"
inside apt-get install -y -qq --no-install-recommends libqt6widgets6 libqt6svg6 libsdl2-2.0-0 \
    libmpg123-0 libxxhash0 libzstd1 libsqlite3-0 >/dev/null
folder=/home/dj/$(basename "$portable" .tar.zst)
as_user timeout 10 "$folder/MelovaneDB" || test $? -eq 124 || fail "the portable console has died"
test -s "$root$folder/melovane.mdb" || fail "the portable console has made no library beside itself"
echo "The package installs, works, is upgraded and goes without a trace but the user's library."
